#pragma once

#include "channels/channel_tab.h"
#include "channels/channel_tab_design.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "display/recording_canvas.h"
#include "frame/record/record.h"
#include "frame/settings/settings.h"
#include "support/call_lists.h"
#include "support/scripted_driver.h"

#include <QLabel>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>

/// One channel's tab on its real form, among four modules, with what it calls noted among the driver's calls.
struct ChannelTabRig {
    /// settingsFolder: where the settings lie; by default in a folder of this rig's own.
    explicit ChannelTabRig(int channel = 2, const QString& settingsFolder = {})
        : number(channel), settings(settingsFolder.isEmpty() ? folder.path() : settingsFolder),
          form(ChannelTabDesign(channel, kColours[channel - 1])) {
        form.Tag = QString::number(channel);
        record.SampleDepth = kSampleDepth;
        for (int ch = 1; ch <= kAllChannels; ++ch) {
            record.ScopeInUse[ch] = true;
            record.HeldVoltsPerDiv[ch] = 3;
        }
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            record.ChannelColour[ch] = kColours[ch - 1];
            record.ScopeSerial[ch] = QStringLiteral("SN%1").arg(ch);
        }
        tab.Connect();
        tab.Form_Load();
    }

    static constexpr Colour kColours[] = {0xFFFF, 0xFFE21B, 0xF71BFF, 0x86FF1B};

    CallList Take() { return script.TakeCalls(); }
    std::function<void()> Note(const char* text) {
        return [this, text] { script.Note(text); };
    }
    /// A call with the number of the channel for its #.
    CallList Own(const std::string& call) const { return Each({number}, call); }
    KnobControl1& Knob(const char* name) { return *form.control<KnobControl1>(name); }
    ButtonControl1& Button(const char* name) { return *form.control<ButtonControl1>(name); }
    QRadioButton& Option(const char* name, int index) { return *form.control<QRadioButton>(name, index); }
    Colour NameText() { return FromQColor(Name().palette().color(QPalette::WindowText)); }
    Colour NameBack() { return FromQColor(Name().palette().color(QPalette::Window)); }
    QLabel& Name() { return *form.control<QLabel>("TabName"); }
    QString Stored(const char* key, const char* fallback = "none") {
        return settings.Get("Corvantine",
                            QStringLiteral("Channel%1Settings").arg(number) + record.SettingsSuffix, key,
                            fallback);
    }
    void Store(const char* key, const char* text) {
        settings.Save("Corvantine", QStringLiteral("Channel%1Settings").arg(number) + record.SettingsSuffix,
                      key, text);
    }

    int number;
    ScriptedInstrument instrument;
    ScriptedDriver& script = instrument.script;
    Record record;
    QTemporaryDir folder;
    SettingsStore settings;
    QTimer IDTimer;
    RecordingCanvas canvas{357, 240};
    Form form;
    ChannelTab tab{
        form,
        record,
        instrument.driver,
        settings,
        IDTimer,
        canvas,
        {[this] {
             script.Note("PlotNow");
             canvas.Clear();
         },
         Note("RedrawSettings"),
         [this](int channel, bool visible) {
             script.Note("SetStatsVisible(" + std::to_string(channel) + ", " +
                         (visible ? "True)" : "False)"));
         },
         [this](int channel, int range) {
             script.Note("PointNullDialog(" + std::to_string(channel) + ", " + std::to_string(range) + ")");
         },
         Note("ShowNullDialog"), Note("HideNullDialog"), Note("RaiseMainAndStats"),
         [this](int& channel) { script.Note("TrigChanButton_Click(" + std::to_string(channel) + ")"); }}};
};
