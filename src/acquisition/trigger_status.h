#pragma once

#include "acquisition/colours.h"
#include "controls/colour.h"

#include <QLabel>
#include <array>

/// The foreground colour of the status text is a state of the instrument.
inline constexpr Colour kStatusGrey = kSwitchOff; ///< not triggered
inline constexpr Colour kStatusRed = kRed;        ///< the display is triggered

/// The text of the trigger status: a word of the run loop, with the dots of a wait behind it.
class TriggerStatus {
  public:
    enum class Text { None, AskTrigger, Triggered, AskAuto, Acquiring };

    explicit TriggerStatus(QLabel* label);

    void Show(Text text);
    /// One more dot; the fifth clears them.
    void AddDot();

    /// A new acquisition counts its dots from nothing; those that show stay until it adds one.
    void BeginCount() { counted_ = 0; }

  private:
    static constexpr int kDots = 5;
    void Put();

    QLabel* label_;
    std::array<std::array<QString, kDots>, 5> texts_; ///< made once: no tick builds a string
    Text text_ = Text::None;
    int dots_ = 0;    ///< behind the word
    int counted_ = 0; ///< of this acquisition
};
