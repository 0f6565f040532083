#include "controls/button_control.h"

#include "controls/control_support.h"
#include "controls/fonts.h"

#include <QMouseEvent>
#include <QPointer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class ButtonControl : public testing::Test {
  protected:
    ButtonControl() {
        button.resize(40, 40);
        button.SetButtonBackColor(Qt::darkCyan);
        button.SetButtonFillColor(Qt::green);
        button.show();
        Settle(button, "Timer1");
    }

    void Move(QPoint to) { QTest::mouseEvent(QTest::MouseMove, &button, Qt::LeftButton, {}, to); }
    void Press(Qt::MouseButton with = Qt::LeftButton) { QTest::mousePress(&button, with, {}, {20, 20}); }
    void Release(QPoint at, Qt::MouseButton with = Qt::LeftButton) {
        QTest::mouseRelease(&button, with, {}, at);
    }
    bool Requested() { return Pending(button, "Timer1"); }

    ButtonControl1 button;
    Counter<ButtonControl1, void (ButtonControl1::*)()> clicks{button, &ButtonControl1::Click};
};

} // namespace

TEST_F(ButtonControl, AReleaseOnItRaisesClick) {
    Press();
    EXPECT_TRUE(button.Pressed());
    EXPECT_TRUE(Requested());
    EXPECT_EQ(clicks.count(), 0);
    Settle(button, "Timer1");
    Release({20, 20});
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_FALSE(button.Pressed());
    EXPECT_TRUE(Requested());
}

TEST_F(ButtonControl, AnyMouseButtonPressesIt) {
    for (auto with : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        Press(with);
        Release({20, 20}, with);
    }
    EXPECT_EQ(clicks.count(), 3);
}

TEST_F(ButtonControl, ClickIsRaisedWhileItIsStillPressed) {
    bool pressed = false;
    QObject::connect(&button, &ButtonControl1::Click, [&] { pressed = button.Pressed(); });
    Press();
    Release({20, 20});
    EXPECT_TRUE(pressed);
}

TEST_F(ButtonControl, LeavingItLetsGoForGood) {
    Press();
    Settle(button, "Timer1");
    Move({41, 20});
    EXPECT_FALSE(button.Pressed());
    EXPECT_TRUE(Requested());
    Move({20, 20});
    EXPECT_FALSE(button.Pressed());
    Release({20, 20});
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_FALSE(button.Pressed());
}

