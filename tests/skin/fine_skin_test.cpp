#include "skin/fine_skin.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const QColor kFineColour(30, 60, 90);

class FineSkin : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(folder.path()).mkdir("fine"));
        QImage bitmap(40, 24, QImage::Format_RGB888);
        bitmap.fill(Qt::red);
        ASSERT_TRUE(bitmap.save(skin));
    }

    QString Sha1() const {
        QFile file(skin);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex();
    }

    void SaveFine(QSize size, const QString& stamp) const {
        QImage fine(size, QImage::Format_RGB32);
        fine.fill(kFineColour);
        fine.setText("Skin", stamp);
        ASSERT_TRUE(fine.save(FineSkinFile(skin), "JPG", 100));
    }

    QImage Drawn() const {
        const FaceDrawing drawing = FineSkinDrawing(skin, QPixmap(skin));
        return drawing ? RenderDrawing(drawing, {40, 24}, 2).toImage() : QImage();
    }

    QTemporaryDir folder;
    const QString skin = folder.filePath("Corvantine_skin_Toy.bmp");
};

TEST_F(FineSkin, LiesInAFolderBesideTheBitmap) {
    EXPECT_EQ(FineSkinFile("/a/skins/Corvantine_skin_My.own.bmp"),
              "/a/skins/fine/Corvantine_skin_My.own.jpg");
}

TEST_F(FineSkin, IsDrawnAtTheResolutionOfTheScreen) {
    SaveFine({120, 72}, Sha1());
    EXPECT_EQ(LoadFineSkin(skin).size(), QSize(120, 72));
    const QImage drawn = Drawn();
    EXPECT_EQ(drawn.size(), QSize(80, 48));
    EXPECT_NEAR(drawn.pixelColor(40, 24).blue(), kFineColour.blue(), 2);
}

TEST_F(FineSkin, ThereNeedNotBeOne) {
    EXPECT_FALSE(FineSkinDrawing(skin, QPixmap(skin)));
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
}

TEST_F(FineSkin, OfABitmapThatWasPaintedOverIsNotShown) {
    SaveFine({120, 72}, Sha1());
    QImage other(40, 24, QImage::Format_RGB888);
    other.fill(Qt::green);
    ASSERT_TRUE(other.save(skin));
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
    EXPECT_EQ(Drawn().pixelColor(40, 24), QColor(Qt::green)) << "the bitmap stands in";
}

TEST_F(FineSkin, OfAnotherShapeIsNotShown) {
    for (const QSize size : {QSize(120, 73), QSize(121, 72), QSize(20, 12), QSize(72, 120)}) {
        SaveFine(size, Sha1());
        EXPECT_TRUE(LoadFineSkin(skin).isNull()) << size.width();
    }
}

TEST_F(FineSkin, ThatIsDamagedIsNotShown) {
    SaveFine({120, 72}, Sha1());
    QFile file(FineSkinFile(skin));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(40));
    file.close();
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
    EXPECT_EQ(Drawn().pixelColor(40, 24), QColor(Qt::red));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture at all");
    file.close();
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
}

TEST_F(FineSkin, OfMorePixelsThanAnyFaceIsNotDecoded) {
    QImage wide(1000, 24, QImage::Format_RGB888);
    wide.fill(Qt::red);
    ASSERT_TRUE(wide.save(skin));
    SaveFine({40000, 960}, Sha1());
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
}

TEST_F(FineSkin, APipeInItsPlaceDoesNotBlock) {
    ASSERT_EQ(mkfifo(qPrintable(FineSkinFile(skin)), 0600), 0);
    EXPECT_FALSE(FineSkinDrawing(skin, QPixmap(skin)));
    EXPECT_TRUE(LoadFineSkin(skin).isNull());
}

TEST_F(FineSkin, WhoseBitmapHasGoneForAPipeDoesNotBlock) {
    SaveFine({120, 72}, Sha1());
    const FaceDrawing drawing = FineSkinDrawing(skin, QPixmap(skin));
    ASSERT_TRUE(drawing);
    ASSERT_TRUE(QFile::remove(skin));
    ASSERT_EQ(mkfifo(qPrintable(skin), 0600), 0);
    EXPECT_EQ(RenderDrawing(drawing, {40, 24}, 2).toImage().pixelColor(40, 24), QColor(Qt::red));
}

} // namespace
