#include "acquisition/read_out.h"

#include <algorithm>
#include <cmath>

void ReadOutBlocks(const float* row, const Conditioning& conditioning, RecordRow record) {
    for (int i = 0; i <= kSampleDepth; ++i) {
        float x = row[i];
        if (conditioning.bandwidthLimit && i <= kSampleDepth - 1) {
            x = (row[i + 1] + row[i]) / 2;
        }
        record[i] = x - conditioning.null;
    }
}

void ReadOutRIS(float* buffer, const RISPass& pass, const Conditioning& conditioning, RecordRow record) {
    if (conditioning.bandwidthLimit) {
        for (int i = 0; i < kRISSamples - 1; ++i) {
            buffer[i] = (buffer[i + 1] + buffer[i]) / 2;
        }
    }
    const bool placed = pass.position >= 0 && pass.position <= static_cast<float>(kRISGap);
    if (pass.status == -1 || !placed) {
        return;
    }
    const float base = std::floor(pass.position);
    const float fraction = std::fabs(pass.position - base);
    const float weight = std::fabs(2.0F * (fraction - 0.5F));
    for (int i = 0; i < kRISSamples; ++i) {
        float& sample = record[static_cast<int>(base) + kRISGap * i];
        sample = weight * sample + (1.0F - weight) * buffer[i] - conditioning.null;
    }
}

void ReadOutRoll(const float* buffer, int start, int count, const Conditioning& conditioning,
                 RecordRow record) {
    for (int i = start; i < start + count; ++i) {
        float x = buffer[i];
        if (conditioning.bandwidthLimit && i <= kSampleDepth - 2) {
            x = (buffer[i + 1] + buffer[i]) / 2;
        }
        record[i] = x - conditioning.null;
    }
}

int RollIncrement(int samplesSinceTrigger, int rollPosition) {
    return std::clamp(samplesSinceTrigger, 0, kSampleRow + 1) - rollPosition;
}

void StretchForRIS(RecordRow record) {
    for (int i = kRISSamples - 1; i >= 0; --i) {
        const float sample = record[i];
        for (int k = 0; k < kRISGap; ++k) {
            record[kRISGap * i + k] = sample;
        }
    }
}
