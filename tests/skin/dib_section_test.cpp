#include "skin/dib_section.h"

#include "log_book.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <climits>
#include <gmock/gmock.h>
#include <random>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class DibSection : public testing::Test {
  protected:
    LogBook book{false};
    cDIBSection dib{book.log};

    std::vector<int> RowOf(const cDIBSection& section, int row) const {
        const std::uint8_t* bytes = section.Bytes().Row(row);
        return {bytes, bytes + section.BytesPerScanLine()};
    }
    static QImage Noise(int width, int height, unsigned seed) {
        std::mt19937 random(seed);
        QImage image(width, height, QImage::Format_RGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                image.setPixel(x, y, 0xFF000000U | (random() & 0xFFFFFFU));
            }
        }
        return image;
    }
};

TEST_F(DibSection, ScanLinesArePaddedToFourBytes) {
    for (int width = 1; width < 40; ++width) {
        EXPECT_EQ(cDIBSection::RowBytes(width), (width * 3 + 3) / 4 * 4) << width;
    }
    ASSERT_TRUE(dib.Create(7, 5));
    EXPECT_EQ(dib.BytesPerScanLine(), 24);
    EXPECT_EQ(dib.Width(), 7);
    EXPECT_EQ(dib.Height(), 5);
}

TEST_F(DibSection, HeaderIsThePublishedOne) {
    ASSERT_TRUE(dib.Create(7, 5));
    const BitmapInfoHeader& header = dib.Header();
    EXPECT_EQ(header.biSize, 40U);
    EXPECT_EQ(sizeof header, 40U);
    EXPECT_EQ(header.biWidth, 7);
    EXPECT_EQ(header.biHeight, 5);
    EXPECT_EQ(header.biPlanes, 1);
    EXPECT_EQ(header.biBitCount, 24);
    EXPECT_EQ(header.biCompression, 0U);
    EXPECT_EQ(header.biSizeImage, 120U);
}

TEST_F(DibSection, PixelsLieBottomUpInBlueGreenRed) {
    QImage image(2, 2, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(1, 2, 3));
    image.setPixel(1, 0, qRgb(4, 5, 6));
    image.setPixel(0, 1, qRgb(7, 8, 9));
    image.setPixel(1, 1, qRgb(10, 11, 12));
    ASSERT_TRUE(dib.CreateFromPicture(image));
    EXPECT_THAT(RowOf(dib, 0), ElementsAre(9, 8, 7, 12, 11, 10, 0, 0));
    EXPECT_THAT(RowOf(dib, 1), ElementsAre(3, 2, 1, 6, 5, 4, 0, 0));
    EXPECT_EQ(dib.Bytes().ImageRow(0), dib.Bytes().Row(1));
    EXPECT_EQ(dib.Image(), image);
    EXPECT_EQ(dib.Pixel(1, 0), 0x060504U);
    EXPECT_EQ(dib.Pixel(0, 1), 0x090807U);
}

TEST_F(DibSection, PixelOutsideTakesTheNearestOne) {
    ASSERT_TRUE(dib.CreateFromPicture(Noise(5, 4, 1)));
    EXPECT_EQ(dib.Pixel(-1, -9), dib.Pixel(0, 0));
    EXPECT_EQ(dib.Pixel(5, 4), dib.Pixel(4, 3));
    EXPECT_EQ(dib.Pixel(INT_MAX, INT_MIN), dib.Pixel(4, 0));
    dib.ClearUp();
    EXPECT_EQ(dib.Pixel(0, 0), 0U);
}

TEST_F(DibSection, ClearUpZerosEverything) {
    ASSERT_TRUE(dib.Create(4, 4));
    EXPECT_NE(dib.hdc(), 0U);
    EXPECT_NE(dib.hDib(), 0U);
    EXPECT_NE(dib.DIBSectionBitsPtr(), nullptr);
    dib.ClearUp();
    EXPECT_EQ(dib.hdc(), 0U);
    EXPECT_EQ(dib.hDib(), 0U);
    EXPECT_EQ(dib.DIBSectionBitsPtr(), nullptr);
    EXPECT_EQ(dib.Width(), 0);
    EXPECT_EQ(dib.Height(), 0);
    EXPECT_TRUE(dib.Image().isNull());
    dib.ClearUp();
}

