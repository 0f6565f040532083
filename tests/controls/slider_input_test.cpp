#include "controls/slider_fixture.h"

TEST_F(SliderControl, APressAtAnEndGivesExactlyZeroOrOne) {
    for (float step : {1.0F, 0.0001F, 0.05F}) {
        slider.SetSliderValueQuantized(step);
        slider.SetSliderValue(0.5F);
        Press({356, 16});
        EXPECT_EQ(slider.SliderValue(), 1.0F);
        Release({356, 16});
        Press({0, 0});
        EXPECT_EQ(slider.SliderValue(), 0.0F);
        Release({0, 0});
    }
}

TEST_F(SliderControl, TheVeryFirstPressAtTheOriginCounts) {
    SliderControl1 fresh;
    fresh.resize(100, 20);
    fresh.SetSliderValue(0.5F);
    QMouseEvent press(QEvent::MouseButtonPress, {0, 0}, {0, 0}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&fresh, &press);
    EXPECT_EQ(fresh.SliderValue(), 0.0F);
}

TEST_F(SliderControl, DraggingFollowsThePointer) {
    Press({178, 5});
    EXPECT_FLOAT_EQ(slider.SliderValue(), 170 / 342.0F);
    Move({9, 5});
    EXPECT_FLOAT_EQ(slider.SliderValue(), 1 / 342.0F);
    Move({-500, 900});
    EXPECT_EQ(slider.SliderValue(), 0.0F);
    Move({5000, 5});
    EXPECT_EQ(slider.SliderValue(), 1.0F);
    EXPECT_EQ(changes.count(), 0); // only Timeout raises it
    Release({5000, 5});
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SliderControl, TheVerticalFormGoesByTheOtherAxis) {
    slider.resize(17, 239);
    Press({200, 8});
    EXPECT_EQ(slider.SliderValue(), 0.0F);
    Move({-3, 119});
    EXPECT_FLOAT_EQ(slider.SliderValue(), (119 - 8) / 224.0F);
    Move({3, 231});
    EXPECT_EQ(slider.SliderValue(), 1.0F);
}

TEST_F(SliderControl, TheMouseKeepsToTheSteps) {
    slider.SetSliderValueQuantized(0.05F);
    for (int x = 0; x < 357; ++x) {
        x == 0 ? Press({x, 3}) : Move({x, 3});
        const double steps = slider.SliderValue() / 0.05;
        EXPECT_NEAR(steps, std::nearbyint(steps), 1e-5) << x;
    }
}

