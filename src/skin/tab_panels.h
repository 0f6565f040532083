#pragma once

#include "frame/record/channels.h"

#include <QObject>
#include <QPoint>
#include <functional>

class Form;
class QTimer;
class QWidget;
struct Record;

/// The panels that hang at the main form: where each belongs, and what a click on its tab does. The tabs of
/// the fixed slots are served here; a channel's tab has a handler of its own, which calls PressTab.
class TabPanels : public QObject {
    Q_OBJECT
  public:
    /// Slots without a panel hold the one placeholder. Places of the panels and of main are those of one
    /// common surface.
    struct Windows {
        Form* main = nullptr;
        QWidget* TabSliderAnchorImage = nullptr;
        QTimer* TabTimer = nullptr;
        PerTab<Form*> TabForm;
        QWidget* StatsForm = nullptr;
        QWidget* FFTForm = nullptr;
        QWidget* FullScreenTimeForm = nullptr;
        QWidget* OffsetNullForm = nullptr; ///< may be absent
    };
    struct Calls {
        std::function<bool()> MainMinimised;
        std::function<void()> BringMainToFront;
        std::function<void(QWidget& panel)> BringPanelUp; ///< in front of the other panels, behind main
        std::function<void(QWidget& panel)> SendPanelToBack;
    };

    /// A window that a minimise has put away, and the left edge that it comes back to.
    struct ParkedWindow {
        bool pending = false;
        int left = 0;
        bool visible = false;
    };

    TabPanels(Record& record, const Windows& windows, Calls calls);

    void TabTimer_Timer();
    /// Pulls the panel of that slot out or pushes it back, and puts the windows in order.
    void PressTab(int slot);
    /// The panel in front of the others, main in front of it, the measurement window in front of main.
    void BringMainToFront(int slot);
    /// The measurement window in front.
    void SetDefaultLayering();
    /// The slot of the foremost panel that is out, 0 if all are in.
    int ForemostOpen() const;

    /// Puts the windows beside the panel, and with them perhaps the large time window, out of sight until
    /// main is no longer minimised. Their left edges are remembered.
    void ParkWindows(bool largeTimeToo);
    /// They are out of sight; what shows itself meanwhile would come too early.
    bool Parked() const { return MinimisedStats.pending; }

    bool TabTimerBusy = false;
    ParkedWindow MinimisedStats, MinimisedFFT, MinimisedTime, MinimisedNull;

  private:
    static void Park(ParkedWindow& parked, QWidget* window);
    static void BringBack(ParkedWindow& parked, QWidget* window);
    void BringWindowsBack();

    Record& record_;
    Windows windows_;
    Calls calls_;
};
