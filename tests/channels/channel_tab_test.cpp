#include "channels/channel_tab_rig.h"
#include "frame/record/record.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

class ChannelTabTest : public testing::Test {
  protected:
    ChannelTabTest() { rig.script.Clear(); }

    /// Turns a knob without the handlers of its signals.
    static void Put(KnobControl1& knob, int value) {
        const QSignalBlocker quiet(knob);
        knob.SetKnobValue(value);
    }
    static std::string Warning(int channel) {
        return "Print(WARNING: CH" + std::to_string(channel) +
               " VOLTAGE AXIS RESOLUTION ZOOM (plot will look noisey) !)";
    }

    ChannelTabRig rig{2};
    ChannelTab& tab = rig.tab;
    Record& record = rig.record;
    ScriptedDriver& script = rig.script;
    KnobControl1& VoltsKnob = rig.Knob("VoltsKnob");
    KnobControl1& OffsetKnob = rig.Knob("OffsetKnob");
};

TEST_F(ChannelTabTest, ScaleFollowsKnobAndProbe) {
    Put(VoltsKnob, 2);
    EXPECT_EQ(tab.GetVoltsPerDiv(), 30.0F) << "a x10 probe by design";
    EXPECT_NEAR(tab.GetVoltsPerADCStep(), 2.36220, 1e-5);
    rig.Option("ProbeType", 0).setChecked(true);
    EXPECT_EQ(tab.GetVoltsPerDiv(), 3.0F);
    Put(VoltsKnob, 0);
    EXPECT_EQ(tab.GetVoltsPerDiv(), 0.03F);
    EXPECT_EQ(tab.GetRange(), 0);
    Put(OffsetKnob, -127);
    EXPECT_EQ(tab.GetOffset(), -127.0F);
}

TEST_F(ChannelTabTest, LoadHidesTheTriggerLine) {
    auto* line = rig.form.control<QWidget>("TriggerChannelLine");
    line->show();
    tab.Form_Load();
    EXPECT_TRUE(line->isHidden());
}

TEST_F(ChannelTabTest, VoltsKnobProgramsTheFrontEndAndSendsTheOffsetAgain) {
    record.Running = true;
    Put(VoltsKnob, 1);
    Put(OffsetKnob, 127);
    tab.VoltsKnob_Change();
    EXPECT_EQ(rig.Take(), Calls("PointNullDialog(2, 1)", "SetUpFrontEnd(2, 1, -1, 0, 0)", "SetOffset(2, 100)",
                                "PlotNow", "RedrawSettings", "PlotNow"));
}

TEST_F(ChannelTabTest, OffsetKnobWhileRunningSendsAndPlots) {
    record.Running = true;
    Put(OffsetKnob, -127);
    tab.OffsetKnob_Change();
    EXPECT_EQ(rig.Take(), Calls("SetOffset(2, -100)", "PlotNow"));
}

TEST_F(ChannelTabTest, WhilePlottingIsInhibitedNothingIsRescaled) {
    record.PlotInhibit = true;
    record.HeldVoltsPerDiv[2] = 1000;
    record.SampleData(2, 0) = 5;
    tab.OffsetKnob_Change();
    EXPECT_EQ(script.Count("ReScaleSampleData"), 0);
    EXPECT_EQ(record.SampleData(2, 0), 5);
    EXPECT_EQ(rig.canvas.Count(Warning(2)), 0);
}

TEST_F(ChannelTabTest, HeldTraceMovesWithTheOffset) {
    Put(VoltsKnob, 0);
    rig.Option("ProbeType", 1).setChecked(true); // 0.3 V/div
    record.HeldVoltsPerDiv[2] = 0.3F;
    record.HeldOffset[2] = 10;
    record.HeldSampleData(2, 0) = 30;
    record.HeldSampleData(2, 2999) = -50;
    record.HeldSampleData(2, 3000) = 99;
    record.SampleData(2, 3000) = record.SampleData(2, 3001) = 88;
    record.SampleData(1, 0) = 7;
    Put(OffsetKnob, 30);
    tab.OffsetKnob_Change();
    EXPECT_EQ(rig.Take(), Calls("SetOffset(2, 23.622047)",
                                "ReScaleSampleData(3000, 7.874016, 23.622047, 0.3, 0.3)", "PlotNow"));
    EXPECT_NEAR(record.SampleData(2, 0), 50, 1e-4);
    EXPECT_NEAR(record.SampleData(2, 2999), -30, 1e-4);
    EXPECT_NEAR(record.SampleData(2, 3000), -30, 1e-4) << "for a cursor at the end";
    EXPECT_EQ(record.SampleData(2, 3001), 0) << "positions behind the record come back empty";
    EXPECT_EQ(record.SampleData(1, 0), 7);
    EXPECT_EQ(record.HeldSampleData(2, 0), 30) << "the held data never change";
    Put(OffsetKnob, 10);
    tab.OffsetKnob_Change();
    EXPECT_NEAR(record.SampleData(2, 0), 30, 1e-4) << "so errors do not build up";
}

