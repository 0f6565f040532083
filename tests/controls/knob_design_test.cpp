#include "controls/knob_design.h"

#include "controls/fonts.h"

#include <gtest/gtest.h>

TEST(KnobDesign, DefaultsOfReading) {
    const KnobDesign d = ReadKnobDesign({});
    EXPECT_EQ(d.KnobValue, 0);
    EXPECT_EQ(d.KnobBand1Start, -1);
    EXPECT_EQ(d.KnobBand1Stop, -1);
    EXPECT_EQ(d.KnobBand1Color, QColor(0, 0, 0));
    EXPECT_EQ(d.KnobTextColor, QColor(0, 0, 0));
    EXPECT_FALSE(d.KnobAnticlock);
    EXPECT_TRUE(d.KnobZeroButton);
    EXPECT_EQ(d.KnobZeroButtonValue, 0);
    EXPECT_FALSE(d.KnobApplyLimit);
    EXPECT_EQ(d.KnobLowerLimit, 0);
    EXPECT_EQ(d.KnobUpperLimit, 100);
    EXPECT_EQ(d.KnobMin, 0);
    EXPECT_EQ(d.KnobMax, 100);
    EXPECT_EQ(d.KnobStartAngle, -45);
    EXPECT_EQ(d.KnobStopAngle, -135);
    EXPECT_EQ(d.KnobTimeout, 0);
    for (const QColor& face : {d.KnobFillColor, d.KnobBorderColor, d.KnobMarkerColor}) {
        EXPECT_EQ(face, ToQColor(kButtonFace));
    }
    EXPECT_EQ(d.KnobValueFormat, "0.0");
    EXPECT_EQ(d.KnobMarkers, "2");
    EXPECT_FALSE(d.KnobValueEditable);
    EXPECT_FALSE(d.KnobValueQuantized);
    EXPECT_EQ(d.KnobValueAlign, 0);
    EXPECT_TRUE(d.KnobVisible);
    EXPECT_EQ(d.KnobFont.family(), "Aerial");
    EXPECT_EQ(d.KnobFont, InstrumentFont("Aerial", 8));
    EXPECT_FALSE(d.KnobFont.bold() || d.KnobFont.italic() || d.KnobFont.underline());
}

TEST(KnobDesign, ThreeKeysFallBackOnTheRange) {
    const KnobDesign d = ReadKnobDesign({{"KnobMin", -7}, {"KnobMax", 12}});
    EXPECT_EQ(d.KnobZeroButtonValue, -7);
    EXPECT_EQ(d.KnobLowerLimit, -7);
    EXPECT_EQ(d.KnobUpperLimit, 12);
    EXPECT_EQ(ReadKnobDesign({{"KnobMin", -7}, {"KnobZeroButtonValue", 0}}).KnobZeroButtonValue, 0);
}

TEST(KnobDesign, KeysAreReadAsStoredFormDataHaveThem) {
    const KnobDesign d = ReadKnobDesign({{"knobmax", 27},
                                         {"knobfont_name", "Arial"},
                                         {"knobfont_size", 6.75},
                                         {"KnobMin", 3},
                                         {"knobmin", 4}});
    EXPECT_EQ(d.KnobMax, 27);
    EXPECT_EQ(d.KnobUpperLimit, 27);
    EXPECT_EQ(d.KnobMin, 3);
    EXPECT_EQ(d.KnobFont, InstrumentFont("Arial", 6.75));
}

TEST(KnobDesign, ValuesOfTheWrongKindAreTheDefault) {
    const KnobDesign d = ReadKnobDesign({{"KnobMax", "much"},
                                         {"KnobVisible", QVariant()},
                                         {"KnobMarkers", QVariantList{1, 2}},
                                         {"KnobFillColor", "no colour"},
                                         {"KnobFont_Size", "big"},
                                         {"Unknown", 5}});
    EXPECT_EQ(d.KnobMax, 100);
    EXPECT_TRUE(d.KnobVisible);
    EXPECT_EQ(d.KnobMarkers, "2");
    EXPECT_EQ(d.KnobFillColor, ToQColor(kButtonFace));
    EXPECT_EQ(d.KnobFont, InstrumentFont("Aerial", 8));
}

