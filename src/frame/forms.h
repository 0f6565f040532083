#pragma once

#include "controls/form.h"
#include "frame/record.h"
#include "skin/dib_section.h"
#include "skin/dib_section_region.h"

#include <memory>

class Surface;

/// Slots of TabForm that hold something else than a channel.
enum TabSlot : int { kMathTab = 15, kDataTab = 16, kCursTab = 17, kHorzTab = 18, kAboutTab = 19 };

/// The windows of the instrument under their names. The surface owns the main form and the panels, the
/// satellites own themselves through the unique pointers here.
struct Forms {
    std::unique_ptr<Surface> surface;
    Form* MainForm = nullptr;
    Form* EmptyForm = nullptr; ///< stands in every slot that has no panel
    Indexed<Form*, 1, Record::kTabSlots> TabForm;
    std::unique_ptr<Form> StatsForm;
    std::unique_ptr<Form> FFTForm;
    std::unique_ptr<Form> FullScreenTimeForm;
    std::unique_ptr<Form> OffsetNullForm;
    std::unique_ptr<Form> SplashForm;
};
