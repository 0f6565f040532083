#pragma once

#include "controls/colour.h"

#include <QFont>
#include <QString>
#include <QVariant>
#include <QWidget>

/// The linear fader.
class SliderControl1 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool SliderVisible READ SliderVisible WRITE SetSliderVisible)
    Q_PROPERTY(QColor SliderFillColor READ SliderFillColor WRITE SetSliderFillColor)
    Q_PROPERTY(int SliderDepth READ SliderDepth WRITE SetSliderDepth)
    Q_PROPERTY(float SliderValue READ SliderValue WRITE SetSliderValue)
    Q_PROPERTY(float SliderValueQuantized READ SliderValueQuantized WRITE SetSliderValueQuantized)
  public:
    explicit SliderControl1(QWidget* parent = nullptr);

    bool SliderVisible() const { return SliderVisible_; }
    QColor SliderFillColor() const { return SliderFillColor_; }
    int SliderDepth() const { return SliderDepth_; }
    float SliderValue() const { return SliderValue_; }
    float SliderValueQuantized() const { return SliderValueQuantized_; }

    void SetSliderVisible(bool value);
    void SetSliderFillColor(const QColor& value);
    void SetSliderDepth(int value);
    void SetSliderValue(float value);
    void SetSliderValueQuantized(float value);

    void Refresh();
    void ReadProperties(const QVariantMap& bag);

  signals:
    void Change();

  private:
    bool SliderVisible_ = true;
    QColor SliderFillColor_ = ToQColor(kButtonFace);
    int SliderDepth_ = 2;
    float SliderValue_ = 0;
    float SliderValueQuantized_ = 1;
};
