#include "controls/knob_control.h"

#include "controls/button_control.h"
#include "controls/fonts.h"
#include "controls/knob_instances.h"
#include "controls/knob_properties.h"
#include "controls/knob_scroller.h"
#include "controls/knob_support.h"

#include <QLabel>
#include <QLineEdit>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using KnobProperties = KnobTest;
using KnobLifecycle = KnobTest;

} // namespace

TEST_F(KnobProperties, APutLaysOutOrOnlyStores) {
    const auto expectLaidOut = [&](bool laidOut, const char* name) {
        EXPECT_EQ(events(), laidOut ? Log({"Change", "Done"}) : Log()) << name;
        EXPECT_EQ(Pending(*knob, "Timer1"), laidOut) << name;
        Settle(*knob, "Timer1");
    };
    for (const KnobProperty& property : KnobPropertyTable()) {
        knob->setProperty(property.name, property.other);
        expectLaidOut(property.laysOut, property.name);
    }
    knob->SetKnobVisible(true);
    Settle(*knob, "Timer1");
    knob->SetKnobFont(InstrumentFont("Arial", 8.25));
    expectLaidOut(true, "KnobFont");
}

TEST_F(KnobProperties, EachIsAQtProperty) {
    const auto expectProperty = [](const char* name, const QVariant& other) {
        KnobControl1 fresh;
        EXPECT_NE(fresh.property(name), other) << name;
        EXPECT_TRUE(fresh.setProperty(name, other)) << name;
        EXPECT_EQ(fresh.property(name), other) << name;
    };
    for (const KnobProperty& property : KnobPropertyTable()) {
        EXPECT_EQ(KnobControl1().property(property.name), property.read) << property.name;
        expectProperty(property.name, property.other);
    }
    expectProperty("KnobFont", InstrumentFont("Arial", 9.75, true));
    EXPECT_EQ(knob->property("KnobXlatedValue"), knob->KnobXlatedValue());
    EXPECT_FALSE(knob->setProperty("KnobXlatedValue", "7"));
}

TEST_F(KnobProperties, KnobValueOfAnAnticlockwiseKnobIsReflectedInTheScroller) {
    knob->SetKnobAnticlock(true);
    knob->SetKnobValue(30);
    EXPECT_EQ(knob->KnobValue(), 30);
    EXPECT_EQ(child<KnobScroller>("KnobScroller")->value(), 70);
}

TEST_F(KnobProperties, AValueOutOfRangeIsIgnoredYetTheEventsCome) {
    knob->SetKnobValue(40);
    events();
    knob->SetKnobValue(101);
    EXPECT_EQ(knob->KnobValue(), 40);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobProperties, TheValueThatItHasRaisesTheEventsAllTheSame) {
    knob->SetKnobValue(40);
    events();
    knob->SetKnobValue(40);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobProperties, ANarrowerRangeTakesTheValueAlong) {
    knob->SetKnobValue(40);
    knob->SetKnobMax(30);
    EXPECT_EQ(knob->KnobValue(), 30);
    knob->SetKnobMin(35); // above the maximum
    EXPECT_EQ(knob->KnobValue(), 35);
    knob->SetKnobMax(35);
    EXPECT_EQ(knob->KnobValue(), 35);
}

TEST_F(KnobProperties, ReadingKnobAnticlockRunsTheTimeoutHandler) {
    knob->SetKnobTimeout(20000);
    press(100);
    move(120);
    move(140);
    ASSERT_TRUE(timeout()->isActive());
    events();
    EXPECT_FALSE(knob->KnobAnticlock());
    EXPECT_FALSE(timeout()->isActive());
    EXPECT_THAT(events(), ElementsAre("Change"));
    release(140);
    events();
    EXPECT_FALSE(knob->property("KnobAnticlock").toBool());
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobProperties, LimitsHoldTheValueOncePut) {
    knob->SetKnobApplyLimit(true);
    knob->SetKnobValue(90);
    EXPECT_EQ(knob->KnobValue(), 90);
    knob->SetKnobUpperLimit(60);
    EXPECT_EQ(knob->KnobValue(), 90); // with the next change path
    knob->SetKnobValue(91);
    EXPECT_EQ(knob->KnobValue(), 60);
    EXPECT_EQ(child<KnobScroller>("KnobScroller")->value(), 60);
}

TEST_F(KnobProperties, DesignLimitsAloneHoldNothing) {
    knob->ReadProperties({{"KnobApplyLimit", true}, {"KnobLowerLimit", 20}, {"KnobUpperLimit", 30}});
    knob->SetKnobValue(90);
    EXPECT_EQ(knob->KnobValue(), 90);
}

