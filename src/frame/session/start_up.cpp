#include "frame/session/start_up.h"

#include "about/device_list.h"
#include "controls/button_control.h"
#include "controls/picture.h"
#include "frame/discovery/command_line.h"
#include "frame/discovery/discovery.h"
#include "frame/discovery/operating_system.h"
#include "frame/discovery/stack_test.h"
#include "frame/instrument/instrument.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace {

constexpr int kFirstPlainTab = 15; ///< slots 15..19 hold the panels that belong to no channel

void SetCaptionTables(Record& record) {
    record.ChannelColour = {0x00FFFF, 0xFFE21B, 0xF71BFF, 0x86FF1B, 0x4040C0, 0x8080F0};
    record.TabColour = {0xFF1B76, 0xFF1B8C, 0xFF1B56, 0xFF1BA1, 0x31FF1B};
    record.RunColour = {0x00FF00, 0x808080};
    record.TrigTypeCaption = {
        QStringLiteral("Trigger on less than"), QStringLiteral("Trigger on greater than"),
        QStringLiteral("Trigger on falling edge"), QStringLiteral("Trigger on rising edge")};
    record.TrigModeCaption = {QStringLiteral("auto"), QStringLiteral("norm"), QStringLiteral("free")};
    record.RunCaption = {QStringLiteral("running"), QStringLiteral("halted")};
}

void OpenLogAndDriver(Instrument& i) {
    i.record.CrLf = QStringLiteral("\r\n");
    i.record.DebugMode = IsDebugWord(i.environment.commandLine);
    i.log.OpenLog(QStringLiteral("Corvantinelog.txt"), i.record.DebugMode);
    i.log.PrintLog(QStringLiteral("Starting Corvantine application ") + about::VersionText());

    i.log.PrintLog(QStringLiteral("Opening driver"));
    i.record.DriverHandle = i.driver.OpenDrvr();
    i.record.SampleDepth = i.driver.GetSampleDepth();

    i.record.SettingsSuffix.clear();
    i.record.PlotInhibit = true;
    i.record.Math1Chan = kScopeChannels + 1;
    i.record.Math2Chan = kScopeChannels + 2;
    i.record.ScopeInUse[i.record.Math1Chan] = true;
    i.record.ScopeInUse[i.record.Math2Chan] = true;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        i.record.ChannelOn[channel] = false;
        i.record.ChannelInvert[channel] = false;
        i.record.ChannelFFT[channel] = false;
        i.record.ChannelCalSource[channel] = 0;
    }
    i.log.PrintLog(QStringLiteral("Driver issue ") + i.driver.DrvrIssue());
}

void ShowSplash(Instrument& i) {
    const QString system = DetectOperatingSystem(0, i.record);
    i.log.PrintLog(QStringLiteral("Windows ver ") + system);
    i.CreateSplash();
    i.SplashLine(4, system);
    i.forms.SplashForm->show();
    i.environment.yield();
}

void CreateForms(Instrument& i) {
    SetCaptionTables(i.record);
    i.record.IDActive = false;
    i.record.TriggerChannel = 1;
    i.CreateMainForm();
    i.log.PrintLog(QStringLiteral("Creating tab forms"));
    i.CreateTabForms();
    i.CreateSatellites();
    i.ConnectParts();

    i.skins->ListSkins();
    i.forms.TabForm[kAboutTab]->control<QLabel>("VersionText")->setText(about::VersionText());
    i.SplashLine(5, about::VersionText());
    i.environment.yield();
}

