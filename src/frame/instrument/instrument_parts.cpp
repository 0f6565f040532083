#include "about/device_list.h"
#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "display/plot_canvas.h"
#include "export/save_dialog.h"
#include "frame/helpers/helpers.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QRadioButton>
#include <QScreen>
#include <QUrl>
#include <QWindow>

// The parts of the instrument, each with the controls that it reads and the calls that it makes. All are
// made before any is connected, so that no signal meets half an instrument.

namespace {

WindowPlace PlaceOf(Form& form) {
    return {.place = [&form] { return form.geometry(); },
            .put = [&form](const QRect& place) { form.setGeometry(place); }};
}

/// A child surface of the panel's window keeps the place that it has there: another panel's would leave it
/// anywhere. What is saved is where it stands if the panel does not move.
WindowPlace PlaceBeside(Form& form, Surface& surface) {
    return {.place = [&] { return form.geometry().translated(surface.pos()); }, .put = [](const QRect&) {}};
}

ScreenPlaces PresentScreens() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    ScreenPlaces places{.all = {}, .primary = primary->geometry(), .available = primary->availableGeometry()};
    for (const QScreen* screen : QGuiApplication::screens()) {
        places.all.push_back(screen->geometry());
    }
    return places;
}

/// The main form's place is that of the face: the surface reaches further, to where the panels come out.
WindowPlace PlaceOf(Surface& surface, const Form& face) {
    return {.place = [&] { return QRect(QPoint(surface.Left(), surface.Top()), face.size()); },
            .put = [&](const QRect& place) { surface.MoveTo(place.left(), place.top()); }};
}

} // namespace

void Instrument::ConnectParts() {
    ConnectDisplay();
    ConnectFace();
    ConnectChannels();
    ConnectMeasurements();
    ConnectPlotWindows();
    ConnectAcquisition();
    ConnectExport();
    ConnectSettings();
    ConnectKeyboard();

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

void Instrument::ConnectDisplay() {
    const Form& main = *forms.MainForm;
    PlotControls controls;
    controls.VertPanSlider = main.control<SliderControl1>("VertPanSlider");
    controls.HorizPanSlider = main.control<SliderControl1>("HorizPanSlider");
    controls.PretriggerSlider = main.control<SliderControl1>("PretriggerSlider");
    controls.VertZoomKnob = main.control<KnobControl1>("VertZoomKnob");
    controls.HorizZoomKnob = main.control<KnobControl1>("HorizZoomKnob");
    controls.TriggerKnob = main.control<KnobControl1>("TriggerKnob");
    controls.DelayKnob = forms.TabForm[kHorzTab]->control<KnobControl1>("DelayKnob");
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.OffsetKnob[channel] = forms.TabForm[channel]->control<KnobControl1>("OffsetKnob");
    }
    for (int cursor = 0; cursor < Record::kCursors; ++cursor) {
        controls.VertCursorEn[cursor] = forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", cursor);
        controls.HorizCursorEn[cursor] = forms.TabForm[kCursTab]->control<QCheckBox>("HorizCursorEn", cursor);
    }
    controls.FFTWindowCombo = forms.TabForm[kMathTab]->control<QComboBox>("FFTWindowCombo");
    controls.FFTPlotType0 = forms.TabForm[kMathTab]->control<QRadioButton>("FFTPlotType", 0);

    auto* canvas = main.control<PlotCanvas>("MainPlotCanvas");
    plotter = std::make_unique<Plotter>(
        record, driver, controls, canvas->Surface(), canvas,
        PlotCalls{.WorldLineUpdate = [this](double xMin, double xMax, double yMax, double yMin) {
            cursorBars->WorldLineUpdate(xMin, xMax, yMax, yMin);
        }});

    const auto plotNow = [this] { plotter->PlotNow(); };
    for (PlotCanvas* plot : {canvas, forms.FullScreenTimeForm->control<PlotCanvas>("Canvas"),
                             forms.FFTForm->control<PlotCanvas>("Canvas")}) {
        QObject::connect(plot, &PlotCanvas::Resized, forms.MainForm, plotNow);
    }
    const auto layer = [this] { shell->SetDefaultLayering(); };
    cursorBars =
        std::make_unique<CursorBars>(record, driver, CursorBars::Controls::Of(main, *forms.TabForm[kCursTab]),
                                     CursorBars::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer});
    cursorTab =
        std::make_unique<CursorTab>(record, settings, CursorTab::Controls::Of(*forms.TabForm[kCursTab]));
    viewControls = std::make_unique<ViewControls>(
        record, ViewControls::Controls::Of(main),
        ViewControls::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer, .TriggerKnob_Done = [this] {
                                trigger->TriggerKnob_Done();
                            }});
}

