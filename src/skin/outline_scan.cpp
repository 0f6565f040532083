#include "skin/outline_scan.h"

#include "frame/log/debug_log.h"
#include "skin/dib_section.h"
#include "skin/region_bands.h"

#include <vector>

namespace {

std::uint32_t PixelAt(const std::uint8_t* row, int column) {
    const std::uint8_t* pixel = row + cDIBSection::kPixelBytes * column;
    return pixel[0] | static_cast<std::uint32_t>(pixel[1]) << 8 | static_cast<std::uint32_t>(pixel[2]) << 16;
}

int Columns(const cDIBSection& dib) {
    return dib.BytesPerScanLine() / cDIBSection::kPixelBytes;
}

std::uint32_t KeyOf(const cDIBSection& dib) {
    return PixelAt(dib.Bytes().ImageRow(0), Columns(dib) - 1);
}

/// The runs of one row that belong to the outline.
void SpansOf(const std::uint8_t* row, int width, int columns, std::uint32_t key, std::vector<Span>& spans) {
    spans.clear();
    int start = -1;
    for (int x = 0; x < columns; ++x) {
        // Behind the width the rectangle has ended, and a key pixel counts the other way round.
        const bool inside = (PixelAt(row, x) == key) == (x >= width);
        if (inside && start < 0) {
            start = x;
        } else if (!inside && start >= 0) {
            spans.push_back({start, x});
            start = -1;
        }
    }
    if (start >= 0) {
        spans.push_back({start, columns});
    }
}

QString Hex(std::uint32_t value, int digits) {
    return QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0')).toUpper();
}

void LogPicture(DebugLog& log, const cDIBSection& dib) {
    log.PrintLog(QStringLiteral("Here's the whole bitmap (BGRh)..."));
    QString line = QStringLiteral("X       ");
    for (int x = 0; x < Columns(dib); ++x) {
        line += QStringLiteral("(%1)").arg(Hex(static_cast<std::uint32_t>(x), 6));
    }
    log.PrintLog(line);
    for (int y = 0; y < dib.Height(); ++y) {
        line = QStringLiteral("Y:%1  ").arg(Hex(static_cast<std::uint32_t>(y), 4));
        const std::uint8_t* row = dib.Bytes().ImageRow(y);
        for (int x = 0; x < Columns(dib); ++x) {
            const std::uint8_t* pixel = row + cDIBSection::kPixelBytes * x;
            line += QStringLiteral("(%1%2%3)").arg(Hex(pixel[0], 2), Hex(pixel[1], 2), Hex(pixel[2], 2));
        }
        log.PrintLog(line);
    }
}

void LogRuns(DebugLog& log, const cDIBSection& dib) {
    const std::uint32_t key = KeyOf(dib);
    const int height = dib.Height();
    for (int x = 0; x < Columns(dib); ++x) {
        bool inRun = false;
        for (int y = 0; y < height; ++y) {
            const bool isKey = PixelAt(dib.Bytes().ImageRow(y), x) == key;
            if (isKey && !inRun) {
                log.PrintLog(QStringLiteral("Found start pixel at X:%1 Y:%2").arg(x).arg(y));
            } else if (!isKey && inRun) {
                log.PrintLog(QStringLiteral("Found stop  pixel at X:%1 Y:%2").arg(x).arg(y));
            }
            inRun = isKey;
        }
        if (inRun) {
            log.PrintLog(
                QStringLiteral("Found stop  pixel at X:%1 Y:%2 (at last Y step)").arg(x).arg(height));
        }
    }
}

} // namespace

QRegion OutlineOf(const cDIBSection& dib) {
    if (dib.DIBSectionBitsPtr() == nullptr) {
        return {};
    }
    const ByteView bytes = dib.Bytes();
    const std::uint32_t key = KeyOf(dib);
    RegionBands bands;
    std::vector<Span> spans;
    for (int y = 0; y < dib.Height(); ++y) {
        SpansOf(bytes.ImageRow(y), dib.Width(), Columns(dib), key, spans);
        bands.Add(y, y + 1, spans);
    }
    return bands.Region();
}

void LogOutlineScan(DebugLog& log, const cDIBSection& dib) {
    // The text of a whole picture is large: it is only made for a log that takes it.
    if (!log.Enabled() || dib.DIBSectionBitsPtr() == nullptr) {
        return;
    }
    log.PrintLog(QStringLiteral("About to scan the dib section..."));
    log.PrintLog(QStringLiteral("lWidth is %1").arg(Columns(dib)));
    log.PrintLog(QStringLiteral("lHeight is %1").arg(dib.Height()));
    LogPicture(log, dib);
    log.PrintLog(
        QStringLiteral("Here comes the region creation...(X from 0 to (lWidth-1), Y from 0 to (lHeight-1))"));
    LogRuns(log, dib);
}
