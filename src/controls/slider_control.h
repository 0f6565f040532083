#pragma once

#include "controls/colour.h"
#include "controls/deferred_repaint.h"
#include "controls/keyboard_focus.h"
#include "controls/step_input.h"

#include <QPoint>
#include <QVariant>
#include <QWidget>

/// The linear fader: a round thumb in a groove, horizontal or vertical by its shape, with a value from 0
/// (left or top) to 1. The wheel and the keys move the thumb a step, the way that they point.
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
    /// Line width of the thumb's bevel in pixels, cut to 16 bits; 0 for none.
    void SetSliderDepth(int value);
    /// A value outside 0..1 is dropped. Raises Change in either case, after the one that the layout raises.
    void SetSliderValue(float value);
    /// The step of the mouse and the keys. 1 is none at all; a zero is ignored.
    void SetSliderValueQuantized(float value);

    /// A paint request.
    void Refresh();
    /// Takes the design keys that the bag holds, the defaults for the rest. Raises nothing.
    void ReadProperties(const QVariantMap& bag);
    /// The design keys whose values differ from the defaults.
    QVariantMap WriteProperties() const;

  signals:
    void Change();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    bool LayOut();
    bool RaiseChange();
    void Store(float value);
    void DragTo(const QMouseEvent& event);
    void Step(const StepRequest& request);
    float Stepped(const StepRequest& request) const;

    /// The one table of the properties: each design key with its value and its default.
    template <class Self, class Visit> static void VisitKeys(Self& self, const Visit& visit);

    bool SliderVisible_;
    QColor SliderFillColor_;
    int SliderDepth_;
    float SliderValue_;
    float SliderValueQuantized_;

    bool Dragging_ = false;
    float LastValue_ = 10; ///< out of range, so that the first move counts as a change
    QPoint lastMouse_;     ///< `LastMouseX`, `LastMouseY`
    int raising_ = 0;      ///< how deep Change handlers stand within one another
    QTimer* Timeout_;      ///< throttles Change during a drag
    WheelSteps wheel_;
    KeyboardFocus focus_;
    DeferredRepaint repaint_;
};