QString Instrument::DataStamp() const {
    return MakeDataStamp(about::VersionText(), QDateTime::currentDateTime());
}

void Instrument::ConnectPlotWindows() {
    LargeTimeWindow::Controls controls{.TimeBaseKnob = forms.MainForm->control<KnobControl1>("TimeBaseKnob"),
                                       .VoltsKnob = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.VoltsKnob[channel] = forms.TabForm[channel]->control<KnobControl1>("VoltsKnob");
    }
    largeTime = std::make_unique<LargeTimeWindow>(
        *forms.FullScreenTimeForm, record, controls,
        LargeTimeWindow::Calls{.PlotNow = [this] { plotter->PlotNow(); },
                               .MakeDataStamp = [this] { return DataStamp(); }});
    auto* large = forms.FullScreenTimeForm->control<PlotCanvas>("Canvas");
    plotter->SetLargeTimePlot({.Open = [this] { return shell->FullScreenOn; },
                               .Surface = [large]() -> Canvas& { return large->Surface(); },
                               .Companions = [large]() -> PlotCompanions* { return large; },
                               .RefreshAppInfo = [this] { largeTime->RefreshAppInfo(); }});

    spectrum = std::make_unique<SpectrumWindow>(
        *forms.FFTForm, record, driver, *forms.TabForm[kMathTab]->control<QRadioButton>("FFTPlotType", 0),
        Scales(),
        SpectrumWindow::Calls{.PlotNow = [this] { plotter->PlotNow(); },
                              .MakeDataStamp = [this] { return DataStamp(); },
                              .MainMinimised = [this] { return tabPanels->Parked(); }});
    plotter->SetSpectrumPlot(spectrum->Plot());

    largeTimeShot = std::make_unique<ClipboardShot>(
        *forms.FullScreenTimeForm,
        ClipboardShot::Calls{.SetDefaultLayering = [this] { shell->SetDefaultLayering(); },
                             .RefreshAppInfo = [this] { largeTime->RefreshAppInfo(); },
                             .doEvents = environment.yield});
    spectrumShot = std::make_unique<ClipboardShot>(
        *forms.FFTForm, ClipboardShot::Calls{.SetDefaultLayering = {},
                                             .RefreshAppInfo = [this] { spectrum->RefreshAppInfo(); },
                                             .doEvents = environment.yield});
}

PerScope<const ChannelScale*> Instrument::ScopeScales() const {
    PerScope<const ChannelScale*> scales;
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        scales[channel] = channelTabs[channel].get();
    }
    return scales;
}

// The one table of volts: whoever reads it need not know which of the channels are worked out.
PerChannel<const ChannelScale*> Instrument::Scales() const {
    const auto scopes = ScopeScales();
    return {scopes[1], scopes[2], scopes[3], scopes[4], &mathTab->Scale(1), &mathTab->Scale(2)};
}

void Instrument::ConnectMeasurements() {
    MeasurementWindow::Controls controls;
    for (int cursor = 0; cursor < Record::kCursors; ++cursor) {
        controls.VertCursorEn[cursor] = forms.TabForm[kCursTab]->control<QCheckBox>("VertCursorEn", cursor);
        controls.HorizCursorEn[cursor] = forms.TabForm[kCursTab]->control<QCheckBox>("HorizCursorEn", cursor);
    }
    measurements = std::make_unique<MeasurementWindow>(*forms.StatsForm, record, driver, Scales(), controls);
}

