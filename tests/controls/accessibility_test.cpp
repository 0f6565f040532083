#include "controls/accessibility.h"

#include "controls/button_control.h"
#include "controls/control_support.h"
#include "controls/fonts.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"

#include <QLabel>
#include <QMouseEvent>
#include <gtest/gtest.h>
#include <utility>

namespace {

class Accessibility : public testing::Test {
  protected:
    Accessibility() { InstallAccessibility(); }

    static QAccessibleInterface* Of(QObject& object) {
        return QAccessible::queryAccessibleInterface(&object);
    }
    static QString Name(QObject& object) { return Of(object)->text(QAccessible::Name); }
};

/// What assistive technology hears of values and states, as the texts that it gets when it asks at that
/// moment.
class Listener {
  public:
    Listener() {
        heard_.clear();
        ListenToAnnouncements([](QAccessibleEvent& event) {
            if (event.type() == QAccessible::ValueChanged) {
                heard_ << event.accessibleInterface()->text(QAccessible::Value);
            } else if (event.type() == QAccessible::DescriptionChanged) {
                heard_ << event.accessibleInterface()->text(QAccessible::Description);
            }
        });
    }
    ~Listener() { ListenToAnnouncements(nullptr); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    QStringList take() { return std::exchange(heard_, {}); }

  private:
    static inline QStringList heard_;
};

} // namespace

TEST_F(Accessibility, AKnobsTextIsCurrentWhenItsValueIsHeardOf) {
    KnobControl1 knob;
    QObject::connect(&knob, &KnobControl1::KnobXlateValue, &knob,
                     [](float value, QString& text) { text = QString("%1us/div").arg(value); });
    knob.show();
    Listener listener;
    knob.SetKnobValue(17);
    EXPECT_EQ(listener.take(), QStringList("17us/div"));
    knob.SetKnobValue(17);
    EXPECT_EQ(listener.take(), QStringList());
    QTest::keyClick(&knob, Qt::Key_Up);
    EXPECT_EQ(listener.take(), QStringList("18us/div"));
}

TEST_F(Accessibility, ADragIsHeardOfWhenItsTextIsThere) {
    KnobControl1 knob;
    knob.resize(85, 96);
    knob.show();
    Listener listener;
    const auto drag = [&](QEvent::Type type, QPointF where, Qt::MouseButton button) {
        QMouseEvent event(type, where, knob.mapToGlobal(where), button, Qt::LeftButton, {});
        QApplication::sendEvent(&knob, &event);
    };
    drag(QEvent::MouseButtonPress, {30, 42}, Qt::LeftButton);
    drag(QEvent::MouseMove, {30, 41}, Qt::NoButton);
    listener.take();
    drag(QEvent::MouseMove, {42, 20}, Qt::NoButton);
    EXPECT_EQ(listener.take(), QStringList()) << "the text follows when the pointer rests";
    drag(QEvent::MouseButtonRelease, {42, 20}, Qt::LeftButton);
    EXPECT_EQ(listener.take(), QStringList(knob.ShownText()));
}

TEST_F(Accessibility, AKnobWhoseTextAloneChangesIsHeardOf) {
    KnobControl1 knob;
    QString unit = "V";
    QObject::connect(&knob, &KnobControl1::KnobXlateValue, &knob,
                     [&](float value, QString& text) { text = QString::number(value) + unit; });
    knob.SetKnobValue(3);
    Listener listener;
    unit = "mV";
    knob.RefreshValue();
    EXPECT_EQ(listener.take(), QStringList("3mV"));
}

TEST_F(Accessibility, AStatusIsADescriptionBesideAName) {
    QLabel label(QStringLiteral("trigger ?"));
    MakeStatus(label, "Trigger status");
    Listener listener;
    label.setText("acquiring");
    AnnounceStatus(label);
    EXPECT_EQ(listener.take(), QStringList("acquiring"));
    EXPECT_EQ(Name(label), "Trigger status");
    label.setText("acquiring.");
    EXPECT_EQ(Of(label)->text(QAccessible::Description), "acquiring.") << "asked for, it is current";
}

TEST_F(Accessibility, AButtonTellsRoleAndCaption) {
    ButtonControl1 button;
    button.SetButtonCaption(QStringLiteral("running"));
    button.setToolTip(QStringLiteral("Runs the scope"));
    ASSERT_NE(Of(button), nullptr);
    EXPECT_EQ(Of(button)->role(), QAccessible::Button);
    EXPECT_EQ(Name(button), QStringLiteral("running"));
    EXPECT_EQ(Of(button)->text(QAccessible::Description), QStringLiteral("Runs the scope"));
    EXPECT_TRUE(Of(button)->state().focusable);
}

TEST_F(Accessibility, APictureOnAButtonIsReadAsItsToolTip) {
    ButtonControl1 button;
    button.setObjectName(QStringLiteral("CloseButton"));
    button.SetButtonCaption(QStringLiteral("4"));
    button.SetButtonFont(InstrumentFont(QStringLiteral("Corvantine"), 8.25));
    EXPECT_EQ(Name(button), QStringLiteral("Close Button"));
    button.setToolTip(QStringLiteral("Exit"));
    EXPECT_EQ(Name(button), QStringLiteral("Exit"));
    button.SetButtonFont(InstrumentFont(QStringLiteral("Arial"), 8.25));
    button.SetButtonCaption(QStringLiteral("?"));
    EXPECT_EQ(Name(button), QStringLiteral("Exit"));
    button.setAccessibleName(QStringLiteral("Close the program"));
    EXPECT_EQ(Name(button), QStringLiteral("Close the program"));
}

TEST_F(Accessibility, PressingAButtonFromOutsideRaisesClick) {
    ButtonControl1 button;
    Counter<ButtonControl1, void (ButtonControl1::*)()> clicks(button, &ButtonControl1::Click);
    QAccessibleActionInterface* actions = Of(button)->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.take(), 1);
    button.setEnabled(false);
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.take(), 0);
}

