#include "frame/window/shell.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/picture.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"
#include "skin/tab_panels.h"

#include <utility>

Shell::Shell(Record& record, Forms& forms, TabPanels& panels, Calls calls)
    : record_(record), forms_(forms), panels_(panels), calls_(std::move(calls)) {}

void Shell::Connect() {
    const Form& main = *forms_.MainForm;
    auto button = [&](const char* name, void (Shell::*handler)()) {
        connect(main.control<ButtonControl1>(name), &ButtonControl1::Click, this, handler);
    };
    button("MinimiseButton", &Shell::MinimiseButton_Click);
    button("MinimiseMostlyButton", &Shell::MinimiseMostlyButton_Click);
    button("FullScreenButton", &Shell::FullScreenButton_Click);
    button("SampleDotsButton", &Shell::SampleDotsButton_Click);
    button("UsersGuideButton", &Shell::UsersGuideButton_Click);
    connect(main.control<ButtonControl1>("CloseButton"), &ButtonControl1::Click, this,
            [this] { calls_.Close(); });
    connect(forms_.surface.get(), &Surface::CloseRequested, this, [this] { calls_.Close(); });
    connect(forms_.surface.get(), &Surface::Activated, this, &Shell::Form_Activate);
    connect(forms_.surface.get(), &Surface::Minimised, this, &Shell::Minimised);
    connect(forms_.MainForm, &Form::Resized, this, [this] { forms_.FullScreenTimeForm->lower(); });
    for (Form* window :
         {forms_.StatsForm, forms_.FFTForm.get(), forms_.FullScreenTimeForm.get(), forms_.OffsetNullForm}) {
        window->installEventFilter(this);
    }
    connect(main.timer("IDTimer"), &QTimer::timeout, this, &Shell::IDTimer_Timer);

    Picture* face = main.control<Picture>("Image1");
    forms_.surface->MoveBy(*face);
    connect(face, &Picture::MouseDown, this, &Shell::SetDefaultLayering);
}

void Shell::SetDefaultLayering() {
    panels_.SetDefaultLayering();
}

void Shell::Form_Activate() {
    SetDefaultLayering();
    forms_.FFTForm->lower();
    forms_.FullScreenTimeForm->lower();
}

bool Shell::eventFilter(QObject* watched, QEvent* event) {
    // A window that is no longer in view, as at the end of the program, may go.
    if (event->type() != QEvent::Close || !static_cast<QWidget*>(watched)->isVisible()) {
        return false;
    }
    event->ignore();
    AskedToClose(watched);
    return true;
}

// The window manager closes a window as the window's own button does; one without such a button stays.
void Shell::AskedToClose(const QObject* window) {
    if (window == forms_.FullScreenTimeForm.get()) {
        FullScreenButton_Click();
    } else if (window == forms_.OffsetNullForm) {
        emit forms_.OffsetNullForm->control<ButtonControl1>("DoneNullButton")->Click();
    }
}

void Shell::Minimise(bool largeTimeToo) {
    panels_.ParkWindows(largeTimeToo);
    forms_.surface->Minimise();
}

// Also by the window manager, which knows nothing of the windows beside the panel.
void Shell::Minimised() {
    if (!panels_.Parked()) {
        panels_.ParkWindows(true);
    }
}

void Shell::MinimiseButton_Click() {
    Minimise(true);
}

void Shell::MinimiseMostlyButton_Click() {
    Minimise(false);
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
    SetButtonFill(forms_.MainForm->control<ButtonControl1>("SampleDotsButton"), record_.SampleDots, kSwitchOn,
                  kSwitchOff);
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
