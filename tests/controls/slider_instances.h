#pragma once

#include "controls/colour.h"

#include <QSize>
#include <array>

/// A slider of the forms, as designed.
struct SliderInstance {
    const char* name;
    QSize size;
    Colour fill;
    float value;
    float step;
};

inline constexpr std::array<SliderInstance, 4> kSliderInstances{{
    {"HorizPanSlider", {357, 17}, 0x707070, 0, 0.0001F},
    {"VertPanSlider", {17, 239}, 0x707070, 0.5F, 0.01F},
    {"PretriggerSlider", {357, 15}, 0x0000FF, 0.5F, 0.0001F},
    {"UpdateRateSlider", {13, 85}, 0xC0C0C0, 0.5F, 0.05F},
}};
