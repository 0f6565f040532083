#include "skin/dib_section.h"

#include "skin/trace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <new>
#include <random>

namespace {

constexpr quintptr kScreenBitmap = 1; ///< what a fresh context holds before a picture is selected

/// Handles name pictures in the log; nothing is looked up by them.
quintptr NewHandle() {
    static std::atomic<quintptr> last{kScreenBitmap};
    return ++last;
}

QPainter::CompositionMode ModeOf(RasterOp op) {
    switch (op) {
    case RasterOp::SourcePaint:
        return QPainter::RasterOp_SourceOrDestination;
    case RasterOp::SourceAnd:
        return QPainter::RasterOp_SourceAndDestination;
    case RasterOp::SourceInvert:
        return QPainter::RasterOp_SourceXorDestination;
    case RasterOp::NotSourceCopy:
        return QPainter::RasterOp_NotSource;
    case RasterOp::SourceCopy:
        break;
    }
    return QPainter::CompositionMode_Source;
}

/// The asked part of a picture, or as much of it as there is.
QRect PartOf(const QSize& picture, const QRect& asked) {
    return asked & QRect(QPoint(0, 0), picture);
}

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::nearbyint(value), 0.0, 255.0));
}

} // namespace

cDIBSection::cDIBSection(DebugLog& log, ShowMessage message) : log_(log), message_(std::move(message)) {}

cDIBSection::~cDIBSection() {
    ClearUp();
}

bool cDIBSection::CopyToClipboard(bool asDIB) {
    Trace trace(log_, QStringLiteral("cDIBSection.CopyToClipboard"),
                QStringLiteral("bAsDIB: ") + Trace::Text(asDIB));
    if (asDIB) {
        if (message_) {
            message_(QStringLiteral("I don't know how to put a DIB on the clipboard! "
                                    "Copy as bitmap instead!!!"));
        }
        return trace.Returning(false);
    }
    QClipboard* clipboard = qGuiApp == nullptr ? nullptr : QGuiApplication::clipboard();
    if (bits_ == nullptr || clipboard == nullptr) {
        return trace.Returning(false);
    }
    clipboard->setImage(Image());
    const bool taken = clipboard->mimeData() != nullptr && clipboard->mimeData()->hasImage();
    TraceCall(log_, QStringLiteral("cDIBSection.GDI.SetClipboardData"), Trace::Text(taken));
    return trace.Returning(taken);
}

bool cDIBSection::CreateDIB(quintptr lhDC, int lWidth, int lHeight, quintptr& hDib) {
    Trace trace(
        log_, QStringLiteral("cDIBSection.CreateDIB"),
        QStringLiteral("lhDC: %1, lWidth: %2, lHeight: %3").arg(HandleText(lhDC)).arg(lWidth).arg(lHeight));
    hDib = 0;
    // The bound on the sides comes first: it keeps the row length within an int.
    const bool sound = lWidth > 0 && lHeight > 0 && lWidth <= kMostBytes / kPixelBytes - 1;
    const std::int64_t size = sound ? std::int64_t{RowBytes(lWidth)} * lHeight : 0;
    if (sound && size <= kMostBytes) {
        bits_.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>(size)]());
    } else {
        bits_.reset();
    }
    header_ = {};
    if (bits_ != nullptr) {
        header_.biWidth = lWidth;
        header_.biHeight = lHeight;
        header_.biSizeImage = static_cast<std::uint32_t>(size);
        hDib = NewHandle();
    }
    TraceCall(log_, QStringLiteral("cDIBSection.GDI.CreateDIBSection"),
              QStringLiteral("hDib: ") + HandleText(hDib));
    return trace.Returning(hDib != 0);
}

bool cDIBSection::CreateFromPictureStretchBlt(const QImage& picThis, int form_width, int form_height) {
    Trace trace(log_, QStringLiteral("cDIBSection.CreateFromPictureStretchBlt"),
                QStringLiteral("form_width: %1, form_height: %2").arg(form_width).arg(form_height));
    if (picThis.isNull() || !Create(form_width, form_height)) {
        return trace.Returning(false);
    }
    LoadPictureStretchBlt(picThis, 0, 0, picThis.width(), picThis.height(), form_width, form_height);
    return trace.Returning(true);
}

bool cDIBSection::CreateFromPicture(const QImage& picThis) {
    if (picThis.isNull() || !Create(picThis.width(), picThis.height())) {
        return false;
    }
    LoadPictureBlt(picThis);
    return true;
}

