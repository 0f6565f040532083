#include "channels/channel_tab_rig.h"
#include "frame/record/record.h"

#include <gtest/gtest.h>

namespace {

class ChannelTabSettings : public testing::Test {
  protected:
    ChannelTabSettings() {
        rig.record.PlotInhibit = true;
        rig.script.Clear();
    }

    ChannelTabRig rig{3};
    ChannelTab& tab = rig.tab;
    Record& record = rig.record;
    ScriptedDriver& script = rig.script;
};

TEST_F(ChannelTabSettings, FirstRunTakesTheDefaults) {
    // Every start is another than the default, so that a forgotten one shows.
    record.ChannelInvert[3] = true;
    record.ChannelOn[3] = false;
    record.ChannelFFT[3] = true;
    record.ChannelBWLimit[3] = true;
    rig.Option("Coupling", 2).setChecked(true);
    rig.Option("ProbeType", 0).setChecked(true);
    rig.Knob("OffsetKnob").SetKnobValue(44);
    for (int range = 0; range < 3; ++range) {
        record.OffsetNull(3, range) = 5;
    }
    rig.script.Clear();
    tab.RestoreTabSettings();
    EXPECT_FALSE(record.ChannelInvert[3]);
    EXPECT_TRUE(record.ChannelOn[3]);
    EXPECT_FALSE(record.ChannelFFT[3]);
    EXPECT_FALSE(record.ChannelBWLimit[3]);
    EXPECT_TRUE(rig.Option("Coupling", 1).isChecked());
    EXPECT_TRUE(rig.Option("ProbeType", 1).isChecked());
    EXPECT_EQ(rig.Knob("VoltsKnob").KnobValue(), 0) << "not the design's 2";
    EXPECT_EQ(rig.Knob("OffsetKnob").KnobValue(), 0);
    EXPECT_EQ(rig.Button("ChannelOnButton").ButtonCaption(), "on");
    EXPECT_TRUE(record.TracesStale) << "the start-up clears it at its end";
    for (int range = 0; range < 3; ++range) {
        EXPECT_EQ(record.OffsetNull(3, range), 0);
    }
}

TEST_F(ChannelTabSettings, RestoreGoesThroughTheClicksInOrder) {
    tab.RestoreTabSettings();
    const CallList all = rig.Take();
    CallList deeds;
    for (const std::string& call : all) {
        if (call != "PlotNow" && call != "RedrawSettings") {
            deeds.push_back(call);
        }
    }
    ASSERT_GE(deeds.size(), 7U);
    // Coupling programs the front end while the knob still stands at its design value.
    EXPECT_EQ((CallList{deeds.begin(), deeds.begin() + 7}),
              Calls("SetStatsVisible(3, True)", "SetUpFrontEnd(3, 2, -1, 0, 0)", "SetCalSource(3, 0)",
                    "PointNullDialog(3, 2)", "PointNullDialog(3, 0)", "SetUpFrontEnd(3, 0, -1, 0, 0)",
                    "SetOffset(3, 0)"));
    EXPECT_EQ(script.Count("ReScaleSampleData"), 0);
}

TEST_F(ChannelTabSettings, WhatIsSavedComesBack) {
    record.SettingsSuffix = "_5:3";
    record.ChannelInvert[3] = true;
    record.ChannelOn[3] = false;
    record.ChannelFFT[3] = true;
    record.ChannelBWLimit[3] = true;
    rig.Option("Coupling", 2).setChecked(true);
    rig.Option("ProbeType", 0).setChecked(true);
    rig.Knob("VoltsKnob").SetKnobValue(1);
    rig.Knob("OffsetKnob").SetKnobValue(-93);
    record.OffsetNull(3, 0) = -1.25F;
    record.OffsetNull(3, 2) = 0.1F;
    tab.Form_Unload();
    EXPECT_EQ(rig.Stored("ChannelInvert"), "True");
    EXPECT_EQ(rig.Stored("ChannelOn"), "False");
    EXPECT_EQ(rig.Stored("Coupling2"), "True");
    EXPECT_EQ(rig.Stored("OffsetKnob"), "-93");
    EXPECT_EQ(rig.settings.Get("Corvantine_CalData_SN3", "OffsetNull", "Range0", "none"), "-1.25");

    ASSERT_EQ(rig.settings.Flush(), QStringList{});
    ChannelTabRig next(3, rig.folder.path());
    next.record.SettingsSuffix = "_5:3";
    next.record.PlotInhibit = true;
    next.tab.RestoreTabSettings();
    EXPECT_TRUE(next.record.ChannelInvert[3]);
    EXPECT_FALSE(next.record.ChannelOn[3]);
    EXPECT_TRUE(next.record.ChannelFFT[3]);
    EXPECT_TRUE(next.record.ChannelBWLimit[3]);
    EXPECT_TRUE(next.Option("Coupling", 2).isChecked());
    EXPECT_FALSE(next.Option("Coupling", 1).isChecked());
    EXPECT_TRUE(next.Option("ProbeType", 0).isChecked());
    EXPECT_EQ(next.Knob("VoltsKnob").KnobValue(), 1);
    EXPECT_EQ(next.Knob("OffsetKnob").KnobValue(), -93);
    EXPECT_EQ(next.record.OffsetNull(3, 0), -1.25F);
    EXPECT_EQ(next.record.OffsetNull(3, 1), 0);
    EXPECT_EQ(next.record.OffsetNull(3, 2), 0.1F);
    EXPECT_EQ(next.Button("InvertButton").ButtonFillColor(), ToQColor(0xFF));
    EXPECT_EQ(next.script.settings[3].gnd, -1);
    EXPECT_EQ(next.script.settings[3].range, 1);
}

TEST_F(ChannelTabSettings, AModuleThatIsMissingKeepsItsSettings) {
    record.ScopeInUse[3] = false;
    tab.Form_Unload();
    EXPECT_EQ(rig.Stored("ChannelOn"), "none");
    EXPECT_EQ(rig.settings.Get("Corvantine_CalData_SN3", "OffsetNull", "Range0", "none"), "none");
}

TEST_F(ChannelTabSettings, TheNullTableFollowsTheSerial) {
    record.OffsetNull(3, 1) = 2.5F;
    tab.Form_Unload();
    record.ScopeSerial[3] = "another";
    tab.RestoreTabSettings();
    EXPECT_EQ(record.OffsetNull(3, 1), 0);
    record.ScopeSerial[3] = "SN3";
    tab.RestoreTabSettings();
    EXPECT_EQ(record.OffsetNull(3, 1), 2.5F);
}

TEST_F(ChannelTabSettings, GarbageGivesDefaults) {
    for (const char* text : {"", "maybe", "-", "1e999", "\x01", "nan"}) {
        for (const char* key : {"ChannelInvert", "ChannelOn", "ChannelFFT", "ChannelBWLimit", "Coupling0",
                                "Coupling1", "Coupling2", "ProbeType0", "ProbeType1", "OffsetKnob"}) {
            rig.Store(key, text);
        }
        for (const char* key : {"Range0", "Range1", "Range2"}) {
            rig.settings.Save("Corvantine_CalData_SN3", "OffsetNull", key, text);
        }
        tab.RestoreTabSettings();
        EXPECT_FALSE(record.ChannelInvert[3]) << text;
        EXPECT_TRUE(record.ChannelOn[3]) << text;
        EXPECT_TRUE(rig.Option("Coupling", 1).isChecked()) << text;
        EXPECT_TRUE(rig.Option("ProbeType", 1).isChecked()) << text;
        EXPECT_EQ(rig.Knob("OffsetKnob").KnobValue(), 0) << text;
        EXPECT_EQ(record.OffsetNull(3, 0), 0) << text;
    }
}

TEST_F(ChannelTabSettings, ANullOfAZoomedHeldRecordComesBackAsItWasSaved) {
    // A record held at 3 V/div and looked at in 0.03 V/div has steps of a hundred times the converter's.
    for (const float null : {254.5F, -3127.25F, 12700.0F, -32894.0F}) {
        record.OffsetNull(3, 1) = null;
        tab.Form_Unload();
        record.OffsetNull(3, 1) = 0;
        tab.RestoreTabSettings();
        EXPECT_EQ(record.OffsetNull(3, 1), null);
    }
}

TEST_F(ChannelTabSettings, ANullThatNoMeasurementGivesIsNone) {
    for (const char* text : {"1e300", "-1e38", "1000001", "inf"}) {
        rig.settings.Save("Corvantine_CalData_SN3", "OffsetNull", "Range1", text);
        tab.RestoreTabSettings();
        EXPECT_EQ(record.OffsetNull(3, 1), 0) << text;
    }
}

TEST_F(ChannelTabSettings, ExactlyOneOptionOfEachGroupIsChosenWhateverWasStored) {
    for (int bits = 0; bits < 32; ++bits) {
        const char* const keys[] = {"Coupling0", "Coupling1", "Coupling2", "ProbeType0", "ProbeType1"};
        for (int i = 0; i < 5; ++i) {
            rig.Store(keys[i], (bits >> i) & 1 ? "True" : "False");
        }
        tab.RestoreTabSettings();
        int couplings = 0;
        for (int i = 0; i < 3; ++i) {
            couplings += rig.Option("Coupling", i).isChecked() ? 1 : 0;
        }
        EXPECT_EQ(couplings, 1) << bits;
        EXPECT_NE(rig.Option("ProbeType", 0).isChecked(), rig.Option("ProbeType", 1).isChecked()) << bits;
    }
}

} // namespace
