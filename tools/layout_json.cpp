#include "layout_json.h"

namespace {

const char* KindName(ControlKind kind) {
    switch (kind) {
    case ControlKind::Knob:
        return "knob";
    case ControlKind::Button:
        return "button";
    case ControlKind::Slider:
        return "slider";
    case ControlKind::HyperLink:
        return "link";
    case ControlKind::Label:
    case ControlKind::RotatedLabel:
        return "label";
    case ControlKind::Picture:
        return "picture";
    case ControlKind::Line:
        return "line";
    case ControlKind::CheckBox:
        return "check";
    case ControlKind::OptionButton:
        return "option";
    case ControlKind::ComboBox:
        return "combo";
    case ControlKind::ListBox:
        return "list";
    case ControlKind::TextBox:
        return "text";
    case ControlKind::Frame:
        return "frame";
    case ControlKind::Canvas:
        return "canvas";
    }
    return "";
}

} // namespace

QByteArray LayoutJson(const FormDesign& form) {
    QString text = QStringLiteral("{\n  \"form\": \"%1\",\n  \"size\": [%2, %3],\n  \"controls\": {\n")
                       .arg(form.name)
                       .arg(form.size.width())
                       .arg(form.size.height());
    bool first = true;
    for (const ControlDesign& row : form.controls) {
        if (row.parent != nullptr) {
            continue; // stands in a coordinate system of its own
        }
        text += QStringLiteral("%1    \"%2\": {\"kind\": \"%3\", \"place\": [%4, %5, %6, %7]}")
                    .arg(first ? QString() : QStringLiteral(",\n"), ControlName(row.name, row.index),
                         QLatin1String(KindName(row.kind)))
                    .arg(row.place.x())
                    .arg(row.place.y())
                    .arg(row.place.width())
                    .arg(row.place.height());
        first = false;
    }
    return (text + QStringLiteral("\n  }\n}\n")).toUtf8();
}