// Lifecycle

TEST_F(KnobLifecycle, ANewKnobHasItsChildrenAndTimers) {
    KnobControl1 fresh;
    for (const char* name : {"KnobValueLabel", "KnobValueTextbox", "KnobScroller", "ZeroButton"}) {
        EXPECT_NE(fresh.findChild<QWidget*>(name), nullptr) << name;
    }
    EXPECT_EQ(TimerOf(fresh, "Timer1")->interval(), 10);
    EXPECT_TRUE(Pending(fresh, "Timer1"));
    EXPECT_FALSE(Pending(fresh, "Timeout"));
    EXPECT_TRUE(TimerOf(fresh, "Timeout")->isSingleShot());
    EXPECT_EQ(fresh.KnobXlatedValue(), "");
    EXPECT_EQ(fresh.KnobFont().family(), "Aerial");
    EXPECT_EQ(fresh.KnobStopAngle(), -135);
}

TEST_F(KnobLifecycle, KnobTimeoutIsTheIntervalOfTimeout) {
    knob->SetKnobTimeout(35);
    EXPECT_EQ(timeout()->interval(), 35);
    knob->ReadProperties({{"KnobTimeout", 50}});
    EXPECT_EQ(timeout()->interval(), 50);
    knob->SetKnobTimeout(-4);
    EXPECT_EQ(timeout()->interval(), 0);
    EXPECT_EQ(knob->KnobTimeout(), -4);
}

TEST_F(KnobLifecycle, ExactlyOneOfLabelAndTextBoxIsVisible) {
    auto* label = child<QLabel>("KnobValueLabel");
    auto* box = child<QLineEdit>("KnobValueTextbox");
    EXPECT_TRUE(label->isVisible());
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(box->isReadOnly());
    knob->SetKnobValueEditable(true);
    EXPECT_FALSE(label->isVisible());
    EXPECT_TRUE(box->isVisible());
    EXPECT_FALSE(box->isReadOnly());
    knob->SetKnobVisible(false);
    EXPECT_FALSE(label->isVisible());
    EXPECT_FALSE(box->isVisible());
    knob->SetKnobVisible(true);
    EXPECT_FALSE(label->isVisible());
    EXPECT_TRUE(box->isVisible());
}

TEST_F(KnobLifecycle, HidingTakesTheChildrenAlong) {
    auto* zero = child<ButtonControl1>("ZeroButton");
    auto* scroller = child<KnobScroller>("KnobScroller");
    EXPECT_FALSE(zero->isVisible());
    knob->SetKnobZeroButton(true);
    EXPECT_TRUE(zero->isVisible());
    EXPECT_TRUE(scroller->isVisible());
    knob->SetKnobVisible(false);
    EXPECT_FALSE(zero->isVisible());
    EXPECT_FALSE(scroller->isVisible());
    knob->SetKnobFillColor(Qt::red); // a put while hidden shows nothing
    EXPECT_FALSE(zero->isVisible());
    knob->SetKnobVisible(true);
    EXPECT_TRUE(zero->isVisible());
    EXPECT_TRUE(scroller->isVisible());
    knob->SetKnobZeroButton(false);
    EXPECT_FALSE(zero->isVisible());
}

TEST_F(KnobLifecycle, AHiddenKnobAsksForNoRepaint) {
    knob->SetKnobVisible(false);
    Settle(*knob, "Timer1");
    knob->Refresh();
    EXPECT_FALSE(Pending(*knob, "Timer1"));
    knob->SetKnobVisible(true);
    Settle(*knob, "Timer1");
    knob->Refresh();
    EXPECT_TRUE(Pending(*knob, "Timer1"));
}

TEST_F(KnobLifecycle, ARepaintIsNotAskedForWithinALayout) {
    Settle(*knob, "Timer1");
    bool pending = true;
    QObject::connect(knob, &KnobControl1::Change, &context, [&] {
        knob->Refresh();
        pending = Pending(*knob, "Timer1");
    });
    knob->SetKnobMarkers("3");
    EXPECT_FALSE(pending);
    EXPECT_TRUE(Pending(*knob, "Timer1"));
}

