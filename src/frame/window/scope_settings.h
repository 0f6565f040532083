#pragma once

#include "frame/window/window_place.h"

#include <functional>

struct Record;
class SettingsStore;
struct Forms;

/// What the main form keeps from one run to the next: the skin, the places of the windows, the two
/// switches of the picture, and, through the acquisition's own part, timebase and trigger.
class ScopeSettings {
  public:
    struct Windows {
        WindowPlace FFTForm;
        WindowPlace StatsForm;
        WindowPlace FullScreenTimeForm;
        WindowPlace MainForm;

        static Windows Of(Forms& forms);
    };
    struct Calls {
        std::function<ScreenPlaces()> Screens;
        std::function<int()> SkinIndex;
        std::function<void(int index)> SetSkinIndex;
        std::function<void()> SetControlColorsToMatchSkin;
        std::function<bool()> FullScreenOn;
        std::function<void(bool on)> SetFullScreenOn;
        std::function<void()> FullScreenButton_Click;
        std::function<void()> SampleDotsButton_Click;
        std::function<void()> RestoreAcquisition; ///< timebase, threshold, pre-trigger, mode, type
        std::function<void()> SaveAcquisition;
        std::function<bool()> Closing; ///< the program was asked to end while the skin changed
    };

    ScopeSettings(Record& record, SettingsStore& settings, Windows windows, Calls calls);

    void RestoreScopeSettings();
    void SaveScopeSettings();

  private:
    class Section;
    void RestoreSkin(Section& section);
    void RestoreSampleDots(Section& section);
    void RestoreFullScreenOn(Section& section);

    Record& record_;
    SettingsStore& settings_;
    Windows windows_;
    Calls calls_;
};