TEST_F(ButtonControl, MovingInsideKeepsIt) {
    Press();
    for (const QPoint inside : {QPoint(0, 0), QPoint(40, 40), QPoint(0, 40), QPoint(3, 30)}) {
        Move(inside);
        EXPECT_TRUE(button.Pressed());
    }
    Release({40, 40});
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(ButtonControl, AReleaseOutsideRaisesNoClick) {
    Press();
    Move({60, 60});
    Release({60, 60});
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(ButtonControl, ASecondFastPressCountsLikeAnyOther) {
    Press();
    Release({20, 20});
    QMouseEvent second(QEvent::MouseButtonDblClick, {20, 20}, {20, 20}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&button, &second);
    EXPECT_TRUE(button.Pressed());
    Release({20, 20});
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(ButtonControl, NotVisibleItDrawsNothingButTakesTheMouse) {
    button.SetButtonVisible(false);
    EXPECT_FALSE(Requested());
    button.Refresh();
    button.SetButtonCaption(QStringLiteral("on"));
    button.resize(44, 44);
    EXPECT_FALSE(Requested());

    QImage image(44, 44, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    QImage untouched = image;
    button.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image, untouched);

    Press();
    EXPECT_FALSE(Requested());
    Release({20, 20});
    EXPECT_EQ(clicks.count(), 1);

    button.SetButtonVisible(true);
    EXPECT_TRUE(Requested());
    button.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_NE(image, untouched);
}

TEST_F(ButtonControl, EveryPutRequestsThePaint) {
    const std::vector<std::function<void()>> puts = {
        [&] { button.SetButtonVisible(true); },
        [&] { button.SetButtonFillColor(Qt::red); },
        [&] { button.SetButtonBackColor(Qt::red); },
        [&] { button.SetButtonForeColor(Qt::red); },
        [&] { button.SetButtonDepth(3); },
        [&] { button.SetButtonCaptionNudgeX(1); },
        [&] { button.SetButtonCaptionNudgeY(1); },
        [&] { button.SetButtonCaption(QStringLiteral("x")); },
        [&] { button.SetButtonSunk(false); },
        [&] { button.SetButtonFont(InstrumentFont(QStringLiteral("Arial"), 9)); },
        [&] { button.Refresh(); },
        [&] { button.resize(50, 50); },
    };
    for (std::size_t i = 0; i < puts.size(); ++i) {
        Settle(button, "Timer1");
        ASSERT_FALSE(Requested()) << i;
        puts[i]();
        EXPECT_TRUE(Requested()) << i;
    }
    EXPECT_EQ(TimerOf(button, "Timer1")->interval(), 50);
}

TEST_F(ButtonControl, PropertiesAreQtPropertiesOfTheirNames) {
    const std::vector<std::pair<const char*, QVariant>> values = {
        {"ButtonVisible", false},
        {"ButtonFillColor", QColor(1, 2, 3)},
        {"ButtonBackColor", QColor(4, 5, 6)},
        {"ButtonForeColor", QColor(7, 8, 9)},
        {"ButtonDepth", 7},
        {"ButtonCaptionNudgeX", -3},
        {"ButtonCaptionNudgeY", 4},
        {"ButtonCaption", QStringLiteral("trig")},
        {"ButtonSunk", false},
        {"ButtonFont", InstrumentFont(QStringLiteral("Arial"), 9.75, true)},
    };
    for (const auto& [name, value] : values) {
        EXPECT_NE(button.property(name), value) << name;
        EXPECT_TRUE(button.setProperty(name, value)) << name;
        EXPECT_EQ(button.property(name), value) << name;
    }
}

TEST_F(ButtonControl, NumbersAreCutToSixteenBits) {
    button.SetButtonDepth(1 << 20);
    button.SetButtonCaptionNudgeX(-(1 << 20));
    button.SetButtonCaptionNudgeY(1 << 20);
    button.SetButtonCaption(QStringLiteral("far"));
    EXPECT_EQ(button.ButtonDepth(), 32767);
    EXPECT_EQ(button.ButtonCaptionNudgeX(), -32768);
    EXPECT_EQ(button.ButtonCaptionNudgeY(), 32767);
    EXPECT_FALSE(button.grab().isNull());
}

TEST_F(ButtonControl, InitIsRaisedWhenItIsFirstShown) {
    ButtonControl1 fresh;
    Counter<ButtonControl1, void (ButtonControl1::*)()> inits(fresh, &ButtonControl1::Init);
    EXPECT_EQ(inits.count(), 0);
    fresh.show();
    EXPECT_EQ(inits.count(), 1);
    EXPECT_TRUE(Pending(fresh, "Timer1"));
    fresh.hide();
    fresh.show();
    EXPECT_EQ(inits.count(), 1);
}

TEST_F(ButtonControl, SpaceAndEnterPressIt) {
    for (int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        clicks.take();
        QTest::keyPress(&button, Qt::Key(key));
        EXPECT_TRUE(button.Pressed());
        EXPECT_EQ(clicks.count(), 0);
        QTest::keyRelease(&button, Qt::Key(key));
        EXPECT_FALSE(button.Pressed());
        EXPECT_EQ(clicks.count(), 1);
    }
    QTest::keyClick(&button, Qt::Key_A);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(ButtonControl, AHeldKeyPressesOnce) {
    QTest::keyPress(&button, Qt::Key_Space);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QApplication::sendEvent(&button, &up);
        QApplication::sendEvent(&button, &down);
    }
    EXPECT_EQ(clicks.count(), 0);
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(ButtonControl, ARepeatThatComesAsAReleaseAndAPressOfOneTimeIsNoPress) {
    const auto send = [this](QEvent::Type type, quint64 time, bool repeat = false) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), repeat);
        event.setTimestamp(time);
        QApplication::sendEvent(&button, &event);
    };
    send(QEvent::KeyPress, 100);
    for (const quint64 time : {700, 740, 780}) {
        send(QEvent::KeyRelease, time);
        send(QEvent::KeyPress, time);
    }
    send(QEvent::KeyRelease, 820, true);
    send(QEvent::KeyPress, 820, true);
    send(QEvent::KeyRelease, 900);
    EXPECT_EQ(clicks.count(), 1);
    send(QEvent::KeyPress, 960);
    send(QEvent::KeyRelease, 990);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(ButtonControl, LosingTheFocusLetsGoOfAKeyButNotOfTheMouse) {
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QTest::keyPress(&button, Qt::Key_Space);
    QApplication::sendEvent(&button, &out);
    EXPECT_FALSE(button.Pressed());
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(clicks.count(), 0);

    Press();
    QApplication::sendEvent(&button, &out);
    Release({20, 20});
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(ButtonControl, TheFocusIsSeenWhenItCameByTheKeyboard) {
    auto picture = [&](Qt::FocusReason reason) {
        QFocusEvent in(QEvent::FocusIn, reason);
        QApplication::sendEvent(&button, &in);
        const QImage image = button.grab().toImage();
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(&button, &out);
        return image;
    };
    const QImage plain = button.grab().toImage();
    EXPECT_EQ(picture(Qt::MouseFocusReason), plain);
    EXPECT_NE(picture(Qt::TabFocusReason), plain);
    EXPECT_EQ(button.grab().toImage(), plain);
}

TEST_F(ButtonControl, OnlyVisibleButtonsAreTabStops) {
    EXPECT_EQ(button.focusPolicy(), Qt::StrongFocus);
    button.SetButtonVisible(false);
    EXPECT_EQ(button.focusPolicy(), Qt::NoFocus);
    button.SetButtonVisible(true);
    EXPECT_EQ(button.focusPolicy(), Qt::StrongFocus);
    // An owner's own choice stays.
    button.setFocusPolicy(Qt::NoFocus);
    button.SetButtonVisible(true);
    EXPECT_EQ(button.focusPolicy(), Qt::NoFocus);
}

TEST_F(ButtonControl, TabGoesFromButtonToButtonInTheirOrder) {
    QWidget form;
    std::vector<ButtonControl1*> buttons;
    for (int i = 0; i < 4; ++i) {
        buttons.push_back(new ButtonControl1(&form));
        buttons.back()->setGeometry(10 + 40 * i, 10, 30, 30);
    }
    buttons[2]->SetButtonVisible(false);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    buttons[0]->setFocus();
    for (int next : {1, 3, 0}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), buttons[next]);
    }
}

TEST_F(ButtonControl, AHandlerMaySetPropertiesAndHideIt) {
    QObject::connect(&button, &ButtonControl1::Click, [&] {
        button.SetButtonCaption(QStringLiteral("again"));
        button.SetButtonVisible(false);
        button.resize(0, 0);
        button.hide();
    });
    Press();
    Release({20, 20});
    EXPECT_FALSE(button.Pressed());
    EXPECT_EQ(button.ButtonCaption(), QStringLiteral("again"));
}

TEST_F(ButtonControl, AHandlerMayDeleteIt) {
    for (bool byKey : {false, true}) {
        QPointer<ButtonControl1> doomed = new ButtonControl1;
        doomed->resize(40, 40);
        doomed->show();
        QObject::connect(doomed, &ButtonControl1::Click, [&] { delete doomed; });
        if (byKey) {
            QTest::keyPress(doomed, Qt::Key_Space);
            QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
            QApplication::sendEvent(doomed, &up);
        } else {
            QTest::mousePress(doomed, Qt::LeftButton);
            QMouseEvent up(QEvent::MouseButtonRelease, {20, 20}, {20, 20}, Qt::LeftButton, {}, {});
            QApplication::sendEvent(doomed, &up);
        }
        EXPECT_TRUE(doomed.isNull());
    }
}

TEST_F(ButtonControl, AHandlerOfInitMayDeleteIt) {
    QPointer<ButtonControl1> doomed = new ButtonControl1;
    QObject::connect(doomed, &ButtonControl1::Init, doomed, &QObject::deleteLater);
    doomed->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return doomed.isNull(); }));
}

