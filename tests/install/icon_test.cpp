#include "skin/instrument_icon.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <gtest/gtest.h>

// After a change of the painting: build/debug/bin/render_icons packaging/icons, and the SVG beside by hand.
TEST(IconFiles, AreWhatTheProgramPaints) {
    const QDir folder(ICONS);
    const QList<QSize> sizes = InstrumentIcon().availableSizes();
    EXPECT_EQ(sizes.size(), folder.entryList({"*.png"}).size());
    for (const QSize size : sizes) {
        const QString file = folder.filePath(QString("%1.png").arg(size.width()));
        const QImage saved = QImage(file).convertToFormat(QImage::Format_ARGB32);
        const QImage painted =
            InstrumentIconAt(size.width()).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_EQ(saved.size(), painted.size()) << file.toStdString();
        int furthest = 0; // processors round a little differently
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const QRgb a = saved.pixel(x, y);
                const QRgb b = painted.pixel(x, y);
                furthest = std::max({furthest, std::abs(qRed(a) * qAlpha(a) - qRed(b) * qAlpha(b)) / 255,
                                     std::abs(qGreen(a) * qAlpha(a) - qGreen(b) * qAlpha(b)) / 255,
                                     std::abs(qBlue(a) * qAlpha(a) - qBlue(b) * qAlpha(b)) / 255,
                                     std::abs(qAlpha(a) - qAlpha(b))});
            }
        }
        EXPECT_LE(furthest, 8) << file.toStdString();
    }
}
