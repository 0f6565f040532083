#pragma once

#include "frame/instrument/instrument.h"

#include <QCheckBox>
#include <QComboBox>

/// Both math channels, and the spectra of all six.
inline void OpenSpectra(Instrument& instrument) {
    const Form& math = *instrument.forms.TabForm[kMathTab];
    for (int number : {1, 2}) {
        math.control<QComboBox>(number == 1 ? "Math1Combo" : "Math2Combo", 2)->setCurrentIndex(number);
        math.control<QCheckBox>("MathChannelEn", number)->setChecked(true);
        instrument.mathTab->MathChannelEn_Click(number);
        instrument.mathTab->FFTButton_Click(number - 1);
    }
    for (auto& tab : instrument.channelTabs) {
        tab->FFTButton_Click();
    }
}

/// All that a person can open: the spectra, and the large time window over a screen of 1920 x 1080.
inline void OpenEverything(Instrument& instrument) {
    OpenSpectra(instrument);
    instrument.shell->FullScreenButton_Click();
    instrument.forms.FullScreenTimeForm->setGeometry(0, 0, 1920, 1030);
}
