#pragma once

class Form;
class KnobControl1;
struct Record;
class SettingsStore;
class SliderControl1;
class Timebase;
class Trigger;

/// The part of the main form's settings that tells how it acquires: timebase and trigger.
class AcquisitionSettings {
  public:
    struct Controls {
        KnobControl1* TimeBaseKnob;
        KnobControl1* TriggerKnob;
        SliderControl1* PretriggerSlider;

        static Controls Of(const Form& main);
    };

    AcquisitionSettings(Record& record, SettingsStore& settings, Trigger& trigger, Timebase& timebase,
                        const Controls& controls);

    /// The last reads of the main form's restore; ends in the change of timebase.
    void Restore();
    void Save();

  private:
    Record& record_;
    SettingsStore& settings_;
    Trigger& trigger_;
    Timebase& timebase_;
    Controls controls_;
};
