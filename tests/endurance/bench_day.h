#pragma once

#include "endurance/whole_instrument.h"

#include <QPointer>
#include <vector>

/// What a person does with the instrument in a day, in a few seconds: every mode, every knob, every slider,
/// every list, every button, the windows open and closed, data saved, records held and rescaled.
class BenchDay {
  public:
    /// folder: where data are saved.
    BenchDay(WholeInstrument& whole, QString folder) : whole_(whole), folder_(std::move(folder)) {}

    void Spend();
    int Ticks() const { return ticks_; }
    int Files() const { return files_; } ///< that were saved

  private:
    /// All that are there now; some go when others are pressed.
    std::vector<QPointer<QWidget>> Controls() const;
    void Tick(int times);
    void EveryMode();
    void EveryKnob();
    void EverySliderAndList();
    void EveryButton();
    void SaveData();
    void Hold();

    WholeInstrument& whole_;
    QString folder_;
    int ticks_ = 0;
    int files_ = 0;
};
