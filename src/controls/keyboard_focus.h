#pragma once

#include <Qt>

class QWidget;
class QPainter;
struct Ring;

/// Whether the focus has to be seen: it came by the keyboard, so the user looks for it. A click shows by
/// itself where it went.
class KeyboardFocus {
  public:
    /// From the control's focus-in event; true when the look has changed.
    bool In(Qt::FocusReason reason);
    /// From the control's focus-out event. What another window takes away comes back with the window.
    bool Out(Qt::FocusReason reason);
    /// A key was used on the control that has the focus.
    bool Key() { return Set(true); }
    bool Shown() const { return shown_; }

    /// A control that is not to be seen is no stop for the keyboard and gives the focus up; one that is seen
    /// again has the focus policy that it had.
    void Follow(QWidget& control, bool visible);

  private:
    bool Set(bool shown);
    bool shown_ = false;
    bool kept_ = false; ///< whether it was shown when another window came in front
    bool stopped_ = false;
    Qt::FocusPolicy policy_ = Qt::StrongFocus;
};

/// The mark of the focus: a thin dotted ring, dark over light so that it is seen on every colour.
void DrawFocusRing(QPainter& painter, const Ring& ring);
