#pragma once

class QTimer;
class QWidget;

/// Puts a control's drawing off: a request arms the one-shot `Timer1`, a child of the control, and the
/// control is drawn when that fires. Any number of property puts within the interval cost one drawing.
class DeferredRepaint {
  public:
    static constexpr int kInterval = 50; ///< milliseconds, of most controls

    DeferredRepaint(QWidget& control, int interval);
    DeferredRepaint(const DeferredRepaint&) = delete;
    DeferredRepaint& operator=(const DeferredRepaint&) = delete;

    /// Arms the timer; one that runs already is not put back. Ignored from within the drawing.
    void Request();

    bool InPaint() const { return InPaint_; }

    /// Held by the paint event while it draws.
    class Drawing {
      public:
        explicit Drawing(DeferredRepaint& repaint) : repaint_(repaint) { repaint_.InPaint_ = true; }
        ~Drawing() { repaint_.InPaint_ = false; }
        Drawing(const Drawing&) = delete;
        Drawing& operator=(const Drawing&) = delete;

      private:
        DeferredRepaint& repaint_;
    };

  private:
    QTimer* Timer1_;
    bool InPaint_ = false;
};
