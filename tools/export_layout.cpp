// Prints the places of the main form's controls: export_layout > skins/layout.json
#include "frame/window/main_form_design.h"
#include "layout_json.h"

#include <cstdio>

int main() {
    const QByteArray text = LayoutJson(MainFormDesign());
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    return 0;
}
