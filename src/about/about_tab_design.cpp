#include "about/about_tab_design.h"

#include "controls/panel_design.h"

namespace {

using Geometry = PanelGeometry;

ControlDesign Legend(const char* name, int top, const QString& caption) {
    ControlDesign row = PanelLabel(name, -1, {Geometry::kLeft, top, Geometry::kWidth, 16}, caption);
    row.font = {"Arial", 8.25, true};
    return row;
}

ControlDesign List(const char* name, int top, const QString& tip) {
    return {.kind = ControlKind::ListBox,
            .name = name,
            .place = {Geometry::kLeft, top, Geometry::kWidth, 72},
            .tip = tip,
            .back = 0xE4ECEE,
            .fore = 0x000000};
}

FormDesign Build() {
    FormDesign form = PanelForm("Corvantine_TabAbout", kAboutPanelRow, "About", 0x31FF1B, 0x000000,
                                "Info about Corvantine & attached devices");
    auto& rows = form.controls;
    rows.push_back(PanelLabel("About", 0, {Geometry::kLeft, 16, Geometry::kWidth, 28}, "Corvantine"));
    rows.back().font = {"Arial", 15.75, true};
    rows.push_back(PanelLabel("VersionText", -1, {Geometry::kLeft, 46, Geometry::kWidth, 16}, "Ver x.x.x"));
    rows.push_back(Legend("Label1", 76, "Corvantines"));
    rows.push_back(List("CorvantineList", 96, "This shows the connected Corvantine's"));
    rows.push_back(Legend("Label2", 182, "Diags"));
    rows.push_back(List("DebugList", 202, "This list is for diagnostics only"));
    rows.push_back(PanelLabel("AboutLabel", 0, {Geometry::kLeft, 290, 120, 18}, "Screen updates/s"));
    rows.push_back(PanelLabel("UpdateRateLabel", -1, {Geometry::kRight - 52, 290, 52, 18}, "0",
                              Qt::AlignRight | Qt::AlignVCenter));
    rows.back().tip = "Plots finished per second";
    rows.push_back(PanelLabel("AboutLabel", 1, {Geometry::kLeft, 326, 120, 19}, "Software updates"));
    rows.push_back({.kind = ControlKind::HyperLink,
                    .name = "WebLink",
                    .place = {Geometry::kRight - 41, 326, 41, 19},
                    .tip = "Visit website to check for software updates",
                    .back = kPanelBack,
                    .properties = {{"AutoRedraw", true}, {"drawing", "webLink"}}});
    return form;
}

} // namespace

const FormDesign& AboutTabDesign() {
    static const FormDesign design = Build();
    return design;
}
