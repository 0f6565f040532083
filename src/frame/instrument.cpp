#include "frame/instrument.h"

#include "controls/picture.h"
#include "skin/skin_colour.h"

#include <utility>

Forms::Forms(DebugLog& log) : SharedDIB(log), MainRegion(log) {
    for (auto& region : TabRegion) {
        region = std::make_unique<cDIBSectionRegion>(log);
    }
}

Instrument::Instrument(Record& theRecord, Driver& theDriver, Environment surroundings)
    : record(theRecord), driver(theDriver), environment(std::move(surroundings)),
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
}

void Instrument::ShowMainForm() {
    forms.surface->show();
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

void Instrument::SaveSettings() {
    for (const QString& failure : settings.Flush()) {
        environment.show(failure);
    }
}
