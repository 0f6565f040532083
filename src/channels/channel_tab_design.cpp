#include "channels/channel_tab_design.h"

#include "controls/panel_design.h"

namespace {

using Geometry = PanelGeometry;

constexpr int kRowsTop = 16;
constexpr QSize kKnob{75, 89};
constexpr int kKnobPitch = 97;
constexpr int kKnobLeft = Geometry::kLeft + Geometry::kLegend + 2;
constexpr int kButton = 36;
constexpr int kButtonPitchX = 40;
constexpr int kButtonPitchY = 50;
constexpr int kButtonLeft = Geometry::kRight - kButtonPitchX - kButton;
constexpr int kCouplingTop = 216;
constexpr int kProbeTop = 304;

QRect ButtonPlace(int column, int row) {
    return {kButtonLeft + column * kButtonPitchX, kRowsTop + row * kButtonPitchY, kButton, kButton};
}

QRect KnobPlace(int row) {
    return {{kKnobLeft, kRowsTop + row * kKnobPitch}, kKnob};
}

void AddKnobs(std::vector<ControlDesign>& rows, int channel) {
    // The two later panels carry a limit one below the knob's minimum; it is never reached.
    const int lowerLimit = channel <= 2 ? -127 : -128;
    rows.push_back(PanelVoltsKnob("VoltsKnob", KnobPlace(0), 2, 2, "V/div"));
    rows.push_back(PanelOffsetKnob("OffsetKnob", KnobPlace(1), 20, lowerLimit));
    rows.push_back(PanelRotatedLabel(
        "VoltsLabel", -1, {Geometry::kLeft, kRowsTop, Geometry::kLegend, kKnob.height()}, "Volts/div"));
    rows.push_back(PanelRotatedLabel(
        "OffsetLabel", -1, {Geometry::kLeft, kRowsTop + kKnobPitch, Geometry::kLegend, kKnob.height()},
        "Offset"));
}

void AddButtons(std::vector<ControlDesign>& rows) {
    constexpr Colour kWhite = 0xFFFFFF;
    rows.push_back(PanelButton("ChannelOnButton", -1, ButtonPlace(0, 0), "on",
                               "Turn the channel plot on and off", kWhite, 0));
    rows.push_back(PanelButton("TrigChanButton", -1, ButtonPlace(1, 0), "trig",
                               "Set this as the trigger channel", kWhite, 0));
    rows.push_back(
        PanelButton("BWLimitButton", -1, ButtonPlace(0, 1), "bw", "Limit bandwidth to approx Fsample/4"));
    rows.push_back(PanelButton("InvertButton", -1, ButtonPlace(1, 1), "inv", "Invert the plot"));
    rows.push_back(PanelButton("FFTButton", -1, ButtonPlace(0, 2), "FFT",
                               "Enable a Fast Fourier Transform spectral plot"));
    rows.push_back(
        PanelButton("IDButton", -1, ButtonPlace(1, 2), "id", "Blink this channels LED to identify it"));
    rows.push_back(PanelButton(
        "CalSourceButton", -1, ButtonPlace(0, 3), "cmp",
        "Turn the probe compensation square wave on and off (turns off automatically after use)"));
    rows.push_back(PanelButton("OffsetNullButton", -1, ButtonPlace(1, 3), "null", "Configure offset null"));
}

void AddOptions(std::vector<ControlDesign>& rows) {
    const QString couplingTip = "Select the channel coupling";
    const QString probeTip = "Set this to match your probe";
    const int width = Geometry::kWidth;
    rows.push_back(
        PanelFrame("Frame1", 1, {Geometry::kLeft, kCouplingTop, width, PanelFrameHeight(3)}, couplingTip));
    rows.push_back(
        PanelFrame("Frame1", 0, {Geometry::kLeft, kProbeTop, width, PanelFrameHeight(2)}, probeTip));
    rows.push_back(PanelOption("Coupling", 0, 0, "Frame1(1)", width, "AC Coupling", couplingTip, false));
    rows.push_back(PanelOption("Coupling", 1, 1, "Frame1(1)", width, "DC Coupling", couplingTip, true));
    rows.push_back(PanelOption("Coupling", 2, 2, "Frame1(1)", width, "GND", couplingTip, false));
    rows.push_back(PanelOption("ProbeType", 0, 0, "Frame1(0)", width, "x1   Probe", probeTip, false));
    rows.push_back(PanelOption("ProbeType", 1, 1, "Frame1(0)", width, "x10 Probe", probeTip, true));
}

} // namespace

FormDesign ChannelTabDesign(int channel, Colour colour) {
    FormDesign form = PanelForm(QStringLiteral("Corvantine_Tab%1").arg(channel), channel - 1,
                                QStringLiteral("CH%1").arg(channel), colour, 0x000000,
                                QStringLiteral("Scope channel %1 settings").arg(channel));
    AddKnobs(form.controls, channel);
    AddButtons(form.controls);
    AddOptions(form.controls);
    form.controls.push_back({.kind = ControlKind::Line,
                             .name = "TriggerChannelLine",
                             .place = {8, 30, Geometry::kHeader - 20, 3},
                             .back = 0x000000,
                             .parent = "Image1",
                             .visible = false});
    return form;
}
