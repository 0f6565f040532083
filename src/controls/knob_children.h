#pragma once

#include "controls/knob_layout.h"

#include <QString>

class ButtonControl1;
class KnobScroller;
class KnobState;
class QLabel;
class QLineEdit;
class QWidget;
struct KnobDesign;

/// The widgets that stand on a knob, children of it under their names.
struct KnobChildren {
    explicit KnobChildren(QWidget& knob);

    /// Puts them where the layout wants them, in the design's font and colours.
    void Place(const KnobDesign& design, const KnobLayout& layout);
    /// Shows those that the design wants to be seen.
    void Show(const KnobDesign& design);
    void ShowText(const QString& text);
    /// Moves the scroller to its place without an event.
    void ShowScroller(const KnobState& state);

    QLabel* KnobValueLabel;
    QLineEdit* KnobValueTextbox;
    KnobScroller* Scroller; ///< `KnobScroller`
    ButtonControl1* ZeroButton;

  private:
    void PlaceText(const KnobDesign& design, const KnobLayout& layout);
    void PlaceZeroButton(const KnobDesign& design, const KnobLayout& layout);
};
