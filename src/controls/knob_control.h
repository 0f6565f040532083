#pragma once

#include "controls/deferred_repaint.h"
#include "controls/keyboard_focus.h"
#include "controls/knob_children.h"
#include "controls/knob_design.h"
#include "controls/knob_layout.h"
#include "controls/knob_state.h"
#include "controls/step_input.h"

#include <QFont>
#include <QPixmap>
#include <QString>
#include <QVariant>
#include <QWidget>
#include <optional>

class QTimer;

/// The rotary knob. A put of a property lays the control out, which ends in `Change` and `Done`; so does a
/// resize and the show. The handlers of all three events may put properties and may delete the knob, but not
/// in the events of a resize or a show: the toolkit is not done with a widget then.
class KnobControl1 : public QWidget, private KnobHost {
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

    int KnobValue() const { return state_.KnobValue(); }
    int KnobBand1Start() const { return design_.KnobBand1Start; }
    int KnobBand1Stop() const { return design_.KnobBand1Stop; }
    QColor KnobBand1Color() const { return design_.KnobBand1Color; }
    QColor KnobTextColor() const { return design_.KnobTextColor; }
    /// Runs the handler of `Timeout` besides: a read may raise `Change` and `Done`.
    bool KnobAnticlock();
    bool KnobZeroButton() const { return design_.KnobZeroButton; }
    int KnobZeroButtonValue() const { return design_.KnobZeroButtonValue; }
    bool KnobApplyLimit() const { return design_.KnobApplyLimit; }
    int KnobLowerLimit() const { return design_.KnobLowerLimit; }
    int KnobUpperLimit() const { return design_.KnobUpperLimit; }
    int KnobMin() const { return design_.KnobMin; }
    int KnobMax() const { return design_.KnobMax; }
    int KnobStartAngle() const { return design_.KnobStartAngle; }
    int KnobStopAngle() const { return design_.KnobStopAngle; }
    int KnobTimeout() const { return design_.KnobTimeout; }
    QColor KnobFillColor() const { return design_.KnobFillColor; }
    QColor KnobBorderColor() const { return design_.KnobBorderColor; }
    QColor KnobMarkerColor() const { return design_.KnobMarkerColor; }
    QString KnobValueFormat() const { return design_.KnobValueFormat; }
    QFont KnobFont() const { return design_.KnobFont; }
    QString KnobMarkers() const { return design_.KnobMarkers; }
    bool KnobValueEditable() const { return design_.KnobValueEditable; }
    bool KnobValueQuantized() const { return design_.KnobValueQuantized; }
    int KnobValueAlign() const { return design_.KnobValueAlign; }
    bool KnobVisible() const { return design_.KnobVisible; }
    /// The text that the last KnobXlateValue left.
    QString KnobXlatedValue() const { return state_.KnobXlatedValue(); }

    /// A value beyond KnobMin..KnobMax is ignored, yet Change and Done are raised.
    void SetKnobValue(int value);
    // The look: each put lays the control out.
    void SetKnobBand1Start(int value) { Put(&KnobDesign::KnobBand1Start, value); }
    void SetKnobBand1Stop(int value) { Put(&KnobDesign::KnobBand1Stop, value); }
    void SetKnobBand1Color(const QColor& value) { Put(&KnobDesign::KnobBand1Color, value); }
    void SetKnobTextColor(const QColor& value) { Put(&KnobDesign::KnobTextColor, value); }
    void SetKnobAnticlock(bool value) { Put(&KnobDesign::KnobAnticlock, value); }
    void SetKnobZeroButton(bool value) { Put(&KnobDesign::KnobZeroButton, value); }
    void SetKnobMin(int value) { Put(&KnobDesign::KnobMin, value); }
    void SetKnobMax(int value) { Put(&KnobDesign::KnobMax, value); }
    void SetKnobStartAngle(int value) { Put(&KnobDesign::KnobStartAngle, value); }
    void SetKnobStopAngle(int value) { Put(&KnobDesign::KnobStopAngle, value); }
    void SetKnobFillColor(const QColor& value) { Put(&KnobDesign::KnobFillColor, value); }
    void SetKnobBorderColor(const QColor& value) { Put(&KnobDesign::KnobBorderColor, value); }
    void SetKnobMarkerColor(const QColor& value) { Put(&KnobDesign::KnobMarkerColor, value); }
    void SetKnobValueFormat(const QString& value) { Put(&KnobDesign::KnobValueFormat, value); }
    void SetKnobFont(const QFont& value) { Put(&KnobDesign::KnobFont, value); }
    void SetKnobMarkers(const QString& value) { Put(&KnobDesign::KnobMarkers, value); }
    void SetKnobValueAlign(int value) { Put(&KnobDesign::KnobValueAlign, value); }
    // Looked at when the mouse or the button needs them.
    void SetKnobZeroButtonValue(int value) { design_.KnobZeroButtonValue = value; }
    void SetKnobApplyLimit(bool value) { design_.KnobApplyLimit = value; }
    void SetKnobValueQuantized(bool value) { design_.KnobValueQuantized = value; }
    // Those that something else follows.
    void SetKnobLowerLimit(int value);
    void SetKnobUpperLimit(int value);
    void SetKnobTimeout(int value);
    void SetKnobValueEditable(bool value);
    void SetKnobVisible(bool value);

    /// Starts the deferred repaint.
    void Refresh();
    /// Translates the value and shows its text anew; the pointer stays.
    void RefreshValue();
    /// Takes the design keys that the bag holds, the defaults for the rest. Raises no Change.
    void ReadProperties(const QVariantMap& bag);
    /// The design keys that differ from the defaults of writing.
    QVariantMap WriteProperties() const;

    /// Turns the knob by that many steps, as wheel and keys do.
    void Step(const StepRequest& request);
    /// The value as the user reads it.
    QString ShownText() const;

  signals:
    void Change();
    void Done();
    /// The owner may replace the text that the user reads for the value.
    void KnobXlateValue(float Value, QString& Display);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void PlacePointer() override;
    void ShowText() override;
    bool RaiseChange() override;
    bool RaiseDone() override;
    bool RaiseXlateValue(float Value, QString& Display) override;
    void EnableTimeout() override;
    void DisableTimeout() override;

    template <class T> void Put(T KnobDesign::*property, const T& value) {
        design_.*property = value;
        placed_ = false;
        LayOut();
    }
    void LayOut();
    void PlaceChildren();
    void ShowChildren();
    void EndEdit(bool accept);
    void RenderFace();

    KnobDesign design_;
    KnobState state_{design_, *this};
    KnobLayout layout_;
    QPixmap still_; ///< the face as it was drawn last; null when it has to be drawn again
    double pointerAngle_ = 0;
    bool placed_ = false; ///< the children stand where the properties want them
    bool InLayout_ = false;
    std::optional<int> toldValue_; ///< what assistive technology has heard
    QString toldText_;
    KeyboardFocus focus_;
    WheelSteps wheel_;
    DeferredRepaint repaint_;
    QTimer* Timeout_ = nullptr;
    KnobChildren children_{*this};
};
