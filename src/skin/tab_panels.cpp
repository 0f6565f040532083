#include "skin/tab_panels.h"

#include "controls/form.h"
#include "controls/picture.h"
#include "frame/record/record.h"

#include <QScopedValueRollback>
#include <QTimer>
#include <utility>

namespace {

constexpr int kFirstFixedTab = 15;
// Of the slots without a panel only these go to the back; the rest of them never move alone.
constexpr bool GoesToBack(int slot) {
    return slot > kScopeChannels && slot < 9;
}

} // namespace

TabPanels::TabPanels(Record& record, const Windows& windows, Calls calls)
    : record_(record), windows_(windows), calls_(std::move(calls)) {
    connect(windows_.TabTimer, &QTimer::timeout, this, &TabPanels::TabTimer_Timer);
    for (int i = kFirstFixedTab; i <= kTabSlots; ++i) {
        connect(windows_.TabForm[i]->control<Picture>("Image1"), &Picture::MouseDown, this,
                [this, i] { PressTab(i); });
    }
}

void TabPanels::TabTimer_Timer() {
    if (TabTimerBusy) {
        return;
    }
    const QScopedValueRollback<bool> busy(TabTimerBusy, true);
    if (!calls_.MainMinimised()) {
        BringWindowsBack();
    }
    const QWidget& anchor = *windows_.TabSliderAnchorImage;
    const QPoint closed = windows_.main->pos() + anchor.mapTo(windows_.main, QPoint(0, 0));
    const QPoint open = closed + QPoint(anchor.width(), 0);
    for (int i = 1; i <= kTabSlots; ++i) {
        Form* panel = windows_.TabForm[i];
        const QPoint target = record_.TabOpen[i] ? open : closed;
        if (panel->pos() == target) {
            continue;
        }
        panel->move(target);
        if (!record_.TabOpen[i] && GoesToBack(i)) {
            calls_.SendPanelToBack(*panel);
        }
    }
}

void TabPanels::PressTab(int slot) {
    record_.TabOpen[slot] = !record_.TabOpen[slot];
    BringMainToFront(slot);
}

void TabPanels::BringMainToFront(int slot) {
    calls_.BringPanelUp(*windows_.TabForm[slot]);
    calls_.BringMainToFront();
    SetDefaultLayering();
}

void TabPanels::SetDefaultLayering() {
    windows_.StatsForm->raise();
}

void TabPanels::ParkWindows(bool largeTimeToo) {
    Park(MinimisedStats, windows_.StatsForm);
    Park(MinimisedFFT, windows_.FFTForm);
    if (largeTimeToo) {
        Park(MinimisedTime, windows_.FullScreenTimeForm);
    }
    if (windows_.OffsetNullForm != nullptr) {
        Park(MinimisedNull, windows_.OffsetNullForm);
    }
}

void TabPanels::Park(ParkedWindow& parked, QWidget* window) {
    // A second minimise before the window is back must not remember it as gone.
    if (!parked.pending) {
        parked = {true, window->x(), window->isVisible()};
    }
    window->hide();
}

void TabPanels::BringBack(ParkedWindow& parked, QWidget* window) {
    if (!parked.pending) {
        return;
    }
    parked.pending = false;
    // A window manager may have minimised it together with main; shown so, it would take main along.
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->move(parked.left, window->y());
    if (parked.visible) {
        window->show();
    }
}

void TabPanels::BringWindowsBack() {
    if (MinimisedFFT.pending) {
        BringBack(MinimisedFFT, windows_.FFTForm);
        windows_.FFTForm->lower();
    }
    if (MinimisedTime.pending) {
        BringBack(MinimisedTime, windows_.FullScreenTimeForm);
        windows_.FullScreenTimeForm->lower();
    }
    if (windows_.OffsetNullForm != nullptr) {
        BringBack(MinimisedNull, windows_.OffsetNullForm);
    }
    if (MinimisedStats.pending) {
        BringBack(MinimisedStats, windows_.StatsForm);
        SetDefaultLayering();
    }
}

int TabPanels::ForemostOpen() const {
    const QObjectList& parts = windows_.main->parent()->children(); // from the rearmost to the foremost
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        for (int slot = 1; slot <= kTabSlots; ++slot) {
            if (windows_.TabForm[slot] == *part && record_.TabOpen[slot]) {
                return slot;
            }
        }
    }
    return 0;
}
