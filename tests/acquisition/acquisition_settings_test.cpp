#include "acquisition/acquisition_rig.h"
#include "acquisition/acquisition_settings.h"
#include "acquisition/horizontal_tab.h"
#include "frame/record/record.h"
#include "frame/settings/settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class AcquisitionSettingsTest : public testing::Test {
  protected:
    AcquisitionSettingsTest() {
        rig.trigger.Connect();
        rig.timebase.Connect();
        rig.record.PlotInhibit = true;
        rig.script.Clear();
    }

    void Store(const char* key, const QString& text) {
        store.Save("Corvantine", "ScopeSettings" + record.SettingsSuffix, key, text);
    }
    void StoreHorz(const char* key, const QString& text) {
        store.Save("Corvantine", "HorzTabSettings" + record.SettingsSuffix, key, text);
    }
    QString Stored(const char* key) {
        return store.Get("Corvantine", "ScopeSettings" + record.SettingsSuffix, key, "none");
    }
    QString StoredHorz(const char* key) {
        return store.Get("Corvantine", "HorzTabSettings" + record.SettingsSuffix, key, "none");
    }

    AcquisitionRig rig;
    ScriptedDriver& script = rig.script;
    Record& record = rig.record;
    QTemporaryDir folder;
    SettingsStore store{folder.path()};
    AcquisitionSettings settings{record,
                                 store,
                                 rig.trigger,
                                 rig.timebase,
                                 {&rig.TimeBaseKnob, &rig.TriggerKnob, &rig.PretriggerSlider}};
    HorizontalTab tab{record, store, {&rig.UpdateRateSlider, &rig.DelayKnob}, {[this](int& channel) {
                          rig.trigger.TrigChanButton_Click(channel);
                      }}};
};

TEST_F(AcquisitionSettingsTest, FirstRunTakesTheDefaults) {
    // Every start is another than the default, so that a forgotten one shows.
    rig.TimeBaseKnob.SetKnobValue(12);
    rig.TriggerKnob.SetKnobValue(55);
    rig.PretriggerSlider.SetSliderValue(0.2F);
    record.TrigMode = 2;
    record.TrigType = 1;
    settings.Restore();
    EXPECT_EQ(rig.TimeBaseKnob.KnobValue(), 7);
    EXPECT_EQ(rig.TimeBaseKnob.KnobXlatedValue(), "1us/div");
    EXPECT_EQ(rig.TriggerKnob.KnobValue(), 0);
    EXPECT_EQ(rig.PretriggerSlider.SliderValue(), 0.5F);
    EXPECT_EQ(record.TrigMode, 0);
    EXPECT_EQ(record.TrigType, 3);
    EXPECT_EQ(rig.TrigModeButton.ButtonCaption(), "auto");
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), "3");
    EXPECT_EQ(script.settings[1].trigType, 3);
    EXPECT_EQ(script.settings[1].clock, 50);
}

TEST_F(AcquisitionSettingsTest, TriggerTypesComeBackInEveryModeAndNormAsAuto) {
    for (int mode : {0, 1, 2}) {
        for (int type = 0; type < 4; ++type) {
            Store("TriggerMode", QString::number(mode));
            Store("TriggerType", QString::number(type | 0x80));
            settings.Restore();
            EXPECT_EQ(record.TrigMode, mode == 1 ? 0 : mode);
            EXPECT_EQ(record.TrigType, type) << mode;
            EXPECT_EQ(script.settings[4].trigType, type) << mode;
            EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), mode == 2 ? QString(" ") : QString::number(type));
        }
    }
}

TEST_F(AcquisitionSettingsTest, SavedFreeModeShowsItsTypeWhenItIsLeft) {
    Store("TriggerMode", "2");
    Store("TriggerType", "129");
    settings.Restore();
    rig.trigger.TrigModeButton_Click();
    EXPECT_EQ(rig.TrigTypeButton.ButtonCaption(), "1");
}

TEST_F(AcquisitionSettingsTest, RestoringRISForcesNormAndKeepsTheSavedModeForItsEnd) {
    for (int mode : {0, 2}) {
        for (const char* index : {"0", "4"}) {
            Store("TimeBase", index);
            Store("TriggerMode", QString::number(mode));
            settings.Restore();
            EXPECT_TRUE(record.RISMode);
            EXPECT_EQ(record.TrigMode, 1) << mode;
            EXPECT_EQ(record.TriggerMark, -1);
            EXPECT_EQ(rig.TimeBaseKnob.KnobFillColor(), ToQColor(0xFF));
            rig.TimeBaseKnob.SetKnobValue(5);
            EXPECT_EQ(record.TrigMode, mode);
        }
    }
}

TEST_F(AcquisitionSettingsTest, WhatIsSavedComesBack) {
    record.SettingsSuffix = "_5:2";
    rig.TimeBaseKnob.SetKnobValue(22);
    rig.TriggerKnob.SetKnobValue(-41);
    rig.PretriggerSlider.SetSliderValue(0.125F);
    record.TrigMode = 2;
    record.TrigType = 0;
    settings.Save();
    EXPECT_EQ(Stored("TimeBase"), "22");
    EXPECT_EQ(Stored("TriggerThreshold"), "-41");
    EXPECT_EQ(Stored("PreTrigger"), "0.125");
    EXPECT_EQ(Stored("TriggerMode"), "2");
    EXPECT_EQ(Stored("TriggerType"), "128");
    rig.TimeBaseKnob.SetKnobValue(3);
    rig.TriggerKnob.SetKnobValue(0);
    rig.PretriggerSlider.SetSliderValue(0.9F);
    record.TrigMode = 0;
    record.TrigType = 2;
    settings.Restore();
    EXPECT_EQ(rig.TimeBaseKnob.KnobValue(), 22);
    EXPECT_TRUE(record.RollMode);
    EXPECT_EQ(script.settings[1].threshold, -41);
    EXPECT_EQ(rig.PretriggerSlider.SliderValue(), 0.125F);
    EXPECT_EQ(record.TrigMode, 2);
    EXPECT_EQ(record.TrigType, 0);
}

