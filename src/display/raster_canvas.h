#pragma once

#include "display/canvas.h"
#include "display/pixel_map.h"
#include "display/raster.h"
#include "display/span_sink.h"
#include "display/text_masks.h"

#include <QFont>
#include <QImage>
#include <functional>

/// The canvas that draws straight into the rows of a 32-bit raster of its own. Lines are drawn with a square
/// pen and without antialiasing; texts are painted by the toolkit once and then copied.
class RasterCanvas : public Canvas {
  public:
    /// width, height: raster pixels, held within 1..Raster::kMaxSide. ratio: raster pixels to one of the
    /// face.
    RasterCanvas(int width, int height, double ratio = 1);
    RasterCanvas(const RasterCanvas&) = delete;
    RasterCanvas& operator=(const RasterCanvas&) = delete;

    /// A new empty raster that counts in pixels of the face. Pen and font stay.
    void Resize(int width, int height, double ratio);
    void SetFont(const QFont& font);
    void SetBackColor(Colour colour) { back_ = colour; }
    /// Called when a picture begins and when a text is printed on it: its owner then shows it anew.
    void OnTouch(std::function<void()> touched) { touched_ = std::move(touched); }

    int width() const { return raster_.width(); }
    int height() const { return raster_.height(); }
    /// The picture as it stands, not copied: valid until the next Resize.
    const QImage& Image() const { return raster_.Image(); }
    const PixelMap& Map() const { return map_; }

    void Clear() override;
    void SetDrawModeCopy() override {} // the only mode there is
    void SetDrawWidth(int pixels) override;
    void SetDrawStyle(PenStyle style) override { style_ = style; }
    void SetForeColor(Colour colour) override;

    void SetScale(double left, double top, double right, double bottom) override;
    void SetPixelScale() override;
    double ScaleWidth() const override { return map_.ScaleWidth(); }
    double ScaleHeight() const override { return map_.ScaleHeight(); }
    double PixelRatio() const override { return ratio_; }

    void Line(double x1, double y1, double x2, double y2) override;
    void LineTo(double x, double y) override;
    void LinesTo(const CanvasPoint* points, int count) override;
    void FillBox(double x1, double y1, double x2, double y2) override;
    void PSet(double x, double y) override;

    double CurrentX() const override { return current_.x; }
    double CurrentY() const override { return current_.y; }
    void SetCurrent(double x, double y) override { current_ = {x, y}; }
    void Print(const QString& text) override;
    double TextWidth(const QString& text) const override;
    double TextHeight(const QString& text) const override;
    double WidthToPixels(double width) const override;

  private:
    void SetFaceScale();
    bool MayShow(const PixelLine& line) const;
    void DrawSolid(const PixelLine& line);
    void DrawDotted(const PixelLine& line);
    void DrawDots(PixelPoint first, PixelPoint second, int count);
    void FillPixels(int left, int top, int right, int bottom);

    Raster raster_;
    SpanSink sink_;
    PixelMap map_;
    mutable TextMasks texts_;
    QFont font_;
    std::function<void()> touched_;
    double ratio_;
    CanvasPoint current_{};
    std::uint32_t pixel_ = 0xFFFFFFFF; ///< the pen's colour as the raster keeps it
    Colour back_ = 0;
    int drawWidth_ = 1;
    int pen_ = 1; ///< the pen's width in raster pixels
    PenStyle style_ = PenStyle::Solid;
};
