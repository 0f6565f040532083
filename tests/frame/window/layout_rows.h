#pragma once

#include "controls/panel_design.h"
#include "frame/window/all_forms.h"

#include <string>

inline QString Name(const ControlDesign& row) {
    return ControlName(row.name, row.index);
}
inline const ControlDesign* Find(const FormDesign& form, const QString& name) {
    for (const ControlDesign& row : form.controls) {
        if (Name(row) == name) {
            return &row;
        }
    }
    return nullptr;
}

inline std::string Where(const FormDesign& form, const ControlDesign& row) {
    return (form.name + "." + Name(row)).toStdString();
}

inline bool IsPanel(const FormDesign& form) {
    return form.name.startsWith("Corvantine_Tab");
}