TEST_F(AcquisitionSettingsTest, ADepthComesBackToTheInstrumentInEveryMode) {
    Store("PreTrigger", "0.25");
    for (const char* timebase : {"2", "7", "22"}) {
        for (const char* mode : {"0", "1", "2"}) {
            script.settings[1].preTrigger = script.settings[4].preTrigger = 0.12345F; // just opened
            Store("TimeBase", timebase);
            Store("TriggerMode", mode);
            settings.Restore();
            EXPECT_EQ(script.settings[1].preTrigger, 0.25F) << timebase << " " << mode;
            EXPECT_EQ(script.settings[4].preTrigger, 0.25F) << timebase << " " << mode;
        }
    }
    Store("PreTrigger", "1.0");
    settings.Restore();
    EXPECT_EQ(script.settings[1].preTrigger, 0.99F);
}

TEST_F(AcquisitionSettingsTest, PreTriggerOfAnotherMachineIsRead) {
    Store("PreTrigger", "0,25");
    settings.Restore();
    EXPECT_EQ(rig.PretriggerSlider.SliderValue(), 0.25F);
    Store("PreTrigger", "1");
    settings.Restore();
    EXPECT_EQ(rig.PretriggerSlider.SliderValue(), 0.0F) << "no separator reads as 0";
}

TEST_F(AcquisitionSettingsTest, GarbageLeavesEveryControlInItsRange) {
    for (const char* text : {"", "x", "-1", "99", "1e30", "-1e30", "nan", "2147483647", "-2147483648", "7.5",
                             "99999999999999999999"}) {
        for (const char* key : {"TimeBase", "TriggerThreshold", "PreTrigger", "TriggerMode", "TriggerType"}) {
            Store(key, text);
        }
        for (const char* key : {"UpdateRate", "DelayKnob", "TriggerChannel"}) {
            StoreHorz(key, text);
        }
        settings.Restore();
        tab.RestoreTabSettings();
        EXPECT_TRUE(rig.TimeBaseKnob.KnobValue() >= 0 && rig.TimeBaseKnob.KnobValue() <= 27) << text;
        EXPECT_LE(std::abs(rig.TriggerKnob.KnobValue()), 100) << text;
        EXPECT_TRUE(rig.PretriggerSlider.SliderValue() >= 0 && rig.PretriggerSlider.SliderValue() <= 1)
            << text;
        EXPECT_TRUE(record.TrigMode >= 0 && record.TrigMode <= 2) << text;
        EXPECT_TRUE(record.TrigType >= 0 && record.TrigType <= 3) << text;
        EXPECT_TRUE(record.TriggerChannel >= 1 && record.TriggerChannel <= kScopeChannels) << text;
        EXPECT_TRUE(rig.RunTimer.interval() >= 10 && rig.RunTimer.interval() <= 1010) << text;
        EXPECT_TRUE(record.TriggerDelay >= 0) << text;
    }
}

TEST_F(AcquisitionSettingsTest, HorizontalTabTakesItsDefaults) {
    rig.timebase.Connect();
    record.TriggerChannel = 3;
    rig.UpdateRateSlider.SetSliderValue(0.7F);
    rig.DelayKnob.SetKnobValue(500);
    tab.RestoreTabSettings();
    EXPECT_EQ(rig.UpdateRateSlider.SliderValue(), 0);
    EXPECT_EQ(rig.RunTimer.interval(), 10);
    EXPECT_EQ(rig.DelayKnob.KnobValue(), -32768);
    EXPECT_EQ(record.TriggerChannel, 1);
}

TEST_F(AcquisitionSettingsTest, HorizontalTabBringsBackWhatItSaved) {
    rig.UpdateRateSlider.SetSliderValue(0.35F);
    rig.DelayKnob.SetKnobValue(1234);
    int channel = 4;
    rig.trigger.TrigChanButton_Click(channel);
    tab.Form_Unload();
    EXPECT_EQ(StoredHorz("UpdateRate"), "0.35");
    EXPECT_EQ(StoredHorz("DelayKnob"), "1234");
    EXPECT_EQ(StoredHorz("TriggerChannel"), "4");
    rig.UpdateRateSlider.SetSliderValue(1);
    rig.DelayKnob.SetKnobValue(-32768);
    channel = 1;
    rig.trigger.TrigChanButton_Click(channel);
    rig.Take();
    tab.RestoreTabSettings();
    EXPECT_EQ(rig.RunTimer.interval(), 360);
    EXPECT_EQ(rig.DelayKnob.KnobValue(), 1234);
    EXPECT_EQ(record.TriggerChannel, 4);
    EXPECT_EQ(script.CallsBut({"GetSamplePeriod", "SetTriggerDelay"}),
              Each({1, 2, 3, 4}, "SetTrigMaster(#, 0)") + Calls("SetTrigMaster(4, -1)"));
}

TEST_F(AcquisitionSettingsTest, SavedSourceThatIsGoneBecomesTheMaster) {
    record.ScopeInUse[4] = false;
    record.MasterChannel = 2;
    StoreHorz("TriggerChannel", "4");
    tab.RestoreTabSettings();
    EXPECT_EQ(record.TriggerChannel, 2);
}

} // namespace
