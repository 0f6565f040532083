#include "about/device_list.h"
#include "display/plot_canvas.h"
#include "export/save_dialog.h"
#include "frame/helpers/helpers.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"

#include <QDesktopServices>
#include <QDir>
#include <QRadioButton>
#include <QUrl>

// The parts of the instrument, each with the controls that it reads and the calls that it makes. All are
// made before any is connected, so that no signal meets half an instrument.

void Instrument::ConnectParts() {
    MakeParts();
    MakeKeyboard();

    runLoop->Load();
    runLoop->Connect();
    trigger->Connect();
    timebase->Connect();
    dataTab->Connect();
    for (auto& tab : channelTabs) {
        tab->Connect();
        tab->Form_Load();
    }
    cursorBars->Connect();
    viewControls->Connect();
    mathTab->Connect();
    aboutTab->Connect();
    shell->Connect();
}

void Instrument::MakeParts() {
    Form& main = *forms.MainForm;
    Form& large = *forms.FullScreenTimeForm;
    Form& data = *forms.TabForm[kDataTab];
    const Form& math = *forms.TabForm[kMathTab];
    const Form& cursors = *forms.TabForm[kCursTab];
    const Form& horizontal = *forms.TabForm[kHorzTab];
    const Form& aboutForm = *forms.TabForm[kAboutTab];
    const ChannelForms channels = forms.Channels();
    auto* mainCanvas = main.control<PlotCanvas>("MainPlotCanvas");
    auto* largeCanvas = large.control<PlotCanvas>("Canvas");

    const auto plotNow = [this] { plotter->PlotNow(); };
    const auto layer = [this] { shell->SetDefaultLayering(); };
    const auto redrawSettings = [this] { largeTime->RedrawSettings(); };
    const auto setStatsVisible = [this](int channel, bool on) { measurements->SetVisible(channel, on); };
    const auto chooseSource = [this](int& channel) { trigger->TrigChanButton_Click(channel); };
    const auto dataStamp = [] { return MakeDataStamp(about::VersionText(), QDateTime::currentDateTime()); };

    // The picture
    plotter = std::make_unique<Plotter>(
        record, driver, PlotControls::Of(main, channels, horizontal, cursors, math), mainCanvas->Surface(),
        mainCanvas, PlotCalls{.WorldLineUpdate = [this](double xMin, double xMax, double yMax, double yMin) {
            cursorBars->WorldLineUpdate(xMin, xMax, yMax, yMin);
        }});
    for (PlotCanvas* canvas : {mainCanvas, largeCanvas, forms.FFTForm->control<PlotCanvas>("Canvas")}) {
        QObject::connect(canvas, &PlotCanvas::Resized, &main, plotNow);
    }
    cursorBars =
        std::make_unique<CursorBars>(record, driver, CursorBars::Controls::Of(main, cursors),
                                     CursorBars::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer});
    cursorTab = std::make_unique<CursorTab>(record, settings, CursorTab::Controls::Of(cursors));
    viewControls = std::make_unique<ViewControls>(
        record, ViewControls::Controls::Of(main),
        ViewControls::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer, .TriggerKnob_Done = [this] {
                                trigger->TriggerKnob_Done();
                            }});

    // The face
    skins = std::make_unique<SkinSelection>(
        record, log, SkinControls::Of(main), environment.applicationFolder, forms.SharedDIB, forms.MainRegion,
        SkinSelection::Calls{.doEvents = environment.yield, .sleep = environment.sleep, .closing = [this] {
                                 return closing.Wanted();
                             }});
    tabPanels = std::make_unique<TabPanels>(
        record, forms.Windows(),
        TabPanels::Calls{
            .MainMinimised = [this] { return forms.surface->IsMinimised(); },
            .BringMainToFront = [this] { forms.surface->BringFaceToFront(); },
            .BringPanelUp = [this](QWidget& panel) { forms.surface->BringPanelUp(panel); },
            .SendPanelToBack = [this](QWidget& panel) { forms.surface->SendPanelToBack(panel); }});
    aboutTab =
        std::make_unique<AboutTab>(record, driver, AboutTab::Controls::Of(aboutForm),
                                   environment.applicationFolder, AboutTab::Calls{.Show = environment.show});
    shell = std::make_unique<Shell>(
        record, forms, *tabPanels,
        Shell::Calls{.PlotNow = plotNow,
                     .Close = [this] { ShutDown(*this); },
                     .IDButton_Click = [this](int channel) { channelTabs[channel]->IDButton_Click(); },
                     .OpenDocument =
                         [this](const QString& file) {
                             QDesktopServices::openUrl(
                                 QUrl::fromLocalFile(QDir(environment.applicationFolder).filePath(file)));
                         }});

    // The channels
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        channelTabs[channel] = std::make_unique<ChannelTab>(
            *forms.TabForm[channel], record, driver, settings, *main.timer("IDTimer"), mainCanvas->Surface(),
            ChannelTab::Calls{
                .PlotNow = plotNow,
                .RedrawSettings = redrawSettings,
                .SetStatsVisible = setStatsVisible,
                .PointNullDialog = [this](int ch, int range) { offsetNull->PointAt(ch, range); },
                .ShowNullDialog = [this] { offsetNull->Show(); },
                .HideNullDialog = [this] { forms.OffsetNullForm->hide(); },
                .RaiseMainAndStats = [this, channel] { tabPanels->BringMainToFront(channel); },
                .TrigChanButton_Click = chooseSource});
    }
    const PerScope<const ChannelScale*> scopeScales{channelTabs[1].get(), channelTabs[2].get(),
                                                    channelTabs[3].get(), channelTabs[4].get()};
    offsetNull = std::make_unique<OffsetNullDialog>(*forms.OffsetNullForm, record, scopeScales);
    mathTab = std::make_unique<MathTab>(
        math, record, settings, scopeScales,
        MathTab::Calls{.PlotNow = plotNow,
                       .SetStatsVisible = setStatsVisible,
                       .SetGroundLabelVisible = [mainCanvas](int channel, bool visible) {
                           mainCanvas->GroundLabelVisible(channel, visible);
                       }});
    horizontalTab =
        std::make_unique<HorizontalTab>(record, settings, HorizontalTab::Controls::Of(horizontal),
                                        HorizontalTab::Calls{.TrigChanButton_Click = chooseSource});
    // The one table of volts: whoever reads it need not know which of the channels are worked out.
    const PerChannel<const ChannelScale*> scales{scopeScales[1], scopeScales[2],     scopeScales[3],
                                                 scopeScales[4], &mathTab->Scale(1), &mathTab->Scale(2)};

    // The other windows
    measurements = std::make_unique<MeasurementWindow>(*forms.StatsForm, record, driver, scales,
                                                       MeasurementWindow::Controls::Of(cursors));
    largeTime = std::make_unique<LargeTimeWindow>(
        large, record, LargeTimeWindow::Controls::Of(main, channels),
        LargeTimeWindow::Calls{.PlotNow = plotNow, .MakeDataStamp = dataStamp});
    plotter->SetLargeTimePlot({.Open = [this] { return shell->FullScreenOn; },
                               .Surface = [largeCanvas]() -> Canvas& { return largeCanvas->Surface(); },
                               .Companions = [largeCanvas]() -> PlotCompanions* { return largeCanvas; },
                               .RefreshAppInfo = [this] { largeTime->RefreshAppInfo(); }});
    spectrum = std::make_unique<SpectrumWindow>(
        *forms.FFTForm, record, driver, *math.control<QRadioButton>("FFTPlotType", 0), scales,
        SpectrumWindow::Calls{.PlotNow = plotNow, .MakeDataStamp = dataStamp, .MainMinimised = [this] {
                                  return tabPanels->Parked();
                              }});
    plotter->SetSpectrumPlot(spectrum->Plot());
    largeTimeShot = std::make_unique<ClipboardShot>(
        large, ClipboardShot::Calls{.SetDefaultLayering = layer,
                                    .RefreshAppInfo = [this] { largeTime->RefreshAppInfo(); },
                                    .doEvents = environment.yield});
    spectrumShot = std::make_unique<ClipboardShot>(
        *forms.FFTForm, ClipboardShot::Calls{.SetDefaultLayering = {},
                                             .RefreshAppInfo = [this] { spectrum->RefreshAppInfo(); },
                                             .doEvents = environment.yield});

    // The acquisition
    trigger = std::make_unique<Trigger>(record, driver, acquisition,
                                        Trigger::Controls::Of(main, horizontal, large, channels),
                                        Trigger::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer});
    timebase = std::make_unique<Timebase>(
        record, driver, acquisition, Timebase::Controls::Of(main, horizontal),
        Timebase::Calls{
            .TrigModeButton_Click = [this] { trigger->TrigModeButton_Click(); },
            .MoveVertCursorHandle = [this](int k, double time) { cursorBars->MoveVertCursorHandle(k, time); },
            .PlotNow = plotNow,
            .RedrawSettings = redrawSettings,
            .SkinColourAt = [this](const QWidget* control) { return skins->SkinColourAt(*control); }});
    runLoop = std::make_unique<RunLoop>(
        record, driver, acquisition, RunLoop::Controls::Of(main, aboutForm, channels), scales,
        RunLoop::Calls{.PlotNow = plotNow,
                       .DoMaths = [this] { mathTab->DoMaths(); },
                       .PretriggerSlider_Change = [this] { trigger->PretriggerSlider_Change(); },
                       .UpdateStats = [this] { measurements->UpdateStats(); },
                       .SetDefaultLayering = layer,
                       .DelayKnob_Change = [this] { timebase->DelayKnob_Change(); }},
        Waiting{environment.sleep, environment.yield});

    // What is kept
    dataTab = std::make_unique<DataTab>(
        record, driver, DataTab::Controls::Of(data, math), scales,
        DataTab::Calls{
            .AskForFile = [&data](const QString& folder,
                                  auto answer) { AskForDataFile(&data, folder, std::move(answer)); },
            .ShowFailure = [&data](const QString& text) { ShowSaveFailure(&data, text); },
            .Stamp =
                [] {
                    return StampOf(QLocale::system(), QDateTime::currentDateTime(),
                                   QStringLiteral("Corvantine ") + about::VersionText());
                }});
    acquisitionSettings = std::make_unique<AcquisitionSettings>(record, settings, *trigger, *timebase,
                                                                AcquisitionSettings::Controls::Of(main));
    scopeSettings = std::make_unique<ScopeSettings>(
        record, settings, ScopeSettings::Windows::Of(forms),
        ScopeSettings::Calls{.Screens = PresentScreens,
                             .SkinIndex = [this] { return skins->SkinIndex; },
                             .SetSkinIndex = [this](int index) { skins->SkinIndex = index; },
                             .SetControlColorsToMatchSkin = [this] { skins->SetControlColorsToMatchSkin(); },
                             .FullScreenOn = [this] { return shell->FullScreenOn; },
                             .SetFullScreenOn = [this](bool on) { shell->FullScreenOn = on; },
                             .FullScreenButton_Click = [this] { shell->FullScreenButton_Click(); },
                             .SampleDotsButton_Click = [this] { shell->SampleDotsButton_Click(); },
                             .RestoreAcquisition = [this] { acquisitionSettings->Restore(); },
                             .SaveAcquisition = [this] { acquisitionSettings->Save(); },
                             .Closing = [this] { return closing.Wanted(); }});
}
