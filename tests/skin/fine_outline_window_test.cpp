#include "log_book.h"
#include "skin/skin_selection.h"
#include "skin/surface.h"
#include "toy_instrument.h"

#include <QApplication>
#include <QScreen>
#include <QtTest/qtestsystem.h>
#include <gtest/gtest.h>

namespace {

constexpr int kPatience = 30000; ///< ms

/// On a screen with a scale factor, looked at in device pixels.
TEST(FineOutlineWindow, ItsRoundCornersFollowTheScreensPixels) {
    const double scale = qApp->devicePixelRatio();
    ASSERT_GT(scale, 1.0);
    LogBook book{false};
    cDIBSection dib{book.log};
    cDIBSectionRegion region{book.log};
    QWidget ground;
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0, 90, 0));
    ground.setPalette(palette);
    ground.setWindowFlags(Qt::FramelessWindowHint);
    ground.setGeometry(20, 20, 500, 350);
    ground.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&ground, kPatience));

    Surface surface;
    auto* face = new Form(toy::FaceDesign());
    auto* image = face->control<Picture>("Image1");
    const QColor colour(120, 120, 130);
    image->SetPicture(QPixmap::fromImage(toy::FacePicture(colour)));
    image->SetDrawing([colour](QPainter& painter, const QRectF& place) { painter.fillRect(place, colour); });
    surface.Carry(*face, {});
    ASSERT_TRUE(SetWindowEffects(book.log, dib, *image, kSkinKey, region));
    for (auto* control : face->findChildren<QWidget*>()) {
        control->setVisible(control == image);
    }
    surface.MoveTo(60, 60);
    surface.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&surface, kPatience));

    const auto shot = [] {
        QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        screen.setDevicePixelRatio(1);
        return screen;
    };
    const QPoint origin((QPointF(60, 60) * scale).toPoint());
    const auto left = [&](const QImage& screen, int row) {
        int x = 0;
        while (x < 60 * scale && screen.pixelColor(origin + QPoint(x, row)) != colour) {
            ++x;
        }
        return x;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return left(shot(), static_cast<int>(100 * scale)) == 0; }, kPatience));
    const QImage screen = shot();
    const double radius = 30 * scale;
    int uneven = 0;
    for (int row = 2; row < radius; ++row) {
        const double down = radius - row - 0.5;
        const double ideal = radius - std::sqrt(radius * radius - down * down);
        EXPECT_NEAR(left(screen, row), ideal, row < 8 ? 4 : 2) << "row " << row;
        uneven += left(screen, row) != left(screen, row + 1) ? 1 : 0;
    }
    // Of a mask of logical pixels at most every second row would begin elsewhere.
    EXPECT_GT(uneven, 20 * scale / 2 + 2) << "rows that begin elsewhere than the next";
    if (const QByteArray file = qgetenv("OUTLINE_SHOT"); !file.isEmpty()) {
        screen.copy(QRect(origin - QPoint(4, 4), QSize(120, 120))).save(QString::fromLocal8Bit(file));
    }
}

} // namespace
