#include "controls/knob_control.h"

#include "controls/button_control.h"
#include "controls/fonts.h"
#include "controls/knob_instances.h"
#include "controls/knob_scroller.h"
#include "controls/knob_support.h"

#include <QLabel>
#include <QLineEdit>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using KnobEventsOf = KnobTest;

} // namespace

TEST_F(KnobEventsOf, AChangeTranslatesFirst) {
    QObject::connect(knob, &KnobControl1::KnobXlateValue, &context, [&](float value, QString& text) {
        log.emplace_back("Xlate");
        EXPECT_EQ(value, 7);
        EXPECT_EQ(text, "7");
        text = "1us/div";
    });
    knob->SetKnobValue(7);
    EXPECT_THAT(events(), ElementsAre("Xlate", "Change", "Done"));
    EXPECT_EQ(knob->KnobXlatedValue(), "1us/div");
    EXPECT_EQ(knob->ShownText(), "1us/div");
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->text(), "1us/div");
    EXPECT_EQ(child<QLineEdit>("KnobValueTextbox")->text(), "1us/div");
}

TEST_F(KnobEventsOf, RefreshValueTranslatesAndNothingElse) {
    QString scale = "0.3";
    QObject::connect(knob, &KnobControl1::KnobXlateValue, &context,
                     [&](float, QString& text) { text = scale + "V/div"; });
    knob->SetKnobValue(1);
    events();
    scale = "3";
    knob->RefreshValue();
    EXPECT_EQ(knob->ShownText(), "3V/div");
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobEventsOf, NumbersGoThroughTheFormat) {
    knob->SetKnobValue(35);
    knob->SetKnobValueFormat("0\\% trig");
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->text(), "35% trig");
    EXPECT_EQ(knob->KnobXlatedValue(), "35");
    knob->SetKnobValueFormat("");
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->text(), "");
    EXPECT_EQ(child<QLineEdit>("KnobValueTextbox")->text(), "");
    EXPECT_FALSE(child<QLineEdit>("KnobValueTextbox")->isEnabled());
    knob->SetKnobValueFormat("V/div");
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->text(), "V/div");
    EXPECT_TRUE(child<QLineEdit>("KnobValueTextbox")->isEnabled());
}

TEST_F(KnobEventsOf, ATextIsNeverMarkup) {
    QObject::connect(knob, &KnobControl1::KnobXlateValue, &context,
                     [](float, QString& text) { text = "<b>1</b>"; });
    knob->RefreshValue();
    EXPECT_EQ(child<QLabel>("KnobValueLabel")->textFormat(), Qt::PlainText);
}

