#include "export/data_file.h"

#include "controls/number_format.h"
#include "export/file_text.h"

#include <QDateTime>
#include <QLocale>

namespace {

constexpr int kVoltsDecimals = 4;
constexpr int kDecibelsDecimals = 1;
constexpr std::size_t kBytesPerValue = 10; ///< "-12.3456" and the end of the line
constexpr std::size_t kBytesOfFacts = 400;
constexpr float kDivisions = 10;

// The spectrum's plot: 120 units are an amplitude of one, 0.5 is full scale, and full scale is 128 steps.
constexpr float kDecibelsZero = 24; ///< the plot unit of 0 dB
constexpr double kLinearZero = 30;  ///< plot units under the middle, where 0 V lies
constexpr double kLinearUnits = 120;
constexpr double kFullScale = 0.5;
constexpr double kFullScaleSteps = 128;
constexpr double kNyquistBin = 1024;

std::size_t Expected(const Column& column) {
    return static_cast<std::size_t>(column.count) * kBytesPerValue + kBytesOfFacts;
}

template <class Value> void WriteValues(FileText& text, const Column& column, int decimals, Value value) {
    const float* at = column.first;
    for (int i = 0; i < column.count; ++i, at += column.stride) {
        text.FixedLine(value(*at), decimals);
    }
    text.Line({});
}

void WriteFullScale(FileText& text, float voltsPerDiv) {
    text.NumberLine(u"VERTICAL FULL SCALE (+/-v): ", ShortestText(voltsPerDiv * kDivisions));
}

void WriteStamp(FileText& text, const FileStamp& stamp) {
    text.Line(QStringLiteral("DATE: ") + stamp.date);
    text.Line(QStringLiteral("SOFTWARE: ") + stamp.software);
}

} // namespace

FileStamp StampOf(const QLocale& locale, const QDateTime& now, const QString& software) {
    const std::string point = CodePageText(locale.decimalPoint());
    return {.decimalPoint = point.size() == 1 && point[0] != '?' ? point[0] : '.',
            .date = locale.toString(now, QLocale::ShortFormat),
            .software = software};
}

FileText DataFileText(const DataFile& file, const FileStamp& stamp) {
    FileText text(stamp.decimalPoint, Expected(file.samples));
    WriteValues(text, file.samples, kVoltsDecimals,
                [volts = file.voltsPerStep](float steps) { return steps * volts; });
    text.Line(QStringLiteral("DATA FOR CH: ") + file.source);
    WriteFullScale(text, file.voltsPerDiv);
    text.NumberLine(u"SAMPLE PERIOD (s): ", ShortestText(file.samplePeriod));
    if (file.bandwidthLimit) {
        text.Line(*file.bandwidthLimit ? u"BANDWIDTH LIMIT: True" : u"BANDWIDTH LIMIT: False");
    }
    WriteStamp(text, stamp);
    return text;
}

FileText SpectrumFileText(const SpectrumFile& file, const FileStamp& stamp) {
    FileText text(stamp.decimalPoint, Expected(file.bins));
    if (file.decibels) {
        WriteValues(text, file.bins, kDecibelsDecimals, [](float unit) { return unit - kDecibelsZero; });
    } else {
        WriteValues(text, file.bins, kVoltsDecimals, [volts = file.voltsPerStep](float unit) {
            return static_cast<float>((unit + kLinearZero) / kLinearUnits / kFullScale * kFullScaleSteps *
                                      volts);
        });
    }
    text.Line(QStringLiteral("FFT FOR CH: ") + QString::number(file.channel));
    WriteFullScale(text, file.voltsPerDiv);
    text.NumberLine(u"FREQ STEP (Hz): ", FormatNumber(0.5 / file.samplePeriod / kNyquistBin, "0.000000"));
    text.Line(QStringLiteral("SPECTRAL WINDOW: ") + file.window);
    text.Line(QStringLiteral("PLOT TYPE: ") + file.plotType);
    WriteStamp(text, stamp);
    return text;
}
