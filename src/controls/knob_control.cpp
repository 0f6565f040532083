#include "controls/knob_control.h"

#include "controls/accessibility.h"
#include "controls/button_control.h"
#include "controls/knob_painter.h"
#include "controls/knob_scroller.h"
#include "controls/number_format.h"
#include "controls/pointer_place.h"
#include "controls/rounding.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>

namespace {

constexpr int kRepaintDelay = 10; // milliseconds
constexpr int kOtherButton = 0;

int ButtonOf(Qt::MouseButtons buttons) {
    return buttons == Qt::LeftButton ? KnobState::kLeftButton : kOtherButton;
}

/// The host's number of a text alignment.
int AlignmentNumber(Qt::Alignment alignment) {
    if (alignment & Qt::AlignHCenter) {
        return 2;
    }
    return alignment & Qt::AlignRight ? 1 : 0;
}

} // namespace

KnobControl1::KnobControl1(QWidget* parent) : QWidget(parent), repaint_(*this, kRepaintDelay) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    Timeout_ = new QTimer(this);
    Timeout_->setObjectName(QStringLiteral("Timeout"));
    Timeout_->setTimerType(Qt::PreciseTimer);
    Timeout_->setSingleShot(true);
    connect(Timeout_, &QTimer::timeout, this, [this] { state_.Timeout(); });
    children_.KnobValueTextbox->installEventFilter(this);
    connect(children_.Scroller, &KnobScroller::valueChanged, this,
            [this](int value) { state_.MoveScroller(value); });
    connect(children_.ZeroButton, &ButtonControl1::Click, this,
            [this] { state_.MoveScroller(design_.KnobZeroButtonValue); });
    PlaceChildren();
    ShowChildren();
    repaint_.Request();
}

bool KnobControl1::KnobAnticlock() {
    const bool anticlock = design_.KnobAnticlock;
    state_.Timeout();
    return anticlock;
}

void KnobControl1::SetKnobValue(int value) {
    const bool changed = state_.PutKnobValue(value);
    // A hidden knob does not raise its events from the layout.
    if (changed && !design_.KnobVisible && !state_.RunChangePath()) {
        return;
    }
    LayOut();
}

void KnobControl1::SetKnobLowerLimit(int value) {
    design_.KnobLowerLimit = value;
    state_.PutLowerLimit(value);
}

void KnobControl1::SetKnobUpperLimit(int value) {
    design_.KnobUpperLimit = value;
    state_.PutUpperLimit(value);
}

void KnobControl1::SetKnobTimeout(int value) {
    Timeout_->setInterval(std::max(0, value));
    Put(&KnobDesign::KnobTimeout, value);
}

void KnobControl1::SetKnobValueEditable(bool value) {
    design_.KnobValueEditable = value;
    ShowChildren();
    Put(&KnobDesign::KnobValueEditable, value);
}

void KnobControl1::SetKnobVisible(bool value) {
    design_.KnobVisible = value;
    focus_.Follow(*this, value);
    ShowChildren();
    still_ = {};
    update();
    Refresh();
}

void KnobControl1::Refresh() {
    if (!InLayout_ && design_.KnobVisible) {
        repaint_.Request();
    }
}

void KnobControl1::RefreshValue() {
    state_.RefreshValue();
}

void KnobControl1::ReadProperties(const QVariantMap& bag) {
    design_ = ReadKnobDesign(bag);
    Timeout_->setInterval(std::max(0, design_.KnobTimeout));
    state_.UpdateScrollerLimits();
    state_.PutKnobValue(design_.KnobValue);
    PlaceChildren();
    ShowChildren();
    state_.Synchronise();
    if (state_.RefreshValue()) {
        Refresh();
    }
}

QVariantMap KnobControl1::WriteProperties() const {
    KnobDesign design = design_;
    design.KnobValue = state_.KnobValue();
    return WriteKnobDesign(design, AlignmentNumber(children_.KnobValueTextbox->alignment()));
}

void KnobControl1::LayOut() {
    InLayout_ = true;
    state_.UpdateScrollerLimits();
    if (!placed_) {
        PlaceChildren();
    }
    if (design_.KnobVisible && !state_.RunChangePath()) {
        return;
    }
    InLayout_ = false;
    Refresh();
}

void KnobControl1::PlaceChildren() {
    placed_ = true;
    still_ = {};
    setFont(design_.KnobFont);
    const QFontMetrics metrics(design_.KnobFont);
    const int maxWidth = metrics.horizontalAdvance(QString::number(design_.KnobMax));
    layout_ = LayOutKnob({size(), design_.KnobValueAlign, static_cast<double>(metrics.height()),
                          static_cast<double>(maxWidth), children_.ZeroButton->size()});
    state_.SetCentre(layout_.drawnCentre());
    children_.Place(design_, layout_);
    children_.ShowScroller(state_);
}

void KnobControl1::ShowChildren() {
    setAttribute(Qt::WA_OpaquePaintEvent, design_.KnobVisible); // hidden, it lets what is under it show
    children_.Show(design_);
}

void KnobControl1::PlacePointer() {
    children_.ShowScroller(state_);
    const int sweep = knob::Sweep(design_.KnobStartAngle, design_.KnobStopAngle);
    const float place =
        knob::Quantised(state_.Position(), design_.KnobMin, design_.KnobMax, design_.KnobValueQuantized);
    const double angle = design_.KnobStartAngle + static_cast<double>(sweep) * place;
    if (angle != pointerAngle_) {
        pointerAngle_ = angle;
        update(PointerBounds(layout_).toAlignedRect());
    }
}

