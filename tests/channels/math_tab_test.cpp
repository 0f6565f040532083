#include "channels/math_tab.h"

#include "channels/math_tab_design.h"
#include "channels/volts_table.h"
#include "controls/button_control.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "frame/record/record.h"
#include "frame/settings/settings.h"
#include "support/call_lists.h"
#include "support/plain_scale.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QTemporaryDir>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The math tab on its real form beside four channels at 3 V/div, its lists filled as the start fills them.
struct MathTabRig {
    explicit MathTabRig(const QString& settingsFolder, std::initializer_list<int> inUse = {1, 2, 3, 4})
        : settings(settingsFolder) {
        record.SampleDepth = kSampleDepth;
        record.NumScopesFound = static_cast<int>(inUse.size());
        tab.Connect();
        for (const char* combo : {"Math1Combo", "Math2Combo"}) {
            for (int k = 0; k < 3; ++k) {
                auto* list = form.control<QComboBox>(combo, k);
                if (k == 1) {
                    list->addItems({"+", "-", "x", QString(QChar(0xF7))});
                }
                for (int channel : inUse) {
                    if (k != 1) {
                        list->addItem(QString::number(channel));
                    }
                }
                list->setCurrentIndex(0);
            }
        }
    }

    static PerScope<const ChannelScale*> Pointers(PerScope<PlainScale>& scales) {
        return {&scales[1], &scales[2], &scales[3], &scales[4]};
    }
    std::function<void(int, bool)> Note(const char* name) {
        return [this, name](int channel, bool visible) {
            calls.push_back(std::string(name) + std::to_string(channel) + (visible ? " on" : " off"));
        };
    }
    CallList Take() { return std::exchange(calls, {}); }
    QComboBox& List(int number, int list) {
        return *form.control<QComboBox>(number == 1 ? "Math1Combo" : "Math2Combo", list);
    }
    /// As a person chooses.
    void Choose(int number, int list, int index) {
        List(number, list).setCurrentIndex(index);
        emit List(number, list).activated(index);
    }
    KnobControl1& Volts(int number) {
        return *form.control<KnobControl1>(number == 1 ? "Math1VoltsKnob" : "Math2VoltsKnob");
    }
    KnobControl1& Offset(int number) {
        return *form.control<KnobControl1>(number == 1 ? "Math1OffsetKnob" : "Math2OffsetKnob");
    }
    void Enable(int number, bool on = true) {
        form.control<QCheckBox>("MathChannelEn", number)->setChecked(on);
        tab.MathChannelEn_Click(number);
    }
    void FillRow(int channel, float value) {
        for (int i = 0; i < kSampleDepth; ++i) {
            record.SampleData(channel, i) = value;
        }
    }
    float Sample(int channel, int i = 17) const { return record.SampleData(channel, i); }

    Record record;
    SettingsStore settings;
    Form form{MathTabDesign()};
    PerScope<PlainScale> scales;
    CallList calls;
    MathTab tab{form,
                record,
                settings,
                Pointers(scales),
                {[this] { calls.push_back("PlotNow"); }, Note("Stats "), Note("Label ")}};
};

class MathTabTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    MathTabRig rig{folder.path()};
};

} // namespace

TEST_F(MathTabTest, AddsTwoChannelsInItsOwnScale) {
    rig.scales[1].voltsPerDiv = 3;
    rig.scales[2].voltsPerDiv = 0.3F;
    rig.FillRow(1, 20);
    rig.FillRow(2, 50);
    rig.Choose(1, 2, 1);
    rig.Enable(1);
    EXPECT_TRUE(rig.record.ChannelOn[5]);
    EXPECT_EQ(rig.Volts(1).KnobValue(), 2) << "at or above both operands";
    EXPECT_FLOAT_EQ(rig.Sample(5), 25);
    EXPECT_EQ(rig.Sample(6), 0.0F) << "the other is off";
    EXPECT_EQ(rig.tab.Scale(1).GetVoltsPerDiv(), 3.0F);
    EXPECT_EQ(rig.tab.Scale(1).GetVoltsPerADCStep(), VoltsPerADCStep(3));
    EXPECT_EQ(rig.tab.Scale(1).GetRange(), 2);
}

TEST_F(MathTabTest, WhatACursorAtTheVeryEndReadsIsWorkedOutToo) {
    rig.record.SampleData(1, kSampleDepth) = 20;
    rig.record.SampleData(2, kSampleDepth) = 5;
    rig.Choose(1, 2, 1);
    rig.Enable(1);
    EXPECT_FLOAT_EQ(rig.Sample(5, kSampleDepth), 25);
    EXPECT_EQ(rig.Sample(5, kSampleDepth + 1), 0);
}