void FindInstrument(Instrument& i) {
    i.log.PrintLog(QStringLiteral("Command line checking"));
    ReadCommandLine(i.environment.commandLine, i.record);
    i.NameWindows();
    // The driver still hears of a port whose channel was out of range.
    const std::int32_t askedPort = i.record.ForcedPort;
    CheckCommandLineError(i.environment.commandLine, i.record, i.environment.show);
    i.record.ForcedPort = askedPort;

    discovery::FindScopes(i.environment.commandLine, i.record, i.driver, i.log, i.environment.show);

    auto* demoLabel = i.forms.MainForm->control<QLabel>("DemoLabel");
    if (i.record.DebugMode) {
        demoLabel->setText(QStringLiteral("DEBUG MODE !"));
    }
    demoLabel->setVisible(i.record.DebugMode || i.record.DemoMode);
    if (i.record.DemoMode) {
        i.record.NumScopesFound = kScopeChannels;
    }

    i.log.PrintLog(QStringLiteral("Getting scope details"));
    int opened = 0;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        i.forms.TabForm[channel]->control<ButtonControl1>("TrigChanButton")->SetButtonFillColor(Qt::white);
        opened += discovery::OpenScope(channel, i.record, i.driver, i.log) ? 1 : 0;
    }
    i.SplashLine(2, i.record.DemoMode
                        ? QStringLiteral("%1 (%2 channels)").arg(demoLabel->text()).arg(kScopeChannels)
                        : QStringLiteral("found %1 x Corvantines").arg(opened));
    i.measurements->Build();
}

/// The six lists of operands and operators, three a math channel.
Indexed<QComboBox*, 0, 5> MathLists(const Instrument& i) {
    Indexed<QComboBox*, 0, 5> lists;
    for (int k = 0; k < 3; ++k) {
        lists[k] = i.forms.TabForm[kMathTab]->control<QComboBox>("Math1Combo", k);
        lists[3 + k] = i.forms.TabForm[kMathTab]->control<QComboBox>("Math2Combo", k);
    }
    return lists;
}
constexpr int kOperatorList = 1; ///< of each three, the middle one

void OfferChannel(Instrument& i, int channel) {
    const bool inUse = i.record.ScopeInUse[channel];
    i.forms.TabForm[kHorzTab]->control<ButtonControl1>("TrigChanButton", channel)->SetButtonVisible(inUse);
    auto* save = i.forms.TabForm[kDataTab]->control<QCheckBox>("SaveCh", channel);
    save->setVisible(inUse);
    QPalette palette = save->palette();
    palette.setColor(QPalette::Window, ToQColor(i.record.ChannelColour[channel]));
    save->setPalette(palette);
    if (!inUse) {
        return;
    }
    const auto lists = MathLists(i);
    for (int k = 0; k < static_cast<int>(lists.kSize); ++k) {
        if (k % 3 != kOperatorList) {
            lists[k]->addItem(QString::number(channel));
        }
    }
}

void TestStack(Instrument& i) {
    const auto lists = MathLists(i);
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (channel == i.record.MasterChannel) {
            for (QComboBox* list : lists) {
                list->clear();
            }
        }
        if (!TestStackMember(channel, i.record, i.driver, i.environment.show)) {
            break;
        }
        OfferChannel(i, channel);
    }
    for (int k = kOperatorList; k < static_cast<int>(lists.kSize); k += 3) {
        lists[k]->addItems(
            {QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("x"), QString(QChar(0xF7))});
    }
    const bool masterInUse = i.record.ScopeInUse[i.record.MasterChannel];
    if (masterInUse && i.record.NumScopesFound > 0) {
        for (QComboBox* list : lists) {
            list->setCurrentIndex(0);
        }
    }
    if (!masterInUse && !i.record.DemoMode) {
        auto* demoLabel = i.forms.MainForm->control<QLabel>("DemoLabel");
        demoLabel->setText(QStringLiteral("No Scopes In Use !"));
        demoLabel->show();
    }
}

