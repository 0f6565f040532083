#include "frame/window/keyboard.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

class KeyboardTest : public testing::Test {
  protected:
    KeyboardTest() {
        combo->addItems({"rest", "1", "2"});
        combo->move(0, 40);
        list->addItems({"run", "stop"});
        list->move(0, 80);
        for (QWidget* window : {&one, &two}) {
            window->setFocusPolicy(Qt::StrongFocus);
            window->resize(200, 200);
            window->show();
        }
    }
    void GoTo(QWidget& widget) {
        widget.window()->activateWindow();
        widget.setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(widget.window(), 30000));
    }
    std::function<void()> Note(const char* text) {
        return [this, text] { done.emplace_back(text); };
    }
    std::vector<std::string> Done() { return std::exchange(done, {}); }

    QWidget one, two;
    QLineEdit* edit = new QLineEdit(&one);
    QComboBox* combo = new QComboBox(&one);
    QListWidget* list = new QListWidget(&one);
    bool ready = true;
    std::vector<std::string> done;
    Keyboard keyboard{{&one, &two},
                      {.Ready = [this] { return ready; },
                       .RunButton_Click = Note("run"),
                       .OnceButton_Click = Note("single"),
                       .TrigModeButton_Click = Note("mode"),
                       .ChannelOnButton_Click =
                           [this](int channel) { done.push_back("channel " + std::to_string(channel)); },
                       .NormaliseButton_Click = Note("normal"),
                       .SampleDotsButton_Click = Note("dots"),
                       .FullScreenButton_Click = Note("large"),
                       .SaveDataButton_Click = Note("save"),
                       .Picture = Note("picture"),
                       .UsersGuideButton_Click = Note("guide"),
                       .Close = Note("close"),
                       .ClosePanel = Note("panel")}};
};

TEST_F(KeyboardTest, EveryKeyDoesItsOwnInEveryWindow) {
    for (QWidget* window : {&one, &two}) {
        GoTo(*window);
        for (auto key : {Qt::Key_R, Qt::Key_S, Qt::Key_T, Qt::Key_1, Qt::Key_4, Qt::Key_N, Qt::Key_D,
                         Qt::Key_L, Qt::Key_F1, Qt::Key_Escape}) {
            QTest::keyClick(window, key);
        }
        for (auto key : {Qt::Key_S, Qt::Key_C, Qt::Key_Q}) {
            QTest::keyClick(window, key, Qt::ControlModifier);
        }
        EXPECT_THAT(Done(), ElementsAre("run", "single", "mode", "channel 1", "channel 4", "normal", "dots",
                                        "large", "guide", "panel", "save", "picture", "close"));
    }
}

TEST_F(KeyboardTest, OtherKeysAndOtherModifiersDoNothing) {
    GoTo(one);
    for (auto key : {Qt::Key_5, Qt::Key_0, Qt::Key_A, Qt::Key_F2}) {
        QTest::keyClick(&one, key);
    }
    for (auto modifier : {Qt::ControlModifier, Qt::AltModifier}) {
        QTest::keyClick(&one, Qt::Key_R, modifier);
        QTest::keyClick(&one, Qt::Key_1, modifier);
    }
    EXPECT_THAT(Done(), IsEmpty());
}

TEST_F(KeyboardTest, ATextThatIsBeingTypedKeepsItsKeys) {
    GoTo(*edit);
    QTest::keyClicks(edit, QStringLiteral("rst1ndl"));
    EXPECT_EQ(edit->text(), QStringLiteral("rst1ndl"));
    edit->selectAll();
    for (auto key : {Qt::Key_C, Qt::Key_S, Qt::Key_Q}) {
        QTest::keyClick(edit, key, Qt::ControlModifier);
    }
    QTest::keyClick(edit, Qt::Key_F1);
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_THAT(Done(), IsEmpty());
    edit->setReadOnly(true);
    QTest::keyClicks(edit, QStringLiteral("r"));
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_THAT(Done(), ElementsAre("run", "panel"));
}

TEST_F(KeyboardTest, AListThatWasLeftWithTheFocusIsNoTextBeingTyped) {
    for (QWidget* field : std::initializer_list<QWidget*>{combo, list}) {
        GoTo(*field);
        QTest::keyClick(field, Qt::Key_R);
        QTest::keyClick(field, Qt::Key_2);
    }
    EXPECT_THAT(Done(), ElementsAre("run", "channel 2", "run", "channel 2"));
    EXPECT_EQ(combo->currentIndex(), 0);
}

TEST_F(KeyboardTest, WhileTheProgramStartsOrEndsNothingIsDone) {
    GoTo(one);
    ready = false;
    QTest::keyClick(&one, Qt::Key_R);
    QTest::keyClick(&one, Qt::Key_1);
    EXPECT_THAT(Done(), IsEmpty());
}

TEST_F(KeyboardTest, ARepeatThatComesAsAReleaseAndAPressOfOneTimeIsNoPress) {
    GoTo(one);
    const auto send = [&](QEvent::Type type, quint64 time, Qt::Key key = Qt::Key_R) {
        QKeyEvent event(type, key, Qt::NoModifier);
        event.setTimestamp(time);
        event.ignore();
        QApplication::sendEvent(&one, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(send(QEvent::ShortcutOverride, 100)) << "a press is the shortcut's";
    send(QEvent::KeyRelease, 700);
    EXPECT_TRUE(send(QEvent::ShortcutOverride, 700)) << "the key is still down";
    send(QEvent::KeyRelease, 740);
    EXPECT_FALSE(send(QEvent::ShortcutOverride, 740, Qt::Key_S)) << "another key";
    EXPECT_FALSE(send(QEvent::ShortcutOverride, 741)) << "a press again";
}
