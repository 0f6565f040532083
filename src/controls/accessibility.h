#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QString>
#include <functional>

class QLabel;

/// Makes the custom controls known to assistive technology. Once a process, after the application object is
/// made; further calls change nothing.
void InstallAccessibility();

/// What is read out for a control: its accessible name, else its caption, else its tool tip, else its object
/// name as words ("HorizPanSlider" gives "Horiz Pan Slider").
QString SpokenName(const QWidget& control, const QString& caption = {});

/// Hears every announcement of below as well, on screens too that have no assistive technology; null for
/// none.
using AnnouncementListener = void (*)(QAccessibleEvent& event);
void ListenToAnnouncements(AnnouncementListener listener);

/// Tells listeners that a control's value has changed.
void AnnounceValue(QWidget& control, double value);

/// Tells listeners that what a control is called has changed.
void AnnounceName(QWidget& control);

/// Makes a label a status: the name says of what, and its text at any time is read as the description.
void MakeStatus(QLabel& label, const QString& name);
/// Tells listeners that a status label says something else now. Costs nothing while nobody listens.
void AnnounceStatus(QLabel& label);

/// How the value of a control is read and set from outside.
struct ValueAccess {
    std::function<double()> current;
    std::function<double()> minimum;
    std::function<double()> maximum;
    std::function<double()> step;
    std::function<void(double)> set;
    std::function<QString()> text = {}; ///< the value as the user reads it; empty: the number
};

/// A control with a value: a slider or a dial.
class AccessibleValueControl : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    AccessibleValueControl(QWidget* control, QAccessible::Role role, ValueAccess access);

    QString text(QAccessible::Text what) const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

  private:
    ValueAccess access_;
};

/// A control that does one thing when it is pressed: a button or a link.
class AccessiblePressControl : public QAccessibleWidget {
  public:
    AccessiblePressControl(QWidget* control, QAccessible::Role role, std::function<QString()> caption,
                           std::function<void()> press);

    QString text(QAccessible::Text what) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;

  private:
    std::function<QString()> caption_;
    std::function<void()> press_;
};
