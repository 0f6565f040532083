// A skin change and a tab click on the face and panels of the instrument, until they are drawn.

#include "controls/form.h"
#include "controls/picture.h"
#include "frame/log/debug_log.h"
#include "frame/record/record.h"
#include "frame/window/all_forms.h"
#include "frame/window/main_form_design.h"
#include "skin/skin_selection.h"
#include "skin/surface.h"
#include "skin/tab_panels.h"

#include <QApplication>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <map>

namespace {

/// The surface with everything on it that a skin or a tab can change, without an instrument behind it.
class Scene {
  public:
    Scene() {
        face_ = new Form(MainFormDesign());
        auto* empty = new Form(
            {.name = QStringLiteral("Corvantine_EmptyForm"), .caption = {}, .size = {1, 1}}, &surface);
        empty->hide();
        TabPanels::Windows windows;
        windows.main = face_;
        windows.TabSliderAnchorImage = face_->control<QWidget>("TabSliderAnchorImage");
        windows.TabTimer = face_->timer("TabTimer");
        windows.TabForm.fill(empty);
        windows.StatsForm = windows.FFTForm = windows.FullScreenTimeForm = &satellite_;
        const std::map<QString, int> slotOf{
            {QStringLiteral("Corvantine_Tab1"), 1},     {QStringLiteral("Corvantine_Tab2"), 2},
            {QStringLiteral("Corvantine_Tab3"), 3},     {QStringLiteral("Corvantine_Tab4"), 4},
            {QStringLiteral("Corvantine_TabMath"), 15}, {QStringLiteral("Corvantine_TabData"), 16},
            {QStringLiteral("Corvantine_TabCurs"), 17}, {QStringLiteral("Corvantine_TabHorz"), 18},
            {QStringLiteral("Corvantine_TabAbout"), 19}};
        std::vector<Form*> panels;
        for (const FormDesign& design : AllPanels()) {
            panels.push_back(new Form(design));
            windows.TabForm[slotOf.at(design.name)] = panels.back();
        }
        surface.Carry(*face_, panels);
        surface.MakeRoom(windows.TabSliderAnchorImage->geometry());
        tabs = std::make_unique<TabPanels>(
            record, windows,
            TabPanels::Calls{.MainMinimised = [] { return false; },
                             .BringMainToFront = [this] { surface.BringFaceToFront(); },
                             .BringPanelUp = [this](QWidget& panel) { surface.BringPanelUp(panel); },
                             .SendPanelToBack = [this](QWidget& panel) { surface.SendPanelToBack(panel); }});
        skins = std::make_unique<SkinSelection>(
            record, log_, SkinControls::Of(*face_), QStringLiteral(APPLICATION_FOLDER), dib_, mainRegion_,
            SkinSelection::Calls{.doEvents = {}, .sleep = [](int) {}, .closing = {}});
        skins->ListSkins();
        for (Form* panel : panels) {
            regions_.push_back(std::make_unique<cDIBSectionRegion>(log_));
            SetWindowEffects(log_, dib_, *panel->control<Picture>("Image2"), kSkinKey, *regions_.back());
            panel->show();
        }
        SetWindowEffects(log_, dib_, *face_->control<Picture>("Image1"), kSkinKey, mainRegion_);
        tabs->TabTimer_Timer();
        surface.show();
        Draw();
    }
    /// Lets everything be drawn that waits for it.
    static void Draw() { QApplication::processEvents(); }

    Record record;
    Surface surface;
    std::unique_ptr<TabPanels> tabs;
    std::unique_ptr<SkinSelection> skins;

  private:
    DebugLog log_{{}, {}};
    QWidget satellite_;
    Form* face_ = nullptr;
    cDIBSection dib_{log_};
    cDIBSectionRegion mainRegion_{log_};
    std::vector<std::unique_ptr<cDIBSectionRegion>> regions_;
};

/// Besides its wait of 100 ms.
void SkinChange(benchmark::State& state) {
    Scene scene;
    for (auto _ : state) {
        scene.skins->SkinColourImage_Click();
        Scene::Draw();
    }
}
BENCHMARK(SkinChange)->Unit(benchmark::kMillisecond);

/// From the tick that finds the panel out of its place; the click waits for it for at most 50 ms.
void TabClick(benchmark::State& state) {
    Scene scene;
    for (auto _ : state) {
        scene.tabs->PressTab(static_cast<int>(state.range(0)));
        scene.tabs->TabTimer_Timer();
        Scene::Draw();
    }
}
BENCHMARK(TabClick)->Arg(1)->Arg(15)->Unit(benchmark::kMillisecond);

/// A tick that finds every panel where it belongs.
void IdleTick(benchmark::State& state) {
    Scene scene;
    for (auto _ : state) {
        scene.tabs->TabTimer_Timer();
    }
}
BENCHMARK(IdleTick);

} // namespace
