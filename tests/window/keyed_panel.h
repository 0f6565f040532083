#pragma once

#include "window/front_panel.h"
#include "window/real_keys.h"

/// The program on four simulated modules, worked with a real keyboard.
class KeyedPanel : public FrontPanel {
  protected:
    void Begin() {
        Start();
        ASSERT_TRUE(real_keys::GoTo(Face()));
    }
    Surface& Face() { return *instrument->forms.surface; }
    void PullOut(int slot) {
        QWidget* panel = instrument->forms.TabForm[slot];
        const int closed = panel->x();
        emit Tab<Picture>(slot, "Image1")->MouseDown(Qt::LeftButton, {});
        const int travel = Main<QWidget>("TabSliderAnchorImage")->width();
        ASSERT_TRUE(Until([&] { return record->TabOpen[slot] && panel->x() == closed + travel; }));
    }
};
