#include "controls/panel_design.h"

#include <QColor>

namespace {
using Geometry = PanelGeometry;
} // namespace

FormDesign PanelForm(const QString& name, int row, const QString& header, Colour colour, Colour text,
                     const QString& tip) {
    const QRect place = Geometry::Header(row);
    FormDesign form{.name = name, .caption = header, .size = Geometry::Size(), .font = kPanelFont};
    form.controls = {
        {.kind = ControlKind::Picture,
         .name = "Image2",
         .place = {{0, 0}, Geometry::Size()},
         .properties = {{"drawing", "panel"}}},
        {.kind = ControlKind::Picture, .name = "Image1", .place = place, .tip = tip},
        {.kind = ControlKind::Label,
         .name = "TabName",
         .place = {3, 7, Geometry::kHeader - 8, 20},
         .caption = header,
         .back = colour,
         .fore = text,
         .font = {"Arial", 8.25, true},
         .properties = {{"alignment", int(Qt::AlignCenter)}},
         .parent = "Image1"},
    };
    return form;
}

ControlDesign PanelButton(const char* name, int index, QRect place, const QString& caption,
                          const QString& tip, Colour fill, Colour fore) {
    return {.kind = ControlKind::Button,
            .name = name,
            .index = index,
            .place = place,
            .caption = caption,
            .tip = tip,
            .fill = fill,
            .back = kPanelBack,
            .fore = fore,
            .font = kPanelButtonFont};
}

ControlDesign PanelLabel(const char* name, int index, QRect place, const QString& caption,
                         Qt::Alignment alignment) {
    return {.kind = ControlKind::Label,
            .name = name,
            .index = index,
            .place = place,
            .caption = caption,
            .fore = kPanelLegend,
            .properties = {{"alignment", int(alignment)}}};
}

ControlDesign PanelNote(const char* name, int top, const QString& text) {
    ControlDesign row = PanelLabel(name, -1, {Geometry::kLeft, top, Geometry::kWidth, 56}, text,
                                   Qt::AlignLeft | Qt::AlignTop);
    row.properties.emplace_back("wordWrap", true);
    return row;
}

ControlDesign PanelRotatedLabel(const char* name, int index, QRect place, const QString& caption) {
    return {.kind = ControlKind::RotatedLabel,
            .name = name,
            .index = index,
            .place = place,
            .caption = caption,
            .fore = kPanelLegend,
            .font = {"Arial", 8.25, true}};
}

ControlDesign PanelFrame(const char* name, int index, QRect place, const QString& tip) {
    return {.kind = ControlKind::Frame,
            .name = name,
            .index = index,
            .place = place,
            .tip = tip,
            .back = kPanelBack};
}

ControlDesign PanelOption(const char* name, int index, int row, const char* frame, int width,
                          const QString& caption, const QString& tip, bool checked) {
    return {.kind = ControlKind::OptionButton,
            .name = name,
            .index = index,
            .place = {8, kPanelFramePad + row * kPanelOptionPitch, width - 16, kPanelOptionPitch},
            .caption = caption,
            .tip = tip,
            .back = kPanelBack,
            .fore = kPanelLegend,
            .properties = {{"checked", checked}},
            .parent = frame};
}

ControlDesign PanelCombo(const char* name, int index, QRect place, const QString& tip) {
    return {.kind = ControlKind::ComboBox,
            .name = name,
            .index = index,
            .place = place,
            .tip = tip,
            .back = 0xE4ECEE,
            .fore = 0x000000};
}

ControlDesign PanelSeparator(const char* name, int top) {
    return {.kind = ControlKind::Line,
            .name = name,
            .place = {Geometry::kLeft, top, Geometry::kWidth, 2},
            .back = 0x708A90};
}

ControlDesign PanelVoltsKnob(const char* name, QRect place, int maximum, int value, const QString& format) {
    return {.kind = ControlKind::Knob,
            .name = name,
            .place = place,
            .tip = QStringLiteral("Set the channel's vertical sensitivity"),
            .fill = kPanelPlate,
            .back = kPanelBack,
            .fore = 0x000000,
            .properties = {{"KnobMin", 0},
                           {"KnobMax", maximum},
                           {"KnobUpperLimit", maximum},
                           {"KnobValue", value},
                           {"KnobAnticlock", true},
                           {"KnobStartAngle", 0},
                           {"KnobStopAngle", 180},
                           {"KnobTimeout", 50},
                           {"KnobMarkers", QString::number(maximum + 1)},
                           {"KnobMarkerColor", QColor(0, 0, 0)},
                           {"KnobValueFormat", format},
                           {"KnobValueQuantized", true}}};
}

ControlDesign PanelOffsetKnob(const char* name, QRect place, int timeout, int lowerLimit) {
    return {.kind = ControlKind::Knob,
            .name = name,
            .place = place,
            .tip = QStringLiteral("Set the channel's DC offset"),
            .fill = kPanelPlate,
            .back = kPanelBack,
            .fore = 0x000000,
            .properties = {{"KnobMin", -127},
                           {"KnobMax", 127},
                           {"KnobLowerLimit", lowerLimit},
                           {"KnobUpperLimit", 127},
                           {"KnobValue", 0},
                           {"KnobZeroButtonValue", 0},
                           {"KnobStartAngle", -90},
                           {"KnobStopAngle", 90},
                           {"KnobTimeout", timeout},
                           {"KnobMarkers", QStringLiteral("11")},
                           {"KnobMarkerColor", QColor(0, 0, 0)},
                           {"KnobValueFormat", QStringLiteral("0.0%")},
                           {"KnobValueQuantized", true}}};
}
