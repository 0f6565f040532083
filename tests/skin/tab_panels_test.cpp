#include "skin/tab_panels.h"

#include "frame/record/record.h"
#include "toy_instrument.h"

#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

/// The placeholder and nine panels on a ground of their own; what the windows are told is written down.
class Panels : public testing::Test {
  protected:
    void SetUp() override {
        main = Make(toy::FaceDesign());
        main->move(30, 40);
        empty = Make(toy::PanelDesign(QStringLiteral("Corvantine_EmptyForm"), 0));
        windows.main = main;
        windows.TabSliderAnchorImage = main->control<QWidget>("TabSliderAnchorImage");
        windows.TabTimer = main->timer("TabTimer");
        for (int i = 1; i <= kTabSlots; ++i) {
            windows.TabForm[i] =
                IsPanel(i) ? Make(toy::PanelDesign(QStringLiteral("Panel%1").arg(i), i % 5)) : empty;
        }
        windows.StatsForm = &stats;
        windows.FFTForm = &spectrum;
        windows.FullScreenTimeForm = &largeTime;
        panels = std::make_unique<TabPanels>(
            record, windows,
            TabPanels::Calls{
                .MainMinimised =
                    [this] {
                        if (onTick) {
                            onTick();
                        }
                        return minimised;
                    },
                .BringMainToFront = [this] { order += QStringLiteral("main"); },
                .BringPanelUp = [this](QWidget& panel) { order += panel.objectName(); },
                .SendPanelToBack =
                    [this](QWidget& panel) { order += QStringLiteral("back ") + panel.objectName(); }});
    }
    static bool IsPanel(int slot) { return slot <= 4 || slot >= 15; }
    Form* Make(const FormDesign& design) { return new Form(design, &ground); }
    QPoint PlaceOf(int slot) const { return windows.TabForm[slot]->pos(); }
    QPoint Closed() const { return main->pos() + toy::kAnchor.topLeft(); }
    QPoint Open() const { return Closed() + QPoint(toy::kAnchor.width(), 0); }

    QWidget ground;
    QWidget stats, spectrum, largeTime;
    Form* main = nullptr;
    Form* empty = nullptr;
    Record record;
    TabPanels::Windows windows;
    std::unique_ptr<TabPanels> panels;
    bool minimised = false;
    std::function<void()> onTick;
    QStringList order;
};

TEST_F(Panels, AllStartClosedAtTheAnchor) {
    panels->TabTimer_Timer();
    for (int i = 1; i <= kTabSlots; ++i) {
        EXPECT_EQ(PlaceOf(i), QPoint(30 + 240, 40 + 20)) << i;
    }
}

TEST_F(Panels, AnOpenPanelStandsOneAnchorWidthFurtherRight) {
    record.TabOpen[3] = true;
    record.TabOpen[18] = true;
    panels->TabTimer_Timer();
    for (int i = 1; i <= kTabSlots; ++i) {
        EXPECT_EQ(PlaceOf(i), i == 3 || i == 18 ? Open() : Closed()) << i;
    }
    EXPECT_EQ(Open(), QPoint(30 + 240 + 80, 60));
    record.TabOpen[3] = false;
    panels->TabTimer_Timer();
    EXPECT_EQ(PlaceOf(3), Closed());
    EXPECT_EQ(PlaceOf(18), Open());
}

TEST_F(Panels, TheyFollowTheMainFormWithinOneTick) {
    record.TabOpen[15] = true;
    panels->TabTimer_Timer();
    main->move(-500, 77);
    EXPECT_NE(PlaceOf(1), Closed());
    panels->TabTimer_Timer();
    for (int i = 1; i <= kTabSlots; ++i) {
        EXPECT_EQ(PlaceOf(i), i == 15 ? Open() : Closed()) << i;
    }
}

TEST_F(Panels, TheTimerDrivesThem) {
    EXPECT_EQ(windows.TabTimer->interval(), 50);
    windows.TabTimer->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return PlaceOf(19) == Closed(); }, 20000));
    record.TabOpen[19] = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return PlaceOf(19) == Open(); }, 20000));
}

struct MoveCounter : QObject {
    int moves = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        moves += event->type() == QEvent::Move ? 1 : 0;
        return false;
    }
};

