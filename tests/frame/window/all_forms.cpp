#include "frame/window/all_forms.h"

#include "about/about_tab_design.h"
#include "acquisition/horizontal_tab_design.h"
#include "analysis/measurement_design.h"
#include "analysis/spectrum_design.h"
#include "channels/channel_tab_design.h"
#include "channels/math_tab_design.h"
#include "channels/offset_null_design.h"
#include "display/cursor_tab_design.h"
#include "display/large_time_design.h"
#include "export/data_tab_design.h"
#include "frame/window/main_form_design.h"
#include "frame/window/splash_design.h"

std::vector<FormDesign> AllPanels() {
    return {ChannelTabDesign(1, 0x00FFFF),
            ChannelTabDesign(2, 0xFFE21B),
            ChannelTabDesign(3, 0xF71BFF),
            ChannelTabDesign(4, 0x86FF1B),
            MathTabDesign(),
            HorizontalTabDesign(),
            CursorTabDesign(),
            DataTabDesign(),
            AboutTabDesign()};
}

std::vector<FormDesign> AllForms() {
    std::vector<FormDesign> forms = AllPanels();
    forms.push_back(MainFormDesign());
    forms.push_back(SplashDesign());
    forms.push_back(OffsetNullDesign());
    forms.push_back(MeasurementDesign());
    forms.push_back(SpectrumDesign());
    forms.push_back(LargeTimeDesign());
    return forms;
}
