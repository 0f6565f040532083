#include "export/data_tab_design.h"

#include "controls/panel_design.h"
#include "frame/record/channels.h"

namespace {

using Geometry = PanelGeometry;

FormDesign Build() {
    FormDesign form =
        PanelForm("Corvantine_TabData", kDataPanelRow, "DATA", 0xFF1B8C, 0xFFFFFF, "Data export settings");
    ControlDesign legend =
        PanelLabel("DataLabel", -1, {Geometry::kLeft, 16, Geometry::kWidth, 16}, "Channels to save");
    legend.font = {"Arial", 8.25, true};
    form.controls.push_back(legend);
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        form.controls.push_back({.kind = ControlKind::CheckBox,
                                 .name = "SaveCh",
                                 .index = channel,
                                 .place = {Geometry::kLeft, 40 + (channel - 1) * 36, Geometry::kWidth, 28},
                                 .caption = QStringLiteral("Channel %1").arg(channel),
                                 .tip = QStringLiteral("Include Ch%1").arg(channel),
                                 .back = kPanelBack,
                                 .fore = 0x000000,
                                 .properties = {{"checked", true}}});
    }
    form.controls.push_back(PanelSeparator("Line1", 192));
    form.controls.push_back(PanelButton(
        "SaveDataButton", -1, {Geometry::kLeft + (Geometry::kWidth - 72) / 2, 212, 72, 72}, "save",
        "Click to save the selected channel's data and fft in Excel text format", 0x0000FF));
    form.controls.back().font = kButtonFont;
    form.controls.push_back(PanelSeparator("Line2", 296));
    form.controls.push_back(PanelNote(
        "DataNote", 306, "Every channel goes to a text file of its own, its spectrum to another beside it."));
    form.timers = {{"DoneTimer", 1500, true}};
    return form;
}

} // namespace

const FormDesign& DataTabDesign() {
    static const FormDesign design = Build();
    return design;
}
