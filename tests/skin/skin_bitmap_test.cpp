#include "skin/skin_bitmap.h"

#include "bitmap_files.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

namespace {

TEST(SkinBitmap, PlainOneLoads) {
    const QImage image = DecodeSkinBitmap(bitmap::Plain(21, 17));
    ASSERT_EQ(image.size(), QSize(21, 17));
    EXPECT_EQ(image.pixel(20, 16), qRgb(10, 20, 30));
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
}

TEST(SkinBitmap, TopDownOneLoads) {
    QByteArray bytes = bitmap::Plain(16, -16);
    bytes[bytes.size() - 48] = 99; // the last row in the file is the bottom one
    const QImage image = DecodeSkinBitmap(bytes);
    ASSERT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixel(0, 15), qRgb(10, 20, 99));
}

TEST(SkinBitmap, PaletteAndRunLengthLoadWhenSound) {
    for (const QByteArray& bytes : {bitmap::Palette(40, 20), bitmap::RunLength(40, 20)}) {
        const QImage image = DecodeSkinBitmap(bytes);
        ASSERT_EQ(image.size(), QSize(40, 20));
        EXPECT_EQ(image.pixel(19, 10), qRgb(0, 0, 0));
        EXPECT_EQ(image.pixel(20, 10), qRgb(255, 255, 255));
    }
}

TEST(SkinBitmap, CutOffOnesAreRefusedAtEveryLength) {
    for (const QByteArray& whole :
         {bitmap::Plain(16, 16), bitmap::Palette(16, 16), bitmap::RunLength(16, 16)}) {
        ASSERT_FALSE(DecodeSkinBitmap(whole).isNull());
        for (qsizetype length = 0; length < whole.size(); ++length) {
            EXPECT_TRUE(DecodeSkinBitmap(whole.left(length)).isNull()) << length << " of " << whole.size();
        }
    }
}

TEST(SkinBitmap, RunsThatLeaveThePictureAreRefused) {
    QByteArray wide = bitmap::Header(16, 16, 8, 1);
    wide += QByteArray("\x11\x05\x00\x01", 4); // seventeen pixels in a row of sixteen
    EXPECT_TRUE(DecodeSkinBitmap(wide).isNull());
    QByteArray literal = bitmap::Header(16, 16, 8, 1);
    literal += QByteArray("\x00\xFF", 2); // 255 pixels that do not follow
    EXPECT_TRUE(DecodeSkinBitmap(literal).isNull());
}

TEST(SkinBitmap, RunsThatLeavePixelsOutAreRefused) {
    const QByteArray row("\x10\x05\x00\x00", 4); // sixteen pixels and the end of the row
    const QByteArray end("\x00\x01", 2);
    auto of = [](const QByteArray& runs) { return DecodeSkinBitmap(bitmap::Header(16, 16, 8, 1) + runs); };
    ASSERT_FALSE(of(row.repeated(16) + end).isNull());
    EXPECT_FALSE(of(row.repeated(16).chopped(2) + end).isNull()) << "the last row may end with the picture";
    EXPECT_TRUE(of(row.repeated(15) + end).isNull());
    EXPECT_TRUE(of(row.repeated(17) + end).isNull());
    EXPECT_TRUE(of(end).isNull());
    EXPECT_TRUE(of(QByteArray("\x00\x00", 2) + row.repeated(16) + end).isNull()) << "an empty row";
    EXPECT_TRUE(of(QByteArray("\x0F\x05\x00\x00", 4) + row.repeated(15) + end).isNull()) << "a short row";
    EXPECT_TRUE(of(QByteArray("\x00\x02\x00\x00", 4) + row.repeated(16) + end).isNull()) << "a jump";
}

TEST(SkinBitmap, SizesOfNoFaceAreRefused) {
    EXPECT_TRUE(DecodeSkinBitmap(bitmap::Plain(1, 1)).isNull());
    EXPECT_TRUE(DecodeSkinBitmap(bitmap::Plain(15, 40)).isNull());
    EXPECT_TRUE(DecodeSkinBitmap(bitmap::Plain(40, 15)).isNull());
    EXPECT_FALSE(DecodeSkinBitmap(bitmap::Plain(16, 16)).isNull());
    const std::pair<qint64, qint64> sizes[] = {
        {20000, 20000}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}, {-400, 300}, {0, 0}, {4097, 4096}};
    for (const auto& [width, height] : sizes) {
        for (const int bits : {1, 8, 24, 32}) {
            EXPECT_TRUE(
                DecodeSkinBitmap(bitmap::Header(width, height, bits) + QByteArray(4096, 'x')).isNull())
                << width << "x" << height << " at " << bits;
        }
    }
}