TEST_F(DibSection, SizesThatCannotBeHadAreFalse) {
    const std::pair<int, int> sizes[] = {{0, 5},
                                         {5, 0},
                                         {-1, 5},
                                         {5, -1},
                                         {20000, 20000},
                                         {INT_MAX, 1},
                                         {1, INT_MAX},
                                         {INT_MAX, INT_MAX},
                                         {INT_MIN, INT_MIN},
                                         {715827882, 1},
                                         {715827883, 6}};
    for (const auto& [width, height] : sizes) {
        ASSERT_TRUE(dib.Create(3, 3));
        EXPECT_FALSE(dib.Create(width, height)) << width << " x " << height;
        EXPECT_EQ(dib.hdc(), 0U);
        EXPECT_EQ(dib.hDib(), 0U);
        EXPECT_EQ(dib.DIBSectionBitsPtr(), nullptr);
    }
}

TEST_F(DibSection, OperationsWithoutAPictureDoNothing) {
    QImage target(4, 4, QImage::Format_RGB32);
    target.fill(Qt::red);
    const QImage before = target;
    QPainter painter(&target);
    dib.PaintPicture(painter);
    painter.end();
    EXPECT_EQ(target, before);
    dib.LoadPictureBlt(before);
    dib.LoadPictureStretchBlt(before, 0, 0, 4, 4, 9, 9);
    dib.RandomiseBits();
    EXPECT_EQ(dib.Resample(3, 3), nullptr);
    EXPECT_FALSE(dib.CopyToClipboard());
    EXPECT_FALSE(dib.CreateFromPicture({}));
    EXPECT_FALSE(dib.CreateFromPictureStretchBlt({}, 5, 5));
}

TEST_F(DibSection, StretchTakesTheNearestPixel) {
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    image.setPixel(1, 0, qRgb(0, 0, 255));
    ASSERT_TRUE(dib.CreateFromPictureStretchBlt(image, 6, 3));
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 6; ++x) {
            EXPECT_EQ(dib.Pixel(x, y), x < 3 ? 0x0000FFU : 0xFF0000U) << x << "," << y;
        }
    }
}

TEST_F(DibSection, BlitCopiesFromThePlaceAskedFor) {
    const QImage source = Noise(9, 8, 2);
    ASSERT_TRUE(dib.Create(4, 3));
    dib.LoadPictureBlt(source, 2, 5);
    EXPECT_EQ(dib.Image(), source.copy(2, 5, 4, 3));
    ASSERT_TRUE(dib.Create(4, 3));
    dib.LoadPictureBlt(source, 1, 1, 2, 2);
    EXPECT_EQ(dib.Image().copy(0, 0, 2, 2), source.copy(1, 1, 2, 2));
    EXPECT_EQ(dib.Pixel(2, 0), 0U);
    EXPECT_EQ(dib.Pixel(0, 2), 0U);
}

TEST_F(DibSection, BlitOutsideOfTheSourceTakesWhatThereIs) {
    const QImage source = Noise(3, 3, 3);
    ASSERT_TRUE(dib.Create(5, 5));
    dib.LoadPictureBlt(source, -1, -2);
    EXPECT_EQ(dib.Image().copy(1, 2, 3, 3), source);
    EXPECT_EQ(dib.Pixel(0, 0), 0U);
    dib.LoadPictureBlt(source, 100, 100);
    dib.LoadPictureBlt(source, 0, 0, 0, 0);
    EXPECT_EQ(dib.Image().copy(1, 2, 3, 3), source);
}

