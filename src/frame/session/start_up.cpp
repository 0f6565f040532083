#include "frame/session/start_up.h"

#include "about/device_list.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/picture.h"
#include "frame/discovery/command_line.h"
#include "frame/discovery/discovery.h"
#include "frame/discovery/operating_system.h"
#include "frame/discovery/stack_test.h"
#include "frame/instrument/instrument.h"
#include "frame/record/record.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace {

constexpr int kFirstPlainTab = 15; ///< slots 15..19 hold the panels that belong to no channel

void SetCaptionTables(Record& record) {
    record.ChannelColour = {0x00FFFF, 0xFFE21B, 0xF71BFF, 0x86FF1B, 0x4040C0, 0x8080F0};
    record.TabColour = {0xFF1B76, 0xFF1B8C, 0xFF1B56, 0xFF1BA1, 0x31FF1B};
    record.RunColour = {kSwitchOn, kSwitchOff};
    record.TrigTypeCaption = {
        QStringLiteral("Trigger on less than"), QStringLiteral("Trigger on greater than"),
        QStringLiteral("Trigger on falling edge"), QStringLiteral("Trigger on rising edge")};
    record.TrigModeCaption = {QStringLiteral("auto"), QStringLiteral("norm"), QStringLiteral("free")};
    record.RunCaption = {QStringLiteral("running"), QStringLiteral("halted")};
}

void OpenLogAndDriver(Instrument& instrument) {
    instrument.record.CrLf = QStringLiteral("\r\n");
    instrument.record.DebugMode = IsDebugWord(instrument.environment.commandLine);
    instrument.log.OpenLog(QStringLiteral("Corvantinelog.txt"), instrument.record.DebugMode);
    instrument.log.PrintLog(QStringLiteral("Starting Corvantine application ") + about::VersionText());

    instrument.log.PrintLog(QStringLiteral("Opening driver"));
    instrument.record.DriverHandle = instrument.driver.OpenDrvr();
    instrument.record.SampleDepth = instrument.driver.GetSampleDepth();

    instrument.record.SettingsSuffix.clear();
    instrument.record.PlotInhibit = true;
    instrument.record.Math1Chan = kScopeChannels + 1;
    instrument.record.Math2Chan = kScopeChannels + 2;
    instrument.record.ScopeInUse[instrument.record.Math1Chan] = true;
    instrument.record.ScopeInUse[instrument.record.Math2Chan] = true;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        instrument.record.ChannelOn[channel] = false;
        instrument.record.ChannelInvert[channel] = false;
        instrument.record.ChannelFFT[channel] = false;
        instrument.record.ChannelCalSource[channel] = 0;
    }
    instrument.log.PrintLog(QStringLiteral("Driver issue ") + instrument.driver.DrvrIssue());
}

void ShowSplash(Instrument& instrument) {
    const QString system = DetectOperatingSystem(0, instrument.record);
    instrument.log.PrintLog(QStringLiteral("Windows ver ") + system);
    instrument.forms.CreateSplash();
    instrument.forms.SplashLine(4, system);
    instrument.forms.SplashForm->show();
    instrument.environment.yield();
}

void CreateForms(Instrument& instrument) {
    SetCaptionTables(instrument.record);
    instrument.record.IDActive = false;
    instrument.record.TriggerChannel = 1;
    instrument.forms.CreateMainForm();
    instrument.log.PrintLog(QStringLiteral("Creating tab forms"));
    instrument.forms.CreateTabForms(instrument.record);
    instrument.forms.CreateSatellites();
    instrument.ConnectParts();

    instrument.skins->ListSkins();
    instrument.forms.TabForm[kAboutTab]->control<QLabel>("VersionText")->setText(about::VersionText());
    instrument.forms.SplashLine(5, about::VersionText());
    instrument.environment.yield();
}

