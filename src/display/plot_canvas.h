#pragma once

#include "controls/form.h"
#include "display/raster_canvas.h"

#include <QFrame>
#include <QImage>
#include <QWidget>

/// A letter over the picture of a plot. No widget: up to six of them would double what a paint costs.
struct GroundLabel {
    bool visible = false;
    QPoint place; ///< top left corner in the canvas
    QString caption;
    Colour colour = kNoColour;
    QImage ink; ///< as it is painted; null until it is
};

/// The widget of a plot: it owns a raster in device pixels and shows it, with the ground labels
/// ChGroundLabel(1..6) and the line TriggerLine above it, which only a time display moves.
class PlotCanvas : public QWidget, public PlotCompanions {
    Q_OBJECT
  public:
    explicit PlotCanvas(QWidget* parent = nullptr);

    Canvas& Surface() { return raster_; }
    /// A copy of the finished picture in device pixels, without labels and line.
    QImage Image() const { return raster_.Image().copy(); }

    // Text over the finished picture, until the next plot.
    double CurrentX() const { return raster_.CurrentX(); }
    double CurrentY() const { return raster_.CurrentY(); }
    void SetCurrent(double x, double y) { raster_.SetCurrent(x, y); }
    void Print(const QString& text) { raster_.Print(text); }

    /// A position of the widget in the user scale of the last plot, and back.
    QPointF ToUser(QPointF position) const;
    QPointF FromUser(QPointF position) const;

    const GroundLabel& ChGroundLabel(int channel) const { return labels_[channel]; }
    QSize LabelSize() const { return labelSize_; } ///< the same for each

    void GroundLabelLeft(int channel, double x) override;
    void GroundLabelVisible(int channel, bool visible) override;
    void GroundLabelCaption(int channel, QStringView caption) override;
    void GroundLabelTop(int channel, double y) override;
    double GroundLabelHeight(int channel) const override;
    void GroundLabelColour(int channel, Colour colour) override;
    void TriggerLine(double x1, double y1, double x2, double y2) override;

  signals:
    /// Positions in the user scale.
    void Pressed(Qt::MouseButton button, double x, double y);
    void Moved(Qt::MouseButtons buttons, double x, double y);
    void DoubleClicked(double x, double y);
    /// The raster is new and empty: its size or the screen's scale changed. Never from a paint event.
    void Resized();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void FitRaster();
    void FitLabels();
    void ForgetInk();
    void PaintLabels(QPainter& painter);
    QImage InkOf(const GroundLabel& label) const;
    QRect LabelRect(int channel) const { return {labels_[channel].place, labelSize_}; }
    template <class Change> void ChangeLabel(int channel, Change change);

    RasterCanvas raster_;
    bool fitPending_ = false;
    PerChannel<GroundLabel> labels_;
    QSize labelSize_;
    int labelAscent_ = 0;
    QFrame* TriggerLine_;
};

/// Builds the canvas rows of a form's table.
extern const Form::CanvasMaker kPlotCanvas;