void Instrument::ConnectAcquisition() {
    const Form& main = *forms.MainForm;
    const Form& horizontal = *forms.TabForm[kHorzTab];
    const Waiting waiting{environment.sleep, environment.yield};
    auto* runTimer = main.timer("RunTimer");
    auto* autoTriggerTimer = main.timer("AutoTriggerTimer");
    auto* statusLabel = main.control<QLabel>("TriggerStatusLabel");
    auto plotNow = [this] { plotter->PlotNow(); };
    auto layer = [this] { shell->SetDefaultLayering(); };

    Trigger::Controls triggerControls{
        .AutoTriggerTimer = autoTriggerTimer,
        .TriggerLineTimer = main.timer("TriggerLineTimer"),
        .TrigModeButton = main.control<ButtonControl1>("TrigModeButton"),
        .TrigTypeButton = main.control<ButtonControl1>("TrigTypeButton"),
        .TriggerKnob = main.control<KnobControl1>("TriggerKnob"),
        .PretriggerSlider = main.control<SliderControl1>("PretriggerSlider"),
        .TriggerStatusLabel = statusLabel,
        .TriggerLine = main.control<QWidget>("MainPlotCanvas")->findChild<QWidget*>("TriggerLine"),
        .LargeTriggerLine =
            forms.FullScreenTimeForm->control<QWidget>("Canvas")->findChild<QWidget*>("TriggerLine"),
        .Source = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const Form& tab = *forms.TabForm[channel];
        triggerControls.Source[channel] = {
            .TrigChanButton = horizontal.control<ButtonControl1>("TrigChanButton", channel),
            .UpdateRateMarkerLabel = horizontal.control<QLabel>("UpdateRateMarkerLabel", channel),
            .TabTrigChanButton = tab.control<ButtonControl1>("TrigChanButton"),
            .TriggerChannelLine = tab.control<QWidget>("TriggerChannelLine")};
    }
    trigger = std::make_unique<Trigger>(record, driver, acquisition, triggerControls,
                                        Trigger::Calls{.PlotNow = plotNow, .SetDefaultLayering = layer});

    const Timebase::Controls timebaseControls{.TimeBaseKnob = main.control<KnobControl1>("TimeBaseKnob"),
                                              .DelayKnob = horizontal.control<KnobControl1>("DelayKnob"),
                                              .UpdateRateSlider =
                                                  horizontal.control<SliderControl1>("UpdateRateSlider"),
                                              .DelayLabel = horizontal.control<QLabel>("DelayLabel"),
                                              .AcqModeLabel = main.control<QLabel>("AcqModeLabel"),
                                              .RunTimer = runTimer};
    timebase = std::make_unique<Timebase>(
        record, driver, acquisition, timebaseControls,
        Timebase::Calls{
            .TrigModeButton_Click = [this] { trigger->TrigModeButton_Click(); },
            .MoveVertCursorHandle = [this](int cursor,
                                           double time) { cursorBars->MoveVertCursorHandle(cursor, time); },
            .PlotNow = plotNow,
            .RedrawSettings = [this] { largeTime->RedrawSettings(); },
            .SkinColourAt = [this](const QWidget* control) { return skins->SkinColourAt(*control); }});

    RunLoop::Controls loopControls{.RunTimer = runTimer,
                                   .AutoTriggerTimer = autoTriggerTimer,
                                   .RunButton = main.control<ButtonControl1>("RunButton"),
                                   .OnceButton = main.control<ButtonControl1>("OnceButton"),
                                   .TriggerStatusLabel = statusLabel,
                                   .UpdateRateLabel =
                                       forms.TabForm[kAboutTab]->control<QLabel>("UpdateRateLabel"),
                                   .OffsetKnob = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        loopControls.OffsetKnob[channel] = forms.TabForm[channel]->control<KnobControl1>("OffsetKnob");
    }
    runLoop = std::make_unique<RunLoop>(
        record, driver, acquisition, loopControls, Scales(),
        RunLoop::Calls{.PlotNow = plotNow,
                       .DoMaths = [this] { mathTab->DoMaths(); },
                       .PretriggerSlider_Change = [this] { trigger->PretriggerSlider_Change(); },
                       .UpdateStats = [this] { measurements->UpdateStats(); },
                       .SetDefaultLayering = layer},
        waiting);
}

void Instrument::ConnectChannels() {
    const Form& main = *forms.MainForm;
    const ChannelTab::Calls calls{
        .PlotNow = [this] { plotter->PlotNow(); },
        .RedrawSettings = [this] { largeTime->RedrawSettings(); },
        .SetStatsVisible = [this](int channel, bool visible) { measurements->SetVisible(channel, visible); },
        .PointNullDialog = [this](int channel, int range) { offsetNull->PointAt(channel, range); },
        .ShowNullDialog = [this] { offsetNull->Show(); },
        .HideNullDialog = [this] { forms.OffsetNullForm->hide(); },
        .RaiseMainAndStats = [] {},
        .TrigChanButton_Click = [this](int& channel) { trigger->TrigChanButton_Click(channel); }};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        ChannelTab::Calls own = calls;
        own.RaiseMainAndStats = [this, channel] { tabPanels->BringMainToFront(channel); };
        channelTabs[channel] = std::make_unique<ChannelTab>(
            *forms.TabForm[channel], record, driver, settings, *main.timer("IDTimer"),
            main.control<PlotCanvas>("MainPlotCanvas")->Surface(), std::move(own));
    }
    offsetNull = std::make_unique<OffsetNullDialog>(*forms.OffsetNullForm, record, ScopeScales());
    mathTab = std::make_unique<MathTab>(
        *forms.TabForm[kMathTab], record, settings, ScopeScales(),
        MathTab::Calls{.PlotNow = calls.PlotNow,
                       .SetStatsVisible = calls.SetStatsVisible,
                       .SetGroundLabelVisible =
                           [canvas = main.control<PlotCanvas>("MainPlotCanvas")](int channel, bool visible) {
                               canvas->GroundLabelVisible(channel, visible);
                           }});
    horizontalTab = std::make_unique<HorizontalTab>(
        record, settings,
        HorizontalTab::Controls{.UpdateRateSlider =
                                    forms.TabForm[kHorzTab]->control<SliderControl1>("UpdateRateSlider"),
                                .DelayKnob = forms.TabForm[kHorzTab]->control<KnobControl1>("DelayKnob")},
        HorizontalTab::Calls{
            .TrigChanButton_Click = [this](int& channel) { trigger->TrigChanButton_Click(channel); }});
}