QString KnobControl1::ShownText() const {
    const QString& format = design_.KnobValueFormat;
    return format.isEmpty() ? QString() : FormatText(state_.KnobXlatedValue(), format);
}

void KnobControl1::ShowText() {
    const QString text = ShownText();
    children_.ShowText(text);
    // Not before the text is there: a listener asks for it as soon as it hears of the value.
    const int value = state_.KnobValue();
    if (value != toldValue_ || text != toldText_) {
        toldValue_ = value;
        toldText_ = text;
        AnnounceValue(*this, value);
    }
}

bool KnobControl1::RaiseChange() {
    const QPointer<KnobControl1> alive(this);
    emit Change();
    return !alive.isNull();
}

bool KnobControl1::RaiseDone() {
    const QPointer<KnobControl1> alive(this);
    emit Done();
    return !alive.isNull();
}

bool KnobControl1::RaiseXlateValue(float Value, QString& Display) {
    const QPointer<KnobControl1> alive(this);
    emit KnobXlateValue(Value, Display);
    return !alive.isNull();
}

void KnobControl1::EnableTimeout() {
    if (!Timeout_->isActive()) {
        Timeout_->start();
    }
}

void KnobControl1::DisableTimeout() {
    Timeout_->stop();
}

void KnobControl1::RenderFace() {
    const double scale = devicePixelRatioF();
    still_ =
        QPixmap((QSizeF(size()) * scale).toSize() + QSize(1, 1)); // at 1.25 the edges fall between pixels
    still_.setDevicePixelRatio(scale);
    QPainter painter(&still_);
    DrawKnobFace(painter, design_, layout_);
}

void KnobControl1::paintEvent(QPaintEvent* event) {
    if (!design_.KnobVisible) {
        return;
    }
    const DeferredRepaint::Drawing drawing(repaint_);
    if (still_.isNull() || still_.devicePixelRatio() != devicePixelRatioF()) {
        RenderFace();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, still_);
    if (event->region().intersects(PointerBounds(layout_).toAlignedRect())) {
        DrawKnobPointer(painter, layout_, pointerAngle_, design_.KnobFillColor);
    }
    if (focus_.Shown()) {
        DrawKnobFocus(painter, layout_);
    }
}

void KnobControl1::resizeEvent(QResizeEvent*) {
    placed_ = false;
    LayOut();
}

void KnobControl1::showEvent(QShowEvent* event) {
    // A window that comes back from the task bar changes no value, so it says nothing to the owner either.
    if (!event->spontaneous()) {
        LayOut();
    }
}

void KnobControl1::mousePressEvent(QMouseEvent* event) {
    state_.MousePress(ButtonOf(event->button()), PointerPlace(*event, *this));
}

void KnobControl1::mouseMoveEvent(QMouseEvent* event) {
    state_.MouseMove(ButtonOf(event->buttons()), 0, PointerPlace(*event, *this));
}

void KnobControl1::mouseReleaseEvent(QMouseEvent*) {
    state_.MouseRelease();
}

void KnobControl1::Step(const StepRequest& request) {
    using Kind = StepRequest::Kind;
    const std::int64_t range = std::int64_t{state_.ScrollerMax()} - state_.ScrollerMin();
    switch (request.kind) {
    case Kind::Step:
        state_.Step(request.count);
        break;
    case Kind::Page:
        state_.Step(std::int64_t{request.count} * state_.LargeChange());
        break;
    case Kind::ToLow:
        state_.Step(-range);
        break;
    case Kind::ToHigh:
        state_.Step(range);
        break;
    }
}

void KnobControl1::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (event->buttons() != Qt::NoButton) {
        return; // the mouse turns the knob already
    }
    if (const auto request = wheel_.Take(*event)) {
        Step(*request);
    }
}

void KnobControl1::keyPressEvent(QKeyEvent* event) {
    if (const auto request = StepOfKey(*event)) {
        event->accept();
        if (focus_.Key()) {
            update();
        }
        Step(*request);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void KnobControl1::focusInEvent(QFocusEvent* event) {
    if (focus_.In(event->reason())) {
        update();
    }
}

void KnobControl1::focusOutEvent(QFocusEvent* event) {
    if (focus_.Out(event->reason())) {
        update();
    }
}

bool KnobControl1::eventFilter(QObject* watched, QEvent* event) {
    if (watched == children_.KnobValueTextbox && event->type() == QEvent::KeyPress &&
        design_.KnobValueEditable) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            event->accept();
            EndEdit(key != Qt::Key_Escape);
            return true;
        }
    }
    if (watched == children_.KnobValueTextbox && event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        ShowText(); // an edit that nobody ended leaves nothing behind; its own menu is a part of it
    }
    return false;
}

void KnobControl1::EndEdit(bool accept) {
    const std::optional<double> number = NumberOfText(children_.KnobValueTextbox->text());
    setFocus(Qt::OtherFocusReason);
    if (accept && number && *number >= design_.KnobMin && *number <= design_.KnobMax) {
        const int value = RoundToEven<std::int16_t>(*number);
        if (value != state_.ScrollerValue()) {
            state_.MoveScroller(value);
        } else {
            state_.RefreshValue();
        }
        return;
    }
    state_.RunChangePath();
}
