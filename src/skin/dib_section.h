#pragma once

#include "frame/record/colour.h"

#include <QImage>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

class DebugLog;
class QPainter;

/// The published bitmap header, its fields in their order.
struct BitmapInfoHeader {
    std::uint32_t biSize = 40;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0;
    std::uint16_t biPlanes = 1;
    std::uint16_t biBitCount = 24;
    std::uint32_t biCompression = 0;
    std::uint32_t biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;
};
static_assert(sizeof(BitmapInfoHeader) == 40, "biSize tells it");

/// How a blit combines what it brings with what is there; the values are the published codes.
enum class RasterOp : std::uint32_t {
    SourceCopy = 0xCC0020,
    SourcePaint = 0xEE0086,
    SourceAnd = 0x8800C6,
    SourceInvert = 0x660046,
    NotSourceCopy = 0x330008,
};

/// The bytes of a picture as rows in memory, the bottom row of the picture first.
class ByteView {
  public:
    ByteView(const std::uint8_t* bytes, int rows, int rowBytes)
        : bytes_(bytes), rows_(rows), rowBytes_(rowBytes) {}
    std::uint8_t operator()(int row, int byte) const { return Row(row)[byte]; }
    const std::uint8_t* Row(int row) const { return bytes_ + std::ptrdiff_t(row) * rowBytes_; }
    /// Row y of the picture, counted from its top.
    const std::uint8_t* ImageRow(int y) const { return Row(rows_ - 1 - y); }
    int Rows() const { return rows_; }
    int RowBytes() const { return rowBytes_; }

  private:
    const std::uint8_t* bytes_;
    int rows_;
    int rowBytes_;
};

/// An off-screen 24-bit picture whose bytes the program reads and writes: bottom row first, each pixel
/// blue, green, red, each row padded to a multiple of four bytes. An image in memory stands where a
/// drawing context would stand. Operations that need memory return False without it and leave no picture.
class cDIBSection {
  public:
    using ShowMessage = std::function<void(const QString& text)>;
    using Random = std::function<float()>; ///< 0 <= value < 1

    static constexpr int kPixelBytes = 3;

    /// No picture takes more; a larger request fails as if the memory were not there.
    static constexpr std::int64_t kMostBytes = std::int64_t{64} * 1024 * 1024;

    explicit cDIBSection(DebugLog& log, ShowMessage message = {});
    ~cDIBSection();
    cDIBSection(const cDIBSection&) = delete;
    cDIBSection& operator=(const cDIBSection&) = delete;

    /// The picture to the clipboard as a bitmap. As a device independent bitmap it only shows a message.
    bool CopyToClipboard(bool asDIB = false);
    bool CreateDIB(quintptr lhDC, int lWidth, int lHeight, quintptr& hDib);
    bool CreateFromPictureStretchBlt(const QImage& picThis, int form_width, int form_height);
    bool CreateFromPicture(const QImage& picThis);
    bool Create(int lWidth, int lHeight);

    int BytesPerScanLine() const { return RowBytes(header_.biWidth); }
    int Width() const { return header_.biWidth; }
    int Height() const { return header_.biHeight; }
    const BitmapInfoHeader& Header() const { return header_; }

    /// Copies from a picture to this one's origin. A negative size means the whole of this picture; what
    /// lies outside either of them is left alone.
    void LoadPictureBlt(const QImage& source, int lSrcLeft = 0, int lSrcTop = 0, int lSrcWidth = -1,
                        int lSrcHeight = -1, RasterOp eRop = RasterOp::SourceCopy);
    /// Stretches the part of a picture to this one's origin, nearest pixel, so that no new colour arises.
    void LoadPictureStretchBlt(const QImage& source, int lSrcLeft, int lSrcTop, int lSrcWidth, int lSrcHeight,
                               int lDestWidth, int lDestHeight, RasterOp eRop = RasterOp::SourceCopy);
    void PaintPicture(QPainter& target, int lDestLeft = 0, int lDestTop = 0, int lDestWidth = -1,
                      int lDestHeight = -1, int lSrcLeft = 0, int lSrcTop = 0,
                      RasterOp eRop = RasterOp::SourceCopy) const;

    quintptr hdc() const { return hdc_; }
    quintptr hDib() const { return hDib_; }
    std::uint8_t* DIBSectionBitsPtr() { return bits_.get(); }
    const std::uint8_t* DIBSectionBitsPtr() const { return bits_.get(); }
    ByteView Bytes() const { return {bits_.get(), header_.biHeight, BytesPerScanLine()}; }

    /// Fills the picture with noise. The first form seeds a generator from the clock.
    void RandomiseBits(bool grey = false);
    void RandomiseBits(bool grey, const Random& rnd);
    void ClearUp();
    /// A new picture of that size, bilinear; the height comes first. Null when there is no memory for it.
    std::unique_ptr<cDIBSection> Resample(int lNewHeight, int lNewWidth) const;

    /// The colour at a place counted from the top left; a place outside takes the nearest pixel inside.
    /// 0 without a picture.
    Colour Pixel(int x, int y) const;
    /// A copy of the picture, top row first.
    QImage Image() const;

    static int RowBytes(int width) { return ((width + 1) * 3) & ~3; }

  private:
    void Put(const QImage& image);
    std::uint8_t* Row(int row) { return bits_.get() + std::ptrdiff_t(row) * BytesPerScanLine(); }

    DebugLog& log_;
    ShowMessage message_;
    quintptr hDib_ = 0;
    quintptr hBmpOld_ = 0;
    quintptr hdc_ = 0;
    std::unique_ptr<std::uint8_t[]> bits_;
    BitmapInfoHeader header_;
};
