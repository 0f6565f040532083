#include "skin/outline_scan.h"

#include "log_book.h"
#include "skin/dib_section.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

/// The outline as it is told: the whole rectangle, each vertical run of key colour combined by exclusive or.
std::set<std::pair<int, int>> ByColumns(const cDIBSection& dib) {
    std::set<std::pair<int, int>> pixels;
    for (int x = 0; x < dib.Width(); ++x) {
        for (int y = 0; y < dib.Height(); ++y) {
            pixels.emplace(x, y);
        }
    }
    const ByteView bytes = dib.Bytes();
    const int columns = dib.BytesPerScanLine() / 3;
    auto isKey = [&](int x, int y) {
        const std::uint8_t* top = bytes.ImageRow(0) + 3 * (columns - 1);
        return std::equal(top, top + 3, bytes.ImageRow(y) + 3 * x);
    };
    auto combine = [&](int x, int from, int to) {
        for (int y = from; y < to; ++y) {
            if (!pixels.erase({x, y})) {
                pixels.emplace(x, y);
            }
        }
    };
    bool inRun = false;
    int start = 0;
    for (int x = 0; x < columns; ++x) {
        for (int y = 0; y < dib.Height(); ++y) {
            if (isKey(x, y) && !inRun) {
                start = y;
                inRun = true;
            } else if (!isKey(x, y) && inRun) {
                combine(x, start, y);
                inRun = false;
            }
        }
        if (inRun) {
            combine(x, start, dib.Height());
            inRun = false;
        }
    }
    return pixels;
}

std::set<std::pair<int, int>> PixelsOf(const QRegion& region) {
    std::set<std::pair<int, int>> pixels;
    for (const QRect& rect : region) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                EXPECT_TRUE(pixels.emplace(x, y).second) << "rectangles overlap";
            }
        }
    }
    return pixels;
}

/// A picture from rows of characters: '.' is the key colour, anything else a colour of its own.
QImage Drawn(const QStringList& rows) {
    QImage image(rows[0].size(), rows.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QChar c = rows[y][x];
            image.setPixel(x, y, c == QLatin1Char('.') ? qRgb(0xFF, 0xFF, 0xC0) : qRgb(c.unicode(), 20, 30));
        }
    }
    return image;
}

class Outline : public testing::Test {
  protected:
    LogBook book{false};
    cDIBSection dib{book.log};
    QRegion Of(const QImage& image) {
        EXPECT_TRUE(dib.CreateFromPicture(image));
        return OutlineOf(dib);
    }
};

TEST_F(Outline, KeyPixelsAreCutOut) {
    const QRegion region = Of(Drawn({"..a.", ".bb.", "cccc", "d..d"}));
    EXPECT_EQ(region, QRegion(2, 0, 1, 1) | QRegion(1, 1, 2, 1) | QRegion(0, 2, 4, 1) | QRegion(0, 3, 1, 1) |
                          QRegion(3, 3, 1, 1));
}

TEST_F(Outline, EqualRowsBecomeOneBand) {
    const QRegion region = Of(Drawn({"...a....", "..bcd...", "..bed...", "..bcd..."}));
    EXPECT_EQ(region.rectCount(), 2);
    EXPECT_EQ(region, QRegion(3, 0, 1, 1) | QRegion(2, 1, 3, 3));
}

TEST_F(Outline, HolesAndRunsToTheBottomAreCutOut) {
    const QRegion region = Of(Drawn({"aaa.", "a.aa", "a.aa", "..aa"}));
    EXPECT_EQ(PixelsOf(region), ByColumns(dib));
    EXPECT_FALSE(region.contains(QPoint(1, 3)));
    EXPECT_TRUE(region.contains(QPoint(0, 2)));
}

TEST_F(Outline, OneColourIsAnEmptyOutline) {
    EXPECT_TRUE(Of(Drawn({"....", "....", "...."})).isEmpty());
}

TEST_F(Outline, TheKeyIsTheLastColumnOfTheTopRow) {
    const QRegion region = Of(Drawn({"...a", "aaaa", "...a"}));
    EXPECT_EQ(region, QRegion(0, 0, 3, 1) | QRegion(0, 2, 3, 1));
}

