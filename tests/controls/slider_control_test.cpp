#include "controls/slider_control.h"

#include "controls/control_support.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using ChangeCounter = Counter<SliderControl1, void (SliderControl1::*)()>;

class SliderControl : public testing::Test {
  protected:
    SliderControl() {
        slider.resize(357, 17);
        slider.show();
        Settle(slider, "Timer1");
        changes.take();
    }

    void Send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, button, held, {});
        QApplication::sendEvent(&slider, &event);
    }
    void Press(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Send(QEvent::MouseButtonPress, at, button, button);
    }
    void Move(QPoint at, Qt::MouseButtons held = Qt::LeftButton) {
        Send(QEvent::MouseMove, at, Qt::NoButton, held);
    }
    void Release(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        Send(QEvent::MouseButtonRelease, at, button, {});
    }
    void Turn(int eighths, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButtons held = {}) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, {0, eighths}, held, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&slider, &event);
    }

    SliderControl1 slider;
    ChangeCounter changes{slider, &SliderControl1::Change};
};

} // namespace

TEST_F(SliderControl, TimersHaveTheirIntervals) {
    EXPECT_EQ(TimerOf(slider, "Timer1")->interval(), 50);
    EXPECT_EQ(TimerOf(slider, "Timeout")->interval(), 10);
    EXPECT_FALSE(Pending(slider, "Timeout"));
}

TEST_F(SliderControl, APutRaisesChangeTwice) {
    slider.SetSliderValue(0.5F);
    EXPECT_EQ(slider.SliderValue(), 0.5F);
    EXPECT_EQ(changes.take(), 2);
    EXPECT_TRUE(Pending(slider, "Timer1"));
    slider.SetSliderValue(0.5F);
    EXPECT_EQ(changes.take(), 2);
}

TEST_F(SliderControl, APutOutOfRangeKeepsTheValueAndRaisesChange) {
    slider.SetSliderValue(0.25F);
    changes.take();
    constexpr float inf = std::numeric_limits<float>::infinity();
    for (float bad : {1.5F, -0.001F, 1.0001F, inf, -inf, std::numeric_limits<float>::quiet_NaN()}) {
        slider.SetSliderValue(bad);
        EXPECT_EQ(slider.SliderValue(), 0.25F);
        EXPECT_EQ(changes.take(), 2);
    }
    for (float end : {0.0F, 1.0F}) {
        slider.SetSliderValue(end);
        EXPECT_EQ(slider.SliderValue(), end);
    }
}

TEST_F(SliderControl, APutIsNotQuantized) {
    slider.SetSliderValueQuantized(0.25F);
    slider.SetSliderValue(0.3F);
    EXPECT_EQ(slider.SliderValue(), 0.3F);
}

TEST_F(SliderControl, NotVisibleTheLayoutRaisesNothing) {
    slider.SetSliderVisible(false);
    EXPECT_EQ(changes.take(), 0);
    slider.SetSliderValue(0.5F);
    EXPECT_EQ(changes.take(), 1);
    slider.SetSliderDepth(1);
    slider.SetSliderValueQuantized(0.1F);
    EXPECT_EQ(changes.take(), 0);
    EXPECT_FALSE(Pending(slider, "Timer1"));
    slider.Refresh();
    EXPECT_TRUE(Pending(slider, "Timer1"));
}

TEST_F(SliderControl, NotVisibleItDrawsNothingAndComesBack) {
    const QImage shown = slider.grab().toImage();
    auto over = [&] {
        QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        slider.render(&image, {}, {}, QWidget::RenderFlags());
        return image;
    };
    const QImage visible = over();
    slider.SetSliderVisible(false);
    QImage untouched(slider.size(), QImage::Format_ARGB32_Premultiplied);
    untouched.fill(Qt::magenta);
    EXPECT_EQ(over(), untouched);
    slider.SetSliderVisible(true);
    EXPECT_EQ(over(), visible);
    EXPECT_EQ(changes.take(), 0);
}

