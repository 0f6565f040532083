#include "controls/accessibility.h"

#include "controls/button_control.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "controls/rounding.h"
#include "controls/slider_control.h"
#include "controls/symbol_font.h"

#include <QLabel>
#include <QRegularExpression>
#include <algorithm>

namespace {

/// A control that is hidden by its own property keeps its widget shown: the mouse still reaches it.
QAccessible::State StateOf(const QWidget& control, QAccessible::State state) {
    for (const char* name : {"ButtonVisible", "SliderVisible", "KnobVisible"}) {
        const QVariant visible = control.property(name);
        if (visible.isValid() && !visible.toBool()) {
            state.invisible = true;
        }
    }
    return state;
}

AnnouncementListener announcementListener = nullptr;

void Announce(QAccessibleEvent& event) {
    if (announcementListener != nullptr) {
        announcementListener(event);
    }
    if (QAccessible::isActive()) { // else it would still look the control up
        QAccessible::updateAccessibility(&event);
    }
}

/// A label whose name says of what its text is the state.
class AccessibleStatus : public QAccessibleWidget {
  public:
    explicit AccessibleStatus(QLabel* label) : QAccessibleWidget(label, QAccessible::StaticText) {}
    QString text(QAccessible::Text what) const override {
        return what == QAccessible::Description ? static_cast<const QLabel*>(widget())->text()
                                                : QAccessibleWidget::text(what);
    }
};

QAccessibleInterface* MakeButton(ButtonControl1* button) {
    return new AccessiblePressControl(
        button, QAccessible::Button,
        [button] {
            // The character of a picture says nothing when it is read out, nor does "?"; the tool tip does.
            const QString caption = button->ButtonCaption();
            const bool picture = button->ButtonFont().family() == QLatin1String(kSymbolFamily);
            const bool word =
                std::any_of(caption.begin(), caption.end(), [](QChar c) { return c.isLetter(); });
            return word && !picture ? caption : QString();
        },
        [button] { emit button->Click(); });
}

QAccessibleInterface* MakeLink(UserControl2* link) {
    return new AccessiblePressControl(
        link, QAccessible::Link, [] { return QString(); }, [link] { emit link->Click(); });
}

QAccessibleInterface* MakeSlider(SliderControl1* slider) {
    return new AccessibleValueControl(
        slider, QAccessible::Slider,
        {.current = [slider] { return double{slider->SliderValue()}; },
         .minimum = [] { return 0.0; },
         .maximum = [] { return 1.0; },
         .step =
             [slider] {
                 // A step of 1 is none at all.
                 const double step = slider->SliderValueQuantized();
                 return step == 1.0 ? 0.0 : step;
             },
         .set = [slider](double value) { slider->SetSliderValue(static_cast<float>(value)); }});
}

QAccessibleInterface* MakeKnob(KnobControl1* knob) {
    return new AccessibleValueControl(
        knob, QAccessible::Dial,
        {.current = [knob] { return double(knob->KnobValue()); },
         .minimum = [knob] { return double(knob->KnobMin()); },
         .maximum = [knob] { return double(knob->KnobMax()); },
         .step = [] { return 1.0; },
         .set = [knob](double value) { knob->SetKnobValue(RoundToEven(value)); },
         .text = [knob] { return knob->ShownText(); }});
}

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
    if (auto* button = qobject_cast<ButtonControl1*>(object)) {
        return MakeButton(button);
    }
    if (auto* slider = qobject_cast<SliderControl1*>(object)) {
        return MakeSlider(slider);
    }
    if (auto* knob = qobject_cast<KnobControl1*>(object)) {
        return MakeKnob(knob);
    }
    if (auto* link = qobject_cast<UserControl2*>(object)) {
        return MakeLink(link);
    }
    auto* picture = qobject_cast<Picture*>(object);
    if (picture != nullptr && picture->Value() != nullptr) {
        return new AccessibleValueControl(picture, QAccessible::Slider, *picture->Value());
    }
    if (auto* label = qobject_cast<QLabel*>(object); label != nullptr && !label->accessibleName().isEmpty()) {
        return new AccessibleStatus(label);
    }
    return nullptr;
}

} // namespace