TEST_F(ChannelTabTest, ZoomIntoHeldDataWarnsAndZoomingBackDoesNot) {
    rig.Option("ProbeType", 0).setChecked(true);
    record.HeldVoltsPerDiv[2] = 3;
    record.HeldSampleData(2, 0) = 4;
    Put(VoltsKnob, 1);
    tab.VoltsKnob_Change();
    EXPECT_NEAR(record.SampleData(2, 0), 40, 1e-4);
    ASSERT_GE(rig.canvas.calls.size(), 2U);
    EXPECT_EQ(rig.canvas.calls.back(), Warning(2)) << "after the last plot of the handler";
    EXPECT_EQ(*(rig.canvas.calls.end() - 2), "SetCurrent(0, 0)");
    EXPECT_EQ(rig.canvas.Count(Warning(2)), 1);

    rig.canvas.calls.clear();
    tab.OffsetKnob_Change();
    EXPECT_EQ(rig.canvas.calls.back(), Warning(2)) << "the offset's plot wiped it";

    rig.canvas.calls.clear();
    Put(VoltsKnob, 2);
    tab.VoltsKnob_Change();
    EXPECT_EQ(rig.canvas.Count(Warning(2)), 0);
    EXPECT_NEAR(record.SampleData(2, 0), 4, 1e-4);
}

TEST_F(ChannelTabTest, CouplingSendsItsFlagsAndNothingElse) {
    const std::string flags[] = {"0, 0", "-1, 0", "0, -1"};
    record.ChannelOn[2] = true;
    for (int index = 0; index < 3; ++index) {
        rig.Option("Coupling", index).click();
        EXPECT_EQ(rig.Take(), Calls("SetUpFrontEnd(2, 2, " + flags[index] + ", 0)"));
    }
    EXPECT_TRUE(record.ChannelOn[2]) << "GND leaves the channel on";
}

TEST_F(ChannelTabTest, ProbeTurnsTheCompensationOffAndChangesTheKnobsText) {
    record.HeldSampleData(2, 0) = 4;
    record.SampleData(2, 0) = 9;
    VoltsKnob.RefreshValue();
    EXPECT_EQ(VoltsKnob.KnobXlatedValue(), "30V/div");
    rig.Take();
    rig.Option("ProbeType", 0).click();
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 0)", "PointNullDialog(2, 2)", "RedrawSettings"));
    EXPECT_EQ(VoltsKnob.KnobXlatedValue(), "3V/div");
    EXPECT_EQ(record.SampleData(2, 0), 9) << "held data wait for the next knob";
}

TEST_F(ChannelTabTest, KnobTexts) {
    const char* const texts[2][3] = {{"0.03V/div", "0.3V/div", "3V/div"}, {"0.3V/div", "3V/div", "30V/div"}};
    for (int probe : {0, 1}) {
        rig.Option("ProbeType", probe).setChecked(true);
        for (int position : {0, 1, 2}) {
            QString text;
            tab.VoltsKnob_KnobXlateValue(static_cast<float>(position), text);
            EXPECT_EQ(text, texts[probe][position]);
        }
    }
    const std::pair<float, double> offsets[] = {{127, 1}, {-127, -1}, {0, 0}, {63, 126.0 / 254}};
    for (const auto& [value, share] : offsets) {
        QString text;
        tab.OffsetKnob_KnobXlateValue(value, text);
        EXPECT_NEAR(text.toDouble(), share, 1e-14);
    }
}

