#include "channels/math_tab_design.h"

#include "controls/panel_design.h"

namespace {

using Geometry = PanelGeometry;

constexpr int kInner = Geometry::kLeft + Geometry::kLegend + 2;
constexpr int kBlockHeight = 113;
constexpr int kBlockPitch = 126;
constexpr int kBlocksTop = 10;
constexpr int kSpectrumTop = kBlocksTop + 2 * kBlockPitch;

/// The names of one math channel's controls.
struct MathNames {
    const char* combo;
    const char* volts;
    const char* offset;
    QString legend;
    QString enableTip;
};

void AddBlock(std::vector<ControlDesign>& rows, int block, const MathNames& names) {
    constexpr int kComboWidth = 44;
    constexpr int kComboPitch = 47;
    const int top = kBlocksTop + block * kBlockPitch;
    const int combos = Geometry::kRight - 2 * kComboPitch - kComboWidth;
    const QString tips[] = {
        "Select the 1st channel to operate on",
        "Select the math function to use (NB: the channel invert state is ignored i.e. true data is used in "
        "maths)",
        "Select the 2nd channel to operate on"};
    const QString captions[] = {"A", "fn", "B"};

    rows.push_back(PanelRotatedLabel("MathLegend", block,
                                     {Geometry::kLeft, top, Geometry::kLegend, kBlockHeight}, names.legend));
    rows.push_back({.kind = ControlKind::CheckBox,
                    .name = "MathChannelEn",
                    .index = block + 1,
                    .place = {kInner, top + 14, 18, 20},
                    .tip = names.enableTip,
                    .fore = kPanelLegend});
    for (int i = 0; i < 3; ++i) {
        const int left = combos + i * kComboPitch;
        rows.push_back(PanelLabel("Math1Label", 3 * block + i, {left, top, kComboWidth, 13}, captions[i],
                                  Qt::AlignCenter));
        rows.push_back(PanelCombo(names.combo, i, {left, top + 13, kComboWidth, 21}, tips[i]));
    }
    ControlDesign volts = PanelVoltsKnob(names.volts, {kInner, top + 40, 59, 73}, 3, 0, "V/d");
    ControlDesign offset = PanelOffsetKnob(names.offset, {kInner + 65, top + 40, 59, 73}, 50, -127);
    volts.font = kPanelSmallFont;
    offset.font = kPanelSmallFont;
    rows.push_back(volts);
    rows.push_back(offset);
    rows.push_back(PanelButton("FFTButton", block, {Geometry::kRight - 32, top + 60, 32, 32}, "FFT",
                               "Enable a Fast Fourier Transform spectral plot"));
}

void AddSpectrum(std::vector<ControlDesign>& rows) {
    const int width = Geometry::kRight - kInner;
    rows.push_back(
        PanelRotatedLabel("MathLegend", 2, {Geometry::kLeft, kSpectrumTop, Geometry::kLegend, 96}, "FFT"));
    rows.push_back(PanelCombo("FFTWindowCombo", -1, {kInner, kSpectrumTop + 6, width, 22},
                              "Select the type of spectral window shaping used prior to FFTing the data"));
    rows.back().properties = {
        {"items", QStringList{"Rectangular", "Hanning", "Hamming", "Triangular", "Welch!"}}};
    rows.push_back(PanelFrame("Frame1", -1, {kInner, kSpectrumTop + 38, width, PanelFrameHeight(2)},
                              "Select the vertical scale of the spectrum"));
    rows.push_back(PanelOption("FFTPlotType", 0, 0, "Frame1", width, "dB(V) Plot",
                               "Plot the FFT in decibels relative to the channel's full scale", false));
    rows.push_back(PanelOption(
        "FFTPlotType", 1, 1, "Frame1", width, "Linear Plot",
        "Plot the FFT in volts with spectrum full scale equal to the channel's full scale", true));
}

FormDesign Build() {
    FormDesign form =
        PanelForm("Corvantine_TabMath", kMathPanelRow, "MATH", 0xFF1B76, 0xFFFFFF, "Math & FFT settings");
    AddBlock(form.controls, 0,
             {"Math1Combo", "Math1VoltsKnob", "Math1OffsetKnob", "Math1", "Enable math trace #1"});
    form.controls.push_back(PanelSeparator("Line1", kBlocksTop + kBlockPitch - 8));
    AddBlock(form.controls, 1,
             {"Math2Combo", "Math2VoltsKnob", "Math2OffsetKnob", "Math2", "Enable math trace #2"});
    form.controls.push_back(PanelSeparator("Line2", kSpectrumTop - 8));
    AddSpectrum(form.controls);
    return form;
}

} // namespace

const FormDesign& MathTabDesign() {
    static const FormDesign design = Build();
    return design;
}