TEST_F(SliderControl, PutsThatLayOutRaiseChangeOnce) {
    slider.SetSliderDepth(3);
    EXPECT_EQ(changes.take(), 1);
    slider.SetSliderValueQuantized(0.1F);
    EXPECT_EQ(changes.take(), 1);
    slider.resize(300, 20);
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(SliderControl, TheFillPutRequestsNoPaint) {
    Settle(slider, "Timer1");
    slider.SetSliderFillColor(Qt::red);
    EXPECT_FALSE(Pending(slider, "Timer1"));
    EXPECT_EQ(changes.take(), 0);
    EXPECT_EQ(slider.grab().toImage().pixelColor(8, 8), QColor(Qt::red));
}

TEST_F(SliderControl, AZeroStepIsIgnored) {
    slider.SetSliderValueQuantized(0.05F);
    changes.take();
    slider.SetSliderValueQuantized(0);
    EXPECT_EQ(slider.SliderValueQuantized(), 0.05F);
    EXPECT_EQ(changes.take(), 1);
    slider.SetSliderValueQuantized(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(slider.SliderValueQuantized(), 0.05F);
}

TEST_F(SliderControl, EveryShowRaisesChangeAfterTheLayouts) {
    SliderControl1 fresh;
    fresh.resize(100, 20);
    ChangeCounter counter(fresh, &SliderControl1::Change);
    fresh.show();
    EXPECT_EQ(counter.take(), 2);
    EXPECT_TRUE(Pending(fresh, "Timer1"));
    fresh.hide();
    EXPECT_EQ(counter.take(), 0);
    fresh.show();
    EXPECT_EQ(counter.take(), 2);
}

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

TEST_F(SliderControl, AHandlerMayLimitTheValue) {
    std::vector<float> seen;
    QObject::connect(&slider, &SliderControl1::Change, [&] {
        seen.push_back(slider.SliderValue());
        if (slider.SliderValue() > 0.99F) {
            slider.SetSliderValue(0.99F);
        }
    });
    slider.SetSliderValue(1.0F);
    EXPECT_EQ(slider.SliderValue(), 0.99F);
    EXPECT_EQ(seen, (std::vector<float>{1.0F, 0.99F, 0.99F, 0.99F}));
}

TEST_F(SliderControl, AHandlerThatAlwaysPutsComesToAnEnd) {
    int calls = 0;
    QObject::connect(&slider, &SliderControl1::Change, [&] {
        ++calls;
        slider.SetSliderValue(slider.SliderValue() < 0.5F ? 0.9F : 0.1F);
        slider.SetSliderDepth(calls % 3);
        slider.SetSliderValueQuantized(0.1F);
        slider.resize(300 + calls % 2, 17);
    });
    slider.SetSliderValue(0.3F);
    EXPECT_LT(calls, 2000);
    EXPECT_GT(calls, 1);
}

TEST_F(SliderControl, AHandlerMayDeleteItAnywhere) {
    const std::vector<std::function<void(SliderControl1&)>> ways = {
        [](SliderControl1& s) { s.SetSliderValue(0.5F); },
        [](SliderControl1& s) { s.SetSliderDepth(1); },
        [](SliderControl1& s) {
            QMouseEvent up(QEvent::MouseButtonRelease, {5, 5}, {5, 5}, Qt::LeftButton, {}, {});
            QApplication::sendEvent(&s, &up);
        },
        [](SliderControl1& s) {
            QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
            QApplication::sendEvent(&s, &right);
        },
        [](SliderControl1& s) {
            QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&s, &wheel);
        },
        [](SliderControl1& s) { TimerOf(s, "Timeout")->start(0); },
    };
    for (std::size_t i = 0; i < ways.size(); ++i) {
        QPointer<SliderControl1> doomed = new SliderControl1;
        doomed->resize(100, 20);
        doomed->show();
        QObject::connect(doomed, &SliderControl1::Change, [&] { delete doomed; });
        ways[i](*doomed);
        EXPECT_TRUE(QTest::qWaitFor([&] { return doomed.isNull(); })) << i;
    }
}

TEST_F(SliderControl, HidingItEndsADrag) {
    Press({100, 5});
    slider.hide();
    EXPECT_FALSE(Pending(slider, "Timeout"));
    slider.show();
    Press({200, 5});
    EXPECT_FLOAT_EQ(slider.SliderValue(), (200 - 8) / 342.0F);
}

TEST_F(SliderControl, NoSizeIsTooSmall) {
    for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(0, 50), QSize(50, 0), QSize(2, 2)}) {
        for (int depth : {0, 1, 32767}) {
            slider.resize(size);
            slider.SetSliderDepth(depth);
            slider.SetSliderValue(0.5F);
            Press({0, 0});
            Move({1, 1});
            Release({1, 1});
            Turn(120);
            QImage image(60, 60, QImage::Format_RGB32);
            slider.render(&image);
            EXPECT_GE(slider.SliderValue(), 0.0F);
            EXPECT_LE(slider.SliderValue(), 1.0F);
        }
    }
}

