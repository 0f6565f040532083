#include "frame/instrument/closing.h"

#include "support/patience.h"

#include <QEventLoop>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

class ClosingTest : public testing::Test {
  protected:
    bool Ended() {
        return QTest::qWaitFor([this] { return closing.Served(); }, kPatience);
    }
    std::vector<std::string> steps;
    bool busy = false;
    Closing closing{{.Begin = [this] { steps.emplace_back("begin"); },
                     .Busy = [this] { return busy; },
                     .End = [this] { steps.emplace_back("end"); }}};
};

TEST_F(ClosingTest, WithNothingInItsWayEndsAtOnceAndOnlyOnce) {
    EXPECT_FALSE(closing.Wanted());
    closing.Request();
    EXPECT_THAT(steps, ElementsAre("begin", "end"));
    EXPECT_TRUE(closing.Wanted() && closing.Served());
    closing.Request();
    closing.Serve();
    EXPECT_THAT(steps, ElementsAre("begin", "end"));
}

TEST_F(ClosingTest, WaitsForTheOutermostHandlerAndNotForItsEvents) {
    {
        const Closing::Handler outer(closing);
        {
            const Closing::Handler inner(closing);
            closing.Request();
        }
        QCoreApplication::processEvents();
        EXPECT_THAT(steps, ElementsAre("begin"));
    }
    EXPECT_FALSE(closing.Served()); // who held it has yet to return
    EXPECT_TRUE(Ended());
    EXPECT_THAT(steps, ElementsAre("begin", "end"));
}

TEST_F(ClosingTest, WithoutAWishNothingEndsWhenHandlersReturn) {
    { const Closing::Handler handler(closing); }
    closing.Serve();
    QCoreApplication::processEvents();
    EXPECT_TRUE(steps.empty());
}

TEST_F(ClosingTest, LeavesAHandlerBehindThatNeverReturns) {
    busy = true;
    closing.Request();
    EXPECT_FALSE(closing.Served());
    EXPECT_TRUE(Ended());
}

TEST_F(ClosingTest, EndsSoonAfterAHandlerWithAFlagIsDone) {
    busy = true;
    closing.Request();
    busy = false;
    EXPECT_TRUE(Ended());
}

TEST_F(ClosingTest, NoInputIsServedBetweenTheWishAndTheEnd) {
    QLineEdit edit;
    edit.show();
    {
        const Closing::Handler handler(closing);
        QTest::keyClick(&edit, Qt::Key_A);
        closing.Request();
        QTest::keyClick(&edit, Qt::Key_B);
    }
    EXPECT_TRUE(Ended());
    QTest::keyClick(&edit, Qt::Key_C); // the shutdown may have a box to show
    EXPECT_EQ(edit.text(), QStringLiteral("ac"));
}

TEST_F(ClosingTest, ABoxThatAsksIsSentAwayAndItsHandlerReturnsFirst) {
    bool servedInsideTheBox = true;
    QTimer::singleShot(0, &closing, [&] {
        QMessageBox box(QMessageBox::NoIcon, QString(), QStringLiteral("?"), QMessageBox::Ok);
        QTimer::singleShot(0, &closing, [this] { closing.Request(); });
        box.exec();
        servedInsideTheBox = closing.Served();
    });
    QEventLoop loop; // as the program's own
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (closing.Served()) {
            loop.quit();
        }
    });
    look.start(5);
    QTimer::singleShot(kPatience, &loop, [&] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0);
    EXPECT_FALSE(servedInsideTheBox);
    EXPECT_THAT(steps, ElementsAre("begin", "end"));
}