TEST(KnobDesign, NumbersAndTruthsMayBeTexts) {
    const KnobDesign d = ReadKnobDesign({{"KnobMax", "27"}, {"KnobVisible", "false"}, {"KnobAnticlock", -1}});
    EXPECT_EQ(d.KnobMax, 27);
    EXPECT_FALSE(d.KnobVisible);
    EXPECT_TRUE(d.KnobAnticlock);
}

TEST(KnobDesign, AnUnchangedKnobWritesOnlyTheBand) {
    EXPECT_EQ(WriteKnobDesign({}, 2), (QVariantMap{{"KnobBand1Start", -1}, {"KnobBand1Stop", -1}}));
}

TEST(KnobDesign, DefaultsOfWritingDiffer) {
    KnobDesign d;
    d.KnobBand1Start = d.KnobBand1Stop = 0;
    EXPECT_EQ(WriteKnobDesign(d, 2), QVariantMap());
    d.KnobMin = d.KnobLowerLimit = d.KnobZeroButtonValue = -5;
    d.KnobMax = d.KnobUpperLimit = 50;
    // The limits are written although they are the range, which reading would take anyway.
    EXPECT_EQ(
        WriteKnobDesign(d, 2),
        (QVariantMap{{"KnobLowerLimit", -5}, {"KnobUpperLimit", 50}, {"KnobMin", -5}, {"KnobMax", 50}}));
    d.KnobLowerLimit = 0;
    d.KnobUpperLimit = 100;
    EXPECT_EQ(WriteKnobDesign(d, 2), (QVariantMap{{"KnobMin", -5}, {"KnobMax", 50}}));
}

TEST(KnobDesign, TheTextAlignmentIsWrittenAndNeverRead) {
    QVariantMap bag = WriteKnobDesign({}, 0);
    EXPECT_EQ(bag.value("Knobment"), 0);
    EXPECT_FALSE(WriteKnobDesign({}, 2).contains("Knobment"));
    bag["Knobment"] = 1;
    EXPECT_EQ(WriteKnobDesign(ReadKnobDesign(bag), 2), WriteKnobDesign({}, 2));
}

TEST(KnobDesign, WhatIsWrittenReadsBack) {
    KnobDesign d;
    d.KnobValue = 7;
    d.KnobBand1Start = 24;
    d.KnobBand1Stop = 28;
    d.KnobBand1Color = QColor(255, 0, 0);
    d.KnobTextColor = Qt::white;
    d.KnobAnticlock = true;
    d.KnobZeroButton = false;
    d.KnobZeroButtonValue = 3;
    d.KnobApplyLimit = true;
    d.KnobLowerLimit = 1;
    d.KnobUpperLimit = 26;
    d.KnobMin = 2;
    d.KnobMax = 27;
    d.KnobStartAngle = -90;
    d.KnobStopAngle = 90;
    d.KnobTimeout = 20;
    d.KnobFillColor = QColor(1, 1, 1);
    d.KnobBorderColor = QColor(2, 2, 2);
    d.KnobMarkerColor = QColor(3, 3, 3);
    d.KnobValueFormat = "x0";
    d.KnobMarkers = "28";
    d.KnobValueEditable = true;
    d.KnobValueQuantized = true;
    d.KnobValueAlign = 2;
    d.KnobVisible = false;
    d.KnobFont = InstrumentFont("Small Fonts", 6.75, true);
    d.KnobFont.setItalic(true);
    d.KnobFont.setUnderline(true);
    const QVariantMap bag = WriteKnobDesign(d, 2);
    EXPECT_EQ(bag.size(), 30);
    EXPECT_EQ(WriteKnobDesign(ReadKnobDesign(bag), 2), bag);
}
