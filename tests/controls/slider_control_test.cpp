#include "controls/slider_fixture.h"

#include <QPointer>
#include <limits>

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
