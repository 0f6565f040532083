#include "controls/button_control.h"

ButtonControl1::ButtonControl1(QWidget* parent) : QWidget(parent) {}

void ButtonControl1::SetButtonVisible(bool value) {
    ButtonVisible_ = value;
    update();
}

void ButtonControl1::SetButtonFillColor(const QColor& value) {
    ButtonFillColor_ = value;
    update();
}

void ButtonControl1::SetButtonBackColor(const QColor& value) {
    ButtonBackColor_ = value;
    update();
}

void ButtonControl1::SetButtonForeColor(const QColor& value) {
    ButtonForeColor_ = value;
    update();
}

void ButtonControl1::SetButtonDepth(int value) {
    ButtonDepth_ = value;
    update();
}

void ButtonControl1::SetButtonCaptionNudgeX(int value) {
    ButtonCaptionNudgeX_ = value;
    update();
}

void ButtonControl1::SetButtonCaptionNudgeY(int value) {
    ButtonCaptionNudgeY_ = value;
    update();
}

void ButtonControl1::SetButtonCaption(const QString& value) {
    ButtonCaption_ = value;
    update();
}

void ButtonControl1::SetButtonSunk(bool value) {
    ButtonSunk_ = value;
    update();
}

void ButtonControl1::SetButtonFont(const QFont& value) {
    ButtonFont_ = value;
    update();
}

void ButtonControl1::Refresh() {
    update();
}

void ButtonControl1::ReadProperties(const QVariantMap& bag) {
    for (auto it = bag.begin(); it != bag.end(); ++it) {
        setProperty(it.key().toLatin1().constData(), it.value());
    }
}
