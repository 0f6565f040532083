#include "controls/accessibility.h"
#include "controls/button_control.h"
#include "controls/knob_instances.h"
#include "controls/knob_scroller.h"
#include "controls/knob_support.h"

#include <QLabel>
#include <QLineEdit>
#include <QWheelEvent>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KnobInput : public KnobTest {
  protected:
    void wheel(int notches, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButtons held = {}) {
        QWheelEvent event({40, 40}, knob->mapToGlobal(QPointF(40, 40)), {},
                          {0, notches * QWheelEvent::DefaultDeltasPerStep}, held, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(knob, &event);
    }
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(knob, which, modifiers); }
};

class KnobTextBox : public KnobTest {
  protected:
    KnobTextBox() {
        knob->SetKnobValueEditable(true);
        knob->SetKnobValue(40);
        events();
    }
    void enter(const char* text, Qt::Key end = Qt::Key_Return) {
        box->setText(text);
        QTest::keyClick(box, end);
    }
    QLineEdit* box = child<QLineEdit>("KnobValueTextbox");
};

} // namespace

// Mouse

TEST_F(KnobInput, AClickTurnsAndRaisesDoneTwice) {
    press(135);
    EXPECT_EQ(knob->KnobValue(), 50);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    release(135);
    EXPECT_THAT(events(), ElementsAre("Done"));
}

TEST_F(KnobInput, EveryInstancePointsWhereTheMouseIs) {
    for (const KnobInstance& k : KnobInstances()) {
        knob->ReadProperties(k.bag());
        knob->resize(k.size);
        for (int turned = 5; turned < k.sweep; turned += 5) {
            mouse(QEvent::MouseButtonPress, at(turned, 11), Qt::LeftButton, Qt::LeftButton);
            const double p = turned / static_cast<double>(k.sweep);
            const double value = k.anticlock ? k.max - p * (k.max - k.min) : k.min + p * (k.max - k.min);
            EXPECT_NEAR(knob->KnobValue(), value, 0.51) << k << " at " << turned;
            mouse(QEvent::MouseButtonRelease, at(turned, 11), Qt::LeftButton, Qt::NoButton);
        }
    }
}

TEST_F(KnobInput, OtherButtonsOnlyRaiseDone) {
    press(135, Qt::RightButton);
    move(150, Qt::RightButton);
    EXPECT_THAT(events(), IsEmpty());
    release(150, Qt::RightButton);
    EXPECT_THAT(events(), ElementsAre("Done"));
    EXPECT_EQ(knob->KnobValue(), 0);
    press(135);
    events();
    move(150, Qt::LeftButton | Qt::RightButton);
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobInput, ChangeComesOncePerTimeoutDuringASteadyDrag) {
    knob->SetKnobTimeout(1);
    press(10);
    move(11);
    move(12);
    events();
    // Moves that never pause: a Timeout that they put back would never come.
    double turned = 12;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        turned = turned < 250 ? turned + 1 : 20;
        move(turned);
        return log.size() >= 3;
    }));
    EXPECT_THAT(events(), testing::Each("Change"));
    release(turned);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobInput, AMoveDoesNotPutTimeoutBack) {
    knob->SetKnobTimeout(60000);
    press(10);
    move(11);
    const int begun = timeout()->remainingTime();
    ASSERT_TRUE(QTest::qWaitFor([&] { return timeout()->remainingTime() < begun - 20; }));
    move(30);
    EXPECT_LT(timeout()->remainingTime(), begun - 10);
    EXPECT_TRUE(timeout()->isActive());
    release(30);
    EXPECT_FALSE(timeout()->isActive());
}

TEST_F(KnobInput, WithoutAnIntervalChangeWaitsForTheRelease) {
    press(10);
    move(11);
    events();
    for (int turned = 12; turned < 200; ++turned) {
        move(turned);
    }
    EXPECT_FALSE(timeout()->isActive());
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(child<KnobScroller>("KnobScroller")->value(), 74);
    release(199);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobInput, TheLabelLetsTheMouseThrough) {
    EXPECT_TRUE(child<QLabel>("KnobValueLabel")->testAttribute(Qt::WA_TransparentForMouseEvents));
}

// Zero button

TEST_F(KnobInput, TheZeroButtonSetsTheScrollerAsItStands) {
    knob->SetKnobZeroButton(true);
    knob->SetKnobZeroButtonValue(20);
    knob->SetKnobAnticlock(true);
    knob->SetKnobValue(50);
    events();
    QTest::mouseClick(child<ButtonControl1>("ZeroButton"), Qt::LeftButton);
    EXPECT_EQ(child<KnobScroller>("KnobScroller")->value(), 20);
    EXPECT_EQ(knob->KnobValue(), 80); // no reflection
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    QTest::mouseClick(child<ButtonControl1>("ZeroButton"), Qt::LeftButton);
    EXPECT_THAT(events(), IsEmpty()); // it stands there already
}

