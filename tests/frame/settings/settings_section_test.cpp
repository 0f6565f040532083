#include "frame/settings/settings_section.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class SettingsSectionTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    SettingsStore store{folder.path()};
    const SettingsSection section{store, QStringLiteral("Some"), QStringLiteral("Corvantine_Other")};
};

TEST_F(SettingsSectionTest, SavesUnderItsApplicationAndName) {
    section.Save("Text", "words");
    section.SaveInteger("Integer", -7);
    section.SaveBoolean("Boolean", true);
    EXPECT_EQ(store.Get("Corvantine_Other", "Some", "Text", "none"), "words");
    EXPECT_EQ(store.Get("Corvantine_Other", "Some", "Integer", "none"), "-7");
    EXPECT_EQ(store.Get("Corvantine_Other", "Some", "Boolean", "none"), "True");
    EXPECT_EQ(SettingsSection(store, "Some").Text("Text", "none"), "none") << "another application";
}

TEST_F(SettingsSectionTest, ReadsWhatItSaved) {
    section.SaveInteger("Integer", 12);
    section.SaveBoolean("Boolean", false);
    section.Save("Real", "2.5");
    EXPECT_EQ(section.Integer("Integer", 1), 12);
    EXPECT_FALSE(section.Boolean("Boolean", true));
    EXPECT_EQ(section.Real("Real", 1), 2.5);
}

TEST_F(SettingsSectionTest, WhatIsMissingOrDamagedIsTheFallback) {
    section.Save("Damaged", "words");
    for (const char* key : {"Damaged", "Missing"}) {
        EXPECT_EQ(section.Integer(key, 3), 3);
        EXPECT_EQ(section.Real(key, 0.25), 0.25);
        EXPECT_TRUE(section.Boolean(key, true));
    }
    EXPECT_EQ(section.Text("Missing", "else"), "else");
}

} // namespace