TEST_F(ButtonControl, HidingItLetsGo) {
    Press();
    button.hide();
    EXPECT_FALSE(button.Pressed());
}

TEST(ButtonDesignKeys, ReadsTheKeysAndDefaultsForTheRest) {
    ButtonControl1 button;
    button.ReadProperties({{QStringLiteral("Visible"), false},
                           {QStringLiteral("ButtonDepth"), 5},
                           {QStringLiteral("ButtonCaptionNudgeY"), 1},
                           {QStringLiteral("ButtonCaption"), QStringLiteral("id")},
                           {QStringLiteral("ButtonSunk"), false},
                           {QStringLiteral("ButtonFont_Name"), QStringLiteral("Arial")},
                           {QStringLiteral("ButtonFont_Size"), 9.75},
                           {QStringLiteral("ButtonFont_Bold"), true},
                           {QStringLiteral("ButtonFont_Italic"), true},
                           {QStringLiteral("ButtonFont_Underline"), true}});
    EXPECT_FALSE(button.ButtonVisible());
    EXPECT_EQ(button.ButtonDepth(), 5);
    EXPECT_EQ(button.ButtonCaptionNudgeX(), 0);
    EXPECT_EQ(button.ButtonCaptionNudgeY(), 1);
    EXPECT_EQ(button.ButtonCaption(), QStringLiteral("id"));
    EXPECT_FALSE(button.ButtonSunk());
    EXPECT_EQ(button.ButtonFont().family(), QStringLiteral("Arial"));
    EXPECT_DOUBLE_EQ(FontPoints(button.ButtonFont()), 9.75);
    EXPECT_TRUE(button.ButtonFont().bold() && button.ButtonFont().italic() &&
                button.ButtonFont().underline());

    button.ReadProperties({});
    EXPECT_TRUE(button.ButtonVisible());
    for (const QColor& colour :
         {button.ButtonFillColor(), button.ButtonBackColor(), button.ButtonForeColor()}) {
        EXPECT_EQ(colour, ToQColor(kButtonFace));
    }
    EXPECT_EQ(button.ButtonDepth(), 2);
    EXPECT_EQ(button.ButtonCaptionNudgeY(), 0);
    EXPECT_EQ(button.ButtonCaption(), QString());
    EXPECT_TRUE(button.ButtonSunk());
    EXPECT_EQ(button.ButtonFont().family(), QStringLiteral("Aerial"));
    EXPECT_EQ(button.ButtonFont(), InstrumentFont(QStringLiteral("Aerial"), 10));
}

