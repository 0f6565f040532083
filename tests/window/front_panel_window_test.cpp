#include "frame/record/record.h"
#include "window/front_panel.h"

TEST_F(FrontPanel, ShowsFourTracesOnTheScreen) {
    Start();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const QColor colour = ToQColor(record->ChannelColour[channel]);
        EXPECT_TRUE(Until([&] { return PixelsOnScreen(colour) > 300; })) << "channel " << channel;
    }
    EXPECT_FALSE(Main<QLabel>("DemoLabel")->isVisible());
    ShutDown(*instrument);
}

TEST_F(FrontPanel, APersonFindsATraceTriggersOnItScalesItAndFindsItAgain) {
    Start();
    EXPECT_TRUE(Until([&] { return StatusIsRed() && Status() == QStringLiteral("trigger !"); }));

    // Time base: from 1us/div towards the slow end and on to a setting with several periods in view.
    auto* timeBase = Main<KnobControl1>("TimeBaseKnob");
    Turn(*timeBase, 20.0 / 27, 18.0 / 27);
    EXPECT_TRUE(Until([&] { return timeBase->KnobXlatedValue() == QStringLiteral("4us/div"); }))
        << qPrintable(timeBase->KnobXlatedValue());
    EXPECT_TRUE(Main<QLabel>("AcqModeLabel")->text().contains(QStringLiteral("40ns, refresh mode")));

    // The trigger level leaves the signal and comes back to it.
    auto* level = Main<KnobControl1>("TriggerKnob");
    Turn(*level, 0.5, 0.95);
    EXPECT_TRUE(Until([&] { return level->KnobValue() > 80; }));
    EXPECT_TRUE(Until([&] { return !StatusIsRed(); }));
    Turn(*level, 0.95, 0.55);
    EXPECT_TRUE(Until([&] { return level->KnobValue() > 0 && level->KnobValue() < 20; }));
    EXPECT_TRUE(Until([&] { return StatusIsRed() && Status() == QStringLiteral("trigger !"); }));
    const int keptLevel = level->KnobValue();

    // Channel 2 by its panel: pulled out, less sensitive, inverted.
    real_mouse::Click(*Tab<QWidget>(2, "Image1"));
    EXPECT_TRUE(Until([&] { return record->TabOpen[2]; }));
    auto* volts = Tab<KnobControl1>(2, "VoltsKnob");
    EXPECT_TRUE(Until([&] {
        const QPoint at = volts->mapToGlobal(volts->rect().center());
        return QApplication::widgetAt(at) == volts || volts->isAncestorOf(QApplication::widgetAt(at));
    })) << "the panel did not come out from under the face";
    Turn(*volts, 1.0, 0.5);
    EXPECT_TRUE(Until([&] { return volts->KnobXlatedValue() == QStringLiteral("3V/div"); }))
        << qPrintable(volts->KnobXlatedValue());
    real_mouse::Click(*Tab<QWidget>(2, "InvertButton"));
    EXPECT_TRUE(Until([&] { return record->ChannelInvert[2]; }));
    // A right click on a header switches its channel.
    real_mouse::Click(*Tab<QWidget>(4, "Image1"), 3);
    EXPECT_TRUE(Until([&] { return !record->ChannelOn[4]; }));
    EXPECT_TRUE(Until([&] { return PixelsOnScreen(ToQColor(record->ChannelColour[4])) < 100; }));

    real_mouse::Click(*Main<QWidget>("TrigTypeButton"));
    EXPECT_TRUE(Until([&] { return record->TrigType == 0; }));
    real_mouse::Click(*Main<QWidget>("CloseButton"));
    EXPECT_TRUE(Until([&] { return instrument->closing.Served(); }));

    Start();
    EXPECT_EQ(Main<KnobControl1>("TimeBaseKnob")->KnobXlatedValue(), QStringLiteral("4us/div"));
    EXPECT_EQ(Main<KnobControl1>("TriggerKnob")->KnobValue(), keptLevel);
    EXPECT_EQ(Tab<KnobControl1>(2, "VoltsKnob")->KnobXlatedValue(), QStringLiteral("3V/div"));
    EXPECT_TRUE(record->ChannelInvert[2]);
    EXPECT_FALSE(record->ChannelOn[4]);
    EXPECT_EQ(record->TrigType, 0);
    EXPECT_EQ(record->TrigMode, 0);
    ShutDown(*instrument);
}

TEST_F(FrontPanel, TheWindowIsMovedByItsPictureAndComesBackWhereItWas) {
    Start();
    const QPoint before(instrument->forms.surface->Left(), instrument->forms.surface->Top());
    auto* face = Main<Picture>("Image1");
    const QPointF grip(200, 24); // between the name and the window buttons
    real_mouse::Drag(*face, {grip, grip + QPointF(10, 8), grip + QPointF(40, 30), grip + QPointF(60, 50)});
    EXPECT_TRUE(Until([&] { return instrument->forms.surface->Left() > before.x() + 20; }));
    const QPoint moved(instrument->forms.surface->Left(), instrument->forms.surface->Top());
    EXPECT_GT(moved.y(), before.y());
    ShutDown(*instrument);

    Start();
    EXPECT_TRUE(Until([&] {
        return QPoint(instrument->forms.surface->Left(), instrument->forms.surface->Top()) == moved;
    })) << instrument->forms.surface->Left()
        << ", " << instrument->forms.surface->Top() << " instead of " << moved.x() << ", " << moved.y();
    ShutDown(*instrument);
}
