#include "display/cursor_readouts.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(CursorReadouts, TellTheTimeAndTheWayToTheNext) {
    CursorReadouts readouts;
    EXPECT_EQ(readouts.Text(0, 1.5e-6), "t1@ 1.500us");
    EXPECT_EQ(readouts.Text(2, 12e-9, 0, 2e-9), QStringLiteral("t3@ 12.0ns ") + QChar(26) + " t1: -10.0ns");
}

TEST(CursorReadouts, FollowEveryChange) {
    CursorReadouts readouts;
    EXPECT_EQ(readouts.Text(1, 0), "t2@ 0.0ns");
    EXPECT_EQ(readouts.Text(1, 2), "t2@ 2.000s");
    EXPECT_EQ(readouts.Text(1, 2, 2, 0.5), QStringLiteral("t2@ 2.000s ") + QChar(26) + " t3: -1.500s");
    EXPECT_EQ(readouts.Text(1, 2, 2, 3.5), QStringLiteral("t2@ 2.000s ") + QChar(26) + " t3: 1.500s");
    EXPECT_EQ(readouts.Text(1, 1, 2, 3.5), QStringLiteral("t2@ 1.000s ") + QChar(26) + " t3: 2.500s");
    EXPECT_EQ(readouts.Text(1, 1), "t2@ 1.000s");
}

TEST(CursorReadouts, KeepATextWhileItsFiguresStand) {
    CursorReadouts readouts;
    const QChar* text = readouts.Text(0, 1e-3).constData();
    EXPECT_EQ(readouts.Text(0, 1e-3).constData(), text);
    const QChar* pair = readouts.Text(0, 1e-3, 1, 2e-3).constData();
    EXPECT_EQ(readouts.Text(0, 1e-3, 1, 2e-3).constData(), pair);
}

} // namespace