TEST_F(MathTabTest, BothChannelsAreOfOneKind) {
    rig.FillRow(3, 30);
    rig.FillRow(4, 5);
    for (int number : {1, 2}) {
        rig.Choose(number, 0, 2);
        rig.Choose(number, 1, 1);
        rig.Choose(number, 2, 3);
        rig.Enable(number);
    }
    EXPECT_FLOAT_EQ(rig.Sample(5), 25);
    EXPECT_EQ(rig.Sample(6), rig.Sample(5));
}

TEST_F(MathTabTest, TheOffsetKnobMovesTheTraceAndItsGround) {
    rig.Enable(1);
    rig.Offset(1).SetKnobValue(38);
    EXPECT_FLOAT_EQ(rig.record.ChannelOffsetPercent[5], 38 * 200.0F / 254);
    EXPECT_EQ(rig.Sample(5), 38.0F);
    EXPECT_EQ(rig.tab.Scale(1).GetOffset(), 38.0F);
    for (int value = -127; value <= 127; ++value) {
        rig.Offset(1).SetKnobValue(value);
        ASSERT_EQ(rig.Sample(5), static_cast<float>(value));
    }
}

TEST_F(MathTabTest, AnOperandsOwnOffsetIsTakenOut) {
    rig.record.ChannelOffsetPercent[1] = 50; // 63.5 steps
    rig.FillRow(1, 73.5F);
    rig.Enable(1); // channel 1 twice
    EXPECT_FLOAT_EQ(rig.Sample(5), 20);
}

TEST_F(MathTabTest, InvertingAChannelChangesNothing) {
    rig.FillRow(1, 20);
    rig.Enable(1);
    rig.record.ChannelInvert[1] = true;
    rig.tab.DoMaths();
    EXPECT_FLOAT_EQ(rig.Sample(5), 40);
}

TEST_F(MathTabTest, KeepsTheScaleAtOrAboveItsOperandsAndNeverLowersIt) {
    rig.scales[1].voltsPerDiv = 30;
    rig.Enable(1);
    EXPECT_EQ(rig.Volts(1).KnobValue(), 3);
    rig.scales[1].voltsPerDiv = 0.03F;
    rig.tab.DoMaths();
    EXPECT_EQ(rig.Volts(1).KnobValue(), 3);
    rig.scales[1].voltsPerDiv = 3;
    rig.scales[2].voltsPerDiv = 0.3F;
    rig.Choose(1, 2, 1);
    rig.Volts(1).SetKnobValue(0); // comes back in the very handler of its turn
    EXPECT_EQ(rig.Volts(1).KnobValue(), 2);
}

TEST_F(MathTabTest, ASecondOperandOfMoreVoltsRaisesTheScaleTwice) {
    rig.scales[1].voltsPerDiv = 0.3F;
    rig.scales[2].voltsPerDiv = 30;
    rig.FillRow(1, 50);
    rig.FillRow(2, 50);
    rig.List(1, 2).setCurrentIndex(1);
    rig.Enable(1);
    EXPECT_EQ(rig.Volts(1).KnobValue(), 3);
    EXPECT_FLOAT_EQ(rig.Sample(5), 50.5F);
}

TEST_F(MathTabTest, ARatchetOfStrangeVoltsEnds) {
    rig.Enable(1);
    rig.Volts(1).SetKnobValue(0);
    const int before = rig.Volts(1).KnobValue();
    for (float volts : {0.0F, -3.0F, 5.0F, 300.0F, std::numeric_limits<float>::infinity(),
                        std::numeric_limits<float>::quiet_NaN(), 0.29999998F}) {
        rig.scales[1].voltsPerDiv = volts;
        rig.tab.DoMaths();
        EXPECT_EQ(rig.Volts(1).KnobValue(), before);
        EXPECT_TRUE(std::isfinite(rig.Sample(5)));
    }
}

TEST_F(MathTabTest, WithoutAModuleTheBoxCountsAndNoSampleChanges) {
    rig.record.NumScopesFound = 0;
    rig.FillRow(1, 20);
    rig.FillRow(5, 77);
    rig.Enable(1);
    EXPECT_TRUE(rig.record.ChannelOn[5]);
    EXPECT_EQ(rig.Sample(5), 77.0F);
    EXPECT_EQ(rig.Volts(1).KnobValue(), 0);
    rig.Enable(1, false);
    EXPECT_FALSE(rig.record.ChannelOn[5]);
}

TEST_F(MathTabTest, AnEmptyOrOverlongListWorksNothingOut) {
    rig.FillRow(5, 77);
    rig.Enable(1);
    rig.FillRow(5, 77);
    rig.List(1, 0).clear();
    rig.tab.DoMaths();
    EXPECT_EQ(rig.Sample(5), 77.0F);
    rig.List(1, 0).addItems({"1", "2", "3", "4", "5"});
    rig.List(1, 0).setCurrentIndex(4);
    rig.tab.DoMaths();
    EXPECT_EQ(rig.Sample(5), 77.0F);
}