TEST(ButtonDesignKeys, WritesWhatDiffersFromTheWrittenDefaults) {
    ButtonControl1 button;
    EXPECT_EQ(button.WriteProperties(), (QVariantMap{{QStringLiteral("Visible"), true}}));
    button.SetButtonVisible(false);
    EXPECT_EQ(button.WriteProperties(), QVariantMap());
    // A hidden button is not remembered as hidden.
    ButtonControl1 copy;
    copy.ReadProperties(button.WriteProperties());
    EXPECT_TRUE(copy.ButtonVisible());
}

TEST(ButtonDesignKeys, EverythingElseComesBack) {
    ButtonControl1 button;
    button.SetButtonFillColor(Qt::red);
    button.SetButtonBackColor(Qt::green);
    button.SetButtonForeColor(Qt::blue);
    button.SetButtonDepth(0);
    button.SetButtonCaptionNudgeX(-1);
    button.SetButtonCaptionNudgeY(2);
    button.SetButtonCaption(QStringLiteral("cmp"));
    button.SetButtonSunk(false);
    button.SetButtonFont(InstrumentFont(QStringLiteral("Comic Sans MS"), 8.25, true));
    const QVariantMap bag = button.WriteProperties();
    EXPECT_EQ(bag.size(), 12);
    ButtonControl1 copy;
    copy.ReadProperties(bag);
    EXPECT_EQ(copy.WriteProperties(), bag);
    EXPECT_EQ(copy.ButtonFont(), button.ButtonFont());
}

TEST(ButtonDesignKeys, ValuesOfAnotherKindAreTakenAsMissing) {
    ButtonControl1 button;
    button.ReadProperties({{QStringLiteral("ButtonDepth"), QStringLiteral("deep")},
                           {QStringLiteral("ButtonFillColor"), 1.5},
                           {QStringLiteral("ButtonFont_Size"), -4},
                           {QStringLiteral("ButtonCaptionNudgeX"), 1e300},
                           {QStringLiteral("NoSuchKey"), 1}});
    EXPECT_EQ(button.ButtonFillColor(), ToQColor(kButtonFace));
    EXPECT_GT(FontPoints(button.ButtonFont()), 0);
    button.resize(30, 30);
    EXPECT_FALSE(button.grab().isNull());
}
