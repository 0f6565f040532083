#include "frame/instrument/shut_down.h"

#include "frame/instrument/instrument.h"

#include <QCoreApplication>
#include <QTimer>
#include <initializer_list>

namespace {

void StopTimers(const QWidget* window) {
    if (window != nullptr) {
        // The controls' own as well: a change that a knob holds back would still reach the instrument.
        for (QTimer* timer : window->findChildren<QTimer*>()) {
            timer->stop();
        }
    }
}

void Hide(QWidget* window) {
    if (window != nullptr) {
        window->hide();
    }
}

void StopTimers(const Instrument& i) {
    for (const QWidget* window : std::initializer_list<const QWidget*>{
             i.forms.surface.get(), i.forms.StatsForm.get(), i.forms.OffsetNullForm.get(),
             i.forms.FFTForm.get(), i.forms.FullScreenTimeForm.get()}) {
        StopTimers(window);
    }
}

} // namespace

void ShutDown(Instrument& i) {
    i.closing.Request();
}

void BeginShutDown(Instrument& i) {
    StopTimers(i);
    i.log.PrintLog(QStringLiteral("About to close"));
}

void EndShutDown(Instrument& i) {
    StopTimers(i);
    i.record.PlotInhibit = true;
    Hide(i.forms.FullScreenTimeForm.get());
    Hide(i.forms.FFTForm.get());
    Hide(i.forms.StatsForm.get());
    Hide(i.forms.OffsetNullForm.get());

    i.log.PrintLog(QStringLiteral("Saving registry settings"));
    if (i.settingsRestored && i.record.NumScopesFound > 0) {
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
        Hide(i.forms.TabForm[slot]);
        if (i.settingsRestored) {
            i.UnloadTab(slot);
        }
    }
    i.TellUnsaved(i.settings.Flush());

    Hide(i.forms.SplashForm.get());
    Hide(i.forms.surface.get());
    i.log.PrintLog(QStringLiteral("Closing driver"));
    i.driver.CloseDrvr(i.record.DriverHandle);
    i.log.PrintLog(QStringLiteral("End"));
    i.log.CloseLog();
    QCoreApplication::quit();
}
