#include "display/cursor_tab_design.h"

#include "controls/panel_design.h"
#include "frame/record/channels.h"

namespace {

using Geometry = PanelGeometry;

constexpr int kCursors = 3;
constexpr int kBoxPitch = 32;

/// Three cursors of one direction: their boxes, and beside each the handle as it looks in its bar.
struct Group {
    const char* title;
    const char* box;
    const char* letter;
    const char* tip;
    const char* picture;
    const char* drawing;
    QSize handle;
};

void AddGroup(std::vector<ControlDesign>& rows, int index, int top, const Group& group) {
    ControlDesign legend =
        PanelLabel("CursLabel", index, {Geometry::kLeft, top, Geometry::kWidth, 18}, group.title);
    legend.font = {"Arial", 8.25, true};
    rows.push_back(legend);
    for (int i = 0; i < kCursors; ++i) {
        const int y = top + 26 + i * kBoxPitch;
        rows.push_back({.kind = ControlKind::CheckBox,
                        .name = group.box,
                        .index = i,
                        .place = {Geometry::kLeft + 8, y, 56, 24},
                        .caption = QStringLiteral("%1%2").arg(QLatin1String(group.letter)).arg(i + 1),
                        .tip = QString::fromLatin1(group.tip).arg(i + 1),
                        .fore = kPanelLegend});
        rows.push_back({.kind = ControlKind::Picture,
                        .name = group.picture,
                        .index = i,
                        .place = QRect(QPoint(Geometry::kLeft + 72, y + 5), group.handle),
                        .properties = {{"drawing", QStringLiteral("%1%2").arg(group.drawing).arg(i + 1)}}});
    }
}

FormDesign Build() {
    FormDesign form =
        PanelForm("Corvantine_TabCurs", kCursPanelRow, "CURS", 0xFF1B56, 0xFFFFFF, "Cursor settings");
    AddGroup(form.controls, 0, 16,
             {"Time cursors",
              "VertCursorEn",
              "t",
              "Show time cursor %1",
              "VertCursorPicture",
              "timeCursor",
              {11, 14}});
    form.controls.push_back(PanelSeparator("Line1", 148));
    AddGroup(form.controls, 1, 164,
             {"Level cursors",
              "HorizCursorEn",
              "v",
              "Show level cursor %1",
              "HorizCursorPicture",
              "levelCursor",
              {14, 11}});
    form.controls.push_back(PanelSeparator("Line2", 296));
    form.controls.push_back(PanelNote("CursNote", 306,
                                      "Drag the handles in the bars beside the plot. The right button moves "
                                      "them finely."));
    return form;
}

} // namespace

const FormDesign& CursorTabDesign() {
    static const FormDesign design = Build();
    return design;
}
