#pragma once

#include <QString>
#include <optional>
#include <string_view>

class FileText;
class QDateTime;
class QLocale;

// The bytes of the data files, from plain values. docs/data_files.md tells the format.

/// What all the files of one save have in common.
struct FileStamp {
    char decimalPoint = '.'; ///< a byte of Windows-1252
    QString date;            ///< the moment of the save
    QString software;        ///< the program's name and version
};

/// The decimal point and the short form of the date are the locale's. A decimal point that Windows-1252
/// lacks becomes ".", so that the numbers stay numbers.
FileStamp StampOf(const QLocale& locale, const QDateTime& now, const QString& software);

/// One channel's values in a table of several.
struct Column {
    const float* first = nullptr;
    int count = 0;
    int stride = 1; ///< from one value to the channel's next
};

/// A channel's samples and the facts about them.
struct DataFile {
    Column samples; ///< ADC steps
    float voltsPerStep = 0;
    float voltsPerDiv = 0;
    float samplePeriod = 0;             ///< seconds
    QString source;                     ///< the channel's number, or what a math channel computes: "1 + 2"
    std::optional<bool> bandwidthLimit; ///< a math channel has none, and no line for it
};
FileText DataFileText(const DataFile& file, const FileStamp& stamp);

/// A channel's magnitudes and the facts about them.
struct SpectrumFile {
    Column bins;           ///< plot units -30..+30, without the bin of frequency 0
    bool decibels = false; ///< written as decibels, otherwise as volts
    float voltsPerStep = 0;
    float voltsPerDiv = 0;
    float samplePeriod = 0; ///< seconds
    int channel = 0;
    QString window;
    QString plotType;
};
FileText SpectrumFileText(const SpectrumFile& file, const FileStamp& stamp);
