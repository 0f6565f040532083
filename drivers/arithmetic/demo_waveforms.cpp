#include "arithmetic/demo_waveforms.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace instrument {

namespace {

/// A sixth of the screen from peak to peak, so that four do not touch, and that an offset of 15 % either way
/// leaves every one of them on the converter.
constexpr float kAmplitude = 21;
constexpr float kNoise = 0.5; ///< steps at the most: edges this slow cross a level only once
constexpr float kMostSteps = 127;
constexpr int kPhasePerPass = 10;
constexpr double kQuietest = 0.45; ///< of the burst's amplitude
constexpr double kSquarePeriod = 500;
constexpr double kFullTurn = 4294967296.0; ///< a phase accumulator's period

/// An edge from -1 to 1 as an amplifier makes it, `samples` after the step: quick, with a little overshoot.
double Edge(double samples) {
    constexpr double kDecay = 6;      // samples
    constexpr double kRinging = 0.19; // radians a sample
    return 1 - 2 * std::exp(-samples / kDecay) *
                   (std::cos(kRinging * samples) + std::sin(kRinging * samples) / (kRinging * kDecay));
}

/// Deterministic and cheap; the sum of two even spreads, some 0.2 steps RMS.
class Noise {
  public:
    Noise(int channel, int phase)
        : state_((static_cast<std::uint32_t>(phase) * 4U + static_cast<std::uint32_t>(channel)) *
                     2654435761U |
                 1U) {}
    float Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        const auto sum = static_cast<std::int32_t>((state_ & 0xFFFFU) + (state_ >> 16));
        return static_cast<float>(sum - 0xFFFF) * (kNoise / 65536);
    }

  private:
    std::uint32_t state_;
};

/// Accumulator steps for each sample; the accumulator wraps where the period does. Whatever moves by a whole
/// number of such steps a pass is back at its beginning after 2^27 passes, when their count begins anew.
std::uint32_t Advance(double period) {
    constexpr std::uint32_t kRound = 32;
    return static_cast<std::uint32_t>(kFullTurn / period) / kRound * kRound;
}

} // namespace

DemoWaveforms::DemoWaveforms()
    : shapes_{{{&sine_, 375, &flat_, 600, 82, 4},
               {&square_, kSquarePeriod, &flat_, 600, 28, 3},
               {&triangle_, 300, &flat_, 600, -27, 5},
               {&sine_, 30, &bursts_, 900, -82, 2}}} {
    const auto size = static_cast<double>(flat_.size());
    for (std::size_t i = 0; i < flat_.size(); ++i) {
        const double turn = static_cast<double>(i) / size;
        const double half = std::fmod(2 * turn, 1.0);
        const double sign = turn < 0.5 ? 1 : -1;
        flat_[i] = kAmplitude;
        sine_[i] = static_cast<float>(std::sin(2 * std::numbers::pi * turn));
        square_[i] = static_cast<float>(sign * Edge(half * kSquarePeriod / 2));
        triangle_[i] = static_cast<float>(1 - 4 * std::abs(turn - 0.5));
        // Never quite silent, so that whoever counts its periods misses none.
        bursts_[i] = static_cast<float>(
            kAmplitude * (kQuietest + (1 - kQuietest) * std::pow(std::sin(std::numbers::pi * turn), 4)));
    }
}

void DemoWaveforms::Fill(double* buffer, int count, double offset, int channelLessOne, int phase) const {
    const Shape& shape = shapes_[static_cast<std::size_t>(channelLessOne & 3)];
    const std::uint32_t carrierStep = Advance(shape.carrierPeriod);
    const std::uint32_t envelopeStep = Advance(shape.envelopePeriod);
    // Unsigned, so that a phase that has wrapped after weeks goes on without a fault.
    const std::uint32_t moved =
        static_cast<std::uint32_t>(phase) / kPhasePerPass * static_cast<std::uint32_t>(shape.samplesPerPass);
    std::uint32_t carrier = carrierStep * moved;
    std::uint32_t envelope = envelopeStep * moved;
    Noise noise(channelLessOne, phase);
    const float level = shape.level + static_cast<float>(offset);
    for (int i = 0; i < count; ++i) {
        const float value = (*shape.carrier)[carrier >> (32 - kTableBits)] *
                                (*shape.envelope)[envelope >> (32 - kTableBits)] +
                            level + noise.Next();
        buffer[i] = std::clamp(value, -kMostSteps, kMostSteps);
        carrier += carrierStep;
        envelope += envelopeStep;
    }
}

} // namespace instrument
