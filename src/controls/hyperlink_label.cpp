#include "controls/hyperlink_label.h"

#include "controls/design_keys.h"
#include "controls/host_hyperlink.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <array>
#include <utility>

namespace {

constexpr int kOwnIcon = 99;

constexpr std::array kPointers = {
    Qt::PointingHandCursor, Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,
    Qt::ArrowCursor,        Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
    Qt::SizeFDiagCursor,    Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,
    Qt::ForbiddenCursor,    Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor,
};

} // namespace

UserControl2::UserControl2(QWidget* parent) : QWidget(parent), HyperLink_(new HostHyperLink(this)) {
    setFocusPolicy(Qt::StrongFocus);
    ShowPointer();
}

void UserControl2::ShowPointer() {
    if (MousePointer_ == kOwnIcon && !MouseIcon_.isNull()) {
        setCursor(QCursor(MouseIcon_));
        return;
    }
    const bool known = MousePointer_ >= 0 && MousePointer_ < static_cast<int>(kPointers.size());
    setCursor(kPointers[known ? static_cast<std::size_t>(MousePointer_) : 0]);
}

void UserControl2::Mark(const char* name) {
    update();
    emit PropertyChanged(QString::fromLatin1(name));
}

void UserControl2::SetAutoRedraw(bool value) {
    AutoRedraw_ = value;
    Mark("AutoRedraw");
}

void UserControl2::SetMouseIcon(const QPixmap& value) {
    MouseIcon_ = value;
    ShowPointer();
    Mark("MouseIcon");
}

void UserControl2::SetMousePointer(int value) {
    MousePointer_ = ToInt16(value);
    ShowPointer();
    Mark("MousePointer");
}

void UserControl2::SetPicture(const QPixmap& value) {
    Picture_ = value;
    Mark("Picture");
}

void UserControl2::SetBackColor(const QColor& value) {
    BackColor_ = value;
    Mark("BackColor");
}

void UserControl2::ReadProperties(const QVariantMap& bag) {
    AutoRedraw_ = ReadKey(bag, "AutoRedraw", false);
    MouseIcon_ = ReadKey(bag, "MouseIcon", QPixmap());
    MousePointer_ = ReadInt16(bag, "MousePointer", 0);
    Picture_ = ReadKey(bag, "Picture", QPixmap());
    BackColor_ = ReadKey(bag, "BackColor", ToQColor(kButtonFace));
    ShowPointer();
    update();
}

QVariantMap UserControl2::WriteProperties() const {
    QVariantMap bag;
    WriteKey(bag, "AutoRedraw", AutoRedraw_, false);
    WriteKey(bag, "MousePointer", MousePointer_, 0);
    WriteKey(bag, "BackColor", BackColor_, ToQColor(kButtonFace));
    for (const auto& [key, picture] : {std::pair("MouseIcon", MouseIcon_), std::pair("Picture", Picture_)}) {
        if (!picture.isNull()) {
            bag[QString::fromLatin1(key)] = picture;
        }
    }
    return bag;
}

void UserControl2::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), BackColor_);
    painter.drawPixmap(0, 0, Picture_);
    if (focus_.Shown()) {
        painter.setPen(QPen(QColor(0, 0, 0, 160), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void UserControl2::mousePressEvent(QMouseEvent* event) {
    // Taken, so that the release comes here and the form beneath does not move.
    pressed_ = pressed_ || event->button() == Qt::LeftButton;
}

void UserControl2::mouseDoubleClickEvent(QMouseEvent*) {
    // Taken and not counted: the first press of the two has already opened the link.
}

void UserControl2::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && std::exchange(pressed_, false) &&
        rect().contains(event->position().toPoint())) {
        emit Click();
    }
}

void UserControl2::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
    } else if (!repeat_.IsRepeat(*event)) {
        emit Click();
    }
}

void UserControl2::keyReleaseEvent(QKeyEvent* event) {
    repeat_.Released(*event);
    QWidget::keyReleaseEvent(event);
}

void UserControl2::focusInEvent(QFocusEvent* event) {
    if (focus_.In(event->reason())) {
        update();
    }
}

void UserControl2::focusOutEvent(QFocusEvent* event) {
    if (focus_.Out(event->reason())) {
        update();
    }
}
