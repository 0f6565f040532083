#include "camera.h"

#include "controls/button_control.h"
#include "controls/form.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QEventLoop>
#include <QJsonArray>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>
#include <cstdio>

namespace {

template <class... Kinds> bool IsOneOf(const QWidget& widget) {
    return (... || (qobject_cast<const Kinds*>(&widget) != nullptr));
}

bool IsWorked(const QWidget& widget) {
    return IsOneOf<ButtonControl1, KnobControl1, SliderControl1, UserControl2, QAbstractButton, QComboBox,
                   QListWidget, QLineEdit>(widget);
}

/// A control of the form's table, not something that a control is made of.
bool IsRow(const QWidget& widget, const Form& form) {
    if (widget.objectName().isEmpty() || widget.objectName().startsWith(QLatin1String("qt_"))) {
        return false;
    }
    for (const QWidget* above = widget.parentWidget(); above != &form; above = above->parentWidget()) {
        if (IsWorked(*above)) {
            return false;
        }
    }
    return true;
}

/// No other control lies over its middle.
bool IsOnTop(const QWidget& widget, const QWidget& window, const QRect& place) {
    const QWidget* top = window.childAt(place.center());
    return top == &widget || widget.isAncestorOf(top);
}

QJsonArray PlaceIn(const QRect& area, const QRect& place) {
    return {double(place.x() - area.x()) / area.width(), double(place.y() - area.y()) / area.height(),
            double(place.width()) / area.width(), double(place.height()) / area.height()};
}

} // namespace

void Wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void Camera::Take(const QString& name, const QWidget& window, const QImage& whole, const QRect& area,
                  std::initializer_list<Subject> subjects) {
    QJsonObject controls;
    for (const Subject& subject : subjects) {
        for (const QWidget* widget : subject.form->findChildren<QWidget*>()) {
            const QRect place(widget->mapTo(&window, QPoint()), widget->size());
            if (!widget->isVisible() || !area.contains(place.center()) || !IsRow(*widget, *subject.form) ||
                !IsOnTop(*widget, window, place)) {
                continue;
            }
            controls[subject.prefix + widget->objectName()] =
                QJsonObject{{"place", PlaceIn(area, place)},
                            {"asked", IsWorked(*widget) || !widget->toolTip().isEmpty()}};
        }
    }
    const double ratio = window.devicePixelRatioF();
    const QRect pixels(area.topLeft() * ratio, area.size() * ratio);
    const QString file = folder_.filePath(name + QStringLiteral(".png"));
    const bool saved = whole.copy(pixels).save(file);
    std::printf("%s %s\n", saved ? "took" : "could not write", qPrintable(file));
    failures_ += saved ? 0 : 1;
    pictures_[name] = QJsonObject{{"width", area.width()}, {"height", area.height()}, {"controls", controls}};
}

void Camera::Take(const QString& name, QWidget& window, std::initializer_list<Subject> subjects) {
    Take(name, window, window.grab().toImage(), window.rect(), subjects);
}
