#pragma once

#include "frame/record/record.h"

#include <QLabel>
#include <array>

/// The foreground colour of the status text is a state of the instrument.
inline constexpr Colour kStatusGrey = 0x808080; ///< not triggered
inline constexpr Colour kStatusRed = 0xFF;      ///< the display is triggered

/// The text of the trigger status: a word of the run loop, with the dots of a wait behind it.
class TriggerStatus {
  public:
    enum class Text { None, AskTrigger, Triggered, AskAuto, Acquiring };

    explicit TriggerStatus(QLabel* label);

    void Show(Text text);
    /// One more dot; the fifth clears them.
    void AddDot();

    int Tag = 0; ///< counts the dots of this acquisition, 0..4

  private:
    static constexpr int kDots = 5;
    void Put();

    QLabel* label_;
    std::array<std::array<QString, kDots>, 5> texts_; ///< made once: no tick builds a string
    Text text_ = Text::None;
    int dots_ = 0;
};
