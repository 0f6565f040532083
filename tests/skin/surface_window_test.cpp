#include "skin/surface.h"

#include "frame/record/record.h"
#include "log_book.h"
#include "skin/skin_selection.h"
#include "skin/tab_panels.h"
#include "toy_instrument.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QtTest/qtestsystem.h>
#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr int kPatience = 30000; // milliseconds; the machine may be busy
constexpr QRgb kFaceColour = qRgb(120, 120, 130);
constexpr QRgb kPanelColours[] = {qRgb(255, 255, 0), qRgb(0, 255, 255), qRgb(255, 0, 255)};
constexpr int kSlots[] = {15, 17, 19}; // their tabs stand in the toy's rows 0, 1 and 2

/// The surface with a face and three panels, driven by its own timer, on a real screen.
class SurfaceWindow : public testing::Test {
  protected:
    void SetUp() override {
        face = new Form(toy::FaceDesign());
        face->control<Picture>("Image1")->SetPicture(QPixmap::fromImage(toy::FacePicture(kFaceColour)));
        empty = new Form(toy::PanelDesign(QStringLiteral("Corvantine_EmptyForm"), 0), face);
        empty->hide();
        TabPanels::Windows windows;
        windows.main = face;
        windows.TabSliderAnchorImage = face->control<QWidget>("TabSliderAnchorImage");
        windows.TabTimer = face->timer("TabTimer");
        windows.TabForm.fill(empty);
        windows.StatsForm = &stats;
        windows.FFTForm = &spectrum;
        windows.FullScreenTimeForm = &largeTime;
        for (int row = 0; row < 3; ++row) {
            auto* panel = new Form(toy::PanelDesign(QStringLiteral("Panel%1").arg(row), row));
            panel->control<Picture>("Image2")->SetPicture(
                QPixmap::fromImage(toy::PanelPicture(kPanelColours[row], row)));
            windows.TabForm[kSlots[row]] = panel;
            panels.push_back(panel);
        }
        for (int slot : {16, 18}) {
            windows.TabForm[slot] = new Form(toy::PanelDesign(QStringLiteral("Unseen"), 0), face);
            windows.TabForm[slot]->hide();
        }
        surface.Carry(*face, panels);
        surface.MakeRoom(toy::kAnchor);
        surface.MoveBy(*face->control<Picture>("Image1"));
        tabs = std::make_unique<TabPanels>(
            record, windows,
            TabPanels::Calls{.MainMinimised = [this] { return surface.isMinimized(); },
                             .BringMainToFront = [this] { surface.BringFaceToFront(); },
                             .BringPanelUp = [this](QWidget& panel) { surface.BringPanelUp(panel); },
                             .SendPanelToBack = [this](QWidget& panel) { surface.SendPanelToBack(panel); }});
        for (Form* panel : panels) {
            regions.push_back(std::make_unique<cDIBSectionRegion>(book.log));
            ASSERT_TRUE(SetWindowEffects(book.log, dib, *panel->control<Picture>("Image2"), kSkinKey,
                                         *regions.back()));
            panel->show();
        }
        ASSERT_TRUE(SetWindowEffects(book.log, dib, *face->control<Picture>("Image1"), kSkinKey, mainRegion));
        face->timer("TabTimer")->start();
        tabs->TabTimer_Timer();
    }
    void ShowAt(int left, int top) {
        surface.MoveTo(left, top);
        surface.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&surface, kPatience));
        ASSERT_TRUE(SeenEventually(230, 100, kFaceColour));
    }
    static QImage Screen() { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }
    /// The colour of the screen at a place of the face.
    QRgb Seen(int x, int y) const {
        return Screen().pixel(surface.Left() + x, surface.Top() + y) | 0xFF000000;
    }
    bool SeenEventually(int x, int y, QRgb colour) const {
        return QTest::qWaitFor([&] { return Seen(x, y) == (colour | 0xFF000000); }, kPatience);
    }
    static QString Run(const QString& command) {
        QProcess process;
        process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience));
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    void Click(int x, int y, int button = 1) const {
        Run(QStringLiteral("xdotool mousemove %1 %2 click %3")
                .arg(surface.Left() + x)
                .arg(surface.Top() + y)
                .arg(button));
    }
    /// Drags the face at one of its places, as a hand would.
    void Drag(QPoint grip, QPoint by) const {
        const QPoint from = grip + QPoint(surface.Left(), surface.Top());
        const QPoint to = from + by;
        const QPoint half = (from + to) / 2;
        Run(QStringLiteral(
                "xdotool mousemove %1 %2 sleep 0.1 mousedown 1 sleep 0.2 mousemove %3 %4 sleep 0.1 "
                "mousemove %5 %6 sleep 0.2 mouseup 1")
                .arg(from.x())
                .arg(from.y())
                .arg(half.x())
                .arg(half.y())
                .arg(to.x())
                .arg(to.y()));
    }
    bool PlaceEventually(int left, int top) const {
        return QTest::qWaitFor([&] { return surface.Left() == left && surface.Top() == top; }, kPatience);
    }

    static constexpr QRgb kGround = qRgb(0, 0, 0); ///< the bare screen
    LogBook book{false};
    Record record;
    QWidget stats, spectrum, largeTime;
    Surface surface;
    Form* face = nullptr;
    Form* empty = nullptr;
    std::vector<Form*> panels;
    cDIBSection dib{book.log};
    cDIBSectionRegion mainRegion{book.log};
    std::vector<std::unique_ptr<cDIBSectionRegion>> regions;
    std::unique_ptr<TabPanels> tabs;
};

