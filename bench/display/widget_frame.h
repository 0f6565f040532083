#pragma once

#include "frame/record/record.h"

#include <QSize>
#include <memory>

class QCustomPlot;

/// The same picture by a plotting widget of the toolkit's world, set up as fast as it goes: adaptive
/// sampling, fast polylines, no antialiasing, no labels at the axes.
class WidgetFrame {
  public:
    WidgetFrame(const Record& record, QSize size);
    ~WidgetFrame();
    /// One frame into the widget's own raster.
    void Draw();

  private:
    void AddTraces(const Record& record);
    void AddGrid();
    void AddMarkers(const Record& record);
    void AddLine(double x1, double y1, double x2, double y2);

    std::unique_ptr<QCustomPlot> plot_;
};
