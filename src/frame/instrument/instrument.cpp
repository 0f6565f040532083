#include "frame/instrument/instrument.h"

#include "controls/picture.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "skin/skin_colour.h"
#include "skin/skin_selection.h"

#include <utility>

namespace {

/// The same surroundings; a handler that lets events run, or waits for an answer, is one that a close waits
/// for.
Environment Watched(Environment environment, Closing& closing) {
    environment.yield = [&closing, yield = std::move(environment.yield)] {
        const Closing::Handler handler(closing);
        yield();
    };
    environment.show = [&closing, show = std::move(environment.show)](const QString& text) {
        // On the way to the end nobody is left to read what a handler has to say.
        if (!closing.Wanted() || closing.Served()) {
            const Closing::Handler handler(closing);
            show(text);
        }
    };
    return environment;
}

} // namespace

Instrument::Instrument(Record& theRecord, Driver& theDriver, Environment surroundings)
    : record(theRecord), driver(theDriver),
      closing({.Begin = [this] { BeginShutDown(*this); },
               .Busy =
                   [this] {
                       return acquisition.RunTimerBusy || (tabPanels != nullptr && tabPanels->TabTimerBusy);
                   },
               .End = [this] { EndShutDown(*this); }}),
      environment(Watched(std::move(surroundings), closing)),
      log(environment.applicationFolder, environment.show), settings(environment.settingsFolder), forms(log) {
}

Instrument::~Instrument() = default;

void Instrument::SkinPanel(int slot) {
    Form* form = forms.TabForm[slot];
    log.PrintLog(QStringLiteral("About to skin ") + form->objectName());
    SetWindowEffects(log, forms.SharedDIB, *form->control<Picture>("Image2"), kSkinKey,
                     *forms.TabRegion[slot]);
}

void Instrument::SkinMainForm() {
    log.PrintLog(QStringLiteral("About to skin ") + forms.MainForm->objectName());
    SetWindowEffects(log, forms.SharedDIB, *forms.MainForm->control<Picture>("Image1"), kSkinKey,
                     forms.MainRegion);
    skins->DressPlainFace();
}

void Instrument::RestoreTabSettings(int slot) {
    if (slot == kHorzTab) {
        horizontalTab->RestoreTabSettings();
    } else if (slot == kCursTab) {
        cursorTab->RestoreTabSettings();
    } else if (slot == kMathTab) {
        mathTab->RestoreTabSettings();
    }
}

void Instrument::UnloadTab(int slot) {
    if (slot <= kScopeChannels) {
        channelTabs[slot]->Form_Unload();
    } else if (slot == kMathTab) {
        mathTab->Form_Unload();
    } else if (slot == kHorzTab) {
        horizontalTab->Form_Unload();
    } else if (slot == kCursTab) {
        cursorTab->Form_Unload();
    }
}

QStringList Instrument::KeepSettings() {
    if (!settingsRestored || closing.Served()) {
        return {};
    }
    if (record.NumScopesFound > 0) {
        scopeSettings->SaveScopeSettings();
    }
    for (int slot = 1; slot <= kTabSlots; ++slot) {
        UnloadTab(slot);
    }
    return settings.Flush();
}

void Instrument::TellUnsaved(const QStringList& failures) {
    if (!failures.isEmpty()) {
        environment.show(QStringLiteral("Not all settings could be saved:\n") +
                         failures.join(QLatin1Char('\n')));
    }
}
