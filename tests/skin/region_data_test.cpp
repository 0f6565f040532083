#include "skin/region_data.h"

#include <QtEndian>
#include <gtest/gtest.h>
#include <random>

namespace {

QByteArray Words(std::initializer_list<qint32> words) {
    QByteArray data;
    for (const qint32 word : words) {
        const qint32 little = qToLittleEndian(word);
        data.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    return data;
}

TEST(RegionData, IsThePublishedStructure) {
    const QRegion region = QRegion(10, 20, 30, 5) | QRegion(15, 25, 5, 5);
    EXPECT_EQ(RegionToData(region), Words({32, 1, 2, 32, 10, 20, 40, 30, 10, 20, 40, 25, 15, 25, 20, 30}));
}

TEST(RegionData, EmptyRegionIsABareHeader) {
    EXPECT_EQ(RegionToData({}), Words({32, 1, 0, 0, 0, 0, 0, 0}));
    ASSERT_TRUE(RegionFromData(Words({32, 1, 0, 0, 0, 0, 0, 0})).has_value());
    EXPECT_TRUE(RegionFromData(Words({32, 1, 0, 0, 0, 0, 0, 0}))->isEmpty());
}

TEST(RegionData, ComesBackAsItWas) {
    std::mt19937 random(7);
    for (int round = 0; round < 100; ++round) {
        QRegion region;
        for (int i = 0; i < 12; ++i) {
            region ^= QRect(int(random() % 60) - 30, int(random() % 60) - 30, int(random() % 40),
                            int(random() % 40));
        }
        const auto back = RegionFromData(RegionToData(region));
        ASSERT_TRUE(back.has_value());
        EXPECT_EQ(*back, region);
    }
}

TEST(RegionData, RectanglesInAnyOrderAreUnited) {
    const auto region = RegionFromData(Words({32, 1, 3,  48, 0, 0, 0, 0, //
                                              5,  5, 15, 15,             //
                                              0,  0, 10, 10,             //
                                              10, 0, 12, 4}));
    ASSERT_TRUE(region.has_value());
    EXPECT_EQ(*region, QRegion(5, 5, 10, 10) | QRegion(0, 0, 10, 10) | QRegion(10, 0, 2, 4));
}

TEST(RegionData, UnionInAnyOrderIsTheToolkitsOwn) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        QRegion expected;
        QByteArray rects;
        const int count = 1 + static_cast<int>(random() % 14);
        for (int i = 0; i < count; ++i) {
            const QRect rect(int(random() % 40) - 20, int(random() % 40) - 20, int(random() % 25),
                             int(random() % 25));
            expected |= rect;
            rects += Words({rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()});
        }
        const auto region = RegionFromData(Words({32, 1, count, 16 * count, 0, 0, 0, 0}) + rects);
        ASSERT_TRUE(region.has_value());
        ASSERT_EQ(*region, expected) << round;
    }
}

TEST(RegionData, BoundingRectangleIsNotBelieved) {
    const auto region = RegionFromData(Words({32, 1, 1, 16, 0, 0, 9999, 9999, 1, 2, 3, 4}));
    ASSERT_TRUE(region.has_value());
    EXPECT_EQ(region->boundingRect(), QRect(1, 2, 2, 2));
}