// Wheel and keys

TEST_F(KnobInput, TheWheelTurnsByOneStepAndByTen) {
    knob->SetKnobValue(50);
    events();
    wheel(1);
    EXPECT_EQ(knob->KnobValue(), 51);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    wheel(-1);
    EXPECT_EQ(knob->KnobValue(), 50);
    wheel(1, Qt::ShiftModifier);
    EXPECT_EQ(knob->KnobValue(), 60);
    wheel(-1, Qt::ControlModifier);
    EXPECT_EQ(knob->KnobValue(), 50);
    wheel(100);
    EXPECT_EQ(knob->KnobValue(), 100);
    events();
    wheel(1);
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobInput, AnAnticlockwiseKnobStepsInItsOwnSense) {
    knob->SetKnobAnticlock(true);
    knob->SetKnobValue(50);
    wheel(1);
    EXPECT_EQ(knob->KnobValue(), 51);
    key(Qt::Key_Up);
    EXPECT_EQ(knob->KnobValue(), 52);
    key(Qt::Key_Home);
    EXPECT_EQ(knob->KnobValue(), 0);
}

TEST_F(KnobInput, TheWheelLeavesADragAlone) {
    press(135);
    events();
    wheel(1, {}, Qt::LeftButton);
    EXPECT_EQ(knob->KnobValue(), 50);
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobInput, KeysStepPageAndGoToTheEnds) {
    knob->SetKnobValue(50);
    key(Qt::Key_Right);
    EXPECT_EQ(knob->KnobValue(), 51);
    key(Qt::Key_Left);
    key(Qt::Key_Down);
    EXPECT_EQ(knob->KnobValue(), 49);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(knob->KnobValue(), 59);
    key(Qt::Key_PageUp);
    EXPECT_EQ(knob->KnobValue(), 69);
    key(Qt::Key_PageDown);
    EXPECT_EQ(knob->KnobValue(), 59);
    key(Qt::Key_End);
    EXPECT_EQ(knob->KnobValue(), 100);
    key(Qt::Key_Home);
    EXPECT_EQ(knob->KnobValue(), 0);
    events();
    key(Qt::Key_A);
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobInput, StepsStopAtTheLimits) {
    knob->SetKnobApplyLimit(true);
    knob->SetKnobLowerLimit(10);
    knob->SetKnobUpperLimit(60);
    key(Qt::Key_End);
    EXPECT_EQ(knob->KnobValue(), 60);
    key(Qt::Key_Home);
    EXPECT_EQ(knob->KnobValue(), 10);
}

// Scroller