void FindInstrument(Instrument& instrument) {
    instrument.log.PrintLog(QStringLiteral("Command line checking"));
    ReadCommandLine(instrument.environment.commandLine, instrument.record);
    instrument.forms.NameWindows(instrument.record.SettingsSuffix);
    // The driver still hears of a port whose channel was out of range.
    const std::int32_t askedPort = instrument.record.ForcedPort;
    CheckCommandLineError(instrument.environment.commandLine, instrument.record, instrument.environment.show);
    instrument.record.ForcedPort = askedPort;

    discovery::FindScopes(instrument.environment.commandLine, instrument.record, instrument.driver,
                          instrument.log, instrument.environment.show);

    auto* demoLabel = instrument.forms.MainForm->control<QLabel>("DemoLabel");
    if (instrument.record.DebugMode) {
        demoLabel->setText(QStringLiteral("DEBUG MODE !"));
    }
    demoLabel->setVisible(instrument.record.DebugMode || instrument.record.DemoMode);
    if (instrument.record.DemoMode) {
        instrument.record.NumScopesFound = kScopeChannels;
    }

    instrument.log.PrintLog(QStringLiteral("Getting scope details"));
    int opened = 0;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        instrument.forms.TabForm[channel]
            ->control<ButtonControl1>("TrigChanButton")
            ->SetButtonFillColor(Qt::white);
        opened += discovery::OpenScope(channel, instrument.record, instrument.driver, instrument.log) ? 1 : 0;
    }
    instrument.forms.SplashLine(
        2, instrument.record.DemoMode
               ? QStringLiteral("%1 (%2 channels)").arg(demoLabel->text()).arg(kScopeChannels)
               : QStringLiteral("found %1 x Corvantines").arg(opened));
    instrument.measurements->Build();
}

/// The six lists of operands and operators, three a math channel.
Indexed<QComboBox*, 0, 5> MathLists(const Instrument& instrument) {
    Indexed<QComboBox*, 0, 5> lists;
    for (int k = 0; k < 3; ++k) {
        lists[k] = instrument.forms.TabForm[kMathTab]->control<QComboBox>("Math1Combo", k);
        lists[3 + k] = instrument.forms.TabForm[kMathTab]->control<QComboBox>("Math2Combo", k);
    }
    return lists;
}
constexpr int kOperatorList = 1; ///< of each three, the middle one

void OfferChannel(Instrument& instrument, int channel) {
    const bool inUse = instrument.record.ScopeInUse[channel];
    instrument.forms.TabForm[kHorzTab]
        ->control<ButtonControl1>("TrigChanButton", channel)
        ->SetButtonVisible(inUse);
    auto* save = instrument.forms.TabForm[kDataTab]->control<QCheckBox>("SaveCh", channel);
    save->setVisible(inUse);
    QPalette palette = save->palette();
    palette.setColor(QPalette::Window, ToQColor(instrument.record.ChannelColour[channel]));
    save->setPalette(palette);
    if (!inUse) {
        return;
    }
    const auto lists = MathLists(instrument);
    for (int k = 0; k < static_cast<int>(lists.kSize); ++k) {
        if (k % 3 != kOperatorList) {
            lists[k]->addItem(QString::number(channel));
        }
    }
}

void TestStack(Instrument& instrument) {
    const auto lists = MathLists(instrument);
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (channel == instrument.record.MasterChannel) {
            for (QComboBox* list : lists) {
                list->clear();
            }
        }
        if (!TestStackMember(channel, instrument.record, instrument.driver, instrument.environment.show)) {
            break;
        }
        OfferChannel(instrument, channel);
    }
    for (int k = kOperatorList; k < static_cast<int>(lists.kSize); k += 3) {
        lists[k]->addItems(
            {QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("x"), QString(QChar(0xF7))});
    }
    const bool masterInUse = instrument.record.ScopeInUse[instrument.record.MasterChannel];
    if (masterInUse && instrument.record.NumScopesFound > 0) {
        for (QComboBox* list : lists) {
            list->setCurrentIndex(0);
        }
    }
    if (!masterInUse && !instrument.record.DemoMode) {
        auto* demoLabel = instrument.forms.MainForm->control<QLabel>("DemoLabel");
        demoLabel->setText(QStringLiteral("No Scopes In Use !"));
        demoLabel->show();
    }
}

