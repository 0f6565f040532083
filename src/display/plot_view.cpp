#include "display/plot_view.h"

#include <algorithm>
#include <cmath>

bool PlotView::Usable() const {
    return std::isfinite(ViewXMin) && std::isfinite(ViewXMax) && std::isfinite(ViewYMin) &&
           std::isfinite(ViewYMax) && std::isfinite(UnitsPerPixelX) && std::isfinite(UnitsPerPixelY);
}

PlotView MakePlotView(double width, double height, const PlotAxis& horizontal, const PlotAxis& vertical) {
    const double spanX = horizontal.max - horizontal.min;
    const double spanY = vertical.max - vertical.min;
    PlotView view;
    view.UnitsPerPixelX = spanX / (width * horizontal.zoom);
    view.UnitsPerPixelY = spanY / (height * vertical.zoom);
    view.ViewXMin = (spanX - width * view.UnitsPerPixelX) * horizontal.pan + horizontal.min;
    view.ViewXMax = width * view.UnitsPerPixelX + view.ViewXMin;
    const double centre = (spanY - height * view.UnitsPerPixelY) * vertical.pan;
    view.ViewYMin = centre - height * view.UnitsPerPixelY * 0.5;
    view.ViewYMax = centre + height * view.UnitsPerPixelY * 0.5;
    return view;
}

SampleSpan VisibleSamples(double viewMin, double viewMax, int min, int max) {
    const double left = std::floor(viewMin);
    const double right = std::floor(viewMax);
    const double first = min < left ? left - 1 : min;
    const double last = right < max ? right + 1 : max;
    const auto inside = [&](double index) {
        return static_cast<int>(std::clamp<double>(index, min, std::max(min, max)));
    };
    return {inside(first), inside(last)};
}
