#pragma once

#include "display/canvas.h"

#include <string>
#include <vector>

/// The pixels of a usual canvas in the tests: at this height and zoom 1 one is a step.
inline constexpr int kPlotWidth = 600;
inline constexpr int kPlotHeight = 252;

/// A canvas that draws nothing and tells what it was asked. A text is 6 pixels a character wide and 10 high.
class RecordingCanvas : public Canvas {
  public:
    static constexpr double kCharacter = 6;
    static constexpr double kTextLine = 10;

    RecordingCanvas(int width, int height, double ratio = 1);

    std::vector<std::string> calls; ///< such as "Line(0, 126, 2999, 126)"
    /// Calls whose name is one of these, in order.
    std::vector<std::string> CallsOf(const std::vector<std::string>& names) const;
    /// The calls between the first one that begins with from and the next that begins with to, without both.
    std::vector<std::string> Between(const std::string& from, const std::string& to) const;
    int Count(const std::string& call) const;
    void Note(const std::string& call) { calls.push_back(call); }
    /// As when a window is resized: pixel scale again.
    void Resize(int width, int height);

    void Clear() override;
    void SetDrawModeCopy() override;
    void SetDrawWidth(int pixels) override;
    void SetDrawStyle(PenStyle style) override;
    void SetForeColor(Colour colour) override;
    void SetScale(double left, double top, double right, double bottom) override;
    void SetPixelScale() override;
    double ScaleWidth() const override { return right_ - left_; }
    double ScaleHeight() const override { return bottom_ - top_; }
    double PixelRatio() const override { return ratio_; }
    void Line(double x1, double y1, double x2, double y2) override;
    void LineTo(double x, double y) override;
    void FillBox(double x1, double y1, double x2, double y2) override;
    void PSet(double x, double y) override;
    double CurrentX() const override { return current_.x; }
    double CurrentY() const override { return current_.y; }
    void SetCurrent(double x, double y) override;
    void Print(const QString& text) override;
    double TextWidth(const QString& text) const override;
    double TextHeight(const QString& text) const override;
    double WidthToPixels(double width) const override;

  private:
    template <class... Args> void Call(const char* name, Args... args);

    int width_;
    int height_;
    double ratio_;
    double left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
    CanvasPoint current_{};
};

/// A number as it stands in a recorded call.
std::string Figure(double value);

/// Companions that note each call in the record of their canvas. Labels are labelHeight units high.
class RecordingCompanions : public PlotCompanions {
  public:
    explicit RecordingCompanions(RecordingCanvas& canvas) : canvas_(canvas) {}

    double labelHeight = 8;

    void GroundLabelLeft(int channel, double x) override;
    void GroundLabelVisible(int channel, bool visible) override;
    void GroundLabelCaption(int channel, QStringView caption) override;
    void GroundLabelTop(int channel, double y) override;
    double GroundLabelHeight(int) const override { return labelHeight; }
    void GroundLabelColour(int channel, Colour colour) override;
    void TriggerLine(double x1, double y1, double x2, double y2) override;

  private:
    RecordingCanvas& canvas_;
};
