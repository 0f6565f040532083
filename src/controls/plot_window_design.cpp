#include "controls/plot_window_design.h"

namespace {
constexpr Colour kWindowBack = 0x202020;
constexpr Colour kWindowText = 0xE0E0E0;
} // namespace

FormDesign PlotWindowForm(const QString& name, const QString& caption, QSize size) {
    return {.name = name, .caption = caption, .size = size, .back = kWindowBack, .font = kFaceFont};
}

ControlDesign PlotWindowCanvas(QRect place, const QString& tip) {
    return {.kind = ControlKind::Canvas, .name = "Canvas", .place = place, .tip = tip, .back = 0x000000};
}

ControlDesign PlotWindowLabel(const char* name, QRect place, const QString& caption, const QString& tip) {
    return {.kind = ControlKind::Label,
            .name = name,
            .place = place,
            .caption = caption,
            .tip = tip,
            .fore = kWindowText,
            .properties = {{"alignment", int(Qt::AlignLeft | Qt::AlignVCenter)}}};
}

ControlDesign PlotWindowClipboard(int top) {
    return {.kind = ControlKind::Button,
            .name = "ClipboardButton",
            .place = {0, top, 72, 2 * kPlotWindowLine},
            .caption = "clipboard",
            .tip = "Copy this window to the clipboard to allow pasting into reports or for printing",
            .fill = 0x808080,
            .back = kWindowBack,
            .fore = 0xFFFFFF,
            .font = kPanelButtonFont,
            .properties = {{"ButtonDepth", 1}}};
}

void AddIdentFrame(FormDesign& form, const QString& tip, int lines) {
    constexpr int kKeys = 6;
    constexpr int kWidth = 26;
    const int height = lines * kPlotWindowLine;
    const QSize size{kKeys * kWidth + 8, height};
    form.controls.push_back(
        {.kind = ControlKind::Frame,
         .name = "IdentFrame",
         .place = {QPoint(form.size.width() - size.width(), form.size.height() - size.height()), size},
         .tip = tip,
         .back = 0x000000});
    for (int i = 0; i < kKeys; ++i) {
        const QString caption = i < 4 ? QStringLiteral("%1").arg(i + 1) : QStringLiteral("M%1").arg(i - 3);
        form.controls.push_back({.kind = ControlKind::Label,
                                 .name = "Ch",
                                 .index = i + 1,
                                 .place = {4 + i * kWidth, 0, kWidth, height},
                                 .caption = caption,
                                 .tip = tip,
                                 .fore = kWindowText,
                                 .font = {"Arial", 8.25, true},
                                 .properties = {{"alignment", int(Qt::AlignCenter)}},
                                 .parent = "IdentFrame"});
    }
}
