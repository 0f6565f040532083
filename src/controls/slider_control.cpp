#include "controls/slider_control.h"

#include "controls/accessibility.h"
#include "controls/design_keys.h"
#include "controls/pointer_place.h"
#include "controls/slider_painting.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kTimeoutInterval = 10;
constexpr double kFreeStep = 0.01; // of the keys, where the value has no step of its own
constexpr double kPage = 0.1;      // at least, of the whole way
// A put from within Change raises it again; a handler that always puts must come to an end.
constexpr int kDeepest = 4;

bool InRange(float value) {
    return value >= 0.0F && value <= 1.0F;
}

bool IsStep(float value) {
    return value != 0.0F && std::isfinite(value);
}

} // namespace

template <class Self, class Visit> void SliderControl1::VisitKeys(Self& self, const Visit& visit) {
    visit("Visible", self.SliderVisible_, true);
    visit("SliderFillColor", self.SliderFillColor_, ToQColor(kButtonFace));
    visit.Int16("SliderDepth", self.SliderDepth_, 2);
    visit("SliderValue", self.SliderValue_, 0.0F, InRange);
    visit("SliderValueQuantized", self.SliderValueQuantized_, 1.0F, IsStep);
}

SliderControl1::SliderControl1(QWidget* parent)
    : QWidget(parent), lastMouse_(std::numeric_limits<int>::min(), std::numeric_limits<int>::min()),
      Timeout_(new QTimer(this)), repaint_(*this, DeferredRepaint::kInterval) {
    VisitKeys(*this, ReadKeys{{}});
    setFocusPolicy(Qt::StrongFocus);
    Timeout_->setObjectName(QStringLiteral("Timeout"));
    Timeout_->setTimerType(Qt::PreciseTimer);
    Timeout_->setInterval(kTimeoutInterval);
    Timeout_->setSingleShot(true);
    connect(Timeout_, &QTimer::timeout, this, [this] { RaiseChange(); });
}

/// False if a handler has deleted the control.
bool SliderControl1::RaiseChange() {
    if (raising_ >= kDeepest) {
        return true;
    }
    const QPointer<SliderControl1> alive(this);
    ++raising_;
    emit Change();
    if (!alive) {
        return false;
    }
    --raising_;
    return true;
}

/// The places of all parts follow from size and value and are worked out when they are needed.
/// False if a handler has deleted the control.
bool SliderControl1::LayOut() {
    if (!SliderVisible_) {
        return true;
    }
    repaint_.Request();
    return RaiseChange();
}

void SliderControl1::Store(float value) {
    const bool differs = SliderValue_ != value;
    SliderValue_ = value;
    if (differs) {
        AnnounceValue(*this, value);
    }
}

void SliderControl1::SetSliderVisible(bool value) {
    SliderVisible_ = value;
    focus_.Follow(*this, value);
    update();
}

void SliderControl1::SetSliderFillColor(const QColor& value) {
    SliderFillColor_ = value;
    update(); // thumb and groove are retained: no paint request
}

void SliderControl1::SetSliderDepth(int value) {
    SliderDepth_ = ToInt16(value);
    LayOut();
}

void SliderControl1::SetSliderValue(float value) {
    if (InRange(value)) {
        Store(value);
    }
    if (LayOut()) {
        RaiseChange();
    }
}

void SliderControl1::SetSliderValueQuantized(float value) {
    if (IsStep(value)) {
        SliderValueQuantized_ = value;
    }
    LayOut();
}

void SliderControl1::Refresh() {
    repaint_.Request();
}

void SliderControl1::ReadProperties(const QVariantMap& bag) {
    VisitKeys(*this, ReadKeys{bag});
    focus_.Follow(*this, SliderVisible_);
    update();
}

QVariantMap SliderControl1::WriteProperties() const {
    QVariantMap bag;
    VisitKeys(*this, WriteKeys{bag});
    return bag;
}