TEST_F(KnobInput, TheScrollersArrowsTrackAndThumbMoveTheValue) {
    knob->SetKnobValue(50);
    events();
    auto* scroller = child<KnobScroller>("KnobScroller");
    const KnobScroller::Track track = scroller->track();
    const int y = 5;
    QTest::mouseClick(scroller, Qt::LeftButton, {}, {track.right + 1, y});
    EXPECT_EQ(knob->KnobValue(), 51);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    QTest::mouseClick(scroller, Qt::LeftButton, {}, {track.left - 1, y});
    EXPECT_EQ(knob->KnobValue(), 50);
    QTest::mouseClick(scroller, Qt::LeftButton, {}, {track.right - 1, y});
    EXPECT_EQ(knob->KnobValue(), 60);
    QTest::mouseClick(scroller, Qt::LeftButton, {}, {track.left, y});
    EXPECT_EQ(knob->KnobValue(), 50);
    QTest::mousePress(scroller, Qt::LeftButton, {}, scroller->thumb().center());
    SendMouse(scroller, QEvent::MouseMove, QPointF(500, y), Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(knob->KnobValue(), 100);
    SendMouse(scroller, QEvent::MouseMove, QPointF(-500, y), Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(knob->KnobValue(), 0);
    QTest::mouseRelease(scroller, Qt::LeftButton, {}, {0, y});
    SendMouse(scroller, QEvent::MouseMove, QPointF(500, y), Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(knob->KnobValue(), 0); // let go
    knob->SetKnobValue(50);
    events();
    QTest::mouseClick(scroller, Qt::RightButton, {}, {track.right + 1, y});
    EXPECT_EQ(knob->KnobValue(), 50);
}

TEST_F(KnobInput, AScrollerBeyondALimitIsSetBack) {
    knob->SetKnobApplyLimit(true);
    knob->SetKnobUpperLimit(60);
    auto* scroller = child<KnobScroller>("KnobScroller");
    scroller->setValue(80);
    EXPECT_EQ(scroller->value(), 60);
    EXPECT_EQ(knob->KnobValue(), 60);
}

TEST_F(KnobInput, TheScrollerFollowsRangeAndValue) {
    auto* scroller = child<KnobScroller>("KnobScroller");
    knob->SetKnobMin(-100000);
    knob->SetKnobMax(100000);
    EXPECT_EQ(scroller->minimum(), -32768);
    EXPECT_EQ(scroller->maximum(), 32767);
    EXPECT_EQ(scroller->pageStep(), 20000);
    knob->SetKnobValue(-5);
    EXPECT_EQ(scroller->value(), -5);
}

TEST_F(KnobInput, AScrollerOfNoSizeIsHarmless) {
    knob->resize(20, 20);
    auto* scroller = child<KnobScroller>("KnobScroller");
    for (int x = -1; x < 3; ++x) {
        QTest::mouseClick(scroller, Qt::LeftButton, {}, {x, 0});
    }
    scroller->grab();
}

// Text box

TEST_F(KnobTextBox, ReturnTakesANumberInRange) {
    enter("62.5");
    EXPECT_EQ(knob->KnobValue(), 62); // ties to even
    EXPECT_EQ(box->text(), "62.0");
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    enter(" 100 ", Qt::Key_Enter);
    EXPECT_EQ(knob->KnobValue(), 100);
    enter("0");
    EXPECT_EQ(knob->KnobValue(), 0);
}

TEST_F(KnobTextBox, AnythingElseIsRestoredThroughTheChangePath) {
    for (const char* text : {"101", "-1", "abc", "", "1e99", "nan", "4 2", "42V"}) {
        enter(text);
        EXPECT_EQ(knob->KnobValue(), 40) << text;
        EXPECT_EQ(box->text(), "40.0") << text;
        EXPECT_THAT(events(), ElementsAre("Change", "Done")) << text;
    }
}

TEST_F(KnobTextBox, EscapeRestores) {
    enter("62", Qt::Key_Escape);
    EXPECT_EQ(knob->KnobValue(), 40);
    EXPECT_EQ(box->text(), "40.0");
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobTextBox, TheNumberIsTheScrollersAsItStands) {
    knob->SetKnobAnticlock(true);
    enter("30");
    EXPECT_EQ(child<KnobScroller>("KnobScroller")->value(), 30);
    EXPECT_EQ(knob->KnobValue(), 70);
}

TEST_F(KnobTextBox, TheSameNumberOnlyTidiesTheText) {
    enter("40.2");
    EXPECT_EQ(box->text(), "40.0");
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobTextBox, AnEditThatIsLeftIsForgotten) {
    box->setText("62");
    QFocusEvent out(QEvent::FocusOut, Qt::MouseFocusReason);
    QApplication::sendEvent(box, &out);
    EXPECT_EQ(box->text(), "40.0");
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobTextBox, ItsOwnMenuKeepsWhatWasTyped) {
    box->setText("62");
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(box, &out);
    EXPECT_EQ(box->text(), "62");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(knob->KnobValue(), 62);
}

TEST_F(KnobTextBox, ItIsCentred) {
    EXPECT_TRUE(box->alignment() & Qt::AlignHCenter);
}

// Focus and assistive technology

TEST_F(KnobInput, TabGivesAVisibleFocusAndAClickDoesNot) {
    const QImage plain = knob->grab().toImage();
    QFocusEvent byTab(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(knob, &byTab);
    EXPECT_NE(knob->grab().toImage(), plain);
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(knob, &out);
    EXPECT_EQ(knob->grab().toImage(), plain);
    QFocusEvent byMouse(QEvent::FocusIn, Qt::MouseFocusReason);
    QApplication::sendEvent(knob, &byMouse);
    EXPECT_EQ(knob->grab().toImage(), plain);
    EXPECT_EQ(knob->focusPolicy(), Qt::StrongFocus);
}

TEST(KnobAccessibility, AssistiveTechnologySeesADialWithItsValue) {
    InstallAccessibility();
    KnobControl1 knob;
    Counter changes(knob, &KnobControl1::Change);
    knob.setToolTip("Set the time base");
    knob.SetKnobValueFormat("x0");
    knob.SetKnobValue(17);
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&knob);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Dial);
    EXPECT_EQ(seen->text(QAccessible::Name), "Set the time base");
    EXPECT_EQ(seen->text(QAccessible::Value), "x17");
    QAccessibleValueInterface* value = seen->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue(), 17);
    EXPECT_EQ(value->minimumValue(), 0);
    EXPECT_EQ(value->maximumValue(), 100);
    EXPECT_EQ(value->minimumStepSize(), 1);
    changes.take();
    value->setCurrentValue(30);
    EXPECT_EQ(knob.KnobValue(), 30);
    EXPECT_EQ(changes.count(), 1);
    value->setCurrentValue(1e12);
    value->setCurrentValue("abc");
    EXPECT_EQ(knob.KnobValue(), 30);
}
