// Leaves a data file as the program saves it in the locale that its environment names, and beside it the
// same volts as 32-bit reals. Usage: write_data_file DATA_FILE REALS_FILE

#include "export/data_file.h"
#include "export/file_text.h"
#include "export/output_files.h"
#include "frame/record/samples.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>
#include <numbers>
#include <vector>

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    constexpr float kVoltsPerDiv = 0.3F;
    constexpr float kVoltsPerStep = kVoltsPerDiv * 10 / 127;
    constexpr double kPerRadian = 700;
    std::vector<float> steps;
    std::vector<float> volts;
    for (int i = 0; i < kSampleDepth; ++i) {
        steps.push_back(static_cast<float>(127 * std::sin(2 * std::numbers::pi * i / kPerRadian) + i % 5));
        volts.push_back(steps.back() * kVoltsPerStep);
    }
    const DataFile file{.samples = {steps.data(), kSampleDepth, 1},
                        .voltsPerStep = kVoltsPerStep,
                        .voltsPerDiv = kVoltsPerDiv / 10,
                        .samplePeriod = 2.5e-8F,
                        .source = QStringLiteral("1"),
                        .bandwidthLimit = false};
    const FileStamp stamp =
        StampOf(QLocale::system(), QDateTime::currentDateTime(), QStringLiteral("Corvantine Ver2.0.6"));
    OutputFiles files;
    const auto save = [&files](const char* path, std::string_view bytes) {
        return files.Open(QString::fromLocal8Bit(path)) && files.Write(bytes) && files.Close();
    };
    const std::string_view reals(reinterpret_cast<const char*>(volts.data()), volts.size() * sizeof(float));
    return save(argv[1], DataFileText(file, stamp).Bytes()) && save(argv[2], reals) ? 0 : 1;
}