TEST_F(MathTabTest, WithoutAnOperatorTheOffsetPilesUp) {
    rig.Offset(1).SetKnobValue(10);
    rig.List(1, 1).clear();
    rig.Enable(1);
    rig.FillRow(5, 1);
    rig.tab.DoMaths();
    rig.tab.DoMaths();
    EXPECT_EQ(rig.Sample(5), 21.0F);
}

TEST(MathTabGap, APositionIsAChannelWhateverItsTextSays) {
    const QTemporaryDir folder;
    MathTabRig rig(folder.path(), {1, 3});
    rig.FillRow(2, 40);
    rig.FillRow(3, 10);
    rig.Choose(1, 2, 1);
    EXPECT_EQ(rig.List(1, 2).currentText(), QStringLiteral("3"));
    rig.Enable(1);
    EXPECT_FLOAT_EQ(rig.Sample(5), 40);
}

TEST_F(MathTabTest, HandlersRecomputeAndPlot) {
    rig.Take();
    rig.Choose(1, 0, 1);
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow"));
    rig.Choose(2, 1, 1);
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow"));
    rig.Volts(2).SetKnobValue(1);
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow"));
    rig.Offset(1).SetKnobValue(1);
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow"));
    rig.form.control<QCheckBox>("MathChannelEn", 2)->click();
    // The ratchet turns the knob, whose handler plots as well.
    EXPECT_THAT(rig.Take(), ElementsAre("Label 6 on", "Stats 6 on", "PlotNow", "PlotNow"));
    rig.form.control<QCheckBox>("MathChannelEn", 2)->click();
    EXPECT_THAT(rig.Take(), ElementsAre("Label 6 off", "Stats 6 off", "PlotNow"));
    rig.Choose(1, 0, 1);
    rig.Take();
    emit rig.form.control<QComboBox>("FFTWindowCombo")->activated(2);
    rig.form.control<QRadioButton>("FFTPlotType", 0)->click();
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow", "PlotNow"));
}

TEST_F(MathTabTest, TheSpectrumButtonsToggleTheirChannels) {
    auto* button = rig.form.control<ButtonControl1>("FFTButton", 1);
    rig.Take();
    emit button->Click();
    EXPECT_TRUE(rig.record.ChannelFFT[6]);
    EXPECT_FALSE(rig.record.ChannelFFT[5]);
    EXPECT_EQ(button->ButtonFillColor(), QColor(0xFF, 0, 0));
    emit button->Click();
    EXPECT_FALSE(rig.record.ChannelFFT[6]);
    EXPECT_EQ(button->ButtonFillColor(), QColor(0x80, 0x80, 0x80));
    EXPECT_THAT(rig.Take(), ElementsAre("PlotNow", "PlotNow"));
}

TEST_F(MathTabTest, FillingAListRaisesNoHandler) {
    rig.Take();
    rig.List(1, 0).clear();
    rig.List(1, 0).addItems({"1", "2"});
    rig.List(1, 0).setCurrentIndex(1);
    EXPECT_THAT(rig.Take(), IsEmpty());
}

TEST_F(MathTabTest, KnobsShowVoltsAndPercent) {
    const char* const texts[] = {"0.03V/d", "0.3V/d", "3V/d", "30V/d"};
    for (int position = 0; position < 4; ++position) {
        rig.Volts(2).SetKnobValue(position);
        EXPECT_EQ(rig.Volts(2).KnobXlatedValue(), QString::fromLatin1(texts[position]));
    }
    rig.Offset(1).SetKnobValue(-127);
    EXPECT_EQ(rig.Offset(1).ShownText(), QStringLiteral("-100.0%"));
    rig.Offset(1).SetKnobValue(38);
    EXPECT_EQ(rig.Offset(1).ShownText(), QStringLiteral("29.9%"));
}