bool cDIBSection::Create(int lWidth, int lHeight) {
    Trace trace(log_, QStringLiteral("cDIBSection.Create"),
                QStringLiteral("lWidth: %1, lHeight: %2").arg(lWidth).arg(lHeight));
    ClearUp();
    hdc_ = NewHandle();
    TraceCall(log_, QStringLiteral("cDIBSection.GDI.CreateCompatibleDC"),
              QStringLiteral("hDC: ") + HandleText(hdc_));
    if (!CreateDIB(hdc_, lWidth, lHeight, hDib_)) {
        TraceCall(log_, QStringLiteral("cDIBSection.GDI.DeleteDC"));
        hdc_ = 0;
        return trace.Returning(false);
    }
    hBmpOld_ = kScreenBitmap;
    TraceCall(log_, QStringLiteral("cDIBSection.GDI.SelectObject"),
              QStringLiteral("hBmpOld: ") + HandleText(hBmpOld_));
    return trace.Returning(true);
}

void cDIBSection::LoadPictureBlt(const QImage& source, int lSrcLeft, int lSrcTop, int lSrcWidth,
                                 int lSrcHeight, RasterOp eRop) {
    const int width = lSrcWidth < 0 ? Width() : lSrcWidth;
    const int height = lSrcHeight < 0 ? Height() : lSrcHeight;
    const QRect asked(lSrcLeft, lSrcTop, std::min(width, Width()), std::min(height, Height()));
    const QRect part = PartOf(source.size(), asked);
    if (bits_ == nullptr || part.isEmpty()) {
        return;
    }
    QImage result = Image();
    QPainter painter(&result);
    painter.setCompositionMode(ModeOf(eRop));
    painter.drawImage(part.topLeft() - asked.topLeft(), source.convertToFormat(QImage::Format_RGB32), part);
    painter.end();
    Put(result);
}

void cDIBSection::LoadPictureStretchBlt(const QImage& source, int lSrcLeft, int lSrcTop, int lSrcWidth,
                                        int lSrcHeight, int lDestWidth, int lDestHeight, RasterOp eRop) {
    Trace trace(log_, QStringLiteral("cDIBSection.LoadPictureStretchBlt"),
                QStringLiteral("lSrcLeft: %1, lSrcTop: %2, lSrcWidth: %3, lSrcHeight: %4, lDestWidth: %5, "
                               "lDestHeight: %6")
                    .arg(lSrcLeft)
                    .arg(lSrcTop)
                    .arg(lSrcWidth)
                    .arg(lSrcHeight)
                    .arg(lDestWidth)
                    .arg(lDestHeight));
    const QRect part = PartOf(source.size(), {lSrcLeft, lSrcTop, lSrcWidth < 0 ? Width() : lSrcWidth,
                                              lSrcHeight < 0 ? Height() : lSrcHeight});
    // A stretch beyond the largest picture would only cost memory.
    const bool sound = lDestWidth > 0 && lDestHeight > 0 &&
                       std::int64_t{lDestWidth} * lDestHeight <= kMostBytes / kPixelBytes;
    if (bits_ == nullptr || part.isEmpty() || !sound) {
        return;
    }
    const QImage stretched =
        source.copy(part)
            .convertToFormat(QImage::Format_RGB32)
            .scaled(lDestWidth, lDestHeight, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    TraceCall(log_, QStringLiteral("cDIBSection.GDI.StretchBlt"));
    LoadPictureBlt(stretched, 0, 0, lDestWidth, lDestHeight, eRop);
}

void cDIBSection::PaintPicture(QPainter& target, int lDestLeft, int lDestTop, int lDestWidth, int lDestHeight,
                               int lSrcLeft, int lSrcTop, RasterOp eRop) const {
    const QRect asked(lSrcLeft, lSrcTop, lDestWidth < 0 ? Width() : lDestWidth,
                      lDestHeight < 0 ? Height() : lDestHeight);
    const QRect part = PartOf({Width(), Height()}, asked);
    if (bits_ == nullptr || part.isEmpty()) {
        return;
    }
    target.save();
    target.setCompositionMode(ModeOf(eRop));
    target.drawImage(QPoint(lDestLeft, lDestTop) + part.topLeft() - asked.topLeft(), Image(), part);
    target.restore();
}

void cDIBSection::RandomiseBits(bool grey) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    std::minstd_rand generator(static_cast<std::uint_fast32_t>(now));
    std::uniform_real_distribution<float> draw(0.0F, 1.0F);
    RandomiseBits(grey, [&] { return draw(generator); });
}

