#pragma once

#include <optional>

class QKeyEvent;
class QWheelEvent;

/// What a key or a turn of the wheel asks of a control that has a value.
struct StepRequest {
    enum class Kind {
        Step,  ///< `count` steps, upward or to the right when positive
        Page,  ///< one large step in the direction of `count`
        ToLow, ///< Home: the low end
        ToHigh ///< End: the high end
    };
    Kind kind = Kind::Step;
    int count = 0;
    bool operator==(const StepRequest&) const = default;
};

/// Steps that Shift or Ctrl makes of one.
inline constexpr int kManySteps = 10;

/// Up and Right are +1, Down and Left -1, ten with Shift or Ctrl; PageUp and PageDown a page; Home and End
/// the ends. Nothing for any other key or with Alt or Meta, which belong to the window.
std::optional<StepRequest> StepOfKey(const QKeyEvent& event);

/// Turns wheel events into whole steps: one a notch, ten with Shift or Ctrl. Fractions of a notch, which fine
/// wheels and touch pads report, are kept until they make one.
class WheelSteps {
  public:
    /// Nothing while the notch is not complete.
    std::optional<StepRequest> Take(const QWheelEvent& event);

  private:
    int eighths_ = 0;
};