void InitScopes(Instrument& instrument) {
    auto* devices = instrument.forms.TabForm[kAboutTab]->control<QListWidget>("CorvantineList");
    devices->clear();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (instrument.record.ScopeInUse[channel]) {
            instrument.record.ScopeControllerRev[channel] = instrument.driver.GetControllerRev(channel);
            devices->addItem(about::DeviceLine(channel, instrument.record));
        }
    }
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (instrument.record.ScopeInUse[channel]) {
            instrument.forms.SplashLine(3, QStringLiteral("starting channel %1...").arg(channel));
            instrument.environment.yield();
            if (instrument.closing.Wanted()) {
                return;
            }
            discovery::InitScope(channel, instrument.record, instrument.driver);
            instrument.channelTabs[channel]->RestoreTabSettings();
        }
    }
    instrument.driver.SetTrigMaster(instrument.record.MasterChannel, true);
    int source = instrument.record.MasterChannel;
    instrument.trigger->TrigChanButton_Click(source);

    auto* diagnostics = instrument.forms.TabForm[kAboutTab]->control<QListWidget>("DebugList");
    diagnostics->clear();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (instrument.record.ScopeInUse[channel]) {
            diagnostics->addItem(about::DiagnosticsLine(channel, instrument.record));
        }
    }
    instrument.forms.SplashLine(3, QStringLiteral("starting application..."));
    instrument.environment.yield();
}

void SkinForms(Instrument& instrument) {
    for (int slot = 1; slot <= kTabSlots; ++slot) {
        instrument.record.TabOpen[slot] = false;
        if (instrument.forms.TabForm[slot] != instrument.forms.EmptyForm) {
            instrument.SkinPanel(slot);
        }
    }
    instrument.SkinMainForm();
    instrument.forms.MainForm->timer("TabTimer")->start();
    instrument.tabPanels->TabTimer_Timer();
    instrument.forms.TabForm[kDataTab]
        ->control<ButtonControl1>("SaveDataButton")
        ->SetButtonFillColor(ToQColor(instrument.record.TabColour[kDataTab]));
}

void ShowForms(Instrument& instrument) {
    instrument.forms.SplashForm->hide();
    instrument.log.PrintLog(QStringLiteral("Showing main panel & restoring settings from registry"));
    instrument.forms.surface->show();
    instrument.scopeSettings->RestoreScopeSettings();
    if (instrument.closing.Wanted()) {
        return;
    }

    instrument.log.PrintLog(QStringLiteral("Showing channel tabs"));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        instrument.forms.TabForm[channel]->setVisible(instrument.record.ScopeInUse[channel]);
    }
    instrument.forms.StatsForm->show();
    instrument.forms.TabForm[kMathTab]->control<QComboBox>("FFTWindowCombo")->setCurrentIndex(0);

    instrument.log.PrintLog(QStringLiteral("Showing other tabs"));
    for (int slot = kFirstPlainTab; slot <= kTabSlots; ++slot) {
        instrument.RestoreTabSettings(slot);
        instrument.forms.TabForm[slot]->show();
    }
    instrument.settingsRestored = true;
    instrument.spectrum->StretchCursorLines();
    for (QWidget* window : std::initializer_list<QWidget*>{
             instrument.forms.FullScreenTimeForm.get(), instrument.forms.surface.get(),
             instrument.forms.StatsForm, instrument.forms.FFTForm.get()}) {
        window->raise();
    }
    for (int cursor = 0; cursor < kCursors; ++cursor) {
        for (const char* axis : {"Vert", "Horiz"}) {
            const QByteArray box = QByteArray(axis) + "CursorEn";
            const QByteArray handle = QByteArray(axis) + "CursorHandle";
            const bool enabled =
                instrument.forms.TabForm[kCursTab]->control<QCheckBox>(box, cursor)->isChecked();
            instrument.forms.MainForm->control<Picture>(handle, cursor)->setVisible(enabled);
        }
    }
    instrument.environment.yield();
}

void StartRunning(Instrument& instrument) {
    instrument.runLoop->RunButton_Click();
    instrument.cursorBars->PlaceHandles();
    instrument.record.PlotInhibit = false;
    instrument.record.TracesStale = false;
    instrument.plotter->PlotNow();
    instrument.shell->Form_Activate();
    instrument.forms.MainForm->timer("AutoTriggerTimer")->start();
    instrument.trigger->TriggerKnob_Done();
    instrument.log.PrintLog(QStringLiteral("Running scope timer"));
}

} // namespace

void StartUp(Instrument& instrument) {
    {
        const Closing::Handler handler(instrument.closing);
        for (const auto step : {OpenLogAndDriver, ShowSplash, CreateForms, FindInstrument, TestStack,
                                InitScopes, SkinForms, ShowForms, StartRunning}) {
            step(instrument);
            // Asked to end while events ran: nothing more is begun, and the windows do not flash up.
            if (instrument.closing.Wanted()) {
                break;
            }
        }
    }
    instrument.closing.Serve();
}
