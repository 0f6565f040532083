#include "export/print.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"

#include <QApplication>
#include <QClipboard>

// What the keys do, which is what presses of their buttons do.

void Instrument::MakeKeyboard() {
    keyboard = std::make_unique<Keyboard>(
        std::initializer_list<QWidget*>{forms.surface.get(), forms.FullScreenTimeForm.get(),
                                        forms.FFTForm.get()},
        Keyboard::Calls{.Ready = [this] { return settingsRestored && !closing.Wanted(); },
                        .RunButton_Click = [this] { runLoop->RunButton_Click(); },
                        .OnceButton_Click = [this] { runLoop->OnceButton_Click(); },
                        .TrigModeButton_Click = [this] { trigger->TrigModeButton_Click(); },
                        .ChannelOnButton_Click =
                            [this](int channel) {
                                if (record.ScopeInUse[channel]) {
                                    channelTabs[channel]->ChannelOnButton_Click();
                                }
                            },
                        .NormaliseButton_Click = [this] { viewControls->NormaliseButton_Click(); },
                        .SampleDotsButton_Click = [this] { shell->SampleDotsButton_Click(); },
                        .FullScreenButton_Click = [this] { shell->FullScreenButton_Click(); },
                        .SaveDataButton_Click = [this] { dataTab->SaveDataButton_Click(); },
                        .Picture =
                            [this] {
                                QWidget* front = QApplication::activeWindow();
                                if (front == forms.FullScreenTimeForm.get()) {
                                    largeTimeShot->ClipboardButton_Click();
                                } else if (front == forms.FFTForm.get()) {
                                    spectrumShot->ClipboardButton_Click();
                                } else if (front == nullptr || front == forms.surface.get()) {
                                    QGuiApplication::clipboard()->setImage(forms.surface->Shot());
                                } else {
                                    CaptureWindowToClipboard(*front);
                                }
                            },
                        .UsersGuideButton_Click = [this] { shell->UsersGuideButton_Click(); },
                        .Close = [this] { ShutDown(*this); },
                        .ClosePanel = [this] { ClosePanel(); }});
}

/// As a click on its tab does.
void Instrument::ClosePanel() {
    const int slot = tabPanels->ForemostOpen();
    if (slot >= 1 && slot <= kScopeChannels) {
        channelTabs[slot]->Image1_MouseDown(Qt::LeftButton);
    } else if (slot != 0) {
        tabPanels->PressTab(slot);
    }
}