TEST_F(DibSection, RasterOperationsCombineBits) {
    QImage source(1, 1, QImage::Format_RGB32);
    source.setPixel(0, 0, qRgb(0xF0, 0x0F, 0xAA));
    const std::pair<RasterOp, Colour> cases[] = {{RasterOp::SourceCopy, 0xAA0FF0},
                                                 {RasterOp::SourcePaint, 0xAA3FFC},
                                                 {RasterOp::SourceAnd, 0x000C30},
                                                 {RasterOp::SourceInvert, 0xAA33CC},
                                                 {RasterOp::NotSourceCopy, 0x55F00F}};
    for (const auto& [op, expected] : cases) {
        QImage ground(1, 1, QImage::Format_RGB32);
        ground.setPixel(0, 0, qRgb(0x3C, 0x3C, 0x00));
        ASSERT_TRUE(dib.CreateFromPicture(ground));
        dib.LoadPictureBlt(source, 0, 0, -1, -1, op);
        EXPECT_EQ(dib.Pixel(0, 0), expected) << static_cast<unsigned>(op);
        cDIBSection other(book.log);
        ASSERT_TRUE(other.CreateFromPicture(source));
        QPainter painter(&ground);
        other.PaintPicture(painter, 0, 0, -1, -1, 0, 0, op);
        painter.end();
        ASSERT_TRUE(dib.CreateFromPicture(ground));
        EXPECT_EQ(dib.Pixel(0, 0), expected) << static_cast<unsigned>(op);
    }
}

TEST_F(DibSection, PaintWithoutASizePaintsTheWholePicture) {
    const QImage source = Noise(5, 4, 4);
    ASSERT_TRUE(dib.CreateFromPicture(source));
    QImage target(9, 9, QImage::Format_RGB32);
    target.fill(Qt::black);
    QPainter painter(&target);
    dib.PaintPicture(painter, 3, 2);
    painter.end();
    EXPECT_EQ(target.copy(3, 2, 5, 4), source);
    EXPECT_EQ(target.pixel(2, 2), qRgb(0, 0, 0));
    EXPECT_EQ(target.pixel(8, 6), qRgb(0, 0, 0));
}

TEST_F(DibSection, PaintTakesThePartAskedFor) {
    const QImage source = Noise(6, 6, 5);
    ASSERT_TRUE(dib.CreateFromPicture(source));
    QImage target(9, 9, QImage::Format_RGB32);
    target.fill(Qt::black);
    QPainter painter(&target);
    dib.PaintPicture(painter, 1, 1, 3, 2, 2, 3);
    painter.end();
    EXPECT_EQ(target.copy(1, 1, 3, 2), source.copy(2, 3, 3, 2));
    EXPECT_EQ(target.pixel(4, 1), qRgb(0, 0, 0));
    EXPECT_EQ(target.pixel(1, 3), qRgb(0, 0, 0));
}

TEST_F(DibSection, CopyToClipboardPutsTheBitmapThere) {
    const QImage source = Noise(6, 3, 6);
    QGuiApplication::clipboard()->clear();
    ASSERT_TRUE(dib.CreateFromPicture(source));
    EXPECT_TRUE(dib.CopyToClipboard());
    EXPECT_EQ(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32), source);
}

TEST_F(DibSection, CopyAsDibOnlyShowsTheMessage) {
    QStringList messages;
    cDIBSection section(book.log, [&](const QString& text) { messages += text; });
    ASSERT_TRUE(section.Create(3, 3));
    QGuiApplication::clipboard()->setText(QStringLiteral("mine"));
    EXPECT_FALSE(section.CopyToClipboard(true));
    EXPECT_EQ(messages, QStringList{QStringLiteral(
                            "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!")});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mine"));
}

TEST_F(DibSection, ColouredNoiseRunsByColumnsFromTheBottomGreenFirst) {
    ASSERT_TRUE(dib.Create(2, 2));
    int draws = 0;
    dib.RandomiseBits(false, [&] { return static_cast<float>(++draws) / 255.0F; });
    EXPECT_EQ(draws, 8);
    EXPECT_THAT(RowOf(dib, 0), ElementsAre(0, 1, 2, 0, 5, 6, 0, 0));
    EXPECT_THAT(RowOf(dib, 1), ElementsAre(0, 3, 4, 0, 7, 8, 0, 0));
}

