#include "controls/keyboard_focus.h"

#include "controls/button_control.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTest>
#include <gtest/gtest.h>

TEST(KeyboardFocus, ShowsAfterTheKeyboardAndNotAfterTheMouse) {
    KeyboardFocus focus;
    EXPECT_TRUE(focus.In(Qt::TabFocusReason));
    EXPECT_TRUE(focus.Shown());
    EXPECT_TRUE(focus.Out(Qt::MouseFocusReason));
    EXPECT_FALSE(focus.In(Qt::MouseFocusReason));
    EXPECT_FALSE(focus.Shown());
}

TEST(KeyboardFocus, IsAsItWasWhenItsWindowComesBack) {
    for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        KeyboardFocus focus;
        focus.In(Qt::TabFocusReason);
        EXPECT_TRUE(focus.Out(reason)); // nothing shows where no key would go
        EXPECT_FALSE(focus.Shown());
        EXPECT_TRUE(focus.In(reason));
        EXPECT_TRUE(focus.Shown());

        KeyboardFocus clicked;
        clicked.In(Qt::MouseFocusReason);
        clicked.Out(reason);
        EXPECT_FALSE(clicked.In(reason));
        EXPECT_FALSE(clicked.Shown());
    }
}

TEST(KeyboardFocus, ForgetsAWindowThatItHasLeftOtherwiseSince) {
    KeyboardFocus focus;
    focus.In(Qt::TabFocusReason);
    focus.Out(Qt::ActiveWindowFocusReason);
    focus.In(Qt::ActiveWindowFocusReason);
    focus.Out(Qt::TabFocusReason);
    EXPECT_FALSE(focus.In(Qt::ActiveWindowFocusReason));
}

template <class T> class FocusRing : public testing::Test {
  protected:
    void Send(QEvent::Type type, Qt::FocusReason reason) {
        QFocusEvent event(type, reason);
        QApplication::sendEvent(&control, &event);
    }
    QImage Look() { return control.grab().toImage(); }
    bool Becomes(const QImage& wanted) {
        return QTest::qWaitFor([&] { return Look() == wanted; }, 30000);
    }
    T control;
};
using Controls = testing::Types<ButtonControl1, KnobControl1, SliderControl1, UserControl2>;
TYPED_TEST_SUITE(FocusRing, Controls);

TYPED_TEST(FocusRing, IsStillThereAfterAnotherWindowWasInFront) {
    this->control.resize(85, 96);
    this->control.show();
    QTest::qWait(200); // the first drawings are put off; what follows waits for what it compares
    const QImage plain = this->Look();
    this->Send(QEvent::FocusIn, Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitFor([&] { return this->Look() != plain; }, 30000));
    QTest::qWait(200);
    const QImage ringed = this->Look();
    this->Send(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    EXPECT_TRUE(this->Becomes(plain));
    this->Send(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    EXPECT_TRUE(this->Becomes(ringed));
    this->Send(QEvent::FocusOut, Qt::TabFocusReason);
    EXPECT_TRUE(this->Becomes(plain));
}

TEST(KeyboardFocus, AControlThatIsHiddenGivesItUp) {
    QWidget window;
    KnobControl1 knob(&window);
    ButtonControl1 button(&window);
    SliderControl1 slider(&window);
    window.show();
    const auto hide = [&](QWidget& control, auto setVisible) {
        control.setFocus(Qt::TabFocusReason);
        ASSERT_EQ(window.focusWidget(), &control);
        setVisible(false);
        EXPECT_NE(window.focusWidget(), &control);
        EXPECT_EQ(control.focusPolicy(), Qt::NoFocus);
        setVisible(true);
        EXPECT_EQ(control.focusPolicy(), Qt::StrongFocus);
    };
    hide(knob, [&](bool visible) { knob.SetKnobVisible(visible); });
    hide(button, [&](bool visible) { button.SetButtonVisible(visible); });
    hide(slider, [&](bool visible) { slider.SetSliderVisible(visible); });
}