void cDIBSection::RandomiseBits(bool grey, const Random& rnd) {
    Trace trace(log_, QStringLiteral("cDIBSection.RandomiseBits"),
                QStringLiteral("bGray: ") + Trace::Text(grey));
    auto noise = [&] { return ToByte(rnd() * 255.0F); };
    if (grey) {
        for (int row = 0; row < Height(); ++row) {
            for (int x = 0; x < Width(); ++x) {
                std::fill_n(Row(row) + kPixelBytes * x, kPixelBytes, noise());
            }
        }
        return;
    }
    for (int x = 0; x < Width(); ++x) {
        for (int row = 0; row < Height(); ++row) {
            std::uint8_t* pixel = Row(row) + kPixelBytes * x;
            pixel[0] = 0;
            pixel[1] = noise();
            pixel[2] = noise();
        }
    }
}

void cDIBSection::ClearUp() {
    Trace trace(log_, QStringLiteral("cDIBSection.ClearUp"));
    if (hdc_ != 0) {
        if (hDib_ != 0) {
            TraceCall(log_, QStringLiteral("cDIBSection.GDI.SelectObject"));
            TraceCall(log_, QStringLiteral("cDIBSection.GDI.DeleteObject"));
        }
        TraceCall(log_, QStringLiteral("cDIBSection.GDI.DeleteDC"));
    }
    hdc_ = 0;
    hDib_ = 0;
    hBmpOld_ = 0;
    bits_.reset();
    header_ = {};
}

std::unique_ptr<cDIBSection> cDIBSection::Resample(int lNewHeight, int lNewWidth) const {
    Trace trace(log_, QStringLiteral("cDIBSection.Resample"),
                QStringLiteral("lNewHeight: %1, lNewWidth: %2").arg(lNewHeight).arg(lNewWidth));
    auto result = std::make_unique<cDIBSection>(log_, message_);
    if (bits_ == nullptr || !result->Create(lNewWidth, lNewHeight)) {
        return nullptr;
    }
    if (lNewWidth == Width() && lNewHeight == Height()) {
        std::copy_n(bits_.get(), header_.biSizeImage, result->bits_.get());
        return result;
    }
    const ByteView from = Bytes();
    const double scaleX = double(Width() - 1) / lNewWidth;
    const double scaleY = double(Height() - 1) / lNewHeight;
    for (int r = 0; r < lNewHeight; ++r) {
        const double y = r * scaleY;
        const int y0 = static_cast<int>(y);
        const double fy = y - y0;
        const std::uint8_t* low = from.Row(y0);
        // A picture of one row has no neighbour above, and its weight is 0.
        const std::uint8_t* high = from.Row(std::min(y0 + 1, Height() - 1));
        std::uint8_t* out = result->Row(r);
        for (int c = 0; c < lNewWidth; ++c) {
            const double x = c * scaleX;
            const int x0 = static_cast<int>(x);
            const double fx = x - x0;
            const int left = kPixelBytes * x0;
            const int right = kPixelBytes * std::min(x0 + 1, Width() - 1);
            for (int channel = 0; channel < kPixelBytes; ++channel) {
                const double lower = (1 - fx) * low[left + channel] + fx * low[right + channel];
                const double upper = (1 - fx) * high[left + channel] + fx * high[right + channel];
                *out++ = ToByte((1 - fy) * lower + fy * upper);
            }
        }
    }
    return result;
}

Colour cDIBSection::Pixel(int x, int y) const {
    if (bits_ == nullptr) {
        return 0;
    }
    const std::uint8_t* pixel =
        Bytes().ImageRow(std::clamp(y, 0, Height() - 1)) + kPixelBytes * std::clamp(x, 0, Width() - 1);
    return static_cast<Colour>(pixel[2]) | static_cast<Colour>(pixel[1]) << 8 |
           static_cast<Colour>(pixel[0]) << 16;
}

QImage cDIBSection::Image() const {
    if (bits_ == nullptr) {
        return {};
    }
    const QImage view(bits_.get(), Width(), Height(), BytesPerScanLine(), QImage::Format_BGR888);
    return view.mirrored(false, true).convertToFormat(QImage::Format_RGB32);
}

void cDIBSection::Put(const QImage& image) {
    const QImage rows = image.convertToFormat(QImage::Format_BGR888);
    for (int y = 0; y < Height(); ++y) {
        std::copy_n(rows.constScanLine(y), kPixelBytes * Width(), Row(Height() - 1 - y));
    }
}