TEST_F(SliderControl, TheLookIsGrooveFrameAndThumb) {
    slider.resize(100, 16); // groove from y = 6 to 10
    slider.SetSliderFillColor(QColor(0, 0, 255));
    slider.SetSliderDepth(0);
    slider.SetSliderValue(0);
    QImage image(100, 16, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(60, 5), QColor(Qt::magenta).rgb());
    EXPECT_EQ(image.pixel(60, 6), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(image.pixel(60, 7), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(60, 8), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(60, 9), qRgb(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(image.pixel(60, 10), QColor(Qt::magenta).rgb());
    EXPECT_EQ(image.pixel(99, 6), qRgb(0xC0, 0xC0, 0xC0));
    EXPECT_EQ(image.pixel(8, 8), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(0, 0), QColor(Qt::magenta).rgb()); // the thumb is round
    slider.SetSliderDepth(1);
    QImage bevelled = image;
    slider.render(&bevelled, {}, {}, QWidget::RenderFlags());
    EXPECT_NE(bevelled, image);
    slider.SetSliderValue(1);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(92, 8), qRgb(0, 0, 255));
}

TEST_F(SliderControl, TheVerticalLookIsTheSameOnItsSide) {
    slider.resize(16, 100); // groove from x = 6 to 10
    slider.SetSliderValue(1);
    QImage image(16, 100, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    const std::vector<QRgb> across = {
        QColor(Qt::magenta).rgb(), qRgb(0x40, 0x40, 0x40),   qRgb(0, 0, 0), qRgb(0, 0, 0),
        qRgb(0xC0, 0xC0, 0xC0),    QColor(Qt::magenta).rgb()};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(image.pixel(5 + i, 50), across[static_cast<std::size_t>(i)]) << i;
    }
    EXPECT_EQ(image.pixel(7, 0), qRgb(0, 0, 0)); // the near end is closed one pixel in
    EXPECT_EQ(image.pixel(7, 1), qRgb(0x40, 0x40, 0x40));
    slider.SetSliderValue(0);
    slider.render(&image, {}, {}, QWidget::RenderFlags());
    EXPECT_EQ(image.pixel(7, 99), qRgb(0xC0, 0xC0, 0xC0));
}

TEST_F(SliderControl, GrooveAndThumbStandOnTheMiddleAtEveryScale) {
    const double ratio = slider.devicePixelRatioF();
    for (const QSize size : {QSize(100, 17), QSize(100, 15), QSize(100, 16), QSize(13, 85), QSize(17, 239)}) {
        slider.resize(size);
        slider.SetSliderDepth(0);
        slider.SetSliderFillColor(Qt::green);
        slider.SetSliderValue(0.5F);
        QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        slider.render(&image, {}, {}, QWidget::RenderFlags());
        const bool wide = size.width() > size.height();
        // Across the groove: the pixels that a line through thumb or groove finds, from the first to behind
        // the last, around the middle of the control.
        const auto middleOf = [&](int along, auto counts) {
            const int breadth = wide ? image.height() : image.width();
            int first = breadth;
            int last = -1;
            for (int across = 0; across < breadth; ++across) {
                if (counts(wide ? image.pixelColor(along, across) : image.pixelColor(across, along))) {
                    first = std::min(first, across);
                    last = across;
                }
            }
            return (first + last + 1) / 2.0 / ratio;
        };
        const double middle = (wide ? size.height() : size.width()) / 2.0;
        const double tolerance = 0.5 / ratio * (ratio == std::floor(ratio) ? 0 : 1) + 1e-9;
        const int length = wide ? image.width() : image.height();
        EXPECT_NEAR(middleOf(3, [](const QColor& c) { return c != QColor(Qt::magenta); }), middle, tolerance)
            << "groove of " << size.width() << "x" << size.height();
        EXPECT_NEAR(middleOf(length / 2, [](const QColor& c) { return c == QColor(Qt::green); }), middle,
                    tolerance)
            << "thumb of " << size.width() << "x" << size.height();
    }
}

TEST(SliderDesignKeys, ReadsTheKeysAndDefaultsForTheRest) {
    SliderControl1 slider;
    ChangeCounter changes(slider, &SliderControl1::Change);
    slider.ReadProperties({{QStringLiteral("Visible"), false},
                           {QStringLiteral("SliderFillColor"), QColor(Qt::red)},
                           {QStringLiteral("SliderDepth"), 1},
                           {QStringLiteral("SliderValue"), 0.5},
                           {QStringLiteral("SliderValueQuantized"), 0.05}});
    EXPECT_FALSE(slider.SliderVisible());
    EXPECT_EQ(slider.SliderFillColor(), QColor(Qt::red));
    EXPECT_EQ(slider.SliderDepth(), 1);
    EXPECT_EQ(slider.SliderValue(), 0.5F);
    EXPECT_EQ(slider.SliderValueQuantized(), 0.05F);
    SliderControl1 copy;
    copy.ReadProperties(slider.WriteProperties());
    EXPECT_EQ(copy.WriteProperties(), slider.WriteProperties());
    EXPECT_EQ(slider.WriteProperties().size(), 5);

    slider.ReadProperties({});
    EXPECT_TRUE(slider.SliderVisible());
    EXPECT_EQ(slider.SliderFillColor(), ToQColor(kButtonFace));
    EXPECT_EQ(slider.SliderDepth(), 2);
    EXPECT_EQ(slider.SliderValue(), 0.0F);
    EXPECT_EQ(slider.SliderValueQuantized(), 1.0F);
    EXPECT_TRUE(slider.WriteProperties().isEmpty());
    EXPECT_EQ(changes.count(), 0);
}

TEST(SliderDesignKeys, BadValuesAreTakenAsMissing) {
    SliderControl1 slider;
    slider.ReadProperties({{QStringLiteral("SliderValue"), 7},
                           {QStringLiteral("SliderDepth"), 1 << 20},
                           {QStringLiteral("SliderValueQuantized"), 0}});
    EXPECT_EQ(slider.SliderValue(), 0.0F);
    EXPECT_EQ(slider.SliderDepth(), 32767);
    EXPECT_EQ(slider.SliderValueQuantized(), 1.0F);
}

TEST(SliderProperties, AreQtPropertiesOfTheirNames) {
    SliderControl1 slider;
    const std::vector<std::pair<const char*, QVariant>> values = {
        {"SliderVisible", false}, {"SliderFillColor", QColor(1, 2, 3)}, {"SliderDepth", 5},
        {"SliderValue", 0.75F},   {"SliderValueQuantized", 0.05F},
    };
    for (const auto& [name, value] : values) {
        EXPECT_NE(slider.property(name), value) << name;
        EXPECT_TRUE(slider.setProperty(name, value)) << name;
        EXPECT_EQ(slider.property(name), value) << name;
    }
}
