#include "endurance/bench_day.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/window/forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>

namespace {

constexpr int kModes[] = {8, 24, 3}; ///< settings of the timebase: refresh, roll, RIS
constexpr int kTicksInMode = 6;

/// These end or hide the program, or have a step of their own.
bool Pressed(const ButtonControl1& button) {
    const QString name = button.objectName();
    return name != "CloseButton" && !name.startsWith("Minimise") && name != "UsersGuideButton" &&
           name != "SaveDataButton";
}

} // namespace

std::vector<QPointer<QWidget>> BenchDay::Controls() const {
    const Forms& forms = whole_.instrument.forms;
    std::vector<QPointer<QWidget>> controls;
    for (const QWidget* window :
         std::initializer_list<const QWidget*>{forms.surface.get(), forms.StatsForm, forms.OffsetNullForm,
                                               forms.FFTForm.get(), forms.FullScreenTimeForm.get()}) {
        const auto found = window->findChildren<QWidget*>();
        controls.insert(controls.end(), found.begin(), found.end());
    }
    return controls;
}

void BenchDay::Tick(int times) {
    whole_.Tick(times);
    ticks_ += times;
}

void BenchDay::Spend() {
    EveryMode();
    EveryKnob();
    EverySliderAndList();
    EveryButton(); // now everything is open
    Tick(3);
    SaveData();
    Hold();
    EveryButton();
    Tick(3);
}

// Held: what is turned now is rescaled.
void BenchDay::Hold() {
    const Forms& forms = whole_.instrument.forms;
    WholeInstrument::Click(*forms.MainForm->control<ButtonControl1>("RunButton"));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        auto* volts = forms.TabForm[channel]->control<KnobControl1>("VoltsKnob");
        auto* offset = forms.TabForm[channel]->control<KnobControl1>("OffsetKnob");
        volts->SetKnobValue(volts->KnobMax() - volts->KnobValue());
        offset->SetKnobValue(offset->KnobMin());
        QCoreApplication::processEvents();
    }
    forms.MainForm->control<KnobControl1>("TimeBaseKnob")->SetKnobValue(kModes[0]);
    SaveData();
    WholeInstrument::Click(*forms.MainForm->control<ButtonControl1>("RunButton"));
}

void BenchDay::EveryMode() {
    const Form& main = *whole_.instrument.forms.MainForm;
    for (const int setting : kModes) {
        main.control<KnobControl1>("TimeBaseKnob")->SetKnobValue(setting);
        for (int mode = 0; mode < 3; ++mode) {
            WholeInstrument::Click(*main.control<ButtonControl1>("TrigModeButton"));
            for (int tick = 0; tick < kTicksInMode; ++tick) {
                Tick(1);
                whole_.instrument.runLoop->AutoTriggerTimer_Timer();
            }
        }
    }
}

void BenchDay::EveryKnob() {
    for (const QPointer<QWidget>& control : Controls()) {
        if (auto* knob = qobject_cast<KnobControl1*>(control.data())) {
            const int value = knob->KnobValue();
            for (const int turned : {value == knob->KnobMin() ? knob->KnobMax() : knob->KnobMin(), value}) {
                knob->SetKnobValue(turned);
            }
            QCoreApplication::processEvents();
        }
    }
}

void BenchDay::EverySliderAndList() {
    for (const QPointer<QWidget>& control : Controls()) {
        if (auto* slider = qobject_cast<SliderControl1*>(control.data())) {
            const float value = slider->SliderValue();
            for (const float moved : {0.0F, 1.0F, value}) {
                slider->SetSliderValue(moved);
            }
        } else if (auto* combo = qobject_cast<QComboBox*>(control.data())) {
            for (int i = 0; i < combo->count(); ++i) {
                combo->setCurrentIndex(i);
            }
        } else if (auto* list = qobject_cast<QListWidget*>(control.data())) {
            for (int i = 0; i < list->count(); ++i) {
                list->setCurrentRow(i);
                emit list->itemClicked(list->item(i));
            }
        } else if (qobject_cast<QCheckBox*>(control.data()) != nullptr ||
                   qobject_cast<QRadioButton*>(control.data()) != nullptr) {
            static_cast<QAbstractButton*>(control.data())->click();
        } else {
            continue;
        }
        QCoreApplication::processEvents();
    }
}

void BenchDay::EveryButton() {
    for (const QPointer<QWidget>& control : Controls()) {
        auto* button = qobject_cast<ButtonControl1*>(control.data());
        if (button != nullptr && Pressed(*button)) {
            WholeInstrument::Click(*button);
            QCoreApplication::processEvents();
        }
    }
}

void BenchDay::SaveData() {
    const Form& tab = *whole_.instrument.forms.TabForm[kDataTab];
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        tab.control<QCheckBox>("SaveCh", channel)->setChecked(true);
    }
    const qsizetype before = QDir(folder_).count();
    WholeInstrument::Click(*tab.control<ButtonControl1>("SaveDataButton"));
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QFileDialog*>(window); dialog && dialog->isVisible()) {
            dialog->setDirectory(folder_);
            dialog->findChild<QLineEdit*>()->setText(QStringLiteral("saved%1").arg(before));
            QMetaObject::invokeMethod(dialog, "accept");
        }
    }
    QCoreApplication::processEvents();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(window)) {
            box->accept();
        }
    }
    files_ += static_cast<int>(QDir(folder_).count() - before);
}
