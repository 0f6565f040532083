#include "frame/instrument/shut_down.h"

#include "frame/instrument/instrument.h"
#include "frame/record/record.h"

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

void StopTimers(const Instrument& instrument) {
    for (const QWidget* window : std::initializer_list<const QWidget*>{
             instrument.forms.surface.get(), instrument.forms.StatsForm, instrument.forms.OffsetNullForm,
             instrument.forms.FFTForm.get(), instrument.forms.FullScreenTimeForm.get()}) {
        StopTimers(window);
    }
}

} // namespace

void ShutDown(Instrument& instrument) {
    instrument.closing.Request();
}

void BeginShutDown(Instrument& instrument) {
    StopTimers(instrument);
    instrument.log.PrintLog(QStringLiteral("About to close"));
}

void EndShutDown(Instrument& instrument) {
    StopTimers(instrument);
    instrument.record.PlotInhibit = true;
    Hide(instrument.forms.FullScreenTimeForm.get());
    Hide(instrument.forms.FFTForm.get());
    Hide(instrument.forms.StatsForm);
    Hide(instrument.forms.OffsetNullForm);

    instrument.log.PrintLog(QStringLiteral("Saving registry settings"));
    if (instrument.settingsRestored && instrument.record.NumScopesFound > 0) {
        instrument.scopeSettings->SaveScopeSettings();
    }

    instrument.log.PrintLog(QStringLiteral("Closing scopes"));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (instrument.record.ScopeInUse[channel]) {
            instrument.driver.Close(channel);
        }
    }

    instrument.log.PrintLog(QStringLiteral("Unloading tab forms"));
    for (int slot = 1; slot <= kTabSlots; ++slot) {
        Hide(instrument.forms.TabForm[slot]);
        if (instrument.settingsRestored) {
            instrument.UnloadTab(slot);
        }
    }
    instrument.TellUnsaved(instrument.settings.Flush());

    Hide(instrument.forms.SplashForm.get());
    Hide(instrument.forms.surface.get());
    instrument.log.PrintLog(QStringLiteral("Closing driver"));
    instrument.driver.CloseDrvr(instrument.record.DriverHandle);
    instrument.log.PrintLog(QStringLiteral("End"));
    instrument.log.CloseLog();
    QCoreApplication::quit();
}