TEST_F(SurfaceWindow, OutlineIsThePicturesAndTheTabsStandOut) {
    ShowAt(200, 150);
    EXPECT_EQ(Seen(2, 2), kGround) << "the round shoulder";
    EXPECT_EQ(Seen(2, 197), kGround);
    EXPECT_EQ(Seen(30, 2), kFaceColour);
    for (int row = 0; row < 3; ++row) {
        EXPECT_TRUE(SeenEventually(330, 20 + 15 + 30 * row, kPanelColours[row])) << row;
    }
    EXPECT_EQ(Seen(330, 20 + 31), kGround) << "between two tabs";
    EXPECT_EQ(Seen(345, 100), kGround);
    EXPECT_EQ(Seen(250, 100), kFaceColour) << "the bodies are behind the face";
}

TEST_F(SurfaceWindow, ATabClickPullsThePanelOutAndPushesItBack) {
    ShowAt(200, 150);
    ASSERT_TRUE(SeenEventually(330, 35, kPanelColours[0]));
    Click(330, 35);
    EXPECT_TRUE(SeenEventually(360, 150, kPanelColours[0])) << "the body shows";
    EXPECT_TRUE(SeenEventually(410, 35, kPanelColours[0])) << "and the tab beyond it";
    EXPECT_TRUE(record.TabOpen[15]);
    Click(410, 35);
    EXPECT_TRUE(SeenEventually(360, 150, kGround));
    EXPECT_TRUE(SeenEventually(330, 35, kPanelColours[0]));
    EXPECT_EQ(Seen(410, 35), kGround);
    EXPECT_FALSE(record.TabOpen[15]);
}

TEST_F(SurfaceWindow, OfTwoOpenPanelsTheLaterIsOnTop) {
    ShowAt(200, 150);
    ASSERT_TRUE(SeenEventually(330, 65, kPanelColours[1]));
    tabs->PressTab(kSlots[2]);
    EXPECT_TRUE(SeenEventually(360, 150, kPanelColours[2]));
    tabs->PressTab(kSlots[0]);
    EXPECT_TRUE(SeenEventually(360, 150, kPanelColours[0]));
    EXPECT_EQ(Seen(410, 95), kPanelColours[2]) << "both stay out";
    tabs->PressTab(kSlots[0]);
    EXPECT_TRUE(SeenEventually(360, 150, kPanelColours[2]));
    tabs->PressTab(kSlots[0]);
    EXPECT_TRUE(SeenEventually(360, 150, kPanelColours[0]));
    EXPECT_EQ(Seen(300, 100), kFaceColour);
}

