#include "export/data_tab.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "driver/driver.h"
#include "export/file_names.h"
#include "export/save_data.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QRadioButton>
#include <utility>

namespace {
constexpr Colour kSaveFore = 0xFFFFFF;
} // namespace

QString SaveFailureText() {
    return QStringLiteral(
        "An error occured while trying to access the file...the operation was unsuccessful !\n"
        "The file may be open in another application?  Please check and try again.");
}

DataTab::Controls DataTab::Controls::Of(const Form& dataTab, const Form& mathTab) {
    Controls controls{.SaveCh = {},
                      .SaveDataButton = dataTab.control<ButtonControl1>("SaveDataButton"),
                      .DoneTimer = dataTab.timer("DoneTimer"),
                      .MathCombo = {},
                      .FFTWindowCombo = mathTab.control<QComboBox>("FFTWindowCombo"),
                      .FFTPlotType = {mathTab.control<QRadioButton>("FFTPlotType", 0),
                                      mathTab.control<QRadioButton>("FFTPlotType", 1)}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.SaveCh[channel] = dataTab.control<QCheckBox>("SaveCh", channel);
    }
    for (int list = 0; list < 3; ++list) {
        controls.MathCombo[1][list] = mathTab.control<QComboBox>("Math1Combo", list);
        controls.MathCombo[2][list] = mathTab.control<QComboBox>("Math2Combo", list);
    }
    return controls;
}

DataTab::DataTab(Record& record, Driver& driver, const Controls& controls, const Scales& scales, Calls calls)
    : record_(record), driver_(driver), controls_(controls), scales_(scales), calls_(std::move(calls)) {}

void DataTab::Connect() {
    connect(controls_.SaveDataButton, &ButtonControl1::Click, this, &DataTab::SaveDataButton_Click);
    connect(controls_.DoneTimer, &QTimer::timeout, this, &DataTab::DoneTimer_Timer);
}

void DataTab::SaveDataButton_Click() {
    if (asking_) {
        return;
    }
    asking_ = true;
    calls_.AskForFile(folder_, [this](const std::optional<QString>& given) {
        asking_ = false;
        if (given) {
            Save(*given);
        }
    });
}

void DataTab::Save(const QString& given) {
    // Nothing in here lets an event through before the last file: they all hold the same moment.
    const QString base = SaveBase(given);
    folder_ = QFileInfo(base).absolutePath();
    if (!SaveData(Request(base), record_, scales_, files_)) {
        calls_.ShowFailure(SaveFailureText());
        return;
    }
    ShowDone();
}

SaveRequest DataTab::Request(const QString& base) {
    const bool decibels = controls_.FFTPlotType[0]->isChecked();
    SaveRequest request{.base = base,
                        .selected = {},
                        .mathTerms = {},
                        .decibels = decibels,
                        .window = controls_.FFTWindowCombo->currentText(),
                        .plotType = controls_.FFTPlotType[decibels ? 0 : 1]->text(),
                        .samplePeriod = driver_.GetSamplePeriod(record_.Running,
                                                                static_cast<float>(record_.HeldSamplePeriod)),
                        .stamp = calls_.Stamp()};
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        request.selected[channel] =
            channel <= kScopeChannels ? controls_.SaveCh[channel]->isChecked() : record_.ChannelOn[channel];
    }
    for (int math = 1; math <= 2; ++math) {
        const auto& lists = controls_.MathCombo[math];
        request.mathTerms[math] = QStringLiteral("%1 %2 %3")
                                      .arg(lists[0]->currentIndex() + 1)
                                      .arg(lists[1]->currentText())
                                      .arg(lists[2]->currentIndex() + 1);
    }
    return request;
}

// While "done" shows, the button's fore colour keeps the fill that comes back.
void DataTab::ShowDone() {
    ButtonControl1& button = *controls_.SaveDataButton;
    button.SetButtonCaption(QStringLiteral("done"));
    button.SetButtonForeColor(button.ButtonFillColor());
    button.SetButtonFillColor(ToQColor(kSwitchOn));
    controls_.DoneTimer->start();
}

void DataTab::DoneTimer_Timer() {
    ButtonControl1& button = *controls_.SaveDataButton;
    button.SetButtonCaption(QStringLiteral("save"));
    button.SetButtonFillColor(button.ButtonForeColor());
    button.SetButtonForeColor(ToQColor(kSaveFore));
    controls_.DoneTimer->stop();
}
