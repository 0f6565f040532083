#include "acquisition/run_loop.h"

#include "controls/knob_control.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

// How samples come into the record, in each of the modes.

namespace {

constexpr int kBlocks = 6;         ///< of 512 positions, they fill a row
constexpr int kRollIncrement = 10; ///< fewer new samples are not worth a plot
constexpr int kPhasePerPass = 10;

/// A cursor at the very end stands one step past the last sample. Where nothing is read out for that place,
/// the last sample holds.
void HoldEnd(RecordRow row) {
    row[kSampleDepth] = row[kSampleDepth - 1];
}

} // namespace

void RunLoop::FillDemoData() {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const double offset = controls_.OffsetKnob[ch]->KnobValue();
        driver_.MakeSampleData(DemoBuffer.data(), kSampleDepth, offset, ch - 1,
                               state_.PassCount * kPhasePerPass);
        const RecordRow row = Row(ch);
        for (int i = 0; i < kSampleDepth; ++i) {
            row[i] = static_cast<float>(DemoBuffer[static_cast<std::size_t>(i)]);
        }
        HoldEnd(row);
    }
}

void RunLoop::CompleteRecord() {
    state_.Acquiring = false;
    status_.Show(TriggerStatus::Text::Triggered);
    state_.WaitTicks = 0;
    if (!state_.FreeRunning) {
        Status(kStatusRed);
    }
    state_.SawTrigger = true;
    ForAcquiringScopes(record_, [this](int ch) { driver_.AcquisitionEnd(ch); });
    if (record_.RISMode) {
        ReadRIS();
    } else {
        ReadBlocks();
    }
    calls_.DoMaths();
}

void RunLoop::ReadBlocks() {
    driver_.GetBufferBlocksMultiChan(1, kScopeChannels, BlockBuffer.data(), kBlocks);
    if (record_.DemoMode) {
        return;
    }
    ForAcquiringScopes(record_, [this](int ch) {
        const float* row = BlockBuffer.data() + static_cast<std::ptrdiff_t>(ch - 1) * kSampleRow;
        ReadOutBlocks(row, ConditioningOf(ch), Row(ch));
    });
}

void RunLoop::ReadRIS() {
    // Channels without a module weave in what the buffer still holds; they are never shown.
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        if (record_.ScopeInUse[ch]) {
            const RISPass pass = driver_.GetBufferRIS(ch, ChannelBuffer.data(), kRISSamples);
            state_.RISPosition = pass.position;
            state_.RISStatus = pass.status;
        }
        ReadOutRIS(ChannelBuffer.data(), {state_.RISPosition, 0, state_.RISStatus}, ConditioningOf(ch),
                   Row(ch));
        if (state_.RISPosition < static_cast<float>(kRISGap)) {
            HoldEnd(Row(ch));
        }
    }
}

void RunLoop::ReadRoll() {
    const int n = RollIncrement(driver_.GetSamplesSinceTrigger(record_.MasterChannel), state_.RollPosition);
    if (n <= kRollIncrement) {
        return;
    }
    ForAcquiringScopes(record_, [this, n](int ch) {
        driver_.GetBufferIncremental(ch, ChannelBuffer.data(), n, state_.RollPosition);
        ReadOutRoll(ChannelBuffer.data(), state_.RollPosition, n, ConditioningOf(ch), Row(ch));
    });
    state_.RollPosition += n;
    record_.TracesStale = false;
    calls_.PlotNow();
    waiting_.Yield();
}

void RunLoop::FlattenTraces() {
    for (int ch = 1; ch <= kScopeChannels; ++ch) {
        const auto offset = static_cast<float>(controls_.OffsetKnob[ch]->KnobValue());
        const RecordRow row = Row(ch);
        for (int i = 0; i < kSampleDepth; ++i) {
            row[i] = offset;
        }
        HoldEnd(row);
    }
}

Conditioning RunLoop::ConditioningOf(int channel) const {
    const ChannelScale* scale = scales_[channel];
    const int range = scale == nullptr ? -1 : scale->GetRange();
    const bool known = range >= 0 && range < OffsetNullTable::kRanges;
    return {record_.ChannelBWLimit[channel], known ? record_.OffsetNull(channel, range) : 0.0F};
}

RecordRow RunLoop::Row(int channel) {
    return {record_.SampleData.row(channel), ChannelTable::stride()};
}