TEST_F(SurfaceWindow, AnEmptyOutlineShowsNothingOfTheFace) {
    ShowAt(200, 150);
    for (Form* panel : panels) {
        panel->hide();
    }
    QImage plain(toy::kFace, QImage::Format_RGB32);
    plain.fill(Qt::red);
    face->control<Picture>("Image1")->SetPicture(QPixmap::fromImage(plain));
    ASSERT_TRUE(SetWindowEffects(book.log, dib, *face->control<Picture>("Image1"), kSkinKey, mainRegion));
    EXPECT_TRUE(SeenEventually(230, 100, kGround));
    const QImage screen = Screen();
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 420; ++x) {
            ASSERT_EQ(screen.pixel(200 + x, 150 + y), kGround) << x << "," << y;
        }
    }
    face->control<Picture>("Image1")->SetPicture(QPixmap::fromImage(toy::FacePicture(kFaceColour)));
    SetWindowEffects(book.log, dib, *face->control<Picture>("Image1"), kSkinKey, mainRegion);
    EXPECT_TRUE(SeenEventually(230, 100, kFaceColour));
}

TEST_F(SurfaceWindow, ASkinOfAnotherShapeChangesTheOutline) {
    ShowAt(200, 150);
    EXPECT_EQ(Seen(2, 2), kGround);
    QImage square(toy::kFace, QImage::Format_RGB32);
    square.fill(qRgb(10, 90, 10));
    square.setPixel(319, 0, qRgb(255, 255, 192));
    face->control<Picture>("Image1")->SetPicture(QPixmap::fromImage(square));
    SetWindowEffects(book.log, dib, *face->control<Picture>("Image1"), kSkinKey, mainRegion);
    EXPECT_TRUE(SeenEventually(2, 2, qRgb(10, 90, 10)));
    EXPECT_TRUE(SeenEventually(2, 197, qRgb(10, 90, 10)));
    EXPECT_EQ(Seen(319, 0), kGround);
}

TEST_F(SurfaceWindow, ShowsInFrontOfWhatIsThere) {
    QWidget other;
    other.setGeometry(150, 100, 600, 400);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::darkGreen);
    other.setPalette(palette);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other, kPatience));
    ShowAt(200, 150);
    EXPECT_EQ(Seen(2, 2), QColor(Qt::darkGreen).rgb()) << "through the shoulder";
    EXPECT_TRUE(QTest::qWaitForWindowActive(&surface, kPatience));
}

TEST_F(SurfaceWindow, IsWhereItWasAskedToBe) {
    ShowAt(203, 157);
    EXPECT_TRUE(PlaceEventually(203, 157));
    const QString placed = Run(QStringLiteral("xwininfo -id %1").arg(surface.winId()));
    EXPECT_TRUE(placed.contains(QLatin1String("Absolute upper-left X:  203"))) << placed.toStdString();
    EXPECT_TRUE(placed.contains(QLatin1String("Absolute upper-left Y:  157"))) << placed.toStdString();
    surface.MoveTo(300, 90);
    EXPECT_TRUE(PlaceEventually(300, 90));
    EXPECT_TRUE(SeenEventually(230, 100, kFaceColour));
}

TEST_F(SurfaceWindow, IsFoundInTheTaskBar) {
    face->setWindowTitle(QStringLiteral("Corvantine_5:2"));
    ShowAt(200, 150);
    const QString id = QString::number(surface.winId());
    const QString about =
        Run(QStringLiteral("xprop -id %1 _NET_WM_NAME _NET_WM_STATE _NET_WM_WINDOW_TYPE").arg(id));
    EXPECT_TRUE(about.contains(QLatin1String("Corvantine_5:2"))) << about.toStdString();
    EXPECT_FALSE(about.contains(QLatin1String("SKIP_TASKBAR"))) << about.toStdString();
    EXPECT_TRUE(about.contains(QLatin1String("_NET_WM_WINDOW_TYPE_NORMAL"))) << about.toStdString();
    EXPECT_TRUE(
        Run(QStringLiteral("xprop -id %1 _NET_WM_ICON").arg(id)).contains(QLatin1String("128 x 128")));
    const QString listed = Run(QStringLiteral("xprop -root _NET_CLIENT_LIST"));
    EXPECT_TRUE(listed.contains(QString::number(surface.winId(), 16))) << listed.toStdString();
}

TEST_F(SurfaceWindow, MovesByItsPictureAndThePanelsWithIt) {
    ShowAt(200, 150);
    ASSERT_TRUE(SeenEventually(330, 35, kPanelColours[0]));
    Drag({160, 190}, {120, 60});
    EXPECT_TRUE(PlaceEventually(320, 210)) << surface.Left() << "," << surface.Top();
    EXPECT_TRUE(SeenEventually(230, 100, kFaceColour));
    EXPECT_TRUE(SeenEventually(330, 35, kPanelColours[0]));
}

