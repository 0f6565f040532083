#include "acquisition/colours.h"

#include "controls/colour.h"

#include <QLabel>
#include <QPalette>

namespace {

void SetRole(QLabel& label, QPalette::ColorRole role, Colour colour) {
    const QColor wanted = ToQColor(colour);
    if (label.palette().color(role) == wanted) {
        return;
    }
    QPalette palette = label.palette();
    palette.setColor(role, wanted);
    label.setPalette(palette);
}

} // namespace

void SetTextColour(QLabel& label, Colour colour) {
    SetRole(label, QPalette::WindowText, colour);
}

void SetBackColour(QLabel& label, Colour colour) {
    label.setAutoFillBackground(true);
    SetRole(label, QPalette::Window, colour);
}