TEST_F(DibSection, GreyNoiseRunsByRowsFromTheBottomOneDrawAPixel) {
    ASSERT_TRUE(dib.Create(2, 2));
    int draws = 0;
    dib.RandomiseBits(true, [&] { return static_cast<float>(++draws) / 255.0F; });
    EXPECT_EQ(draws, 4);
    EXPECT_THAT(RowOf(dib, 0), ElementsAre(1, 1, 1, 2, 2, 2, 0, 0));
    EXPECT_THAT(RowOf(dib, 1), ElementsAre(3, 3, 3, 4, 4, 4, 0, 0));
}

TEST_F(DibSection, NoiseIsRoundedNotCutOff) {
    ASSERT_TRUE(dib.Create(1, 1));
    dib.RandomiseBits(true, [] { return 0.99F; }); // 252.45
    EXPECT_EQ(dib.Pixel(0, 0), 0xFCFCFCU);
    dib.RandomiseBits(true, [] { return 0.999F; }); // 254.745
    EXPECT_EQ(dib.Pixel(0, 0), 0xFFFFFFU);
}

TEST_F(DibSection, NoiseOfTheClockFillsThePicture) {
    ASSERT_TRUE(dib.Create(64, 64));
    dib.RandomiseBits();
    std::set<Colour> colours;
    for (int i = 0; i < 64 * 64; ++i) {
        const Colour colour = dib.Pixel(i % 64, i / 64);
        EXPECT_EQ(colour >> 16, 0U);
        colours.insert(colour);
    }
    EXPECT_GT(colours.size(), 2000U);
}

TEST_F(DibSection, ResampleToTheSameSizeIsACopy) {
    ASSERT_TRUE(dib.CreateFromPicture(Noise(7, 5, 7)));
    const auto copy = dib.Resample(5, 7);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy->DIBSectionBitsPtr(), dib.DIBSectionBitsPtr());
    EXPECT_EQ(copy->Image(), dib.Image());
}

TEST_F(DibSection, ResampleIsBilinearOverMemoryRows) {
    QImage image(3, 2, QImage::Format_RGB32);
    const int upper[] = {10, 20, 40};
    const int lower[] = {100, 60, 200};
    for (int x = 0; x < 3; ++x) {
        image.setPixel(x, 0, qRgb(upper[x], 0, 0));
        image.setPixel(x, 1, qRgb(lower[x], 0, 0));
    }
    ASSERT_TRUE(dib.CreateFromPicture(image));
    const auto result = dib.Resample(4, 4); // steps of 0.5 across, 0.25 up
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->Width(), 4);
    EXPECT_EQ(result->Height(), 4);
    std::vector<int> reds;
    for (int y = 3; y >= 0; --y) {
        for (int x = 0; x < 4; ++x) {
            reds.push_back(static_cast<int>(result->Pixel(x, y)));
        }
    }
    // Ties go to even: 77.5 is 78 and 32.5 is 32.
    EXPECT_THAT(reds, ElementsAreArray({100, 80, 60, 130, 78, 64, 50, 105, 55, 48, 40, 80, 32, 31, 30, 55}));
}

TEST_F(DibSection, ResampleOfThinPicturesStaysInside) {
    for (const QSize size : {QSize(1, 1), QSize(1, 6), QSize(6, 1)}) {
        ASSERT_TRUE(dib.CreateFromPicture(Noise(size.width(), size.height(), 8)));
        const auto result = dib.Resample(9, 11);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->Pixel(0, 8), dib.Pixel(0, size.height() - 1));
    }
}

TEST_F(DibSection, ResampleToAnImpossibleSizeIsNull) {
    ASSERT_TRUE(dib.Create(3, 3));
    EXPECT_EQ(dib.Resample(0, 3), nullptr);
    EXPECT_EQ(dib.Resample(INT_MAX, INT_MAX), nullptr);
}