TEST_F(KnobLifecycle, TheZeroButtonIsDressedByTheKnob) {
    knob->SetKnobZeroButton(true);
    knob->SetKnobFillColor(QColor(1, 2, 3));
    knob->SetKnobTextColor(QColor(4, 5, 6));
    auto* zero = child<ButtonControl1>("ZeroButton");
    EXPECT_EQ(zero->size(), QSize(7, 7));
    EXPECT_EQ(zero->ButtonFillColor(), QColor(1, 2, 3));
    EXPECT_EQ(zero->ButtonBackColor(), QColor(1, 2, 3));
    EXPECT_EQ(zero->ButtonForeColor(), QColor(4, 5, 6));
    EXPECT_EQ(zero->ButtonDepth(), 0);
    EXPECT_EQ(zero->ButtonCaptionNudgeY(), 1);
    EXPECT_EQ(zero->ButtonCaption(), "");
    EXPECT_FALSE(zero->ButtonSunk());
    EXPECT_EQ(zero->pos(), QPoint(39, 39)); // 41.5 - 3.5 + 1
}

TEST_F(KnobLifecycle, TheFontIsCopiedToTheChildren) {
    const QFont font = InstrumentFont("Arial", 9.75, true);
    knob->SetKnobFont(font);
    EXPECT_EQ(knob->font().pixelSize(), 13);
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->font().pixelSize(), 13);
    EXPECT_EQ(child<QLineEdit>("KnobValueTextbox")->font().pixelSize(), 13);
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->height(), QFontMetrics(font).height());
}

TEST_F(KnobLifecycle, WhatIsWrittenReadsBack) {
    for (const KnobInstance& k : KnobInstances()) {
        KnobControl1 first;
        first.ReadProperties(k.bag());
        EXPECT_EQ(first.KnobValue(), k.value) << k;
        KnobControl1 second;
        second.ReadProperties(first.WriteProperties());
        EXPECT_EQ(second.WriteProperties(), first.WriteProperties()) << k;
        EXPECT_EQ(second.KnobValue(), k.value) << k;
    }
    child<QLineEdit>("KnobValueTextbox")->setAlignment(Qt::AlignRight);
    EXPECT_EQ(knob->WriteProperties().value("Knobment"), 1);
}

TEST_F(KnobLifecycle, TheTextOfEveryInstanceFitsItsLabel) {
    struct Longest {
        const char* name;
        const char* family;
        double points;
        const char* text;
    };
    const std::vector<Longest> texts = {
        {"HorizZoomKnob", "Arial", 8.25, "x100"},
        {"TimeBaseKnob", "Arial", 8.25, "100ms/div"},
        {"TriggerKnob", "Arial", 8.25, "-100% trig"},
        {"VoltsKnob", "Microsoft Sans Serif", 8.25, "0.03V/div"},
        {"OffsetKnob", "Microsoft Sans Serif", 8.25, "-100.0%"},
        {"Math1VoltsKnob", "Small Fonts", 6.75, "0.03V/d"},
        {"Math1OffsetKnob", "Small Fonts", 6.75, "-100.0%"},
        {"DelayKnob", "Microsoft Sans Serif", 8.25, "100.0%"},
    };
    for (const KnobInstance& k : KnobInstances()) {
        for (const Longest& longest : texts) {
            if (std::string(longest.name) == k.name) {
                QVariantMap bag = k.bag();
                bag["KnobFont_Name"] = longest.family;
                bag["KnobFont_Size"] = longest.points;
                knob->ReadProperties(bag);
                knob->resize(k.size);
                const auto* label = child<QLabel>("KnobValueLabel");
                EXPECT_LE(label->fontMetrics().horizontalAdvance(longest.text), label->width()) << k;
                EXPECT_TRUE(knob->rect().contains(label->geometry())) << k;
            }
        }
    }
}

TEST_F(KnobLifecycle, OddSizesAngesAndMarkersAreHarmless) {
    for (QSize size : {QSize(0, 0), QSize(1, 1), QSize(28, 28), QSize(29, 200), QSize(300, 10)}) {
        for (const char* markers : {"0", "1", "abc", "", "2", "99999999"}) {
            for (int stop : {-45, 225, 100000, -2147483647}) {
                for (int align = -1; align < 5; ++align) {
                    knob->resize(size);
                    knob->SetKnobMarkers(markers);
                    knob->SetKnobStopAngle(stop);
                    knob->SetKnobValueAlign(align);
                    mouse(QEvent::MouseButtonPress, {5, 3}, Qt::LeftButton, Qt::LeftButton);
                    mouse(QEvent::MouseMove, {50, 3}, Qt::NoButton, Qt::LeftButton);
                    mouse(QEvent::MouseMove, {50, 30}, Qt::NoButton, Qt::LeftButton);
                    mouse(QEvent::MouseButtonRelease, {50, 30}, Qt::LeftButton, Qt::NoButton);
                    knob->grab();
                    EXPECT_GE(knob->KnobValue(), 0);
                    EXPECT_LE(knob->KnobValue(), 100);
                }
            }
        }
    }
}
