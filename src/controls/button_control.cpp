#include "controls/button_control.h"

#include "controls/accessibility.h"
#include "controls/button_painting.h"
#include "controls/design_keys.h"
#include "controls/symbol_font.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace {

constexpr double kFontPoints = 10;
constexpr int kButtonDepth = 2;

bool PressesButton(const QKeyEvent& event) {
    const int key = event.key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

ButtonControl1::ButtonControl1(QWidget* parent)
    : QWidget(parent), repaint_(*this, DeferredRepaint::kInterval) {
    ButtonFont_ = ReadFontKeys({}, QStringLiteral("ButtonFont"), kFontPoints);
    setFocusPolicy(Qt::StrongFocus);
}

void ButtonControl1::RequestPaint() {
    if (ButtonVisible_) {
        repaint_.Request();
    }
}

void ButtonControl1::StoreVisible(bool value) {
    ButtonVisible_ = value;
    focus_.Follow(*this, value);
    update();
}

void ButtonControl1::SetButtonVisible(bool value) {
    StoreVisible(value);
    RequestPaint();
}

void ButtonControl1::SetButtonFillColor(const QColor& value) {
    ButtonFillColor_ = value;
    RequestPaint();
}

void ButtonControl1::SetButtonBackColor(const QColor& value) {
    ButtonBackColor_ = value;
    RequestPaint();
}

void ButtonControl1::SetButtonForeColor(const QColor& value) {
    ButtonForeColor_ = value;
    RequestPaint();
}

void ButtonControl1::SetButtonDepth(int value) {
    ButtonDepth_ = ToInt16(value);
    RequestPaint();
}

void ButtonControl1::SetButtonCaptionNudgeX(int value) {
    ButtonCaptionNudge_.setX(ToInt16(value));
    RequestPaint();
}

void ButtonControl1::SetButtonCaptionNudgeY(int value) {
    ButtonCaptionNudge_.setY(ToInt16(value));
    RequestPaint();
}

void ButtonControl1::SetButtonCaption(const QString& value) {
    const bool differs = ButtonCaption_ != value;
    ButtonCaption_ = value;
    if (differs) {
        AnnounceName(*this);
    }
    RequestPaint();
}

void ButtonControl1::SetButtonSunk(bool value) {
    ButtonSunk_ = value;
    RequestPaint();
}

void ButtonControl1::SetButtonFont(const QFont& value) {
    ButtonFont_ = value;
    RequestPaint();
}

void ButtonControl1::Refresh() {
    RequestPaint();
}

void ButtonControl1::ReadProperties(const QVariantMap& bag) {
    const QColor face = ToQColor(kButtonFace);
    StoreVisible(ReadKey(bag, "Visible", true));
    ButtonFillColor_ = ReadKey(bag, "ButtonFillColor", face);
    ButtonBackColor_ = ReadKey(bag, "ButtonBackColor", face);
    ButtonForeColor_ = ReadKey(bag, "ButtonForeColor", face);
    ButtonDepth_ = ReadInt16(bag, "ButtonDepth", kButtonDepth);
    ButtonCaptionNudge_ = {ReadInt16(bag, "ButtonCaptionNudgeX", 0),
                           ReadInt16(bag, "ButtonCaptionNudgeY", 0)};
    ButtonCaption_ = ReadKey(bag, "ButtonCaption", QString());
    ButtonSunk_ = ReadKey(bag, "ButtonSunk", true);
    ButtonFont_ = ReadFontKeys(bag, QStringLiteral("ButtonFont"), kFontPoints);
    RequestPaint();
}

QVariantMap ButtonControl1::WriteProperties() const {
    QVariantMap bag;
    const QColor face = ToQColor(kButtonFace);
    WriteKey(bag, "Visible", ButtonVisible_, false);
    WriteKey(bag, "ButtonFillColor", ButtonFillColor_, face);
    WriteKey(bag, "ButtonBackColor", ButtonBackColor_, face);
    WriteKey(bag, "ButtonForeColor", ButtonForeColor_, face);
    WriteKey(bag, "ButtonDepth", ButtonDepth_, kButtonDepth);
    WriteKey(bag, "ButtonCaptionNudgeX", ButtonCaptionNudge_.x(), 0);
    WriteKey(bag, "ButtonCaptionNudgeY", ButtonCaptionNudge_.y(), 0);
    WriteKey(bag, "ButtonCaption", ButtonCaption_, QString());
    WriteKey(bag, "ButtonSunk", ButtonSunk_, true);
    WriteFontKeys(bag, QStringLiteral("ButtonFont"), ButtonFont_, kFontPoints);
    return bag;
}

void ButtonControl1::paintEvent(QPaintEvent*) {
    if (!ButtonVisible_) {
        return;
    }
    const DeferredRepaint::Drawing drawing(repaint_);
    QPainter painter(this);
    DrawButton(painter, {.size = size(), .depth = ButtonDepth_, .sunk = ButtonSunk_, .pressed = Pressed_},
               {.fill = ButtonFillColor_,
                .back = ButtonBackColor_,
                .fore = ButtonForeColor_,
                .caption = PrintedCaption(ButtonCaption_, ButtonFont_, LoadSymbolFont()),
                .font = ButtonFont_,
                .nudge = ButtonCaptionNudge_,
                .focus = focus_.Shown()});
}

void ButtonControl1::resizeEvent(QResizeEvent*) {
    RequestPaint();
}

void ButtonControl1::showEvent(QShowEvent*) {
    RequestPaint();
    if (!initialised_) {
        initialised_ = true;
        emit Init();
    }
}

void ButtonControl1::hideEvent(QHideEvent*) {
    // The release of a press on a hidden control never comes.
    Pressed_ = false;
}

void ButtonControl1::Press(bool byKey) {
    Pressed_ = true;
    pressedByKey_ = byKey;
    RequestPaint();
}

void ButtonControl1::LetGo() {
    Pressed_ = false;
    pressedByKey_ = false;
    RequestPaint();
}

void ButtonControl1::Release() {
    // The owner may delete the button from inside Click.
    const QPointer<ButtonControl1> alive(this);
    if (Pressed_) {
        emit Click();
    }
    if (alive) {
        LetGo();
    }
}

void ButtonControl1::mousePressEvent(QMouseEvent*) {
    Press(false);
}

void ButtonControl1::mouseMoveEvent(QMouseEvent* event) {
    if (Pressed_ && !HoldsButton(size(), event->position())) {
        LetGo();
    }
}

void ButtonControl1::mouseReleaseEvent(QMouseEvent*) {
    Release();
}

void ButtonControl1::keyPressEvent(QKeyEvent* event) {
    if (!PressesButton(*event)) {
        QWidget::keyPressEvent(event);
    } else if (!repeat_.IsRepeat(*event)) {
        focus_.Key();
        Press(true);
    }
}

void ButtonControl1::keyReleaseEvent(QKeyEvent* event) {
    if (!PressesButton(*event)) {
        QWidget::keyReleaseEvent(event);
    } else if (!event->isAutoRepeat()) {
        repeat_.Released(*event);
        Release();
    }
}

void ButtonControl1::focusInEvent(QFocusEvent* event) {
    if (focus_.In(event->reason())) {
        RequestPaint();
    }
}

void ButtonControl1::focusOutEvent(QFocusEvent* event) {
    if (focus_.Out(event->reason())) {
        RequestPaint();
    }
    // A key is let go elsewhere once the focus has left; a mouse button still comes back here.
    if (pressedByKey_) {
        LetGo();
    }
}