void InitScopes(Instrument& i) {
    auto* devices = i.forms.TabForm[kAboutTab]->control<QListWidget>("CorvantineList");
    devices->clear();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (i.record.ScopeInUse[channel]) {
            i.record.ScopeControllerRev[channel] = i.driver.GetControllerRev(channel);
            devices->addItem(about::DeviceLine(channel, i.record));
        }
    }
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (i.record.ScopeInUse[channel]) {
            i.SplashLine(3, QStringLiteral("starting channel %1...").arg(channel));
            i.environment.yield();
            if (i.closing.Wanted()) {
                return;
            }
            discovery::InitScope(channel, i.record, i.driver);
            i.channelTabs[channel]->RestoreTabSettings();
        }
    }
    i.driver.SetTrigMaster(i.record.MasterChannel, true);
    int source = i.record.MasterChannel;
    i.trigger->TrigChanButton_Click(source);

    auto* diagnostics = i.forms.TabForm[kAboutTab]->control<QListWidget>("DebugList");
    diagnostics->clear();
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        if (i.record.ScopeInUse[channel]) {
            diagnostics->addItem(about::DiagnosticsLine(channel, i.record));
        }
    }
    i.SplashLine(3, QStringLiteral("starting application..."));
    i.environment.yield();
}

void SkinForms(Instrument& i) {
    for (int slot = 1; slot <= Record::kTabSlots; ++slot) {
        i.record.TabOpen[slot] = false;
        if (i.forms.TabForm[slot] != i.forms.EmptyForm) {
            i.SkinPanel(slot);
        }
    }
    i.SkinMainForm();
    i.forms.MainForm->timer("TabTimer")->start();
    i.tabPanels->TabTimer_Timer();
    i.forms.TabForm[kDataTab]
        ->control<ButtonControl1>("SaveDataButton")
        ->SetButtonFillColor(ToQColor(i.record.TabColour[kDataTab]));
}

void ShowForms(Instrument& i) {
    i.forms.SplashForm->hide();
    i.log.PrintLog(QStringLiteral("Showing main panel & restoring settings from registry"));
    i.ShowMainForm();
    i.scopeSettings->RestoreScopeSettings();
    if (i.closing.Wanted()) {
        return;
    }

    i.log.PrintLog(QStringLiteral("Showing channel tabs"));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        i.forms.TabForm[channel]->setVisible(i.record.ScopeInUse[channel]);
    }
    i.forms.StatsForm->show();
    i.forms.TabForm[kMathTab]->control<QComboBox>("FFTWindowCombo")->setCurrentIndex(0);

    i.log.PrintLog(QStringLiteral("Showing other tabs"));
    for (int slot = kFirstPlainTab; slot <= Record::kTabSlots; ++slot) {
        i.RestoreTabSettings(slot);
        i.forms.TabForm[slot]->show();
    }
    i.settingsRestored = true;
    i.spectrum->StretchCursorLines();
    for (QWidget* window :
         std::initializer_list<QWidget*>{i.forms.FullScreenTimeForm.get(), i.forms.surface.get(),
                                         i.forms.StatsForm.get(), i.forms.FFTForm.get()}) {
        window->raise();
    }
    for (int cursor = 0; cursor < Record::kCursors; ++cursor) {
        for (const char* axis : {"Vert", "Horiz"}) {
            const QByteArray box = QByteArray(axis) + "CursorEn";
            const QByteArray handle = QByteArray(axis) + "CursorHandle";
            const bool enabled = i.forms.TabForm[kCursTab]->control<QCheckBox>(box, cursor)->isChecked();
            i.forms.MainForm->control<Picture>(handle, cursor)->setVisible(enabled);
        }
    }
    i.environment.yield();
}

void StartRunning(Instrument& i) {
    i.runLoop->RunButton_Click();
    // A saved delay was turned into seconds with the period of no record at all; now there is one.
    if (i.record.TriggerDelay > 0) {
        i.timebase->DelayKnob_Change();
    }
    i.cursorBars->PlaceHandles();
    i.record.PlotInhibit = false;
    i.record.TracesStale = false;
    i.plotter->PlotNow();
    i.shell->Form_Activate();
    i.forms.MainForm->timer("AutoTriggerTimer")->start();
    i.trigger->TriggerKnob_Done();
    i.log.PrintLog(QStringLiteral("Running scope timer"));
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
