#pragma once

#include "controls/form.h"
#include "frame/record/record.h"
#include "skin/dib_section.h"
#include "skin/dib_section_region.h"
#include "skin/surface.h"

#include <memory>

class DebugLog;

/// Slots of TabForm that hold something else than a channel.
enum TabSlot : int { kMathTab = 15, kDataTab = 16, kCursTab = 17, kHorzTab = 18, kAboutTab = 19 };

/// The windows of the instrument under their names, and their shapes. The surface owns the main form and
/// the panels.
struct Forms {
    explicit Forms(DebugLog& log);

    std::unique_ptr<Form> SplashForm;
    std::unique_ptr<Surface> surface;
    Form* MainForm = nullptr;
    Form* EmptyForm = nullptr; ///< stands in every slot that has no panel
    Indexed<Form*, 1, Record::kTabSlots> TabForm;
    std::unique_ptr<Form> StatsForm;
    std::unique_ptr<Form> OffsetNullForm;
    std::unique_ptr<Form> FFTForm;
    std::unique_ptr<Form> FullScreenTimeForm;

    cDIBSection SharedDIB;
    cDIBSectionRegion MainRegion;
    Indexed<std::unique_ptr<cDIBSectionRegion>, 1, Record::kTabSlots> TabRegion;
};