TEST_F(Panels, APanelAtItsPlaceIsNotTouched) {
    ground.show();
    panels->TabTimer_Timer();
    order.clear();
    MoveCounter counter;
    for (int i = 1; i <= kTabSlots; ++i) {
        windows.TabForm[i]->installEventFilter(&counter);
    }
    panels->TabTimer_Timer();
    panels->TabTimer_Timer();
    EXPECT_EQ(counter.moves, 0);
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(Panels, OnlyThePlaceholderOfSlotsFiveToEightGoesToTheBack) {
    panels->TabTimer_Timer();
    EXPECT_EQ(order, QStringList{QStringLiteral("back Corvantine_EmptyForm")})
        << "the first of its slots moves it; then it is where the others want it";
    order.clear();
    panels->TabTimer_Timer();
    EXPECT_TRUE(order.isEmpty());
    // A slot beyond that moves the placeholder and leaves the order alone; the next slots fetch it back.
    record.TabOpen[14] = true;
    panels->TabTimer_Timer();
    EXPECT_TRUE(order.isEmpty());
    EXPECT_EQ(empty->pos(), Open());
    panels->TabTimer_Timer();
    EXPECT_EQ(order, QStringList{QStringLiteral("back Corvantine_EmptyForm")});
}

TEST_F(Panels, AnOpenPlaceholderSlotDoesNotGoToTheBack) {
    for (int i = 5; i <= 14; ++i) {
        record.TabOpen[i] = true;
    }
    panels->TabTimer_Timer();
    EXPECT_TRUE(order.isEmpty());
    EXPECT_EQ(empty->pos(), Open());
}

TEST_F(Panels, AHiddenPanelIsPlacedToo) {
    windows.TabForm[2]->hide();
    panels->TabTimer_Timer();
    EXPECT_EQ(PlaceOf(2), Closed());
}

TEST_F(Panels, ATickInsideATickDoesNothing) {
    int depth = 0;
    onTick = [&] {
        EXPECT_TRUE(panels->TabTimerBusy);
        if (++depth == 1) {
            panels->TabTimer_Timer();
        }
    };
    panels->TabTimer_Timer();
    EXPECT_EQ(depth, 1);
    EXPECT_FALSE(panels->TabTimerBusy);
}

TEST_F(Panels, APressTogglesAndPutsTheWindowsInOrder) {
    ground.show();
    stats.show();
    for (const int slot : {1, 4, 15, 19}) {
        order.clear();
        panels->PressTab(slot);
        EXPECT_TRUE(record.TabOpen[slot]);
        EXPECT_EQ(order, (QStringList{windows.TabForm[slot]->objectName(), "main"}));
        panels->PressTab(slot);
        EXPECT_FALSE(record.TabOpen[slot]);
    }
}

TEST_F(Panels, TabsOfTheFixedSlotsTakeAnyButton) {
    for (int i = 15; i <= kTabSlots; ++i) {
        auto* tab = windows.TabForm[i]->control<Picture>("Image1");
        QTest::mousePress(tab, Qt::LeftButton);
        EXPECT_TRUE(record.TabOpen[i]) << i;
        QTest::mousePress(tab, Qt::RightButton);
        EXPECT_FALSE(record.TabOpen[i]) << i;
    }
    for (int i = 1; i <= kScopeChannels; ++i) {
        QTest::mousePress(windows.TabForm[i]->control<Picture>("Image1"), Qt::LeftButton);
        EXPECT_FALSE(record.TabOpen[i]) << "a channel's tab has a handler of its own";
    }
}

TEST_F(Panels, BringingMainToFrontLeavesThePanelWhereItIs) {
    panels->BringMainToFront(2);
    EXPECT_FALSE(record.TabOpen[2]);
    EXPECT_EQ(order, (QStringList{"Panel2", "main"}));
}

TEST_F(Panels, ParkedWindowsComeBackToTheirLeftEdges) {
    stats.setGeometry(100, 10, 50, 50);
    spectrum.setGeometry(200, 20, 50, 50);
    largeTime.setGeometry(300, 30, 50, 50);
    stats.show();
    spectrum.show();
    const QPoint place = stats.pos(); // with whatever frame the screen puts around it
    const QPoint spectrumPlace = spectrum.pos();
    minimised = true;
    panels->ParkWindows(true);
    EXPECT_TRUE(panels->MinimisedStats.pending && panels->MinimisedFFT.pending &&
                panels->MinimisedTime.pending);
    EXPECT_EQ(panels->MinimisedStats.left, place.x());
    EXPECT_EQ(panels->MinimisedFFT.left, spectrumPlace.x());
    EXPECT_EQ(panels->MinimisedTime.left, 300);
    EXPECT_FALSE(stats.isVisible() || spectrum.isVisible() || largeTime.isVisible());
    panels->TabTimer_Timer();
    EXPECT_FALSE(stats.isVisible()) << "main is still away";
    stats.move(-30000, place.y()); // wherever a window manager has put it meanwhile
    minimised = false;
    panels->TabTimer_Timer();
    EXPECT_TRUE(stats.isVisible() && spectrum.isVisible());
    EXPECT_FALSE(largeTime.isVisible()) << "it was not in view before";
    EXPECT_EQ(stats.pos(), place);
    EXPECT_FALSE(panels->MinimisedStats.pending || panels->MinimisedFFT.pending ||
                 panels->MinimisedTime.pending);
    stats.move(400, 10);
    panels->TabTimer_Timer();
    EXPECT_EQ(stats.x(), 400) << "only once";
}

TEST_F(Panels, MinimiseMostlyLeavesTheLargeTimeWindowInView) {
    largeTime.show();
    stats.show();
    minimised = true;
    panels->ParkWindows(false);
    EXPECT_TRUE(largeTime.isVisible());
    EXPECT_FALSE(panels->MinimisedTime.pending);
    EXPECT_FALSE(stats.isVisible());
}

TEST_F(Panels, ASecondMinimiseDoesNotForgetThatAWindowWasInView) {
    stats.setGeometry(100, 10, 50, 50);
    stats.show();
    const int left = stats.x();
    minimised = true;
    panels->ParkWindows(false);
    stats.move(-30000, 10);
    panels->ParkWindows(true);
    minimised = false;
    panels->TabTimer_Timer();
    EXPECT_TRUE(stats.isVisible());
    EXPECT_EQ(stats.x(), left);
}

} // namespace
