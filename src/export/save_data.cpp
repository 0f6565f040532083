#include "export/save_data.h"

#include "export/file_names.h"
#include "export/file_text.h"
#include "export/output_files.h"
#include "frame/record/record.h"

namespace {

bool IsMath(int channel) {
    return channel > kScopeChannels;
}

/// The values of the memory that a table's column of a channel takes up.
Column ColumnOf(const ChannelTable& table, int channel, int from, int count) {
    return {.first = table.row(channel) + from * ChannelTable::stride(),
            .count = count,
            .stride = ChannelTable::stride()};
}

bool SaveSamples(int channel, const SaveRequest& request, const Record& record, const ChannelScale& scale,
                 OutputFiles& files) {
    if (!files.Open(DataFileName(request.base, channel))) {
        return false;
    }
    DataFile file{.samples = ColumnOf(record.SampleData, channel, 0, record.SampleDepth),
                  .voltsPerStep = scale.GetVoltsPerADCStep(),
                  .voltsPerDiv = scale.GetVoltsPerDiv(),
                  .samplePeriod = request.samplePeriod,
                  .source = {},
                  .bandwidthLimit = {}};
    if (IsMath(channel)) {
        file.source = request.mathTerms[channel - kScopeChannels];
    } else {
        file.source = QString::number(channel);
        file.bandwidthLimit = record.ChannelBWLimit[channel];
    }
    return files.Write(DataFileText(file, request.stamp).Bytes()) && files.Close();
}

bool SaveSpectrum(int channel, const SaveRequest& request, const Record& record, const ChannelScale& scale,
                  OutputFiles& files) {
    if (!files.Open(SpectrumFileName(request.base, channel))) {
        return false;
    }
    // What a linear spectrum of a math channel would be in volts, nothing says: its file stays empty.
    if (IsMath(channel) && !request.decibels) {
        return false;
    }
    const SpectrumFile file{.bins = ColumnOf(record.SpectrumData, channel, 1, kSpectrumBins - 1),
                            .decibels = request.decibels,
                            .voltsPerStep = scale.GetVoltsPerADCStep(),
                            .voltsPerDiv = scale.GetVoltsPerDiv(),
                            .samplePeriod = request.samplePeriod,
                            .channel = channel,
                            .window = request.window,
                            .plotType = request.plotType};
    return files.Write(SpectrumFileText(file, request.stamp).Bytes()) && files.Close();
}

} // namespace

bool SaveData(const SaveRequest& request, const Record& record, const PerChannel<const ChannelScale*>& scales,
              OutputFiles& files) {
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        if (!record.ScopeInUse[channel] || !request.selected[channel]) {
            continue;
        }
        const ChannelScale& scale = *scales[channel];
        if (!SaveSamples(channel, request, record, scale, files)) {
            return false;
        }
        if (record.ChannelFFT[channel] && !SaveSpectrum(channel, request, record, scale, files)) {
            return false;
        }
    }
    return true;
}