void SliderControl1::paintEvent(QPaintEvent*) {
    if (!SliderVisible_) {
        return;
    }
    const DeferredRepaint::Drawing drawing(repaint_);
    QPainter painter(this);
    DrawSlider(painter, {.size = size(),
                         .value = SliderValue_,
                         .fill = SliderFillColor_,
                         .depth = SliderDepth_,
                         .focus = focus_.Shown()});
}

void SliderControl1::resizeEvent(QResizeEvent*) {
    // A size set before the first show is laid out by that.
    if (isVisible()) {
        LayOut();
    }
}

void SliderControl1::showEvent(QShowEvent* event) {
    if (!event->spontaneous() && LayOut()) {
        RaiseChange();
    }
}

void SliderControl1::hideEvent(QHideEvent*) {
    // The release of a drag on a hidden control never comes.
    Timeout_->stop();
    Dragging_ = false;
}

void SliderControl1::mousePressEvent(QMouseEvent* event) {
    if (!Dragging_) {
        if (!Timeout_->isActive()) {
            Timeout_->start();
        }
        DragTo(*event);
    }
}

void SliderControl1::mouseMoveEvent(QMouseEvent* event) {
    DragTo(*event);
}

void SliderControl1::DragTo(const QMouseEvent& event) {
    const QPoint pointer = PixelUnder(PointerPlace(event, *this));
    if (!(event.buttons() & Qt::LeftButton) || pointer == lastMouse_) {
        return;
    }
    const SliderLayout layout = LayOutSlider(size(), SliderValue_);
    const double place = ValueAt(layout, layout.horizontal ? pointer.x() : pointer.y());
    const float value = QuantizeValue(place, SliderValueQuantized_);
    if (value != LastValue_) {
        Timeout_->start(); // put back to its full interval
        repaint_.Request();
    }
    lastMouse_ = pointer;
    LastValue_ = value;
    Dragging_ = true;
    Store(value);
}

void SliderControl1::mouseReleaseEvent(QMouseEvent*) {
    Timeout_->stop();
    Dragging_ = false;
    repaint_.Request();
    RaiseChange();
}

float SliderControl1::Stepped(const StepRequest& request) const {
    using Kind = StepRequest::Kind;
    const double step = SliderValueQuantized_ == 1.0F ? kFreeStep : std::abs(SliderValueQuantized_);
    // The thumb goes where key and wheel point, and the value falls toward the top.
    const int direction = LayOutSlider(size(), 0).horizontal ? 1 : -1;
    switch (request.kind) {
    case Kind::ToLow:
        return 0;
    case Kind::ToHigh:
        return 1;
    case Kind::Page:
        return QuantizeValue(SliderValue_ + direction * request.count * std::max(kPage, kManySteps * step),
                             SliderValueQuantized_);
    case Kind::Step:
        break;
    }
    return QuantizeValue(SliderValue_ + direction * request.count * step, SliderValueQuantized_);
}

void SliderControl1::Step(const StepRequest& request) {
    const float value = Stepped(request);
    if (value == SliderValue_) {
        return;
    }
    LastValue_ = value;
    Store(value);
    repaint_.Request();
    RaiseChange();
}

void SliderControl1::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (event->buttons() != Qt::NoButton) {
        return; // the mouse holds the thumb already
    }
    if (const auto request = wheel_.Take(*event)) {
        Step(*request);
    }
}

void SliderControl1::keyPressEvent(QKeyEvent* event) {
    const auto request = StepOfKey(*event);
    if (!request) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (focus_.Key()) {
        repaint_.Request();
    }
    Step(*request);
}

void SliderControl1::focusInEvent(QFocusEvent* event) {
    if (focus_.In(event->reason())) {
        repaint_.Request();
    }
}

void SliderControl1::focusOutEvent(QFocusEvent* event) {
    if (focus_.Out(event->reason())) {
        repaint_.Request();
    }
}
