#pragma once

#include "display/draw_plot.h"
#include "display/plot_scene.h"
#include "display/recording_canvas.h"
#include "frame/record/record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using Calls = std::vector<std::string>;

inline constexpr double kPixelX = 2999.0 / kPlotWidth;

inline std::string Call(const char* name, std::initializer_list<double> figures) {
    std::string text = std::string(name) + "(";
    const char* separator = "";
    for (double figure : figures) {
        text += separator + Figure(figure);
        separator = ", ";
    }
    return text + ")";
}

inline std::string Scale(double left, double top, double right, double bottom) {
    return Call("SetScale", {left, top, right, bottom});
}

inline const std::string kNormal = Scale(0, 126, 2999 + kPixelX, -127);
inline const std::string kUpsideDown = Scale(0, -127, 2999 + kPixelX, 126);
inline const std::string kWhite = "SetForeColor(0xFFFFFF)";

class DrawPlotTest : public testing::Test {
  protected:
    void Draw() { DrawPlot(scene.Time(), canvas, &companions); }
    void DrawSpectrum() { DrawPlot(scene.Spectrum(), canvas, nullptr); }

    PlotScene scene;
    RecordingCanvas canvas{kPlotWidth, kPlotHeight};
    RecordingCompanions companions{canvas};
};
