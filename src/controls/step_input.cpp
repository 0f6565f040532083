#include "controls/step_input.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <algorithm>

namespace {

constexpr int kMostEighths = 100 * QWheelEvent::DefaultDeltasPerStep; // a device that reports more is broken

int Multiplier(Qt::KeyboardModifiers modifiers) {
    return modifiers & (Qt::ShiftModifier | Qt::ControlModifier) ? kManySteps : 1;
}

} // namespace

std::optional<StepRequest> StepOfKey(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) {
        return std::nullopt;
    }
    using Kind = StepRequest::Kind;
    const int many = Multiplier(event.modifiers());
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return StepRequest{Kind::Step, many};
    case Qt::Key_Down:
    case Qt::Key_Left:
        return StepRequest{Kind::Step, -many};
    case Qt::Key_PageUp:
        return StepRequest{Kind::Page, 1};
    case Qt::Key_PageDown:
        return StepRequest{Kind::Page, -1};
    case Qt::Key_Home:
        return StepRequest{Kind::ToLow};
    case Qt::Key_End:
        return StepRequest{Kind::ToHigh};
    default:
        return std::nullopt;
    }
}

std::optional<StepRequest> WheelSteps::Take(const QWheelEvent& event) {
    // Some systems turn the wheel sideways while Alt or Shift is held.
    const QPoint delta = event.angleDelta();
    const int turned = std::clamp(delta.y() != 0 ? delta.y() : delta.x(), -kMostEighths, kMostEighths);
    if (turned == 0) {
        return std::nullopt; // the end of a gesture: no turn back
    }
    if ((turned < 0) != (eighths_ < 0)) {
        eighths_ = 0;
    }
    eighths_ += turned;
    const int notches = eighths_ / QWheelEvent::DefaultDeltasPerStep;
    eighths_ -= notches * QWheelEvent::DefaultDeltasPerStep;
    if (notches == 0) {
        return std::nullopt;
    }
    return StepRequest{StepRequest::Kind::Step, notches * Multiplier(event.modifiers())};
}
