#pragma once

#include "about/about_tab.h"
#include "acquisition/acquisition_settings.h"
#include "acquisition/horizontal_tab.h"
#include "acquisition/run_loop.h"
#include "acquisition/timebase.h"
#include "acquisition/trigger.h"
#include "analysis/measurement_window.h"
#include "analysis/spectrum_window.h"
#include "channels/channel_tab.h"
#include "channels/math_tab.h"
#include "channels/offset_null.h"
#include "display/cursor_bars.h"
#include "display/cursor_tab.h"
#include "display/large_time_window.h"
#include "display/plotter.h"
#include "display/view_controls.h"
#include "driver/driver.h"
#include "export/data_tab.h"
#include "export/print.h"
#include "frame/instrument/closing.h"
#include "frame/instrument/environment.h"
#include "frame/log/debug_log.h"
#include "frame/settings/settings.h"
#include "frame/window/forms.h"
#include "frame/window/keyboard.h"
#include "frame/window/scope_settings.h"
#include "frame/window/shell.h"
#include "skin/skin_selection.h"
#include "skin/tab_panels.h"

#include <memory>

struct Record;

/// The whole instrument: the windows, and the parts that give them their behaviour. It only puts them
/// together; what a handler does stands in the part that owns it.
struct Instrument {
    Instrument(Record& record, Driver& driver, Environment environment);
    ~Instrument();

    void ConnectParts(); ///< once the windows are there
    void SkinPanel(int slot);
    void SkinMainForm();
    void RestoreTabSettings(int slot);
    void UnloadTab(int slot);
    /// Saves what a press of CloseButton saves, while the program goes on: the messages of the files that
    /// could not be written.
    QStringList KeepSettings();
    /// One box with the messages of all files that could not be written; none, no box.
    void TellUnsaved(const QStringList& failures);

    Record& record;
    Driver& driver;
    Closing closing;
    Environment environment; ///< whoever yields or shows a box through it is known to closing
    DebugLog log;
    SettingsStore settings;
    Forms forms;
    AcquisitionState acquisition;
    bool settingsRestored = false; ///< until then there is nothing to save

    std::unique_ptr<Plotter> plotter;
    std::unique_ptr<CursorBars> cursorBars;
    std::unique_ptr<CursorTab> cursorTab;
    std::unique_ptr<ViewControls> viewControls;
    std::unique_ptr<SkinSelection> skins;
    std::unique_ptr<TabPanels> tabPanels;
    std::unique_ptr<AboutTab> aboutTab;
    std::unique_ptr<Shell> shell;
    PerScope<std::unique_ptr<ChannelTab>> channelTabs;
    std::unique_ptr<OffsetNullDialog> offsetNull;
    std::unique_ptr<MathTab> mathTab;
    std::unique_ptr<HorizontalTab> horizontalTab;
    std::unique_ptr<MeasurementWindow> measurements;
    std::unique_ptr<LargeTimeWindow> largeTime;
    std::unique_ptr<SpectrumWindow> spectrum;
    std::unique_ptr<ClipboardShot> largeTimeShot;
    std::unique_ptr<ClipboardShot> spectrumShot;
    std::unique_ptr<Trigger> trigger;
    std::unique_ptr<Timebase> timebase;
    std::unique_ptr<RunLoop> runLoop;
    std::unique_ptr<DataTab> dataTab;
    std::unique_ptr<AcquisitionSettings> acquisitionSettings;
    std::unique_ptr<ScopeSettings> scopeSettings;
    std::unique_ptr<Keyboard> keyboard;

  private:
    void MakeParts();
    void MakeKeyboard();
    void ClosePanel();
};
