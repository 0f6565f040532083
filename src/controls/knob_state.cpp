#include "controls/knob_state.h"

#include "controls/number_format.h"
#include "controls/rounding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

std::int16_t Clamped16(std::int64_t value) {
    return RoundToEven<std::int16_t>(static_cast<double>(value));
}

} // namespace

int KnobState::ScrollerMin() const {
    return Clamped16(design_.KnobMin);
}

int KnobState::ScrollerMax() const {
    return std::max(ScrollerMin(), int{Clamped16(design_.KnobMax)});
}

int KnobState::ToScroller(std::int64_t value) const {
    if (design_.KnobAnticlock) {
        value = knob::Reflected(value, ScrollerMin(), ScrollerMax());
    }
    return std::clamp(int{Clamped16(value)}, ScrollerMin(), ScrollerMax());
}

int KnobState::KnobValue() const {
    return design_.KnobAnticlock ? static_cast<int>(knob::Reflected(scroller_, ScrollerMin(), ScrollerMax()))
                                 : scroller_;
}

bool KnobState::PutKnobValue(int value) {
    Dragging_ = false;
    if (value < design_.KnobMin || value > design_.KnobMax) {
        return false;
    }
    return std::exchange(scroller_, ToScroller(value)) != scroller_;
}

void KnobState::PutLowerLimit(int value) {
    if (design_.KnobAnticlock) {
        EffectiveUpper_ = Clamped16(knob::Reflected(value, design_.KnobMin, design_.KnobMax));
    } else {
        EffectiveLower_ = value;
    }
}

void KnobState::PutUpperLimit(int value) {
    if (design_.KnobAnticlock) {
        EffectiveLower_ = Clamped16(knob::Reflected(value, design_.KnobMin, design_.KnobMax));
    } else {
        EffectiveUpper_ = value;
    }
}

int KnobState::WithinLimits(int scroller) const {
    if (!design_.KnobApplyLimit) {
        return scroller;
    }
    scroller = std::max(scroller, EffectiveLower_.value_or(design_.KnobMin));
    scroller = std::min(scroller, EffectiveUpper_.value_or(design_.KnobMax));
    return std::clamp(scroller, ScrollerMin(), ScrollerMax());
}

void KnobState::UpdateScrollerLimits() {
    scroller_ = std::clamp(scroller_, ScrollerMin(), ScrollerMax());
    if (design_.KnobMax != 0) {
        const std::int64_t range = std::int64_t{design_.KnobMax} - design_.KnobMin;
        largeChange_ = range >= 10 ? static_cast<int>(range / 10) : 1;
    }
}

bool KnobState::MoveScroller(int value) {
    const int moved = std::clamp(value, ScrollerMin(), ScrollerMax());
    if (moved == scroller_) {
        return true;
    }
    scroller_ = moved;
    return RunChangePath();
}

bool KnobState::Step(std::int64_t steps) {
    return MoveScroller(WithinLimits(ToScroller(KnobValue() + steps)));
}

KnobState::Turn KnobState::Follow(QPointF at, bool firstCall) {
    Turn turn{};
    turn.AngleReturned = knob::AngleOf(at.x() - centre_.x(), at.y() - centre_.y());
    const int sweep = knob::Sweep(design_.KnobStartAngle, design_.KnobStopAngle);
    const float p = knob::PositionOf(turn.AngleReturned, design_.KnobStartAngle, sweep);
    turn.DirectionIncreasing = knob::DirectionIncreasing(turn.AngleReturned, LastAngle_);
    turn.position = knob::HoldAtStops(p, turn.DirectionIncreasing, firstCall, Dragging_, stuck_);
    LastAngle_ = turn.AngleReturned;
    return turn;
}

bool KnobState::MousePress(int button, QPointF at) {
    return Dragging_ || MouseMove(button, kFirstMotion, at);
}

bool KnobState::MouseMove(int button, int shift, QPointF at) {
    bool accepted = true;
    if (button == kLeftButton && !Dragging_) {
        accepted = std::fabs(Follow(at, true).position) <= 1;
    }
    if (!accepted || button != kLeftButton || at == LastMouse_) {
        return true;
    }
    Position_ = Follow(at, false).position;
    Value_ = knob::ValueAt(Position_, design_.KnobMin, design_.KnobMax);
    const int moved = std::clamp(int{RoundToEven<std::int16_t>(Value_)}, ScrollerMin(), ScrollerMax());
    // The scroller reports a change only when there is one; the pointer follows and Done is due all the same.
    ChangeSuppressed_ = Dragging_ || WithinLimits(moved) == scroller_;
    scroller_ = moved;
    released_ = false;
    if (!RunChangePath()) {
        return false;
    }
    LastMouse_ = at;
    if (released_) {
        return true; // the owner let events run, and the release was among them
    }
    Dragging_ = shift != kFirstMotion; // the first motion after a press only jumps
    if (design_.KnobTimeout > 0) {
        host_.EnableTimeout();
    }
    return true;
}

bool KnobState::MouseRelease() {
    host_.DisableTimeout();
    released_ = true;
    LastAngle_ = 0;
    stuck_ = {};
    if (Dragging_ && !Timeout()) {
        return false;
    }
    doneOwed_ = raisingDone_;
    if (!RaiseDone()) {
        return false;
    }
    Dragging_ = false;
    return true;
}

bool KnobState::Timeout() {
    host_.DisableTimeout();
    return RunChangePath();
}

void KnobState::Synchronise() {
    Value_ = static_cast<float>(KnobValue());
    const double range = static_cast<double>(design_.KnobMax) - design_.KnobMin;
    if (range > 0) {
        // The pointer follows the scroller: it turns the same way on an anticlockwise knob.
        Position_ = static_cast<float>((scroller_ - static_cast<double>(design_.KnobMin)) / range);
    }
    host_.PlacePointer();
}

bool KnobState::RunChangePath() {
    // Only this one run is silent: a put from inside its Done is a change of its own.
    const bool suppressed = std::exchange(ChangeSuppressed_, false);
    scroller_ = WithinLimits(scroller_);
    Synchronise();
    if (!suppressed && (!RefreshValue() || !RaiseChange())) {
        return false;
    }
    return Dragging_ || RaiseDone();
}

bool KnobState::RefreshValue() {
    if (!InXlate_) {
        KnobXlatedValue_ = ShortestText(Value_);
        QString text = KnobXlatedValue_; // a copy: the handler may delete what is ours
        InXlate_ = true;
        if (!host_.RaiseXlateValue(Value_, text)) {
            return false;
        }
        InXlate_ = false;
        KnobXlatedValue_ = text;
    }
    host_.ShowText();
    return true;
}

bool KnobState::RaiseChange() {
    if (raisingChange_) {
        return true;
    }
    raisingChange_ = true;
    if (!host_.RaiseChange()) {
        return false;
    }
    raisingChange_ = false;
    return true;
}

bool KnobState::RaiseDone() {
    // A handler of Done that puts a property would else be called from itself without end.
    if (raisingDone_) {
        return true;
    }
    raisingDone_ = true;
    do {
        doneOwed_ = false;
        if (!host_.RaiseDone()) {
            return false;
        }
    } while (doneOwed_); // a release that a handler's own events brought has a Done of its own
    raisingDone_ = false;
    return true;
}