TEST_F(KnobEventsOf, TheHiddenKnobRaisesThemForANewValueOnly) {
    knob->SetKnobVisible(false);
    knob->SetKnobFillColor(Qt::red);
    EXPECT_THAT(events(), IsEmpty());
    knob->SetKnobValue(12);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    knob->SetKnobValue(12);
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(KnobEventsOf, AControlThatWasNeverShownRaisesThem) {
    KnobControl1 fresh;
    Counter changes(fresh, &KnobControl1::Change);
    fresh.SetKnobValue(12);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(fresh.KnobValue(), 12);
}

TEST_F(KnobEventsOf, ShowAndResizeLayOut) {
    knob->resize(120, 100);
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
    knob->hide();
    EXPECT_THAT(events(), IsEmpty());
    knob->show();
    EXPECT_THAT(events(), ElementsAre("Change", "Done"));
}

TEST_F(KnobEventsOf, ReadingDesignDataRaisesNone) {
    knob->ReadProperties({{"KnobValue", 7}, {"KnobMax", 27}});
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(knob->KnobValue(), 7);
    EXPECT_EQ(knob->ShownText(), "7.0");
}

TEST_F(KnobEventsOf, AChangeHandlerMayPutTheValue) {
    QObject::connect(knob, &KnobControl1::Change, &context, [&] {
        if (knob->KnobValue() < 50) {
            knob->SetKnobValue(50);
        }
    });
    knob->SetKnobValue(10);
    EXPECT_EQ(knob->KnobValue(), 50);
    EXPECT_EQ(knob->ShownText(), "50.0");
    EXPECT_THAT(events(), ElementsAre("Change", "Done", "Done"));
}

TEST_F(KnobEventsOf, HandlersThatPutAllPropertiesEnd) {
    int depth = 0;
    int deepest = 0;
    auto putAll = [&] {
        deepest = std::max(deepest, ++depth);
        knob->SetKnobValue((knob->KnobValue() + 1) % 100);
        knob->SetKnobFillColor(Qt::red);
        knob->SetKnobMarkers("5");
        knob->RefreshValue();
        EXPECT_FALSE(knob->KnobAnticlock());
        knob->Refresh();
        --depth;
    };
    QObject::connect(knob, &KnobControl1::Change, &context, putAll);
    QObject::connect(knob, &KnobControl1::Done, &context, putAll);
    QObject::connect(knob, &KnobControl1::KnobXlateValue, &context, [&](float, QString&) { putAll(); });
    knob->SetKnobValue(10);
    press(100);
    move(110);
    move(120);
    release(120);
    EXPECT_LE(deepest, 3); // each of the three within the others, and none in itself
    EXPECT_EQ(depth, 0);
}

TEST_F(KnobEventsOf, AnOwnerMayDeleteTheKnobInAnyEventOfAnyInput) {
    using Arm = std::function<void(KnobControl1*)>;
    const std::vector<Arm> arms = {
        [](KnobControl1* k) { QObject::connect(k, &KnobControl1::Change, [k] { delete k; }); },
        [](KnobControl1* k) { QObject::connect(k, &KnobControl1::Done, [k] { delete k; }); },
        [](KnobControl1* k) {
            QObject::connect(k, &KnobControl1::KnobXlateValue, [k](float, QString& text) {
                delete k;
                text = "late";
            });
        },
    };
    const std::vector<std::function<void()>> inputs = {
        [&] { knob->SetKnobValue(5); },
        [&] { knob->SetKnobMarkers("7"); },
        [&] { knob->setProperty("KnobValueAlign", 2); },
        [&] { knob->KnobAnticlock(); },
        [&] { press(100); },
        [&] { SendKey(knob, Qt::Key_Up); },
        [&] {
            knob->Step({StepRequest::Kind::ToHigh, 0});
        },
        [&] { child<KnobScroller>("KnobScroller")->setValue(9); },
        [&] {
            SendMouse(child<KnobScroller>("KnobScroller"), QEvent::MouseButtonPress, {55, 5}, Qt::LeftButton,
                      Qt::LeftButton);
        },
        [&] {
            knob->SetKnobVisible(false);
            knob->SetKnobValue(77);
        },
    };
    for (std::size_t a = 0; a < arms.size(); ++a) {
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            delete knob.data();
            knob = new KnobControl1;
            knob->resize(85, 96);
            knob->show();
            arms[a](knob);
            inputs[i]();
            EXPECT_TRUE(knob.isNull()) << "event " << a << " of input " << i;
        }
    }
}

TEST_F(KnobEventsOf, AnOwnerMayDeleteTheKnobFromTimeoutReleaseZeroButtonAndTextBox) {
    const std::vector<std::function<void()>> inputs = {
        [&] { // Timeout during a drag
            knob->SetKnobTimeout(1);
            press(100);
            QObject::connect(knob, &KnobControl1::Change, [k = knob.data()] { delete k; });
            ASSERT_TRUE(QTest::qWaitFor([&] { return knob.isNull(); }));
        },
        [&] {
            press(100);
            move(110);
            move(120);
            QObject::connect(knob, &KnobControl1::Done, [k = knob.data()] { delete k; });
            release(120);
        },
        [&] {
            knob->SetKnobValue(5);
            QObject::connect(knob, &KnobControl1::Change, [k = knob.data()] { delete k; });
            auto* zero = child<ButtonControl1>("ZeroButton");
            SendMouse(zero, QEvent::MouseButtonPress, {3, 3}, Qt::LeftButton, Qt::LeftButton);
            SendMouse(zero, QEvent::MouseButtonRelease, {3, 3}, Qt::LeftButton, Qt::NoButton);
        },
        [&] {
            knob->SetKnobValueEditable(true);
            QObject::connect(knob, &KnobControl1::Change, [k = knob.data()] { delete k; });
            child<QLineEdit>("KnobValueTextbox")->setText("12");
            SendKey(child<QLineEdit>("KnobValueTextbox"), Qt::Key_Return);
        },
    };
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        delete knob.data();
        knob = new KnobControl1;
        knob->resize(85, 96);
        knob->show();
        inputs[i]();
        EXPECT_TRUE(knob.isNull()) << i;
    }
}
