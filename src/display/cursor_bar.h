#pragma once

#include "frame/record/channels.h"

#include <QObject>
#include <QPoint>
#include <functional>

class Picture;
class QCheckBox;
class QKeyEvent;
class QWidget;

/// What tells one direction of cursors from the other.
struct CursorAxis {
    Qt::Orientation orientation = Qt::Horizontal; ///< of the bar
    QString name;                                 ///< "Time cursor"
    std::function<double(double value)> fraction; ///< place of a value in the bar, 0..1
    std::function<double(double fraction)> value; ///< the value of a place
    std::function<QString(double value)> text;    ///< as the user reads it
};

/// A bar beside the plot with the handles of three cursors and the two lines that show what is in view. One
/// class for both directions.
class CursorBar : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        Picture* bar = nullptr;
        PerCursor<Picture*> handle;
        Indexed<QWidget*, 0, 1> worldLine;
        PerCursor<QCheckBox*> enabled; ///< of the cursor tab
    };
    struct Calls {
        std::function<void()> Moved;    ///< a cursor has another value
        std::function<void()> Released; ///< the mouse let go of the bar
        std::function<void()> Switched; ///< a cursor was switched on or off
    };

    /// values: of the three cursors, in the record.
    CursorBar(const Controls& controls, CursorAxis axis, PerCursor<double>& values, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    /// Places a handle; nothing while its cursor is off.
    void MoveHandle(int cursor, double value);
    /// place: of that line along the bar, in logical pixels.
    void MoveWorldLine(int line, double place);
    double Length() const;

    void MouseDown(QPoint at);
    void MouseMove(Qt::MouseButtons buttons, QPoint at);
    void MouseUp();
    void BoxClick(int cursor);

    int DragIndex = -1;         ///< the cursor that is dragged, -1 for none
    float CursorDragAnchor = 0; ///< where the mouse was pressed

  private:
    bool Horizontal() const { return axis_.orientation == Qt::Horizontal; }
    int Along(QPoint at) const { return Horizontal() ? at.x() : at.y(); }
    int Begin(const QWidget& widget) const;
    int Extent(const QWidget& widget) const;
    void MoveAlong(QWidget& widget, double place) const;
    bool Enabled(int cursor) const;
    void PutFraction(int cursor, double fraction);
    void Key(int cursor, QKeyEvent& event);
    void ShowValue(int cursor, double value);
    void Describe(int cursor);

    Controls controls_;
    CursorAxis axis_;
    PerCursor<double>& values_;
    Calls calls_;
};