TEST_F(Outline, PaddingCountsAsAColumnWhoseKeyPixelsAreAdded) {
    // Seven columns take a row of 24 bytes: an eighth column of black, which is then the key.
    QImage image = Drawn({"aaaaaaa", "aaaaaaa"});
    image.setPixel(2, 1, qRgb(0, 0, 0));
    const QRegion region = Of(image);
    EXPECT_EQ(region, QRegion(0, 0, 8, 1) | QRegion(0, 1, 2, 1) | QRegion(3, 1, 5, 1));
    EXPECT_EQ(PixelsOf(region), ByColumns(dib));
}

TEST_F(Outline, IsTheColumnScanOnAnyPicture) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 400; ++round) {
        const int width = 1 + static_cast<int>(random() % 23);
        const int height = 1 + static_cast<int>(random() % 19);
        const unsigned colours = 1 + random() % 3;
        const bool runs = random() % 2 == 0;
        QImage image(width, height, QImage::Format_RGB32);
        QRgb last = qRgb(0, 0, 0);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (!runs || random() % 4 == 0) {
                    // Colours that differ in one byte only, each byte in turn.
                    last = qRgb(0, 0, 0) + (random() % colours << 8 * (random() % 3));
                }
                image.setPixel(x, y, last);
            }
        }
        const QRegion region = Of(image);
        ASSERT_EQ(PixelsOf(region), ByColumns(dib)) << "round " << round << " " << width << "x" << height;
        QRegion united;
        for (const QRect& rect : region) {
            united |= rect;
        }
        ASSERT_EQ(region, united) << "not in the toolkit's own form";
    }
}

TEST_F(Outline, WithoutAPictureThereIsNone) {
    EXPECT_TRUE(OutlineOf(dib).isEmpty());
    LogOutlineScan(book.log, dib);
}

TEST(OutlineLog, ShowsThePictureAndItsRunsByColumns) {
    LogBook book;
    LogBook quiet(false);
    cDIBSection dib(quiet.log);
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(qRgb(0x01, 0x02, 0x0A));
    for (const QPoint at : {QPoint(3, 0), QPoint(0, 1), QPoint(1, 0), QPoint(1, 1), QPoint(1, 2)}) {
        image.setPixel(at, qRgb(0xC0, 0xFF, 0xEE));
    }
    dib.CreateFromPicture(image);
    LogOutlineScan(book.log, dib);
    const QStringList expected{
        "About to scan the dib section...",
        "lWidth is 4",
        "lHeight is 3",
        "Here's the whole bitmap (BGRh)...",
        "X       (000000)(000001)(000002)(000003)",
        "Y:0000  (0A0201)(EEFFC0)(0A0201)(EEFFC0)",
        "Y:0001  (EEFFC0)(EEFFC0)(0A0201)(0A0201)",
        "Y:0002  (0A0201)(EEFFC0)(0A0201)(0A0201)",
        "Here comes the region creation...(X from 0 to (lWidth-1), Y from 0 to (lHeight-1))",
        "Found start pixel at X:0 Y:1",
        "Found stop  pixel at X:0 Y:2",
        "Found start pixel at X:1 Y:0",
        "Found stop  pixel at X:1 Y:3 (at last Y step)",
        "Found start pixel at X:3 Y:0",
        "Found stop  pixel at X:3 Y:1",
    };
    EXPECT_EQ(book.Lines(), expected);
}

TEST(OutlineLog, NumbersColumnsAndRowsInHexadecimal) {
    LogBook book;
    LogBook quiet(false);
    cDIBSection dib(quiet.log);
    dib.Create(28, 28);
    LogOutlineScan(book.log, dib);
    const QStringList lines = book.Lines();
    EXPECT_EQ(lines[1], QStringLiteral("lWidth is 28"));
    EXPECT_TRUE(lines[4].endsWith(QLatin1String("(00001A)(00001B)")));
    EXPECT_TRUE(lines[5 + 27].startsWith(QLatin1String("Y:001B  (000000)")));
}

TEST(OutlineLog, PaddingIsShownAsAColumn) {
    LogBook book;
    LogBook quiet(false);
    cDIBSection dib(quiet.log);
    dib.Create(7, 1);
    LogOutlineScan(book.log, dib);
    EXPECT_EQ(book.Lines()[1], QStringLiteral("lWidth is 8"));
}

} // namespace