void InstallAccessibility() {
    QAccessible::removeFactory(MakeInterface);
    QAccessible::installFactory(MakeInterface);
}

QString SpokenName(const QWidget& control, const QString& caption) {
    for (const QString& name : {control.accessibleName(), caption, control.toolTip()}) {
        if (!name.trimmed().isEmpty()) {
            return name;
        }
    }
    static const QRegularExpression wordStart(
        QStringLiteral("(?<=[a-z0-9])(?=[A-Z])|(?<=[a-zA-Z])(?=[0-9])"));
    return control.objectName().replace(wordStart, QStringLiteral(" "));
}

void ListenToAnnouncements(AnnouncementListener listener) {
    announcementListener = listener;
}

void AnnounceValue(QWidget& control, double value) {
    QAccessibleValueChangeEvent event(&control, value);
    Announce(event);
}

void AnnounceName(QWidget& control) {
    QAccessibleEvent event(&control, QAccessible::NameChanged);
    Announce(event);
}

void MakeStatus(QLabel& label, const QString& name) {
    label.setAccessibleName(name);
    // The toolkit has looked the label up at its first text, before it was a status, and would keep that.
    if (QAccessibleInterface* plain = QAccessible::queryAccessibleInterface(&label)) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(plain));
    }
}

void AnnounceStatus(QLabel& label) {
    QAccessibleEvent event(&label, QAccessible::DescriptionChanged);
    Announce(event);
}

AccessibleValueControl::AccessibleValueControl(QWidget* control, QAccessible::Role role, ValueAccess access)
    : QAccessibleWidget(control, role), access_(std::move(access)) {}

QString AccessibleValueControl::text(QAccessible::Text what) const {
    switch (what) {
    case QAccessible::Name:
        return SpokenName(*widget());
    case QAccessible::Value:
        return access_.text ? access_.text() : QString::number(access_.current());
    default:
        return QAccessibleWidget::text(what);
    }
}

QAccessible::State AccessibleValueControl::state() const {
    return StateOf(*widget(), QAccessibleWidget::state());
}

void* AccessibleValueControl::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) {
        return static_cast<QAccessibleValueInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

QVariant AccessibleValueControl::currentValue() const {
    return access_.current();
}

void AccessibleValueControl::setCurrentValue(const QVariant& value) {
    bool numeric = false;
    const double number = value.toDouble(&numeric);
    if (numeric) {
        access_.set(number);
    }
}

QVariant AccessibleValueControl::maximumValue() const {
    return access_.maximum();
}

QVariant AccessibleValueControl::minimumValue() const {
    return access_.minimum();
}

QVariant AccessibleValueControl::minimumStepSize() const {
    return access_.step();
}

AccessiblePressControl::AccessiblePressControl(QWidget* control, QAccessible::Role role,
                                               std::function<QString()> caption, std::function<void()> press)
    : QAccessibleWidget(control, role), caption_(std::move(caption)), press_(std::move(press)) {}

QString AccessiblePressControl::text(QAccessible::Text what) const {
    return what == QAccessible::Name ? SpokenName(*widget(), caption_()) : QAccessibleWidget::text(what);
}

QAccessible::State AccessiblePressControl::state() const {
    QAccessible::State state = StateOf(*widget(), QAccessibleWidget::state());
    const auto* button = qobject_cast<const ButtonControl1*>(widget());
    state.pressed = button != nullptr && button->Pressed();
    return state;
}

QStringList AccessiblePressControl::actionNames() const {
    QStringList names;
    if (widget()->isEnabled()) {
        names << pressAction();
    }
    return names << QAccessibleWidget::actionNames();
}

void AccessiblePressControl::doAction(const QString& actionName) {
    if (actionName == pressAction()) {
        if (widget()->isEnabled()) {
            press_();
        }
    } else {
        QAccessibleWidget::doAction(actionName);
    }
}
