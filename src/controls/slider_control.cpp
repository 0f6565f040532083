#include "controls/slider_control.h"

SliderControl1::SliderControl1(QWidget* parent) : QWidget(parent) {}

void SliderControl1::SetSliderVisible(bool value) {
    SliderVisible_ = value;
    update();
}

void SliderControl1::SetSliderFillColor(const QColor& value) {
    SliderFillColor_ = value;
    update();
}

void SliderControl1::SetSliderDepth(int value) {
    SliderDepth_ = value;
    update();
}

void SliderControl1::SetSliderValue(float value) {
    SliderValue_ = value;
    emit Change();
    update();
}

void SliderControl1::SetSliderValueQuantized(float value) {
    SliderValueQuantized_ = value;
    update();
}

void SliderControl1::Refresh() {
    update();
}

void SliderControl1::ReadProperties(const QVariantMap& bag) {
    for (auto it = bag.begin(); it != bag.end(); ++it) {
        setProperty(it.key().toLatin1().constData(), it.value());
    }
}
