#pragma once

#include <QProxyStyle>

class QApplication;

/// How the toolkit's own widgets look on the instrument: option buttons and check boxes as small lamps,
/// lists and text boxes as fields let into the panel. Everything else is Fusion in the instrument's colours.
class FaceStyle : public QProxyStyle {
    Q_OBJECT
  public:
    FaceStyle();

    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
};

/// Style, colours and font of the whole program. Once, before the first window.
void ApplyFaceStyle(QApplication& application);