TEST_F(SurfaceWindow, MovesBeyondTheEdgesOfTheScreenAndBack) {
    // So that all of it can be reached on a screen that is smaller.
    ShowAt(100, 100);
    Drag({300, 190}, {-350, 0});
    EXPECT_TRUE(PlaceEventually(-250, 100)) << surface.Left() << "," << surface.Top();
    Drag({300, 190}, {0, -250});
    EXPECT_TRUE(PlaceEventually(-250, -150)) << surface.Left() << "," << surface.Top();
    Drag({300, 190}, {450, 300});
    EXPECT_TRUE(PlaceEventually(200, 150)) << surface.Left() << "," << surface.Top();
}

TEST_F(SurfaceWindow, MinimisesAndComesBackWithItsParkedWindows) {
    stats.setWindowFlags(Qt::FramelessWindowHint); // as all windows of the instrument
    stats.setGeometry(700, 400, 120, 80);
    stats.show();
    ShowAt(200, 150);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&stats, kPatience));
    const QPoint place = stats.pos();
    tabs->ParkWindows(true);
    surface.showMinimized();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Seen(230, 100) == kGround; }, kPatience));
    EXPECT_FALSE(stats.isVisible());
    surface.showNormal();
    EXPECT_TRUE(SeenEventually(230, 100, kFaceColour));
    EXPECT_TRUE(QTest::qWaitFor([&] { return stats.isVisible() && stats.pos() == place; }, kPatience))
        << stats.x() << "," << stats.y() << " for " << place.x() << "," << place.y();
}

TEST_F(SurfaceWindow, TheMeasurementWindowStaysInFrontAfterATabClick) {
    stats.setGeometry(400, 250, 200, 150);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::blue);
    stats.setPalette(palette);
    stats.show();
    ShowAt(200, 150);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&stats, kPatience));
    tabs->SetDefaultLayering();
    EXPECT_TRUE(SeenEventually(280, 150, QColor(Qt::blue).rgb()));
    Click(330, 35); // the surface comes to the front, the measurement window in front of it
    EXPECT_TRUE(QTest::qWaitFor([&] { return record.TabOpen[15]; }, kPatience));
    EXPECT_TRUE(SeenEventually(330, 25, kPanelColours[0])) << "pulled out";
    EXPECT_TRUE(SeenEventually(280, 150, QColor(Qt::blue).rgb()));
}

// On a screen of any scale: every pixel inside the outline shows the window, every one outside what is
// behind.
TEST_F(SurfaceWindow, OutlineIsThePicturesAtEveryScale) {
    QWidget cover(face); // the controls have black of their own, which is the colour of the ground
    cover.setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(kFaceColour));
    cover.setPalette(palette);
    cover.resize(face->size());
    cover.show();
    cover.raise();
    surface.MoveTo(100, 80);
    surface.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&surface, kPatience));
    ASSERT_TRUE(QTest::qWaitFor([&] { return surface.mask().contains(QPoint(330, 35)); }, kPatience));

    QImage inside(surface.size() + QSize(4, 4), QImage::Format_Grayscale8);
    inside.fill(0);
    for (const QRect& part : surface.mask()) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            std::fill_n(inside.scanLine(y + 2) + part.left() + 2, part.width(), uchar{255});
        }
    }
    const double ratio = surface.devicePixelRatioF();
    const auto wrongPixels = [&] {
        const QImage screen = Screen();
        int wrong = 0;
        for (int y = 1; y < inside.height() - 1; ++y) {
            for (int x = 1; x < inside.width() - 1; ++x) {
                const uchar here = inside.scanLine(y)[x];
                bool edge = false; // where a fraction of a scale may go either way
                for (int k = 0; k < 9; ++k) {
                    edge |= inside.scanLine(y + k / 3 - 1)[x + k % 3 - 1] != here;
                }
                const QPointF at = (QPointF(surface.pos()) + QPointF(x - 1.5, y - 1.5)) * ratio;
                const bool seen = (screen.pixel(static_cast<int>(at.x()), static_cast<int>(at.y())) |
                                   0xFF000000) != kGround;
                wrong += !edge && seen != (here != 0) ? 1 : 0;
            }
        }
        return wrong;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return wrongPixels() == 0; }, kPatience)) << wrongPixels();
}

} // namespace
