#include "about/about_tab.h"

#include "about/about_tab_design.h"
#include "controls/form.h"
#include "controls/host_hyperlink.h"
#include "controls/hyperlink_label.h"
#include "frame/record/record.h"
#include "support/scripted_driver.h"

#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AboutTabTest : public testing::Test {
  protected:
    AboutTabTest() {
        record.CrLf = QStringLiteral("\r\n");
        record.ForcedPort = -2;
        record.NumScopesFound = 2;
        for (int channel : {1, 2}) {
            record.ScopeInUse[channel] = true;
            record.ScopePort[channel] = 3 + channel;
            list->addItem(QStringLiteral("%1:SN").arg(channel));
        }
        link->HyperLink()->SetOpener([this](const QString& target) {
            opened << target;
            return true;
        });
        tab.Connect();
        form.show();
    }
    void PutUpdateUrl(const QByteArray& bytes) const {
        QFile file(folder.filePath(QStringLiteral("update.url")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void ClickLine(int row) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }

    Record record;
    ScriptedInstrument scripted{2};
    QTemporaryDir folder;
    Form form{AboutTabDesign()};
    QListWidget* list = form.control<QListWidget>("CorvantineList");
    UserControl2* link = form.control<UserControl2>("WebLink");
    QStringList shown;
    std::function<void()> whileShown;
    QStringList opened;
    AboutTab tab{record, scripted.driver, AboutTab::Controls::Of(form), folder.path(),
                 AboutTab::Calls{.Show = [this](const QString& text) {
                     shown << text;
                     if (whileShown) {
                         whileShown();
                     }
                 }}};
};

TEST_F(AboutTabTest, AClickOnALineShowsThatModuleAndAsksItsPort) {
    ClickLine(1);
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_TRUE(shown[0].startsWith(QStringLiteral("Device 2\r\n----------\r\n")));
    EXPECT_TRUE(shown[0].contains(QStringLiteral("\r\nCOM: 5 (open)\r\n")));
    EXPECT_THAT(scripted.script.calls, ElementsAre("PortOpen(2)"));
}

TEST_F(AboutTabTest, APortThatTheDriverReportsClosedIsToldAndTheLineStays) {
    scripted.script.modules[1].portOpen = 0;
    ClickLine(0);
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_TRUE(shown[0].contains(QStringLiteral("\r\nCOM: 4 (closed)\r\n")));
    EXPECT_EQ(list->count(), 2);
}

TEST_F(AboutTabTest, AClickBelowTheLinesAndAnEmptyListShowNothing) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      {10, list->visualItemRect(list->item(1)).bottom() + 8});
    list->clear();
    tab.CorvantineList_Click();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_THAT(scripted.script.calls, IsEmpty());
}

TEST_F(AboutTabTest, TheListsPositionCountsAsTheChannel) {
    // Only module 2 is in use: its line is the first, and the box is the first channel's.
    record.ScopeInUse[1] = false;
    list->clear();
    list->addItem(QStringLiteral("2:SN"));
    ClickLine(0);
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_TRUE(shown[0].startsWith(QStringLiteral("Device 1\r\n")));
    EXPECT_TRUE(shown[0].contains(QStringLiteral("Note: because this device is not")));
}

TEST_F(AboutTabTest, TheKeyboardOpensTheLineItStandsOn) {
    list->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_THAT(shown, IsEmpty()); // to walk along the lines opens none
    for (auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(list, key);
    }
    ASSERT_THAT(shown, SizeIs(3));
    for (const QString& text : shown) {
        EXPECT_TRUE(text.startsWith(QStringLiteral("Device 2\r\n")));
    }
    QTest::keyClick(list, Qt::Key_Return, Qt::ControlModifier);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QCoreApplication::sendEvent(list, &held);
    EXPECT_THAT(shown, SizeIs(3));
}

TEST_F(AboutTabTest, ABoxThatIsOpenIsNotOpenedASecondTime) {
    whileShown = [this] { tab.CorvantineList_Click(); };
    ClickLine(0);
    EXPECT_THAT(shown, SizeIs(1));
    ClickLine(0);
    EXPECT_THAT(shown, SizeIs(2));
}

TEST_F(AboutTabTest, TheLinkIsReadAtEachClickAndOpenedWithoutTrimming) {
    QTest::mouseClick(link, Qt::LeftButton);
    EXPECT_THAT(opened, IsEmpty());
    PutUpdateUrl("[InternetShortcut]\r\nURL=http://example.org/one\r\n");
    QTest::mouseClick(link, Qt::LeftButton);
    PutUpdateUrl("URL=http://example.org/two");
    QTest::keyClick(link, Qt::Key_Return);
    EXPECT_THAT(opened, ElementsAre(QStringLiteral("http://example.org/one\r\n"),
                                    QStringLiteral("http://example.org/two")));
    EXPECT_THAT(shown, IsEmpty());
}
