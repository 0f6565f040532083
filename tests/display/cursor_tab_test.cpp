#include "display/cursor_tab.h"

#include "controls/form.h"
#include "display/cursor_tab_design.h"
#include "frame/record/record.h"
#include "frame/settings/settings.h"

#include <QCheckBox>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

namespace {

/// What a run leaves, the next one finds.
class CursorTabTest : public testing::Test {
  protected:
    QString Get(const QString& key) {
        return store.Get(QStringLiteral("Corvantine"), QStringLiteral("CursTabSettings"), key,
                         QStringLiteral("(none)"));
    }
    void Put(const char* key, const QString& text) {
        store.Save(QStringLiteral("Corvantine"), QStringLiteral("CursTabSettings"), QString::fromLatin1(key),
                   text);
    }
    QCheckBox* Box(const char* name, int cursor) { return tab.control<QCheckBox>(name, cursor); }

    QTemporaryDir folder;
    SettingsStore store{folder.path()};
    Record record;
    Form tab{CursorTabDesign()};
    CursorTab part{record, store, CursorTab::Controls::Of(tab)};
};

TEST_F(CursorTabTest, EverythingIsOffAndZeroAtFirst) {
    for (int i = 0; i < kCursors; ++i) { // started anywhere else, so that a forgotten one shows
        Box("VertCursorEn", i)->setChecked(true);
        Box("HorizCursorEn", i)->setChecked(true);
        record.VertCursorTime[i] = 1e-6;
        record.HorizCursorVolts[i] = 5;
    }
    part.RestoreTabSettings();
    for (int i = 0; i < kCursors; ++i) {
        EXPECT_FALSE(Box("VertCursorEn", i)->isChecked());
        EXPECT_FALSE(Box("HorizCursorEn", i)->isChecked());
        EXPECT_EQ(record.VertCursorTime[i], 0);
        EXPECT_EQ(record.HorizCursorVolts[i], 0);
    }
}

TEST_F(CursorTabTest, SavesTwelveKeysWithASeparatorInEveryReal) {
    Box("VertCursorEn", 0)->setChecked(true);
    Box("HorizCursorEn", 2)->setChecked(true);
    record.VertCursorTime = {1.0, 3.2e-6, 0.0};
    record.HorizCursorVolts = {-126.0, 0.0, 12.6};
    part.Form_Unload();
    EXPECT_EQ(Get("VertCursorEn0"), "1");
    EXPECT_EQ(Get("VertCursorEn1"), "0");
    EXPECT_EQ(Get("VertCursorEn2"), "0");
    EXPECT_EQ(Get("HorizCursorEn0"), "0");
    EXPECT_EQ(Get("HorizCursorEn1"), "0");
    EXPECT_EQ(Get("HorizCursorEn2"), "1");
    EXPECT_EQ(Get("VertCursor0"), "1.0");
    EXPECT_EQ(Get("VertCursor1"), "3.2e-06");
    EXPECT_EQ(Get("VertCursor2"), "0.0");
    EXPECT_EQ(Get("HorizCursor0"), "-126.0");
    EXPECT_EQ(Get("HorizCursor1"), "0.0");
    EXPECT_EQ(Get("HorizCursor2"), "12.6");

    record.VertCursorTime = {7.0, 7.0, 7.0};
    record.HorizCursorVolts = {7.0, 7.0, 7.0};
    Box("VertCursorEn", 0)->setChecked(false);
    Box("VertCursorEn", 1)->setChecked(true);
    part.RestoreTabSettings();
    EXPECT_EQ(record.VertCursorTime, (PerCursor<double>{1.0, 3.2e-6, 0.0}));
    EXPECT_EQ(record.HorizCursorVolts, (PerCursor<double>{-126.0, 0.0, 12.6}));
    EXPECT_TRUE(Box("VertCursorEn", 0)->isChecked());
    EXPECT_FALSE(Box("VertCursorEn", 1)->isChecked());
    EXPECT_TRUE(Box("HorizCursorEn", 2)->isChecked());
}

TEST_F(CursorTabTest, DamagedTextsGiveValuesThatACursorCanHave) {
    Put("VertCursor0", "nonsense.1");
    Put("VertCursor1", "1.0e999");
    Put("VertCursor2", "-0.5");
    Put("HorizCursor0", "nan.");
    Put("HorizCursor1", "1000.0");
    Put("HorizCursor2", "-inf.0");
    Put("VertCursorEn0", "maybe");
    Put("HorizCursorEn0", "99999999999999999999");
    part.RestoreTabSettings();
    for (int i = 0; i < kCursors; ++i) {
        EXPECT_TRUE(std::isfinite(record.VertCursorTime[i])) << i;
        EXPECT_GE(record.VertCursorTime[i], 0) << i;
        EXPECT_LE(std::abs(record.HorizCursorVolts[i]), 126) << i;
    }
    EXPECT_EQ(record.HorizCursorVolts[1], 126);
    EXPECT_FALSE(Box("VertCursorEn", 0)->isChecked());
    EXPECT_FALSE(Box("HorizCursorEn", 0)->isChecked());
}

TEST_F(CursorTabTest, AForcedInstanceKeepsItsOwn) {
    record.SettingsSuffix = QStringLiteral("_4");
    record.VertCursorTime[0] = 2;
    part.Form_Unload();
    EXPECT_EQ(Get("VertCursor0"), "(none)");
}

} // namespace
