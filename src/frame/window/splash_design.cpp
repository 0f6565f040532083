#include "frame/window/splash_design.h"

namespace {

ControlDesign Line(int index, QRect place, const QString& caption, Colour fore, FontDesign font) {
    return {.kind = ControlKind::Label,
            .name = "Label1",
            .index = index,
            .place = place,
            .caption = caption,
            .fore = fore,
            .font = font,
            .properties = {{"alignment", int(Qt::AlignLeft | Qt::AlignVCenter)}}};
}

} // namespace

const FormDesign& SplashDesign() {
    static const FormDesign design{
        .name = "Corvantine_SplashForm",
        .caption = "Corvantine",
        .size = {400, 208},
        .back = 0x302820,
        .ground = "splash",
        .font = kFaceFont,
        .controls = {
            Line(0, {24, 24, 260, 40}, "Corvantine", 0xFFFFFF, {"Arial", 24, true}),
            Line(5, {300, 36, 76, 20}, "Ver", 0xC0C0C0, {"Arial", 8.25}),
            Line(1, {24, 84, 352, 20}, "loading...", 0xFFFFFF, {"Arial", 9.75, true}),
            Line(2, {24, 112, 352, 18}, "please wait", 0xE0E0E0, {"Arial", 8.25}),
            Line(3, {24, 134, 352, 18}, "...", 0xE0E0E0, {"Arial", 8.25}),
            Line(4, {24, 168, 352, 18}, "Detected O.S.:", 0xA0A0A0, {"Arial", 8.25}),
        }};
    return design;
}
