#pragma once

#include "display/cursor_bar.h"
#include "driver/driver.h"

class Form;
class QTimer;
struct Record;

/// The time cursors in the bar below the plot and the level cursors in the one beside it.
class CursorBars : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        CursorBar::Controls Vert;
        CursorBar::Controls Horiz;
        QTimer* CursTimer = nullptr;

        static Controls Of(const Form& main, const Form& cursorTab);
    };
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> SetDefaultLayering;
    };

    CursorBars(Record& record, Driver& driver, const Controls& controls, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    /// Places one handle from its value, in seconds or in ADC steps. Nothing while its cursor is off.
    void MoveVertCursorHandle(int cursor, double seconds);
    void MoveHorizCursorHandle(int cursor, double steps) { horiz_.MoveHandle(cursor, steps); }
    /// The end of the start-up: all six handles by their values. A time that the record does not hold, from
    /// settings that do not fit together, comes back into it as after a change of the timebase.
    void PlaceHandles();
    /// What part of the record is in view, in samples and ADC steps. After each plot.
    void WorldLineUpdate(double ViewXMin, double ViewXMax, double ViewYMax, double ViewYMin);
    void CursTimer_Timer();

    int VertCursorDragIndex() const { return vert_.DragIndex; }
    int HorizCursorDragIndex() const { return horiz_.DragIndex; }

  private:
    double Period();
    bool BringBackInto(double period, double longest);
    void FollowPeriod();
    CursorAxis TimeAxis();
    static CursorAxis LevelAxis();
    CursorBar::Calls BarCalls();

    Record& record_;
    Driver& driver_;
    QTimer* CursTimer_;
    Calls calls_;
    CursorBar vert_;
    CursorBar horiz_;
    double placedPeriod_ = 0; ///< by which the time handles were placed
    double placedHeld_ = 0;
    bool placedRunning_ = false;
};