TEST(SkinBitmap, RunLengthOfAHugePictureIsRefusedBeforeDecoding) {
    EXPECT_TRUE(DecodeSkinBitmap(bitmap::Header(20000, 20000, 8, 1) + QByteArray("\0\1", 2)).isNull());
}

TEST(SkinBitmap, OtherFilesAreRefused) {
    const QTemporaryDir folder;
    EXPECT_TRUE(LoadSkinBitmap(folder.filePath("missing.bmp")).isNull());
    EXPECT_TRUE(LoadSkinBitmap(folder.path()).isNull());
    EXPECT_TRUE(LoadSkinBitmap({}).isNull());
    EXPECT_TRUE(DecodeSkinBitmap(QByteArray(2000, 'B')).isNull());
    QByteArray picture = bitmap::Plain(20, 20);
    picture[10] = '\xFF'; // the pixels begin behind the end
    picture[11] = '\xFF';
    EXPECT_TRUE(DecodeSkinBitmap(picture).isNull());
    QByteArray compressed = bitmap::Plain(20, 20);
    compressed[30] = 4; // a compression of printers
    EXPECT_TRUE(DecodeSkinBitmap(compressed).isNull());
}

TEST(SkinBitmap, PixelsThatBeginInsideTheHeadersAreRefused) {
    for (QByteArray bytes : {bitmap::Plain(16, 16), bitmap::Palette(16, 16), bitmap::RunLength(16, 16)}) {
        const auto first = qFromLittleEndian<quint32>(bytes.constData() + 10);
        ASSERT_FALSE(DecodeSkinBitmap(bytes).isNull());
        // All pixels are there at each of these places, so that nothing else refuses them.
        for (quint32 offset = 0; offset < first; ++offset) {
            qToLittleEndian(offset, bytes.data() + 10);
            ASSERT_TRUE(DecodeSkinBitmap(bytes).isNull()) << offset;
        }
    }
}

TEST(SkinBitmap, AShorterPaletteLeavesMoreRoomAndALongerOneLess) {
    QByteArray bytes = bitmap::Palette(16, 16);
    const auto usesColours = [&](quint32 count) { qToLittleEndian(count, bytes.data() + 46); };
    usesColours(256);
    EXPECT_FALSE(DecodeSkinBitmap(bytes).isNull());
    usesColours(257);
    EXPECT_TRUE(DecodeSkinBitmap(bytes).isNull());
    usesColours(0xFFFFFFFF);
    EXPECT_TRUE(DecodeSkinBitmap(bytes).isNull());
    usesColours(16);
    qToLittleEndian(14U + 40 + 4 * 16, bytes.data() + 10);
    EXPECT_FALSE(DecodeSkinBitmap(bytes).isNull());
    QByteArray plain = bitmap::Plain(16, 16);
    qToLittleEndian(2U, plain.data() + 46); // colours for screens that have few
    EXPECT_TRUE(DecodeSkinBitmap(plain).isNull());
}

TEST(SkinBitmap, AFileLargerThanAnySkinIsNotRead) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("large.bmp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bitmap::Header(20000, 20000, 24));
    ASSERT_TRUE(file.resize(qint64{100} * 1024 * 1024 * 1024));
    file.close();
    EXPECT_TRUE(LoadSkinBitmap(file.fileName()).isNull());
}

TEST(SkinBitmap, DamagedBytesNeverDoMoreThanFail) {
    std::mt19937 random(20261121);
    const QByteArray sound[] = {bitmap::Plain(16, 16), bitmap::Palette(16, 16), bitmap::RunLength(16, 16)};
    int loaded = 0;
    for (int round = 0; round < 6000; ++round) {
        QByteArray bytes = sound[round % 3];
        const int changes = 1 + static_cast<int>(random() % 5);
        for (int i = 0; i < changes; ++i) {
            // Half of the damage goes into the headers, where it does most.
            const auto range = random() % 2 ? 54U : static_cast<unsigned>(bytes.size());
            bytes[static_cast<qsizetype>(random() % range)] = static_cast<char>(random());
        }
        const QImage image = DecodeSkinBitmap(bytes);
        loaded += image.isNull() ? 0 : 1;
        ASSERT_LE(std::int64_t{image.width()} * image.height(), kMostSkinPixels);
    }
    EXPECT_GT(loaded, 600) << "the damage is so heavy that nothing is tested";
}

} // namespace
