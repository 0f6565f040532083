#include "display/cursor_bars.h"

#include "controls/form.h"
#include "controls/number_format.h"
#include "controls/rounding.h"
#include "display/cursor_arithmetic.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QTimer>
#include <utility>

namespace {

constexpr double kStepsOfDivision = 12.6;
constexpr int kMarginSamples = 10; ///< from the end of the record, of a cursor that was brought back

CursorBar::Controls BarOf(const Form& main, const Form& cursorTab, const QByteArray& axis) {
    CursorBar::Controls controls;
    controls.bar = main.control<Picture>(axis + "CursorBar");
    for (int i = 0; i < 2; ++i) {
        controls.worldLine[i] = main.control<QWidget>(axis + "WorldLine", i);
    }
    for (int i = 0; i < kCursors; ++i) {
        controls.handle[i] = main.control<Picture>(axis + "CursorHandle", i);
        controls.enabled[i] = cursorTab.control<QCheckBox>(axis + "CursorEn", i);
    }
    return controls;
}

} // namespace

CursorBars::Controls CursorBars::Controls::Of(const Form& main, const Form& cursorTab) {
    return {.Vert = BarOf(main, cursorTab, "Vert"),
            .Horiz = BarOf(main, cursorTab, "Horiz"),
            .CursTimer = main.timer("CursTimer")};
}

CursorBars::CursorBars(Record& record, Driver& driver, const Controls& controls, Calls calls)
    : record_(record), driver_(driver), CursTimer_(controls.CursTimer), calls_(std::move(calls)),
      vert_(controls.Vert, TimeAxis(), record.VertCursorTime, BarCalls()),
      horiz_(controls.Horiz, LevelAxis(), record.HorizCursorVolts, BarCalls()) {}

void CursorBars::Connect() {
    vert_.Connect();
    horiz_.Connect();
    connect(CursTimer_, &QTimer::timeout, this, &CursorBars::CursTimer_Timer);
}

double CursorBars::Period() {
    return static_cast<double>(driver_.GetSamplePeriod(record_.Running, record_.HeldSamplePeriod));
}

CursorAxis CursorBars::TimeAxis() {
    return {
        .orientation = Qt::Horizontal,
        .name = QStringLiteral("Time cursor"),
        .fraction = [this](double time) { return FractionOfTime(time, record_.SampleDepth, Period()); },
        .value = [this](double fraction) { return TimeOfFraction(fraction, record_.SampleDepth, Period()); },
        .text = [](double time) { return FormatSeconds(time); }};
}

CursorAxis CursorBars::LevelAxis() {
    return {.orientation = Qt::Vertical,
            .name = QStringLiteral("Level cursor"),
            .fraction = FractionOfLevel,
            .value = LevelOfFraction,
            .text = [](double steps) { return FormatNumber(steps / kStepsOfDivision, "0.00 div"); }};
}

CursorBar::Calls CursorBars::BarCalls() {
    return {.Moved =
                [this] {
                    CursTimer_->stop();
                    CursTimer_->start();
                },
            .Released = [this] { calls_.SetDefaultLayering(); },
            .Switched = [this] { calls_.PlotNow(); }};
}

/// Time cursors beyond longest, in seconds, come back to just before the end of the record. Whether any did.
bool CursorBars::BringBackInto(double period, double longest) {
    bool any = false;
    for (double& time : record_.VertCursorTime) {
        if (time > longest) {
            time = (record_.SampleDepth - kMarginSamples) * period;
            any = true;
        }
    }
    return any;
}

void CursorBars::MoveVertCursorHandle(int cursor, double seconds) {
    placedPeriod_ = Period();
    vert_.MoveHandle(cursor, seconds);
}

void CursorBars::PlaceHandles() {
    placedPeriod_ = Period();
    BringBackInto(placedPeriod_, record_.SampleDepth * placedPeriod_);
    for (int i = 0; i < kCursors; ++i) {
        vert_.MoveHandle(i, record_.VertCursorTime[i]);
        MoveHorizCursorHandle(i, record_.HorizCursorVolts[i]);
    }
}

/// A timebase that was turned while stopped comes into force with the run. Until then the time cursors stood
/// on the held record. The plot that tells of it had them where they were before.
void CursorBars::FollowPeriod() {
    const double period = Period();
    if (period == placedPeriod_) {
        return;
    }
    placedPeriod_ = period;
    if (BringBackInto(period, (record_.SampleDepth - 1) * period)) {
        CursTimer_->start();
    }
    for (int i = 0; i < kCursors; ++i) {
        vert_.MoveHandle(i, record_.VertCursorTime[i]);
    }
}

void CursorBars::WorldLineUpdate(double ViewXMin, double ViewXMax, double ViewYMax, double ViewYMin) {
    // What a period depends on while the timebase rests: no plot asks the driver for one more.
    if (placedRunning_ != record_.Running || placedHeld_ != record_.HeldSamplePeriod) {
        placedRunning_ = record_.Running;
        placedHeld_ = record_.HeldSamplePeriod;
        FollowPeriod();
    }
    vert_.MoveWorldLine(0, VertWorldLinePlace(ViewXMin, record_.SampleDepth, vert_.Length()));
    vert_.MoveWorldLine(1, VertWorldLinePlace(ViewXMax, record_.SampleDepth, vert_.Length()));
    horiz_.MoveWorldLine(0, HorizWorldLinePlace(ViewYMax, horiz_.Length()));
    horiz_.MoveWorldLine(1, HorizWorldLinePlace(RoundToEven(ViewYMin), horiz_.Length()));
}

void CursorBars::CursTimer_Timer() {
    CursTimer_->stop();
    calls_.PlotNow();
}
