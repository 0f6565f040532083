#include "display/cursor_bar.h"

#include "controls/accessibility.h"
#include "controls/picture.h"
#include "controls/rounding.h"
#include "controls/step_input.h"
#include "display/cursor_arithmetic.h"
#include "display/far_away.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kPage = 0.1;     // of the bar
constexpr double kFineKey = 0.01; // pixels

} // namespace

CursorBar::CursorBar(const Controls& controls, CursorAxis axis, PerCursor<double>& values, Calls calls)
    : controls_(controls), axis_(std::move(axis)), values_(values), calls_(std::move(calls)) {
    // Where handles overlap the lower number is taken, so that is the one to be seen.
    for (int i = kCursors - 1; i >= 0; --i) {
        controls_.handle[i]->raise();
        Describe(i);
    }
}

void CursorBar::Connect() {
    const auto take = [this](Picture* picture) {
        // A handle hands on what the bar would have got, had it not been in the way.
        const auto onBar = [this, picture](QPoint at) {
            return picture == controls_.bar ? at : picture->mapToParent(at);
        };
        // Who presses twice in a row wants to drag the second time.
        for (const auto press : {&Picture::MouseDown, &Picture::DblClick}) {
            connect(picture, press, this,
                    [this, onBar](Qt::MouseButton, QPoint at) { MouseDown(onBar(at)); });
        }
        connect(picture, &Picture::MouseMove, this,
                [this, onBar](Qt::MouseButtons buttons, QPoint at) { MouseMove(buttons, onBar(at)); });
        connect(picture, &Picture::MouseUp, this, &CursorBar::MouseUp);
    };
    take(controls_.bar);
    for (int i = 0; i < kCursors; ++i) {
        take(controls_.handle[i]);
        connect(controls_.handle[i], &Picture::KeyDown, this,
                [this, i](QKeyEvent* event) { Key(i, *event); });
        connect(controls_.enabled[i], &QCheckBox::stateChanged, this, [this, i] { BoxClick(i); });
    }
}

/// What assistive technology, the pointer and the keyboard find at a handle.
void CursorBar::Describe(int cursor) {
    Picture* handle = controls_.handle[cursor];
    handle->setFocusPolicy(Qt::StrongFocus);
    handle->setCursor(Horizontal() ? Qt::SizeHorCursor : Qt::SizeVerCursor);
    handle->setAccessibleName(QStringLiteral("%1 %2").arg(axis_.name).arg(cursor + 1));
    const auto low = [this] { return std::min(axis_.value(0), axis_.value(1)); };
    const auto high = [this] { return std::max(axis_.value(0), axis_.value(1)); };
    handle->SetValueAccess(
        {.current = [this, cursor] { return values_[cursor]; },
         .minimum = low,
         .maximum = high,
         .step = [this, low, high] { return (high() - low()) / std::max(1.0, Length()); },
         .set = [this, cursor](double value) { PutFraction(cursor, axis_.fraction(value)); },
         .text = [this, cursor] { return axis_.text(values_[cursor]); }});
    ShowValue(cursor, values_[cursor]);
}

void CursorBar::ShowValue(int cursor, double value) {
    controls_.handle[cursor]->setToolTip(axis_.text(value));
}

int CursorBar::Begin(const QWidget& widget) const {
    return Horizontal() ? widget.x() : widget.y();
}

int CursorBar::Extent(const QWidget& widget) const {
    return Horizontal() ? widget.width() : widget.height();
}

double CursorBar::Length() const {
    return Extent(*controls_.bar);
}

bool CursorBar::Enabled(int cursor) const {
    return controls_.enabled[cursor]->checkState() > Qt::Unchecked;
}

void CursorBar::MoveAlong(QWidget& widget, double place) const {
    const int at = RoundToEven(std::clamp<double>(place, -kFarAway, kFarAway));
    if (at != Begin(widget)) {
        widget.move(Horizontal() ? QPoint(at, widget.y()) : QPoint(widget.x(), at));
    }
}

void CursorBar::MoveHandle(int cursor, double value) {
    if (!Enabled(cursor)) {
        return;
    }
    Picture& handle = *controls_.handle[cursor];
    MoveAlong(handle, HandlePlace(axis_.fraction(value), Length(), Extent(handle)));
    ShowValue(cursor, value);
}

void CursorBar::MoveWorldLine(int line, double place) {
    MoveAlong(*controls_.worldLine[line], place);
}

void CursorBar::MouseDown(QPoint at) {
    if (DragIndex >= 1) {
        return; // only cursor 0 is let go of by another press
    }
    const int along = Along(at);
    for (int i = 0; i < kCursors; ++i) {
        const Picture& handle = *controls_.handle[i];
        if (Begin(handle) <= along && along <= Begin(handle) + Extent(handle) && Enabled(i)) {
            DragIndex = i;
            CursorDragAnchor = static_cast<float>(along);
            break;
        }
    }
}

void CursorBar::MouseMove(Qt::MouseButtons buttons, QPoint at) {
    if (DragIndex >= 0 && buttons == Qt::NoButton) {
        MouseUp(); // the release went elsewhere: to a message, or to nobody while the window was hidden
    } else if (DragIndex >= 0 && Length() > 0) {
        PutFraction(DragIndex, DragFraction(buttons.testFlag(Qt::LeftButton), Along(at),
                                            static_cast<double>(CursorDragAnchor), Length()));
    }
}

void CursorBar::MouseUp() {
    DragIndex = -1;
    calls_.Released();
}

void CursorBar::BoxClick(int cursor) {
    const bool enabled = Enabled(cursor);
    controls_.handle[cursor]->setVisible(enabled);
    if (enabled) {
        ShowValue(cursor, values_[cursor]);
    } else if (DragIndex == cursor) {
        DragIndex = -1; // a hidden handle hears of no release
    }
    calls_.Switched();
}

void CursorBar::PutFraction(int cursor, double fraction) {
    const double value = axis_.value(fraction);
    values_[cursor] = value;
    MoveHandle(cursor, value);
    AnnounceValue(*controls_.handle[cursor], value);
    calls_.Moved();
}

void CursorBar::Key(int cursor, QKeyEvent& event) {
    const auto request = StepOfKey(event);
    if (!request || Length() <= 0) {
        return;
    }
    event.accept();
    using Kind = StepRequest::Kind;
    const double towardsHigh = Horizontal() ? 1 : -1; // a level grows upwards, against the bar
    const double before = axis_.fraction(values_[cursor]);
    double after = before;
    switch (request->kind) {
    case Kind::Step: {
        double pixels = event.modifiers().testFlag(Qt::ShiftModifier) ? kManySteps : 1;
        pixels *= event.modifiers().testFlag(Qt::ControlModifier) ? kFineKey : 1;
        after += std::copysign(pixels, request->count) * towardsHigh / Length();
        break;
    }
    case Kind::Page:
        after += std::copysign(kPage, request->count) * towardsHigh;
        break;
    case Kind::ToLow:
        after = Horizontal() ? 0 : 1;
        break;
    case Kind::ToHigh:
        after = Horizontal() ? 1 : 0;
        break;
    }
    PutFraction(cursor, std::clamp(after, 0.0, 1.0));
}