TEST_F(MathTabTest, SettingsComeBack) {
    rig.Enable(2);
    rig.Choose(1, 0, 1);
    rig.Choose(1, 1, 2);
    rig.Choose(1, 2, 3);
    rig.Choose(2, 1, 3);
    rig.Offset(1).SetKnobValue(-20);
    rig.Volts(1).SetKnobValue(1);
    rig.Offset(2).SetKnobValue(44);
    rig.Volts(2).SetKnobValue(3);
    rig.form.control<QComboBox>("FFTWindowCombo")->setCurrentIndex(4);
    rig.form.control<QRadioButton>("FFTPlotType", 0)->click();
    rig.tab.FFTButton_Click(0);
    rig.tab.Form_Unload();
    EXPECT_THAT(rig.settings.Flush(), IsEmpty());

    MathTabRig again(folder.path());
    again.tab.RestoreTabSettings();
    EXPECT_FALSE(again.record.ChannelOn[5]);
    EXPECT_TRUE(again.record.ChannelOn[6]);
    EXPECT_EQ(again.List(1, 0).currentIndex(), 1);
    EXPECT_EQ(again.List(1, 1).currentText(), QStringLiteral("x"));
    EXPECT_EQ(again.List(1, 2).currentIndex(), 3);
    EXPECT_EQ(again.List(2, 1).currentText(), QString(QChar(0xF7)));
    EXPECT_EQ(again.Offset(1).KnobValue(), -20);
    EXPECT_EQ(again.Volts(1).KnobValue(), 1);
    EXPECT_EQ(again.Offset(2).KnobValue(), 44);
    EXPECT_EQ(again.Volts(2).KnobValue(), 3);
    EXPECT_EQ(again.form.control<QComboBox>("FFTWindowCombo")->currentIndex(), 4);
    EXPECT_TRUE(again.form.control<QRadioButton>("FFTPlotType", 0)->isChecked());
    EXPECT_TRUE(again.record.ChannelFFT[5]);
    EXPECT_FALSE(again.record.ChannelFFT[6]);
    EXPECT_EQ(again.form.control<ButtonControl1>("FFTButton", 0)->ButtonFillColor(), QColor(0xFF, 0, 0));
}

TEST_F(MathTabTest, FirstRunTakesTheDefaults) {
    // Every start is another than the default, so that a forgotten one shows.
    auto* window = rig.form.control<QComboBox>("FFTWindowCombo");
    window->setCurrentIndex(4);
    rig.form.control<QRadioButton>("FFTPlotType", 0)->setChecked(true);
    for (int number : {1, 2}) {
        for (int list = 0; list < 3; ++list) {
            rig.Choose(number, list, 2);
        }
        rig.Volts(number).SetKnobValue(2);
        rig.Offset(number).SetKnobValue(44);
        rig.tab.FFTButton_Click(number - 1);
        rig.Enable(number);
    }
    rig.tab.RestoreTabSettings();
    EXPECT_EQ(window->currentIndex(), 0);
    EXPECT_TRUE(rig.form.control<QRadioButton>("FFTPlotType", 1)->isChecked())
        << "of both the later one wins";
    for (int number : {1, 2}) {
        EXPECT_FALSE(rig.form.control<QCheckBox>("MathChannelEn", number)->isChecked()) << number;
        EXPECT_FALSE(rig.record.ChannelOn[kScopeChannels + number]) << number;
        EXPECT_FALSE(rig.record.ChannelFFT[kScopeChannels + number]) << number;
        for (int list = 0; list < 3; ++list) {
            EXPECT_EQ(rig.List(number, list).currentIndex(), 0) << number << ", list " << list;
        }
        EXPECT_EQ(rig.Volts(number).KnobValue(), 0) << number;
        EXPECT_EQ(rig.Offset(number).KnobValue(), 0) << number;
    }
}

TEST_F(MathTabTest, StoredPositionsThatNoLongerExistKeepTheSelection) {
    const auto store = [this](const char* key, const char* text) {
        rig.settings.Save("Corvantine", "MathTabSettings", key, text);
    };
    store("Math1ChannelA", "4");
    store("Math1ChannelB", "-3");
    store("Math1Operator", "99999999999");
    store("Math2ChannelA", "3");
    store("FFTWindow", "12");
    store("Math1VoltsKnob", "900");
    store("Math1OffsetKnob", "garbage");
    store("MathChannelEn1", "nan");
    rig.List(1, 0).setCurrentIndex(2);
    rig.List(1, 2).setCurrentIndex(2);
    rig.tab.RestoreTabSettings();
    EXPECT_EQ(rig.List(1, 0).currentIndex(), 2);
    EXPECT_EQ(rig.List(1, 2).currentIndex(), 0);
    EXPECT_EQ(rig.List(1, 1).currentIndex(), 0);
    EXPECT_EQ(rig.List(2, 0).currentIndex(), 3);
    EXPECT_EQ(rig.form.control<QComboBox>("FFTWindowCombo")->currentIndex(), 0);
    EXPECT_EQ(rig.Volts(1).KnobValue(), 0);
    EXPECT_FALSE(rig.record.ChannelOn[5]);
}

TEST_F(MathTabTest, SettingsOfAForcedInstanceLieApart) {
    rig.record.SettingsSuffix = QStringLiteral("_2");
    rig.Offset(2).SetKnobValue(5);
    rig.tab.Form_Unload();
    EXPECT_EQ(rig.settings.Get("Corvantine", "MathTabSettings_2", "Math2OffsetKnob", "none"),
              QStringLiteral("5"));
    EXPECT_EQ(rig.settings.Get("Corvantine", "MathTabSettings", "Math2OffsetKnob", "none"),
              QStringLiteral("none"));
}