TEST_F(ChannelTabTest, ChannelButtonTogglesPaintsAndTellsTheWindows) {
    rig.Button("ChannelOnButton").Click();
    EXPECT_TRUE(record.ChannelOn[2]);
    EXPECT_EQ(rig.Take(), Calls("SetStatsVisible(2, True)", "RedrawSettings", "PlotNow"));
    EXPECT_EQ(rig.Button("ChannelOnButton").ButtonFillColor(), ToQColor(0xFFE21B));
    EXPECT_EQ(rig.Button("ChannelOnButton").ButtonCaption(), "on");
    EXPECT_EQ(rig.NameText(), 0U);
    EXPECT_EQ(rig.NameBack(), 0xFFE21BU);
    rig.Button("ChannelOnButton").Click();
    EXPECT_FALSE(record.ChannelOn[2]);
    EXPECT_EQ(rig.Take(), Calls("SetStatsVisible(2, False)", "RedrawSettings", "PlotNow"));
    EXPECT_EQ(rig.Button("ChannelOnButton").ButtonFillColor(), ToQColor(0x808080));
    EXPECT_EQ(rig.Button("ChannelOnButton").ButtonCaption(), "off");
    EXPECT_EQ(rig.NameText(), 0x808080U);
    EXPECT_EQ(rig.NameBack(), 0xFFE21BU);
}

TEST_F(ChannelTabTest, InvertedChannelHasItsColourOnBlack) {
    record.ChannelOn[2] = true;
    rig.Button("InvertButton").Click();
    EXPECT_TRUE(record.ChannelInvert[2]);
    EXPECT_EQ(rig.Take(), Calls("RedrawSettings", "PlotNow"));
    EXPECT_EQ(rig.Button("InvertButton").ButtonFillColor(), ToQColor(0xFF));
    EXPECT_EQ(rig.NameText(), 0xFFE21BU);
    EXPECT_EQ(rig.NameBack(), 0U);
    rig.Button("ChannelOnButton").Click();
    EXPECT_EQ(rig.NameText(), 0x808080U) << "off: grey on its colour, inverted or not";
    EXPECT_EQ(rig.NameBack(), 0xFFE21BU);
    rig.Button("ChannelOnButton").Click();
    EXPECT_EQ(rig.NameText(), 0xFFE21BU);
    EXPECT_EQ(rig.NameBack(), 0U);
    rig.Button("InvertButton").Click();
    EXPECT_FALSE(record.ChannelInvert[2]);
    EXPECT_EQ(rig.Button("InvertButton").ButtonFillColor(), ToQColor(0x808080));
    EXPECT_EQ(rig.NameText(), 0U);
    EXPECT_EQ(rig.NameBack(), 0xFFE21BU);
}

TEST_F(ChannelTabTest, BandwidthLimitMakesTheTracesStale) {
    rig.Button("BWLimitButton").Click();
    EXPECT_TRUE(record.ChannelBWLimit[2]);
    EXPECT_TRUE(record.TracesStale);
    EXPECT_EQ(rig.Take(), Calls("RedrawSettings", "PlotNow"));
    EXPECT_EQ(rig.Button("BWLimitButton").ButtonFillColor(), ToQColor(0xFF));
    rig.Button("BWLimitButton").Click();
    EXPECT_FALSE(record.ChannelBWLimit[2]);
    EXPECT_EQ(rig.Button("BWLimitButton").ButtonFillColor(), ToQColor(0x808080));
}

TEST_F(ChannelTabTest, FFTButtonTogglesAndPlots) {
    rig.Button("FFTButton").Click();
    EXPECT_TRUE(record.ChannelFFT[2]);
    EXPECT_EQ(rig.Take(), Calls("PlotNow"));
    EXPECT_EQ(rig.Button("FFTButton").ButtonFillColor(), ToQColor(0xFF));
    rig.Button("FFTButton").Click();
    EXPECT_FALSE(record.ChannelFFT[2]);
    EXPECT_EQ(rig.Button("FFTButton").ButtonFillColor(), ToQColor(0x808080));
}

TEST_F(ChannelTabTest, TriggerAndNullButtonsCallTheirParts) {
    rig.Button("TrigChanButton").Click();
    EXPECT_EQ(rig.Take(), Calls("TrigChanButton_Click(2)"));
    rig.Button("OffsetNullButton").Click();
    EXPECT_EQ(rig.Take(), Calls("PointNullDialog(2, 2)", "ShowNullDialog", "PlotNow"));
}

TEST_F(ChannelTabTest, CompensationSourceToggles) {
    rig.Button("CalSourceButton").Click();
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 1)"));
    EXPECT_EQ(record.ChannelCalSource[2], 1);
    EXPECT_EQ(rig.Button("CalSourceButton").ButtonFillColor(), ToQColor(0xFF));
    rig.Button("CalSourceButton").Click();
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 0)"));
    EXPECT_EQ(record.ChannelCalSource[2], 0);
    EXPECT_EQ(rig.Button("CalSourceButton").ButtonFillColor(), ToQColor(0x808080));
}

