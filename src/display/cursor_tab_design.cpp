#include "display/cursor_tab_design.h"

#include "controls/panel_design.h"

namespace {

using Geometry = PanelGeometry;

constexpr int kCursors = 3;
constexpr int kBoxPitch = 32;

void AddGroup(std::vector<ControlDesign>& rows, const char* name, int group, int top, const QString& title,
              const QString& letter, const QString& tip) {
    ControlDesign legend =
        PanelLabel("CursLabel", group, {Geometry::kLeft, top, Geometry::kWidth, 18}, title);
    legend.font = {"Arial", 8.25, true};
    rows.push_back(legend);
    for (int i = 0; i < kCursors; ++i) {
        rows.push_back({.kind = ControlKind::CheckBox,
                        .name = name,
                        .index = i,
                        .place = {Geometry::kLeft + 8, top + 26 + i * kBoxPitch, Geometry::kWidth - 8, 24},
                        .caption = QStringLiteral("%1%2").arg(letter).arg(i + 1),
                        .tip = tip.arg(i + 1),
                        .fore = kPanelLegend});
    }
}

FormDesign Build() {
    FormDesign form =
        PanelForm("Corvantine_TabCurs", kCursPanelRow, "CURS", 0xFF1B56, 0xFFFFFF, "Cursor settings");
    AddGroup(form.controls, "VertCursorEn", 0, 16, "Time cursors", "t", "Show time cursor %1");
    form.controls.push_back(PanelSeparator("Line1", 148));
    AddGroup(form.controls, "HorizCursorEn", 1, 164, "Level cursors", "v", "Show level cursor %1");
    return form;
}

} // namespace

const FormDesign& CursorTabDesign() {
    static const FormDesign design = Build();
    return design;
}
