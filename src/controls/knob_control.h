#pragma once

#include "controls/colour.h"

#include <QFont>
#include <QString>
#include <QVariant>
#include <QWidget>

/// The rotary knob.
class KnobControl1 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int KnobValue READ KnobValue WRITE SetKnobValue)
    Q_PROPERTY(int KnobBand1Start READ KnobBand1Start WRITE SetKnobBand1Start)
    Q_PROPERTY(int KnobBand1Stop READ KnobBand1Stop WRITE SetKnobBand1Stop)
    Q_PROPERTY(QColor KnobBand1Color READ KnobBand1Color WRITE SetKnobBand1Color)
    Q_PROPERTY(QColor KnobTextColor READ KnobTextColor WRITE SetKnobTextColor)
    Q_PROPERTY(bool KnobAnticlock READ KnobAnticlock WRITE SetKnobAnticlock)
    Q_PROPERTY(bool KnobZeroButton READ KnobZeroButton WRITE SetKnobZeroButton)
    Q_PROPERTY(int KnobZeroButtonValue READ KnobZeroButtonValue WRITE SetKnobZeroButtonValue)
    Q_PROPERTY(bool KnobApplyLimit READ KnobApplyLimit WRITE SetKnobApplyLimit)
    Q_PROPERTY(int KnobLowerLimit READ KnobLowerLimit WRITE SetKnobLowerLimit)
    Q_PROPERTY(int KnobUpperLimit READ KnobUpperLimit WRITE SetKnobUpperLimit)
    Q_PROPERTY(int KnobMin READ KnobMin WRITE SetKnobMin)
    Q_PROPERTY(int KnobMax READ KnobMax WRITE SetKnobMax)
    Q_PROPERTY(int KnobStartAngle READ KnobStartAngle WRITE SetKnobStartAngle)
    Q_PROPERTY(int KnobStopAngle READ KnobStopAngle WRITE SetKnobStopAngle)
    Q_PROPERTY(int KnobTimeout READ KnobTimeout WRITE SetKnobTimeout)
    Q_PROPERTY(QColor KnobFillColor READ KnobFillColor WRITE SetKnobFillColor)
    Q_PROPERTY(QColor KnobBorderColor READ KnobBorderColor WRITE SetKnobBorderColor)
    Q_PROPERTY(QColor KnobMarkerColor READ KnobMarkerColor WRITE SetKnobMarkerColor)
    Q_PROPERTY(QString KnobValueFormat READ KnobValueFormat WRITE SetKnobValueFormat)
    Q_PROPERTY(QFont KnobFont READ KnobFont WRITE SetKnobFont)
    Q_PROPERTY(QString KnobMarkers READ KnobMarkers WRITE SetKnobMarkers)
    Q_PROPERTY(bool KnobValueEditable READ KnobValueEditable WRITE SetKnobValueEditable)
    Q_PROPERTY(bool KnobValueQuantized READ KnobValueQuantized WRITE SetKnobValueQuantized)
    Q_PROPERTY(int KnobValueAlign READ KnobValueAlign WRITE SetKnobValueAlign)
    Q_PROPERTY(bool KnobVisible READ KnobVisible WRITE SetKnobVisible)
    Q_PROPERTY(QString KnobXlatedValue READ KnobXlatedValue)
  public:
    explicit KnobControl1(QWidget* parent = nullptr);

    int KnobValue() const { return KnobValue_; }
    int KnobBand1Start() const { return KnobBand1Start_; }
    int KnobBand1Stop() const { return KnobBand1Stop_; }
    QColor KnobBand1Color() const { return KnobBand1Color_; }
    QColor KnobTextColor() const { return KnobTextColor_; }
    bool KnobAnticlock() const { return KnobAnticlock_; }
    bool KnobZeroButton() const { return KnobZeroButton_; }
    int KnobZeroButtonValue() const { return KnobZeroButtonValue_; }
    bool KnobApplyLimit() const { return KnobApplyLimit_; }
    int KnobLowerLimit() const { return KnobLowerLimit_; }
    int KnobUpperLimit() const { return KnobUpperLimit_; }
    int KnobMin() const { return KnobMin_; }
    int KnobMax() const { return KnobMax_; }
    int KnobStartAngle() const { return KnobStartAngle_; }
    int KnobStopAngle() const { return KnobStopAngle_; }
    int KnobTimeout() const { return KnobTimeout_; }
    QColor KnobFillColor() const { return KnobFillColor_; }
    QColor KnobBorderColor() const { return KnobBorderColor_; }
    QColor KnobMarkerColor() const { return KnobMarkerColor_; }
    QString KnobValueFormat() const { return KnobValueFormat_; }
    QFont KnobFont() const { return KnobFont_; }
    QString KnobMarkers() const { return KnobMarkers_; }
    bool KnobValueEditable() const { return KnobValueEditable_; }
    bool KnobValueQuantized() const { return KnobValueQuantized_; }
    int KnobValueAlign() const { return KnobValueAlign_; }
    bool KnobVisible() const { return KnobVisible_; }
    QString KnobXlatedValue() const { return KnobXlatedValue_; }

    void SetKnobValue(int value);
    void SetKnobBand1Start(int value);
    void SetKnobBand1Stop(int value);
    void SetKnobBand1Color(const QColor& value);
    void SetKnobTextColor(const QColor& value);
    void SetKnobAnticlock(bool value);
    void SetKnobZeroButton(bool value);
    void SetKnobZeroButtonValue(int value);
    void SetKnobApplyLimit(bool value);
    void SetKnobLowerLimit(int value);
    void SetKnobUpperLimit(int value);
    void SetKnobMin(int value);
    void SetKnobMax(int value);
    void SetKnobStartAngle(int value);
    void SetKnobStopAngle(int value);
    void SetKnobTimeout(int value);
    void SetKnobFillColor(const QColor& value);
    void SetKnobBorderColor(const QColor& value);
    void SetKnobMarkerColor(const QColor& value);
    void SetKnobValueFormat(const QString& value);
    void SetKnobFont(const QFont& value);
    void SetKnobMarkers(const QString& value);
    void SetKnobValueEditable(bool value);
    void SetKnobValueQuantized(bool value);
    void SetKnobValueAlign(int value);
    void SetKnobVisible(bool value);

    void Refresh();
    void RefreshValue();
    /// Takes the design keys that the bag holds, the defaults for the rest.
    void ReadProperties(const QVariantMap& bag);

  signals:
    void Change();
    void Done();
    /// The owner may replace the text that the user reads for the value.
    void KnobXlateValue(float Value, QString& Display);

  private:
    int KnobValue_ = 0;
    int KnobBand1Start_ = -1;
    int KnobBand1Stop_ = -1;
    QColor KnobBand1Color_{0, 0, 0};
    QColor KnobTextColor_{0, 0, 0};
    bool KnobAnticlock_ = false;
    bool KnobZeroButton_ = true;
    int KnobZeroButtonValue_ = 0;
    bool KnobApplyLimit_ = false;
    int KnobLowerLimit_ = 0;
    int KnobUpperLimit_ = 100;
    int KnobMin_ = 0;
    int KnobMax_ = 100;
    int KnobStartAngle_ = -45;
    int KnobStopAngle_ = -135;
    int KnobTimeout_ = 0;
    QColor KnobFillColor_ = ToQColor(kButtonFace);
    QColor KnobBorderColor_ = ToQColor(kButtonFace);
    QColor KnobMarkerColor_ = ToQColor(kButtonFace);
    QString KnobValueFormat_ = QStringLiteral("0.0");
    QFont KnobFont_;
    QString KnobMarkers_ = QStringLiteral("2");
    bool KnobValueEditable_ = false;
    bool KnobValueQuantized_ = false;
    int KnobValueAlign_ = 0;
    bool KnobVisible_ = true;
    QString KnobXlatedValue_;
};
