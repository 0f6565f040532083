#include "frame/shut_down.h"

#include "frame/instrument.h"

#include <QCoreApplication>

namespace {

constexpr int kMostWaits = 20;
constexpr int kWait = 50; ///< ms; a handler that is still busy after a second is left behind

void WaitForHandlers(Instrument& i) {
    for (int waits = 0; waits < kMostWaits && (i.tabPanels->TabTimerBusy || i.acquisition.RunTimerBusy);
         ++waits) {
        i.environment.sleep(kWait);
    }
}

} // namespace

void ShutDown(Instrument& i) {
    if (i.closing) {
        return;
    }
    i.closing = true;
    i.forms.MainForm->timer("RunTimer")->stop();
    i.forms.MainForm->timer("TabTimer")->stop();
    i.forms.MainForm->timer("AutoTriggerTimer")->stop();
    i.log.PrintLog(QStringLiteral("About to close"));
    WaitForHandlers(i);

    i.record.PlotInhibit = true;
    i.forms.FullScreenTimeForm->hide();
    i.forms.FFTForm->hide();
    i.forms.StatsForm->hide();

    i.log.PrintLog(QStringLiteral("Saving registry settings"));
    if (i.record.NumScopesFound > 0) {
        i.scopeSettings->SaveScopeSettings();
    }

    i.log.PrintLog(QStringLiteral("Closing scopes"));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (i.record.ScopeInUse[channel]) {
            i.driver.Close(channel);
        }
    }

    i.log.PrintLog(QStringLiteral("Unloading tab forms"));
    for (int slot = 1; slot <= Record::kTabSlots; ++slot) {
        i.forms.TabForm[slot]->hide();
        i.UnloadTab(slot);
    }
    i.SaveSettings();

    i.forms.surface->hide();
    i.log.PrintLog(QStringLiteral("Closing driver"));
    i.driver.CloseDrvr(i.record.DriverHandle);
    i.log.PrintLog(QStringLiteral("End"));
    i.log.CloseLog();
    QCoreApplication::quit();
}
