#include "controls/knob_design.h"

#include "controls/fonts.h"
#include "controls/knob_control.h"
#include "controls/knob_properties.h"

#include <gtest/gtest.h>

TEST(KnobDesign, DefaultsOfReading) {
    KnobControl1 knob;
    knob.ReadProperties({});
    for (const KnobProperty& property : KnobPropertyTable()) {
        EXPECT_EQ(knob.property(property.name), property.read) << property.name;
    }
    EXPECT_EQ(knob.KnobFont().family(), "Aerial");
    EXPECT_EQ(knob.KnobFont(), InstrumentFont("Aerial", 8));
    EXPECT_FALSE(knob.KnobFont().bold() || knob.KnobFont().italic() || knob.KnobFont().underline());
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

TEST(KnobDesign, EveryKeyIsWrittenUnlessItHasItsDefault) {
    for (const KnobProperty& property : KnobPropertyTable()) {
        const auto written = [&](const QVariant& value) {
            return WriteKnobDesign(ReadKnobDesign({{property.name, value}}), 2).value(property.name);
        };
        EXPECT_EQ(written(property.written), QVariant()) << property.name;
        EXPECT_EQ(written(property.other), property.other) << property.name;
    }
}

TEST(KnobDesign, WhatIsWrittenReadsBack) {
    QVariantMap bag{{"KnobFont_Name", "Small Fonts"},
                    {"KnobFont_Size", 6.75},
                    {"KnobFont_Bold", true},
                    {"KnobFont_Italic", true},
                    {"KnobFont_Underline", true}};
    for (const KnobProperty& property : KnobPropertyTable()) {
        bag[property.name] = property.other;
    }
    EXPECT_EQ(bag.size(), 30);
    EXPECT_EQ(WriteKnobDesign(ReadKnobDesign(bag), 2), bag);
}
