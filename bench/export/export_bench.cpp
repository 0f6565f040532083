// A save of everything: four channels, two math channels and six spectra, into a folder of memory, against
// writing the same bytes from memory into as many files there.

#include "export/file_names.h"
#include "export/output_files.h"
#include "export/save_data.h"
#include "frame/record/record.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

class Scale : public ChannelScale {
  public:
    float GetVoltsPerDiv() const override { return 0.3F; }
    float GetVoltsPerADCStep() const override { return 3.0F / 127; }
    float GetOffset() const override { return 0; }
    int GetRange() const override { return 0; }
};

struct Everything {
    Everything() : folder(QStringLiteral("/dev/shm/export_bench-XXXXXX")) {
        if (!folder.isValid()) {
            std::abort();
        }
        record.SampleDepth = kSampleDepth;
        record.ScopeInUse.fill(true);
        record.ChannelFFT.fill(true);
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            scales[channel] = &scale;
            for (int i = 0; i < kSampleRow; ++i) {
                record.SampleData(channel, i) = static_cast<float>(100 * std::sin(i * 0.01 * channel));
            }
            for (int i = 0; i < kSpectrumBins; ++i) {
                record.SpectrumData(channel, i) = static_cast<float>(29 * std::cos(i * 0.02 * channel));
            }
        }
        request.base = folder.filePath(QStringLiteral("CorvantineData"));
        request.selected.fill(true);
        request.mathTerms = {QStringLiteral("1 + 2"), QStringLiteral("3 - 4")};
        request.decibels = true;
        request.window = QStringLiteral("Hanning");
        request.plotType = QStringLiteral("dB(V) Plot");
        request.samplePeriod = 2e-8F;
        request.stamp = {'.', QStringLiteral("21.11.26 21:25"), QStringLiteral("Corvantine Ver1.0.0")};
    }

    Record record;
    Scale scale;
    PerChannel<const ChannelScale*> scales;
    SaveRequest request;
    QTemporaryDir folder;
};

void Save(benchmark::State& state) {
    const Everything all;
    OutputFiles files;
    for (auto _ : state) {
        if (!SaveData(all.request, all.record, all.scales, files)) {
            std::abort();
        }
    }
}
BENCHMARK(Save)->Unit(benchmark::kMicrosecond);

void WriteTheSameBytes(benchmark::State& state) {
    const Everything all;
    OutputFiles files;
    if (!SaveData(all.request, all.record, all.scales, files)) {
        std::abort();
    }
    std::vector<std::pair<QByteArray, QByteArray>> contents;
    for (const QString& name : QDir(all.folder.path()).entryList(QDir::Files)) {
        QFile file(all.folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            std::abort();
        }
        contents.emplace_back(QFile::encodeName(file.fileName()), file.readAll());
    }
    std::int64_t bytes = 0;
    for (auto _ : state) {
        for (const auto& [path, content] : contents) {
            const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
            if (write(file, content.constData(), static_cast<std::size_t>(content.size())) !=
                    content.size() ||
                close(file) != 0) {
                std::abort();
            }
            bytes += content.size();
        }
    }
    state.SetBytesProcessed(bytes);
    state.counters["files"] = static_cast<double>(contents.size());
}
BENCHMARK(WriteTheSameBytes)->Unit(benchmark::kMicrosecond);

} // namespace