TEST_F(Accessibility, AHiddenControlIsTold) {
    ButtonControl1 button;
    SliderControl1 slider;
    button.show();
    slider.show();
    EXPECT_FALSE(Of(button)->state().invisible);
    EXPECT_FALSE(Of(slider)->state().invisible);
    button.SetButtonVisible(false);
    slider.SetSliderVisible(false);
    EXPECT_TRUE(Of(button)->state().invisible);
    EXPECT_TRUE(Of(slider)->state().invisible);
}

TEST_F(Accessibility, APressedButtonIsTold) {
    ButtonControl1 button;
    EXPECT_FALSE(Of(button)->state().pressed);
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_TRUE(Of(button)->state().pressed);
}

TEST_F(Accessibility, ASliderTellsAndTakesItsValue) {
    SliderControl1 slider;
    slider.setObjectName(QStringLiteral("HorizPanSlider"));
    slider.SetSliderValueQuantized(0.05F);
    slider.SetSliderValue(0.25F);
    EXPECT_EQ(Of(slider)->role(), QAccessible::Slider);
    EXPECT_EQ(Name(slider), QStringLiteral("Horiz Pan Slider"));
    EXPECT_EQ(Of(slider)->text(QAccessible::Value), QStringLiteral("0.25"));
    QAccessibleValueInterface* value = Of(slider)->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 0.25);
    EXPECT_EQ(value->minimumValue().toDouble(), 0);
    EXPECT_EQ(value->maximumValue().toDouble(), 1);
    EXPECT_FLOAT_EQ(value->minimumStepSize().toFloat(), 0.05F);
    value->setCurrentValue(0.75);
    EXPECT_EQ(slider.SliderValue(), 0.75F);
    value->setCurrentValue(QStringLiteral("loud"));
    value->setCurrentValue(12);
    EXPECT_EQ(slider.SliderValue(), 0.75F);
    slider.SetSliderValueQuantized(1);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 0);
}

TEST_F(Accessibility, ALinkIsALink) {
    UserControl2 link;
    link.setObjectName(QStringLiteral("WebLink"));
    Counter<UserControl2, void (UserControl2::*)()> clicks(link, &UserControl2::Click);
    EXPECT_EQ(Of(link)->role(), QAccessible::Link);
    EXPECT_EQ(Name(link), QStringLiteral("Web Link"));
    Of(link)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicks.take(), 1);
}

TEST_F(Accessibility, InstallingTwiceChangesNothing) {
    InstallAccessibility();
    SliderControl1 slider;
    EXPECT_EQ(Of(slider)->role(), QAccessible::Slider);
    QWidget plain;
    EXPECT_NE(Of(plain)->role(), QAccessible::Slider);
}

TEST_F(Accessibility, ObjectNamesAreReadAsWords) {
    QWidget widget;
    widget.setObjectName(QStringLiteral("Math1VoltsKnob"));
    EXPECT_EQ(SpokenName(widget), QStringLiteral("Math 1 Volts Knob"));
    EXPECT_EQ(SpokenName(widget, QStringLiteral("  ")), QStringLiteral("Math 1 Volts Knob"));
    EXPECT_EQ(SpokenName(widget, QStringLiteral("M1")), QStringLiteral("M1"));
}
