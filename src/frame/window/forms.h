#pragma once

#include "controls/form.h"
#include "frame/record/channels.h"
#include "skin/dib_section.h"
#include "skin/dib_section_region.h"
#include "skin/surface.h"
#include "skin/tab_panels.h"

#include <memory>

class DebugLog;
struct Record;

/// Slots of TabForm that hold something else than a channel.
enum TabSlot : int { kMathTab = 15, kDataTab = 16, kCursTab = 17, kHorzTab = 18, kAboutTab = 19 };

/// The windows of the instrument under their names, each made from its table, and their shapes. The surface
/// owns the main form, the panels and the windows that stay with it.
struct Forms {
    explicit Forms(DebugLog& log);

    // Building, in the order of the start-up
    void CreateSplash();
    void CreateMainForm();
    void CreateTabForms(const Record& record);
    void CreateSatellites();
    void NameWindows(const QString& suffix); ///< after the module that the command line forces

    void SplashLine(int index, const QString& text);
    ChannelForms Channels() const;
    TabPanels::Windows Windows() const;

    std::unique_ptr<Form> SplashForm;
    std::unique_ptr<Surface> surface;
    Form* MainForm = nullptr;
    Form* EmptyForm = nullptr; ///< stands in every slot that has no panel
    PerTab<Form*> TabForm;
    Form* StatsForm = nullptr;
    Form* OffsetNullForm = nullptr;
    std::unique_ptr<Form> FFTForm;
    std::unique_ptr<Form> FullScreenTimeForm;

    cDIBSection SharedDIB;
    cDIBSectionRegion MainRegion;
    PerTab<std::unique_ptr<cDIBSectionRegion>> TabRegion;

  private:
    void PlaceWindows();
};