TEST_F(SliderControl, ChangeFollowsTheLastStepOfADrag) {
    Press({100, 5});
    EXPECT_TRUE(Pending(slider, "Timeout"));
    EXPECT_TRUE(Pending(slider, "Timer1"));
    Settle(slider, "Timeout");
    EXPECT_EQ(changes.take(), 1);
    Move({101, 5});
    EXPECT_TRUE(Pending(slider, "Timeout"));
    Settle(slider, "Timeout");
    EXPECT_EQ(changes.take(), 1);
    Release({101, 5});
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(SliderControl, AChangedValueRestartsTimeoutAndNothingElseDoes) {
    QTimer* timeout = TimerOf(slider, "Timeout");
    timeout->setInterval(60000);
    slider.SetSliderValueQuantized(0.5F);
    Press({0, 5});
    auto wear = [&] { return QTest::qWaitFor([&] { return timeout->remainingTime() <= 59990; }); };
    ASSERT_TRUE(wear());
    Move({1, 5}); // still 0
    EXPECT_LE(timeout->remainingTime(), 59990);
    Move({356, 5}); // 1
    EXPECT_GT(timeout->remainingTime(), 59990);
    ASSERT_TRUE(wear());
    Move({356, 5}); // the same place
    EXPECT_LE(timeout->remainingTime(), 59990);
}

TEST_F(SliderControl, TheFirstMoveCountsAsAChange) {
    // The value stays 0, yet it differs from the 10 that no value has.
    Press({0, 5});
    EXPECT_TRUE(Pending(slider, "Timer1"));
    Settle(slider, "Timer1");
    Release({0, 5});
    Settle(slider, "Timer1");
    Press({1, 5});
    EXPECT_FALSE(Pending(slider, "Timer1"));
}

TEST_F(SliderControl, AReleaseStopsTimeoutAndRaisesChange) {
    Press({100, 5});
    Settle(slider, "Timeout");
    Move({120, 5});
    Settle(slider, "Timer1");
    changes.take();
    Move({140, 5});
    Settle(slider, "Timer1");
    changes.take();
    Move({150, 5});
    Release({150, 5});
    EXPECT_FALSE(Pending(slider, "Timeout"));
    EXPECT_TRUE(Pending(slider, "Timer1"));
    EXPECT_EQ(changes.take(), 1);
    Settle(slider, "Timer1");
    EXPECT_EQ(changes.take(), 0);
}

TEST_F(SliderControl, APressWithoutAMoveStillRaisesChangeAfterTimeout) {
    Press({100, 5});
    Release({100, 5});
    changes.take();
    Press({100, 5}); // the same place: no move, no drag
    EXPECT_TRUE(Pending(slider, "Timeout"));
    Settle(slider, "Timeout");
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(SliderControl, APointerThatHasNotMovedSetsNothing) {
    Press({100, 5});
    slider.SetSliderValue(0.9F);
    Move({100, 5});
    EXPECT_EQ(slider.SliderValue(), 0.9F);
    Move({100, 6});
    EXPECT_FLOAT_EQ(slider.SliderValue(), 92 / 342.0F);
}

TEST_F(SliderControl, OnlyTheLeftButtonMovesTheThumb) {
    Press({100, 5}, Qt::RightButton);
    Move({200, 5}, Qt::RightButton);
    Move({210, 5}, Qt::NoButton);
    EXPECT_EQ(slider.SliderValue(), 0.0F);
    EXPECT_TRUE(Pending(slider, "Timeout"));
    Release({200, 5}, Qt::RightButton);
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(SliderControl, APressDuringADragIsNoSecondStart) {
    Press({100, 5});
    const float value = slider.SliderValue();
    Settle(slider, "Timeout");
    Send(QEvent::MouseButtonPress, {150, 5}, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    EXPECT_FALSE(Pending(slider, "Timeout"));
    EXPECT_EQ(slider.SliderValue(), value);
}

TEST_F(SliderControl, WheelAndKeysMoveOneStepAndTenWithAModifier) {
    slider.SetSliderValueQuantized(0.01F);
    slider.SetSliderValue(0.5F);
    changes.take();
    auto expect = [&](float value) {
        EXPECT_FLOAT_EQ(slider.SliderValue(), value);
        EXPECT_EQ(changes.take(), 1);
        EXPECT_TRUE(Pending(slider, "Timer1"));
    };
    Turn(120), expect(0.51F);
    Turn(-240), expect(0.49F);
    Turn(120, Qt::ShiftModifier), expect(0.59F);
    Turn(-120, Qt::ControlModifier), expect(0.49F);
    QTest::keyClick(&slider, Qt::Key_Right), expect(0.5F);
    QTest::keyClick(&slider, Qt::Key_Up), expect(0.51F);
    QTest::keyClick(&slider, Qt::Key_Left), expect(0.5F);
    QTest::keyClick(&slider, Qt::Key_Down), expect(0.49F);
    QTest::keyClick(&slider, Qt::Key_Right, Qt::ShiftModifier), expect(0.59F);
    QTest::keyClick(&slider, Qt::Key_PageUp), expect(0.69F);
    QTest::keyClick(&slider, Qt::Key_PageDown), expect(0.59F);
    QTest::keyClick(&slider, Qt::Key_End), expect(1.0F);
    QTest::keyClick(&slider, Qt::Key_Home), expect(0.0F);
}

TEST_F(SliderControl, TheWheelLeavesADragAlone) {
    Press({178, 5});
    const float held = slider.SliderValue();
    Turn(1200, {}, Qt::LeftButton);
    EXPECT_EQ(slider.SliderValue(), held);
    EXPECT_EQ(changes.take(), 0);
    Release({178, 5});
    changes.take();
    Turn(120);
    EXPECT_GT(slider.SliderValue(), held);
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(SliderControl, AtItsEndNothingHappens) {
    QTest::keyClick(&slider, Qt::Key_Home);
    QTest::keyClick(&slider, Qt::Key_Left);
    Turn(-120);
    EXPECT_EQ(changes.take(), 0);
    QTest::keyClick(&slider, Qt::Key_A);
    EXPECT_EQ(changes.take(), 0);
}

TEST_F(SliderControl, VerticallyTheThumbGoesWhereKeyAndWheelPoint) {
    slider.resize(17, 239);
    slider.SetSliderValueQuantized(0.01F);
    slider.SetSliderValue(0.5F);
    QTest::keyClick(&slider, Qt::Key_Up);
    EXPECT_FLOAT_EQ(slider.SliderValue(), 0.49F);
    QTest::keyClick(&slider, Qt::Key_Down);
    Turn(-120);
    EXPECT_FLOAT_EQ(slider.SliderValue(), 0.51F);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(slider.SliderValue(), 0.0F);
}

TEST_F(SliderControl, WithoutAStepTheKeysGoByHundredths) {
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_FLOAT_EQ(slider.SliderValue(), 0.01F);
}

TEST_F(SliderControl, AFineStepStillHasAUsefulPage) {
    slider.SetSliderValueQuantized(0.0001F);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_FLOAT_EQ(slider.SliderValue(), 0.0001F);
    QTest::keyClick(&slider, Qt::Key_Home);
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_FLOAT_EQ(slider.SliderValue(), 0.1F);
}

TEST_F(SliderControl, TheFocusIsSeenWhenItCameByTheKeyboard) {
    const QImage plain = slider.grab().toImage();
    QFocusEvent click(QEvent::FocusIn, Qt::MouseFocusReason);
    QApplication::sendEvent(&slider, &click);
    EXPECT_EQ(slider.grab().toImage(), plain);
    QFocusEvent tab(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&slider, &tab);
    EXPECT_TRUE(Pending(slider, "Timer1"));
    EXPECT_NE(slider.grab().toImage(), plain);
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(&slider, &out);
    EXPECT_EQ(slider.grab().toImage(), plain);
}
