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

bool PressesButton(const QKeyEvent& event) {
    const int key = event.key();
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

template <class Self, class Visit> void ButtonControl1::VisitKeys(Self& self, const Visit& visit) {
    const QColor face = ToQColor(kButtonFace);
    visit("ButtonFillColor", self.ButtonFillColor_, face);
    visit("ButtonBackColor", self.ButtonBackColor_, face);
    visit("ButtonForeColor", self.ButtonForeColor_, face);
    visit.Int16("ButtonDepth", self.ButtonDepth_, 2);
    visit.Int16("ButtonCaptionNudgeX", self.ButtonCaptionNudgeX_, 0);
    visit.Int16("ButtonCaptionNudgeY", self.ButtonCaptionNudgeY_, 0);
    visit("ButtonCaption", self.ButtonCaption_, QString());
    visit("ButtonSunk", self.ButtonSunk_, true);
    visit.Font(QStringLiteral("ButtonFont"), self.ButtonFont_, 10);
}

ButtonControl1::ButtonControl1(QWidget* parent)
    : QWidget(parent), repaint_(*this, DeferredRepaint::kInterval) {
    VisitKeys(*this, ReadKeys{{}});
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
    ButtonCaptionNudgeX_ = ToInt16(value);
    RequestPaint();
}

void ButtonControl1::SetButtonCaptionNudgeY(int value) {
    ButtonCaptionNudgeY_ = ToInt16(value);
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
    StoreVisible(ReadKey(bag, "Visible", true));
    VisitKeys(*this, ReadKeys{bag});
    RequestPaint();
}

QVariantMap ButtonControl1::WriteProperties() const {
    QVariantMap bag;
    WriteKey(bag, "Visible", ButtonVisible_, false);
    VisitKeys(*this, WriteKeys{bag});
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
                .nudge = {ButtonCaptionNudgeX_, ButtonCaptionNudgeY_},
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
