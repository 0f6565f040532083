#include "skin/skin_colour.h"

#include <gtest/gtest.h>

namespace {

TEST(SamplePoint, IsTheCentreWithTiesToEven) {
    EXPECT_EQ(SamplePoint({10, 20, 30, 40}), QPoint(25, 40));
    EXPECT_EQ(SamplePoint({0, 0, 1, 3}), QPoint(0, 2));     // 0.5 and 1.5
    EXPECT_EQ(SamplePoint({1, 2, 3, 3}), QPoint(2, 4));     // 2.5 and 3.5
    EXPECT_EQ(SamplePoint({-3, -4, 3, 3}), QPoint(-2, -2)); // -1.5 and -2.5
    EXPECT_EQ(SamplePoint({7, 9, 0, 0}), QPoint(7, 9));
}

TEST(SamplePoint, OfAControlAtTheEdgeLiesInside) {
    const QRect face(0, 0, 320, 200);
    EXPECT_TRUE(face.contains(SamplePoint({318, 198, 2, 2})));
    EXPECT_TRUE(face.contains(SamplePoint({0, 0, 1, 1})));
    EXPECT_TRUE(face.contains(SamplePoint({300, 0, 20, 200})));
}

} // namespace
