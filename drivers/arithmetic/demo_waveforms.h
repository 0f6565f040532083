#pragma once

#include <array>
#include <cstdint>

namespace instrument {

/// Moving test waveforms for four channels that a person can tell apart: a sine, a square, a triangle and a
/// burst, one below the other on one screen, with a little noise. Table look-ups only; the same arguments
/// give the same samples.
class DemoWaveforms {
  public:
    DemoWaveforms();
    // The shapes point into the tables beside them: a copy would draw from another's.
    DemoWaveforms(const DemoWaveforms&) = delete;
    DemoWaveforms& operator=(const DemoWaveforms&) = delete;

    /// Fills count ADC steps around offset. channelLessOne 0..3; phase is the count of passes times 10.
    void Fill(double* buffer, int count, double offset, int channelLessOne, int phase) const;

  private:
    static constexpr int kTableBits = 12;
    using Table = std::array<float, 1 << kTableBits>;

    /// carrier times envelope; periods in samples.
    struct Shape {
        const Table* carrier;
        double carrierPeriod;
        const Table* envelope;
        double envelopePeriod;
        float level;
        int samplesPerPass; ///< how far it moves
    };

    Table flat_{};
    Table sine_{};
    Table square_{};
    Table triangle_{};
    Table bursts_{};
    std::array<Shape, 4> shapes_;
};

} // namespace instrument