TEST(DibSectionLog, CreateTracesItsCalls) {
    LogBook book;
    quintptr hdc = 0;
    quintptr hDib = 0;
    {
        cDIBSection dib(book.log);
        ASSERT_TRUE(dib.Create(7, 5));
        hdc = dib.hdc();
        hDib = dib.hDib();
    }
    const QString dc = QString::number(hdc, 16).toUpper() + QLatin1Char('h');
    const QString bitmap = QString::number(hDib, 16).toUpper() + QLatin1Char('h');
    const QStringList expected{
        ">>> cDIBSection.Create(lWidth: 7, lHeight: 5)",
        "    >>> cDIBSection.ClearUp()",
        "    (< cDIBSection.ClearUp",
        "    >>> cDIBSection.GDI.CreateCompatibleDC",
        "    (< cDIBSection.GDI.CreateCompatibleDC returned hDC: " + dc,
        "    >>> cDIBSection.CreateDIB(lhDC: " + dc + ", lWidth: 7, lHeight: 5)",
        "        >>> cDIBSection.GDI.CreateDIBSection",
        "        (< cDIBSection.GDI.CreateDIBSection returned hDib: " + bitmap,
        "        returning True",
        "    (< cDIBSection.CreateDIB",
        "    >>> cDIBSection.GDI.SelectObject",
        "    (< cDIBSection.GDI.SelectObject returned hBmpOld: 1h",
        "    returning True",
        "(< cDIBSection.Create",
        ">>> cDIBSection.ClearUp()",
        "    >>> cDIBSection.GDI.SelectObject",
        "    (< cDIBSection.GDI.SelectObject",
        "    >>> cDIBSection.GDI.DeleteObject",
        "    (< cDIBSection.GDI.DeleteObject",
        "    >>> cDIBSection.GDI.DeleteDC",
        "    (< cDIBSection.GDI.DeleteDC",
        "(< cDIBSection.ClearUp",
    };
    EXPECT_EQ(book.Lines(), expected);
}

TEST(DibSectionLog, FailedCreateSaysSo) {
    LogBook book;
    cDIBSection dib(book.log);
    EXPECT_FALSE(dib.Create(20000, 20000));
    const QStringList lines = book.Lines();
    EXPECT_TRUE(lines.contains("        (< cDIBSection.GDI.CreateDIBSection returned hDib: 0h"));
    EXPECT_TRUE(lines.contains("        returning False"));
    EXPECT_EQ(lines.mid(lines.size() - 4),
              (QStringList{"    >>> cDIBSection.GDI.DeleteDC", "    (< cDIBSection.GDI.DeleteDC",
                           "    returning False", "(< cDIBSection.Create"}));
}

TEST(DibSectionLog, EveryTracedOperationHasItsTwoLines) {
    LogBook book;
    cDIBSection dib(book.log);
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    dib.CreateFromPictureStretchBlt(image, 8, 8);
    dib.RandomiseBits(true);
    dib.CopyToClipboard(true);
    dib.Resample(3, 5);
    const QStringList lines = book.Lines();
    for (const char* line :
         {">>> cDIBSection.CreateFromPictureStretchBlt(form_width: 8, form_height: 8)",
          "(< cDIBSection.CreateFromPictureStretchBlt",
          "    >>> cDIBSection.LoadPictureStretchBlt(lSrcLeft: 0, lSrcTop: 0, lSrcWidth: 4, lSrcHeight: 4, "
          "lDestWidth: 8, lDestHeight: 8)",
          "    (< cDIBSection.LoadPictureStretchBlt", ">>> cDIBSection.RandomiseBits(bGray: True)",
          "(< cDIBSection.RandomiseBits", ">>> cDIBSection.CopyToClipboard(bAsDIB: True)",
          "(< cDIBSection.CopyToClipboard", ">>> cDIBSection.Resample(lNewHeight: 3, lNewWidth: 5)",
          "(< cDIBSection.Resample"}) {
        EXPECT_TRUE(lines.contains(QLatin1String(line))) << line;
    }
}

TEST(DibSectionLog, QuietOperationsDoNotLog) {
    LogBook book;
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    cDIBSection dib(book.log);
    dib.Create(4, 4);
    const auto reference = [&] {
        LogBook other;
        cDIBSection section(other.log);
        section.Create(4, 4);
        return other.Lines().size();
    }();
    dib.LoadPictureBlt(image);
    QPainter painter(&image);
    dib.PaintPicture(painter);
    EXPECT_EQ(book.Lines().size(), reference);
}

} // namespace