void Instrument::ConnectFace() {
    Form& main = *forms.MainForm;
    skins = std::make_unique<SkinSelection>(
        record, log, SkinControls::Of(main), environment.applicationFolder, forms.SharedDIB, forms.MainRegion,
        SkinSelection::Calls{.doEvents = environment.yield, .sleep = environment.sleep, .closing = [this] {
                                 return closing.Wanted();
                             }});

    TabPanels::Windows windows;
    windows.main = &main;
    windows.TabSliderAnchorImage = main.control<QWidget>("TabSliderAnchorImage");
    windows.TabTimer = main.timer("TabTimer");
    windows.TabForm = forms.TabForm;
    windows.StatsForm = forms.StatsForm.get();
    windows.FFTForm = forms.FFTForm.get();
    windows.FullScreenTimeForm = forms.FullScreenTimeForm.get();
    windows.OffsetNullForm = forms.OffsetNullForm.get();
    tabPanels = std::make_unique<TabPanels>(
        record, windows,
        TabPanels::Calls{
            .mainMinimised = [this] { return forms.surface->IsMinimised(); },
            .bringMainToFront = [this] { forms.surface->BringFaceToFront(); },
            .bringPanelUp = [this](QWidget& panel) { forms.surface->BringPanelUp(panel); },
            .sendPanelToBack = [this](QWidget& panel) { forms.surface->SendPanelToBack(panel); }});

    aboutTab =
        std::make_unique<AboutTab>(record, driver, AboutTab::Controls::Of(*forms.TabForm[kAboutTab]),
                                   environment.applicationFolder, AboutTab::Calls{.Show = environment.show});

    shell = std::make_unique<Shell>(
        record, forms, *tabPanels,
        Shell::Calls{.PlotNow = [this] { plotter->PlotNow(); },
                     .Close = [this] { ShutDown(*this); },
                     .IDButton_Click = [this](int channel) { channelTabs[channel]->IDButton_Click(); },
                     .OpenDocument =
                         [this](const QString& file) {
                             QDesktopServices::openUrl(
                                 QUrl::fromLocalFile(QDir(environment.applicationFolder).filePath(file)));
                         }});
}

void Instrument::ConnectExport() {
    Form* form = forms.TabForm[kDataTab];
    dataTab = std::make_unique<DataTab>(
        record, driver, DataTab::Controls::Of(*form, *forms.TabForm[kMathTab]), Scales(),
        DataTab::Calls{.AskForFile = [form](const QString& folder,
                                            auto answer) { AskForDataFile(form, folder, std::move(answer)); },
                       .ShowFailure = [form](const QString& text) { ShowSaveFailure(form, text); },
                       .Stamp =
                           [] {
                               return StampOf(QLocale::system(), QDateTime::currentDateTime(),
                                              QStringLiteral("Corvantine ") + about::VersionText());
                           }});
}

void Instrument::ConnectSettings() {
    const Form& main = *forms.MainForm;
    acquisitionSettings = std::make_unique<AcquisitionSettings>(
        record, settings, *trigger, *timebase,
        AcquisitionSettings::Controls{.TimeBaseKnob = main.control<KnobControl1>("TimeBaseKnob"),
                                      .TriggerKnob = main.control<KnobControl1>("TriggerKnob"),
                                      .PretriggerSlider = main.control<SliderControl1>("PretriggerSlider")});
    scopeSettings = std::make_unique<ScopeSettings>(
        record, settings,
        ScopeSettings::Windows{.FFTForm = PlaceOf(*forms.FFTForm),
                               .StatsForm = forms.StatsForm->windowHandle() != nullptr &&
                                                    forms.StatsForm->windowHandle()->parent() != nullptr
                                                ? PlaceBeside(*forms.StatsForm, *forms.surface)
                                                : PlaceOf(*forms.StatsForm),
                               .FullScreenTimeForm = PlaceOf(*forms.FullScreenTimeForm),
                               .MainForm = PlaceOf(*forms.surface, main)},
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
