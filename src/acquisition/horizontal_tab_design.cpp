#include "acquisition/horizontal_tab_design.h"

#include "controls/colour.h"
#include "controls/panel_design.h"
#include "frame/record/channels.h"

#include <QColor>

namespace {

using Geometry = PanelGeometry;

ControlDesign Legend(int index, QRect place, const QString& caption, Qt::Alignment alignment) {
    ControlDesign row = PanelLabel("HorzLabel", index, place, caption, alignment);
    row.font = {"Arial", 8.25, true};
    return row;
}

void AddDelay(std::vector<ControlDesign>& rows) {
    constexpr QRect kKnob{Geometry::kLeft + 8, 38, 93, 97};
    rows.push_back(Legend(0, {Geometry::kLeft, 16, 110, 16}, "Trigger delay", Qt::AlignCenter));
    rows.push_back({.kind = ControlKind::Knob,
                    .name = "DelayKnob",
                    .place = kKnob,
                    .tip = "Delay of the record after the trigger",
                    .fill = kPanelPlate,
                    .back = kPanelBack,
                    .fore = 0x000000,
                    .properties = {{"KnobMin", -32768},
                                   {"KnobMax", 32767},
                                   {"KnobValue", -32768},
                                   {"KnobZeroButtonValue", -32768},
                                   {"KnobStartAngle", -90},
                                   {"KnobStopAngle", 180},
                                   {"KnobTimeout", 20},
                                   {"KnobMarkers", QStringLiteral("16")},
                                   {"KnobMarkerColor", QColor(0, 0, 0)},
                                   {"KnobValueFormat", QStringLiteral("0.0%")},
                                   {"KnobValueAlign", 2},
                                   {"KnobValueQuantized", true}}});
    ControlDesign label =
        PanelLabel("DelayLabel", -1, {Geometry::kLeft, 142, 110, 18}, "0.0ns", Qt::AlignCenter);
    label.tip = "Present delay after the trigger";
    rows.push_back(label);
}

void AddUpdateRate(std::vector<ControlDesign>& rows) {
    constexpr int kCentre = Geometry::kRight - 26;
    rows.push_back(Legend(1, {kCentre - 26, 16, 52, 16}, "Update", Qt::AlignCenter));
    rows.push_back(PanelLabel("HorzLabel", 2, {kCentre - 26, 38, 52, 12}, "fast", Qt::AlignCenter));
    rows.push_back(
        {.kind = ControlKind::Slider,
         .name = "UpdateRateSlider",
         .place = {kCentre - 6, 52, 13, 85},
         .tip = "Pause between acquisitions: from 10 ms at the top to 1 s at the bottom",
         .fill = kPanelPlate,
         .properties = {{"SliderDepth", 1}, {"SliderValueQuantized", 0.05}, {"SliderValue", 0.5}}});
    rows.push_back(PanelLabel("HorzLabel", 3, {kCentre - 26, 140, 52, 12}, "slow", Qt::AlignCenter));
}

void AddTriggerSource(std::vector<ControlDesign>& rows) {
    constexpr int kTop = 184;
    constexpr int kButton = 36;
    constexpr int kPitch = (Geometry::kWidth - kButton) / (kScopeChannels - 1);
    rows.push_back(Legend(4, {Geometry::kLeft, kTop, Geometry::kWidth, 16}, "Trigger source",
                          Qt::AlignLeft | Qt::AlignVCenter));
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        const int left = Geometry::kLeft + (channel - 1) * kPitch;
        const QString tip = QStringLiteral("Trigger on channel %1").arg(channel);
        rows.push_back(PanelButton("TrigChanButton", channel, {left, kTop + 24, kButton, kButton},
                                   QStringLiteral("ch%1").arg(channel), tip, 0x808080, 0x000000));
        rows.push_back({.kind = ControlKind::Label,
                        .name = "UpdateRateMarkerLabel",
                        .index = channel,
                        .place = {left + 6, kTop + 66, kButton - 12, 6},
                        .tip = tip,
                        .back = kButtonFace});
    }
}

FormDesign Build() {
    FormDesign form = PanelForm("Corvantine_TabHorz", kHorzPanelRow, "HORZ", 0xFF1BA1, 0xFFFFFF,
                                "Horizontal and trigger settings");
    AddDelay(form.controls);
    AddUpdateRate(form.controls);
    form.controls.push_back(PanelSeparator("Line1", 172));
    AddTriggerSource(form.controls);
    return form;
}

} // namespace

const FormDesign& HorizontalTabDesign() {
    static const FormDesign design = Build();
    return design;
}