TEST_F(ChannelTabTest, HeaderPressOpensTheTabAndEndsTheCompensation) {
    rig.Button("CalSourceButton").Click();
    rig.Take();
    tab.Image1_MouseDown(Qt::LeftButton);
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 0)", "HideNullDialog", "RaiseMainAndStats"));
    EXPECT_TRUE(record.TabOpen[2]);
    EXPECT_EQ(record.ChannelCalSource[2], 0);
    tab.Image1_MouseDown(Qt::LeftButton);
    EXPECT_FALSE(record.TabOpen[2]);
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 0)", "HideNullDialog", "RaiseMainAndStats"))
        << "a source that is off is told so again";
}

TEST_F(ChannelTabTest, HeaderPressWithAnotherButtonSwitchesTheChannel) {
    tab.Image1_MouseDown(Qt::RightButton);
    EXPECT_EQ(rig.Take(), Calls("SetCalSource(2, 0)", "HideNullDialog", "RaiseMainAndStats",
                                "SetStatsVisible(2, True)", "RedrawSettings", "PlotNow"));
    EXPECT_TRUE(record.ChannelOn[2]);
    EXPECT_FALSE(record.TabOpen[2]);
}

TEST_F(ChannelTabTest, EachClickOfADoubleClickIsAPress) {
    auto* header = rig.form.control<Picture>("Image1");
    rig.form.show();
    QTest::mousePress(header, Qt::LeftButton);
    QTest::mouseRelease(header, Qt::LeftButton);
    EXPECT_TRUE(record.TabOpen[2]);
    QTest::mouseDClick(header, Qt::LeftButton);
    EXPECT_FALSE(record.TabOpen[2]);
    EXPECT_EQ(script.Count("SetCalSource"), 2);
}

TEST_F(ChannelTabTest, IdentificationBlinksOneModule) {
    record.ScopeInUse[4] = false;
    rig.IDTimer.setInterval(4000);
    ButtonControl1& id = rig.Button("IDButton");
    id.Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3}, "SetLEDMode(#, 3)") + Calls("SetLEDMode(2, 2)"));
    EXPECT_TRUE(record.IDActive);
    EXPECT_EQ(record.IDChannel, 2);
    EXPECT_EQ(id.ButtonFillColor(), ToQColor(0xFF));
    EXPECT_TRUE(rig.IDTimer.isActive());
    tab.Image1_MouseDown(Qt::RightButton);
    EXPECT_TRUE(record.IDActive) << "a press on the header leaves the blink running";
    rig.Take();
    id.Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3}, "SetLEDMode(#, 1)"));
    EXPECT_FALSE(record.IDActive);
    EXPECT_EQ(id.ButtonFillColor(), ToQColor(0x808080));
    EXPECT_FALSE(rig.IDTimer.isActive());
}

TEST_F(ChannelTabTest, SecondTabsPressStopsTheBlinkAndTheFirstStaysRed) {
    record.IDActive = true; // by another tab
    rig.IDTimer.start(4000);
    ButtonControl1& id = rig.Button("IDButton");
    id.Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetLEDMode(#, 1)"));
    EXPECT_FALSE(record.IDActive);
    EXPECT_EQ(id.ButtonFillColor(), ToQColor(0x808080));
    EXPECT_FALSE(rig.IDTimer.isActive());
    id.SetButtonFillColor(ToQColor(0xFF)); // the first tab, later
    id.Click();
    EXPECT_EQ(rig.Take(), Each({1, 2, 3, 4}, "SetLEDMode(#, 1)")) << "its own press stops too";
    EXPECT_EQ(id.ButtonFillColor(), ToQColor(0x808080));
}

TEST_F(ChannelTabTest, FollowsTheNumberOfItsTag) {
    ChannelTabRig fourth(4);
    fourth.Take();
    fourth.record.Running = true;
    fourth.tab.OffsetKnob_Change();
    fourth.Button("FFTButton").Click();
    EXPECT_EQ(fourth.Take(), Calls("SetOffset(4, 0)", "PlotNow", "PlotNow"));
    EXPECT_TRUE(fourth.record.ChannelFFT[4]);
}

TEST_F(ChannelTabTest, KnobsReachTheirHandlers) {
    record.Running = true;
    VoltsKnob.SetKnobValue(0);
    EXPECT_EQ(script.settings[2].range, 0);
    EXPECT_EQ(VoltsKnob.KnobXlatedValue(), "0.3V/div");
    OffsetKnob.SetKnobValue(127);
    EXPECT_EQ(script.settings[2].offsetPercent, 100);
    EXPECT_EQ(OffsetKnob.KnobXlatedValue(), "1");
}

} // namespace
