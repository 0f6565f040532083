#pragma once

#include "driver/driver.h"
#include "frame/record/samples.h"

/// What is done to every sample on its way into the record.
struct Conditioning {
    bool bandwidthLimit = false; ///< replace each sample by the mean of itself and its successor
    float null = 0;              ///< ADC steps, taken off after the averaging
};

/// A channel's samples inside a record whose channels are interleaved.
struct RecordRow {
    float* samples;
    int stride;
    float& operator[](int position) const { return samples[position * stride]; }
};

inline constexpr int kRISSamples = 150; ///< of one RIS pass
inline constexpr int kRISGap = 20;      ///< record positions from one of them to the next

/// Positions 0..3000 of a block buffer row (3072 values) into the record.
void ReadOutBlocks(const float* row, const Conditioning& conditioning, RecordRow record);

/// Weaves one RIS pass of 150 samples into the record of 3000: each lands at position + 20 i, weighed
/// against the old sample by how far the pass lies from the middle of its position. The bandwidth limit
/// works on the buffer itself. A pass of status -1, or one placed outside 0..20, leaves the record alone.
void ReadOutRIS(float* buffer, const RISPass& pass, const Conditioning& conditioning, RecordRow record);

/// Positions start .. start+count-1 of a single-channel buffer into the record; the caller keeps them
/// inside 0..3072.
void ReadOutRoll(const float* buffer, int start, int count, const Conditioning& conditioning,
                 RecordRow record);

/// New samples of a roll record: what the instrument counts since the arm, held to the room of a record,
/// less what has been read.
int RollIncrement(int samplesSinceTrigger, int rollPosition);

/// Spreads the first 150 samples over the whole record, 20 positions each: something to look at until RIS
/// passes have filled it.
void StretchForRIS(RecordRow record);