TEST(RegionData, LiesAreRefused) {
    const QByteArray sound = Words({32, 1, 1, 16, 0, 0, 5, 5, 0, 0, 5, 5});
    ASSERT_TRUE(RegionFromData(sound).has_value());
    const std::pair<const char*, QByteArray> lies[] = {
        {"nothing", {}},
        {"half a header", sound.left(16)},
        {"one byte short", sound.chopped(1)},
        {"one byte over", sound + 'x'},
        {"header size", Words({31, 1, 1, 16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"type", Words({32, 2, 1, 16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"too many", Words({32, 1, 2, 16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"too many, size to match", Words({32, 1, 2, 32, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"too few", Words({32, 1, 0, 16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"size", Words({32, 1, 1, 15, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"huge count", Words({32, 1, -1, -16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"count times sixteen wraps to the size", Words({32, 1, 0x10000001, 16, 0, 0, 5, 5, 0, 0, 5, 5})},
        {"right before left", Words({32, 1, 1, 16, 0, 0, 5, 5, 5, 0, 0, 5})},
        {"bottom before top", Words({32, 1, 1, 16, 0, 0, 5, 5, 0, 5, 5, 0})},
        {"beyond any screen", Words({32, 1, 1, 16, 0, 0, 5, 5, INT_MIN, INT_MIN, INT_MAX, INT_MAX})},
    };
    for (const auto& [name, data] : lies) {
        EXPECT_FALSE(RegionFromData(data).has_value()) << name;
    }
}

TEST(RegionData, EmptyRectanglesAddNothing) {
    const auto region = RegionFromData(Words({32, 1, 2, 32, 0, 0, 0, 0, 3, 3, 3, 9, 0, 0, 5, 5}));
    ASSERT_TRUE(region.has_value());
    EXPECT_EQ(*region, QRegion(0, 0, 5, 5));
}

TEST(RegionData, LargeOrderedRegionLoadsAndALargeTangleIsRefused) {
    // Every other pixel of a chess board; then the same rectangles from the bottom up.
    QByteArray ordered;
    QByteArray tangled;
    int count = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = y % 2; x < 100; x += 2) {
            const QByteArray rect = Words({x, y, x + 1, y + 1});
            ordered += rect;
            tangled.prepend(rect);
            ++count;
        }
    }
    const QByteArray header = Words({32, 1, count, 16 * count, 0, 0, 100, 100});
    ASSERT_TRUE(RegionFromData(header + ordered).has_value());
    EXPECT_EQ(RegionFromData(header + ordered)->rectCount(), count);
    EXPECT_FALSE(RegionFromData(header + tangled).has_value());
}

TEST(RegionData, ACrossHatchStaysWithinBounds) {
    const int half = 1024;
    QByteArray rects;
    for (int i = 0; i < half; ++i) {
        rects += Words({2 * i, 0, 2 * i + 1, 2 * half});
    }
    for (int i = 0; i < half; ++i) {
        rects += Words({0, 2 * i, 2 * half, 2 * i + 1});
    }
    const auto region = RegionFromData(Words({32, 1, 2 * half, 32 * half, 0, 0, 0, 0}) + rects);
    ASSERT_TRUE(region.has_value());
    EXPECT_EQ(region->boundingRect(), QRect(0, 0, 2 * half, 2 * half));
    EXPECT_FALSE(region->contains(QPoint(1, 1)));
}

TEST(RegionData, DamagedBytesNeverDoMoreThanFail) {
    std::mt19937 random(20261121);
    const QByteArray sound = RegionToData(QRegion(0, 0, 9, 3) | QRegion(2, 3, 4, 4) | QRegion(8, 3, 2, 2));
    int taken = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray data = sound;
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i) {
            switch (random() % 4) {
            case 0:
                data[static_cast<qsizetype>(random() % data.size())] = static_cast<char>(random());
                break;
            case 1: {
                const qsizetype at = static_cast<qsizetype>(random() % (data.size() / 4)) * 4;
                const quint32 words[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 16, 0x08000000};
                qToLittleEndian(words[random() % 7], data.data() + at);
                break;
            }
            case 2:
                data.resize(std::max<qsizetype>(4, data.size() - static_cast<qsizetype>(random() % 20)));
                break;
            default:
                data.append(static_cast<int>(random() % 20), static_cast<char>(random()));
            }
        }
        if (const auto region = RegionFromData(data)) {
            ++taken;
            ASSERT_EQ(RegionFromData(RegionToData(*region)), region);
        }
    }
    EXPECT_GT(taken, 100) << "the damage is so heavy that nothing is tested";
}

} // namespace
