#include "controls/knob_control.h"

KnobControl1::KnobControl1(QWidget* parent) : QWidget(parent) {}

void KnobControl1::SetKnobValue(int value) {
    KnobValue_ = value;
    RefreshValue();
    emit Change();
    emit Done();
    update();
}

void KnobControl1::SetKnobBand1Start(int value) {
    KnobBand1Start_ = value;
    update();
}

void KnobControl1::SetKnobBand1Stop(int value) {
    KnobBand1Stop_ = value;
    update();
}

void KnobControl1::SetKnobBand1Color(const QColor& value) {
    KnobBand1Color_ = value;
    update();
}

void KnobControl1::SetKnobTextColor(const QColor& value) {
    KnobTextColor_ = value;
    update();
}

void KnobControl1::SetKnobAnticlock(bool value) {
    KnobAnticlock_ = value;
    update();
}

void KnobControl1::SetKnobZeroButton(bool value) {
    KnobZeroButton_ = value;
    update();
}

void KnobControl1::SetKnobZeroButtonValue(int value) {
    KnobZeroButtonValue_ = value;
    update();
}

void KnobControl1::SetKnobApplyLimit(bool value) {
    KnobApplyLimit_ = value;
    update();
}

void KnobControl1::SetKnobLowerLimit(int value) {
    KnobLowerLimit_ = value;
    update();
}

void KnobControl1::SetKnobUpperLimit(int value) {
    KnobUpperLimit_ = value;
    update();
}

void KnobControl1::SetKnobMin(int value) {
    KnobMin_ = value;
    update();
}

void KnobControl1::SetKnobMax(int value) {
    KnobMax_ = value;
    update();
}

void KnobControl1::SetKnobStartAngle(int value) {
    KnobStartAngle_ = value;
    update();
}

void KnobControl1::SetKnobStopAngle(int value) {
    KnobStopAngle_ = value;
    update();
}

void KnobControl1::SetKnobTimeout(int value) {
    KnobTimeout_ = value;
    update();
}

void KnobControl1::SetKnobFillColor(const QColor& value) {
    KnobFillColor_ = value;
    update();
}

void KnobControl1::SetKnobBorderColor(const QColor& value) {
    KnobBorderColor_ = value;
    update();
}

void KnobControl1::SetKnobMarkerColor(const QColor& value) {
    KnobMarkerColor_ = value;
    update();
}

void KnobControl1::SetKnobValueFormat(const QString& value) {
    KnobValueFormat_ = value;
    update();
}

void KnobControl1::SetKnobFont(const QFont& value) {
    KnobFont_ = value;
    update();
}

void KnobControl1::SetKnobMarkers(const QString& value) {
    KnobMarkers_ = value;
    update();
}

void KnobControl1::SetKnobValueEditable(bool value) {
    KnobValueEditable_ = value;
    update();
}

void KnobControl1::SetKnobValueQuantized(bool value) {
    KnobValueQuantized_ = value;
    update();
}

void KnobControl1::SetKnobValueAlign(int value) {
    KnobValueAlign_ = value;
    update();
}

void KnobControl1::SetKnobVisible(bool value) {
    KnobVisible_ = value;
    update();
}

void KnobControl1::Refresh() {
    update();
}

void KnobControl1::RefreshValue() {
    KnobXlatedValue_ = QString::number(KnobValue_);
    emit KnobXlateValue(static_cast<float>(KnobValue_), KnobXlatedValue_);
}

void KnobControl1::ReadProperties(const QVariantMap& bag) {
    for (auto it = bag.begin(); it != bag.end(); ++it) {
        setProperty(it.key().toLatin1().constData(), it.value());
    }
}
