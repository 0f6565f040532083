#pragma once

#include "display/canvas.h"
#include "display/plain_map.h"

#include <QFont>
#include <QImage>
#include <vector>

/// The canvas on the plain road, a yardstick for the fast one: it walks along every line a pixel at a time
/// and sets the pixels of a square pen at each, and leaves texts to the toolkit.
class PlainCanvas : public Canvas {
  public:
    PlainCanvas(int width, int height, double ratio = 1);

    const QImage& Image() const { return image_; } ///< not to be copied before the last line is drawn

    void Clear() override;
    void SetDrawModeCopy() override {}
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
    void FillBox(double x1, double y1, double x2, double y2) override;
    void PSet(double x, double y) override;
    double CurrentX() const override { return current_.x; }
    double CurrentY() const override { return current_.y; }
    void SetCurrent(double x, double y) override { current_ = {x, y}; }
    void SetFont(const QFont& font);
    void Print(const QString& text) override;
    double TextWidth(const QString& text) const override;
    double TextHeight(const QString& text) const override;
    double WidthToPixels(double width) const override;

  private:
    /// What is painted at once: where it begins and how far it advances, raster pixels.
    struct Piece {
        QString text;
        double left;
        double width;
    };

    std::vector<Piece> Pieces(const QString& text) const;
    void PrintPiece(const Piece& piece, PixelPoint corner);
    void Stamp(int x, int y);
    void Walk(PixelPoint from, PixelPoint to);

    QImage image_;
    uchar* bits_; ///< of the image, which is not shared while anyone draws
    PlainMap map_;
    double ratio_;
    int pen_ = 1;
    PenStyle style_ = PenStyle::Solid;
    QRgb colour_ = 0xFFFFFFFF;
    QFont font_;
    CanvasPoint current_{};
};
