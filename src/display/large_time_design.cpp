#include "display/large_time_design.h"

#include "controls/plot_window_design.h"

const FormDesign& LargeTimeDesign() {
    static const FormDesign design = [] {
        constexpr QSize kSize{960, 600};
        constexpr int kCanvasHeight = kSize.height() - 2 * kPlotWindowLine;
        FormDesign form = PlotWindowForm("Corvantine_FullScreenTimeForm", "Corvantine time", kSize);
        form.controls = {
            PlotWindowCanvas({0, 0, kSize.width(), kCanvasHeight}, {}),
            PlotWindowLabel("ScopeSettingsLabel", {kPlotWindowTextLeft, kCanvasHeight, 600, kPlotWindowLine},
                            {}),
            PlotWindowLabel("OtherInfoLabel",
                            {kPlotWindowTextLeft, kCanvasHeight + kPlotWindowLine, 600, kPlotWindowLine},
                            "INFO"),
            PlotWindowClipboard(kCanvasHeight)};
        AddIdentFrame(form, {});
        return form;
    }();
    return design;
}
