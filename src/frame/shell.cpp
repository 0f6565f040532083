#include "frame/shell.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "frame/helpers.h"
#include "skin/surface.h"

#include <QWindow>
#include <utility>

namespace {
constexpr int kStats = 0;
constexpr int kSpectrum = 1;
constexpr int kLargeTime = 2;
constexpr Colour kOn = 0x00FF00;
constexpr Colour kOff = 0x808080;
} // namespace

Shell::Shell(Record& record, Forms& forms, Calls calls)
    : record_(record), forms_(forms), calls_(std::move(calls)) {
    parked_[kStats].window = forms.StatsForm.get();
    parked_[kSpectrum].window = forms.FFTForm.get();
    parked_[kLargeTime].window = forms.FullScreenTimeForm.get();

    const Form& main = *forms.MainForm;
    auto button = [&](const char* name, void (Shell::*handler)()) {
        connect(main.control<ButtonControl1>(name), &ButtonControl1::Click, this, handler);
    };
    button("NormaliseButton", &Shell::NormaliseButton_Click);
    button("MinimiseButton", &Shell::MinimiseButton_Click);
    button("MinimiseMostlyButton", &Shell::MinimiseMostlyButton_Click);
    button("FullScreenButton", &Shell::FullScreenButton_Click);
    button("SampleDotsButton", &Shell::SampleDotsButton_Click);
    button("UsersGuideButton", &Shell::UsersGuideButton_Click);
    connect(main.control<ButtonControl1>("CloseButton"), &ButtonControl1::Click, this,
            [this] { calls_.Close(); });
    connect(main.control<Picture>("Image1"), &Picture::MouseDown, this, &Shell::Image1_MouseDown);
    connect(main.timer("IDTimer"), &QTimer::timeout, this, &Shell::IDTimer_Timer);
}

void Shell::SetDefaultLayering() {
    forms_.StatsForm->raise();
}

void Shell::Form_Activate() {
    SetDefaultLayering();
    forms_.FFTForm->lower();
    forms_.FullScreenTimeForm->lower();
}

void Shell::Image1_MouseDown() {
    if (QWindow* window = forms_.surface->windowHandle()) {
        window->startSystemMove();
    }
    SetDefaultLayering();
}

void Shell::NormaliseButton_Click() {
    const Form& main = *forms_.MainForm;
    record_.PlotInhibit = true;
    main.control<SliderControl1>("VertPanSlider")->SetSliderValue(0.5F);
    main.control<KnobControl1>("VertZoomKnob")->SetKnobValue(1);
    main.control<SliderControl1>("HorizPanSlider")->SetSliderValue(0);
    main.control<KnobControl1>("HorizZoomKnob")->SetKnobValue(1);
    SetDefaultLayering();
    record_.PlotInhibit = false;
    calls_.PlotNow();
}

void Shell::Minimise(std::initializer_list<int> satellites) {
    for (int which : satellites) {
        Parked& parked = parked_[which];
        if (parked.window->isVisible()) {
            parked.minimised = true;
            parked.window->hide();
        }
    }
    forms_.surface->showMinimized();
}

void Shell::MinimiseButton_Click() {
    Minimise({kStats, kSpectrum, kLargeTime});
}

void Shell::MinimiseMostlyButton_Click() {
    Minimise({kStats, kSpectrum});
}

void Shell::RestoreParkedWindows() {
    if (forms_.surface->isMinimized()) {
        return;
    }
    for (Parked& parked : parked_) {
        if (parked.minimised) {
            parked.minimised = false;
            parked.window->show();
        }
    }
}

void Shell::FullScreenButton_Click() {
    FullScreenOn = !FullScreenOn;
    if (!FullScreenOn) {
        forms_.FullScreenTimeForm->hide();
        return;
    }
    forms_.FullScreenTimeForm->show();
    forms_.FullScreenTimeForm->lower();
    calls_.PlotNow();
}

void Shell::SampleDotsButton_Click() {
    record_.SampleDots = !record_.SampleDots;
    SetButtonFill(forms_.MainForm->control<ButtonControl1>("SampleDotsButton"), record_.SampleDots, kOn,
                  kOff);
    calls_.PlotNow();
    SetDefaultLayering();
}

void Shell::UsersGuideButton_Click() {
    calls_.OpenDocument(QStringLiteral("UsersGuide/Corvantineug.pdf"));
}

void Shell::IDTimer_Timer() {
    calls_.IDButton_Click(record_.IDChannel);
    record_.IDActive = false;
}
