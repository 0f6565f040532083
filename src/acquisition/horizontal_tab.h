#pragma once

#include <functional>

class Form;
class KnobControl1;
struct Record;
class SettingsStore;
class SliderControl1;

/// What the horizontal tab remembers: update rate, trigger delay and trigger source.
class HorizontalTab {
  public:
    struct Controls {
        SliderControl1* UpdateRateSlider;
        KnobControl1* DelayKnob;

        static Controls Of(const Form& tab);
    };
    struct Calls {
        std::function<void(int& channel)> TrigChanButton_Click;
    };

    HorizontalTab(Record& record, SettingsStore& settings, const Controls& controls, Calls calls);

    void RestoreTabSettings();
    void Form_Unload();

  private:
    Record& record_;
    SettingsStore& settings_;
    Controls controls_;
    Calls calls_;
};
