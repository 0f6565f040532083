#include "analysis/spectrum_design.h"

#include "controls/plot_window_design.h"

namespace {

FormDesign BuildSpectrum() {
    constexpr QSize kSize{720, 420};
    constexpr int kLine = kPlotWindowLine;
    constexpr int kBottom = kSize.height() - 2 * kLine;
    constexpr QRect kCanvas{0, kLine, kSize.width(), kBottom - kLine};
    const QString tip = "FFT Spectrum, right click to lock cursor, left click to move window";
    FormDesign form = PlotWindowForm("Corvantine_FFTForm", "Corvantine spectrum", kSize);
    form.controls = {
        PlotWindowCanvas(kCanvas, tip),
        PlotWindowLabel("TitleLabel", {4, 0, 172, kLine}, "FFT Spectrum (voltage amplitude) ", tip),
        PlotWindowLabel("FFTStatsFreq", {180, 0, kSize.width() - 180, kLine}, {}, tip),
        PlotWindowLabel("FFTStatsMag", {kPlotWindowTextLeft, kBottom, 460, kLine}, "Cursor:", tip),
        PlotWindowLabel("OtherInfoLabel", {kPlotWindowTextLeft, kBottom + kLine, 460, kLine}, {}, tip),
        PlotWindowClipboard(kBottom),
        {.kind = ControlKind::Line,
         .name = "FFTCursorLineVert",
         .place = {kCanvas.width() / 2, 0, 1, kCanvas.height()},
         .back = 0xFFFFFF,
         .parent = "Canvas"},
        {.kind = ControlKind::Line,
         .name = "FFTCursorLineHoriz",
         .place = {0, kCanvas.height() / 2, kCanvas.width(), 1},
         .back = 0xFFFFFF,
         .parent = "Canvas"}};
    // One line, so that the ranges of all channels have the whole width above it.
    AddIdentFrame(form, tip, 1);
    return form;
}

} // namespace

const FormDesign& SpectrumDesign() {
    static const FormDesign design = BuildSpectrum();
    return design;
}
