#include "endurance/lying_values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace {

using Whole32 = std::numeric_limits<std::int32_t>;
using Real32 = std::numeric_limits<float>;

constexpr std::string_view kDeed[] = {"not done"};
constexpr std::string_view kWhole[] = {
    "0", "1", "-1", "5", "-32768", "3074", "smallest", "largest", "now 0, now -1", "any"};
constexpr std::string_view kReal[] = {"no number", "infinite", "minus infinite", "0",      "-0", "-1",
                                      "tiny",      "largest",  "lowest",         "beyond", "any"};
constexpr std::string_view kLength[] = {"-1", "102", "smallest", "largest", "0", "any"};
constexpr std::string_view kText[] = {"full of x", "markup",      "path",  "absolute path", "formats",
                                      "patterns",  "line breaks", "zeros", "high bytes",    "any"};
constexpr std::string_view kSamples[] = {"no numbers",   "infinite",     "largest",  "full scale",
                                         "beyond steps", "denormalised", "any bits", "nothing written"};

constexpr std::string_view kTexts[] = {
    "",
    "<img src=x onerror=y><b>bold</b><h1>&amp;",
    "../../../../../../tmp/x",
    "/etc/passwd",
    "%s%n%x%d%s%s%n",
    "%1%2%3%99%L1",
    "one\r\ntwo\n\n[section]\nkey=value\n\x1b[2J\a",
};

template <class T> T AnyBits(std::mt19937& random);
template <> float AnyBits<float>(std::mt19937& random) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(random()));
}
template <> double AnyBits<double>(std::mt19937& random) {
    return std::bit_cast<double>((static_cast<std::uint64_t>(random()) << 32) | random());
}

} // namespace

std::span<const std::string_view> WaysOf(Part part) {
    switch (part) {
    case Part::Deed:
        return kDeed;
    case Part::Whole:
    case Part::SecondWhole:
        return kWhole;
    case Part::Real:
    case Part::SecondReal:
        return kReal;
    case Part::Text:
        return kText;
    case Part::Length:
        return kLength;
    case Part::Samples:
        return kSamples;
    }
    return {};
}

std::span<const std::string_view> MeaningTexts() {
    return kTexts;
}

std::int32_t LyingValues::Whole(int way) {
    constexpr std::int32_t values[] = {0, 1, -1, 5, -32768, 3074, Whole32::min(), Whole32::max()};
    if (way < static_cast<int>(std::size(values))) {
        return values[way];
    }
    turn_ = !turn_;
    return way == static_cast<int>(std::size(values)) ? (turn_ ? 0 : -1)
                                                      : static_cast<std::int32_t>(random_());
}

float LyingValues::Real(int way) {
    constexpr float values[] = {Real32::quiet_NaN(),  Real32::infinity(), -Real32::infinity(), 0, -0.0F, -1,
                                Real32::denorm_min(), Real32::max(),      Real32::lowest(),    21};
    return way < static_cast<int>(std::size(values)) ? values[way] : AnyBits<float>(random_);
}

std::int32_t LyingValues::Length(int way) {
    constexpr std::int32_t values[] = {-1, 102, Whole32::min(), Whole32::max(), 0};
    return way < static_cast<int>(std::size(values)) ? values[way] : static_cast<std::int32_t>(random_());
}

std::int32_t LyingValues::Text(int way, std::span<char> buffer) {
    const auto size = static_cast<std::int32_t>(buffer.size());
    switch (way) {
    case 0:
        std::fill(buffer.begin(), buffer.end(), 'x');
        return size;
    case 7:
        std::fill(buffer.begin(), buffer.end(), '\0');
        return size;
    case 8:
        std::fill(buffer.begin(), buffer.end(), '\xff');
        return size;
    case 9:
        std::generate(buffer.begin(), buffer.end(), [this] { return static_cast<char>(random_()); });
        return size;
    default:
        const std::string_view text = kTexts[way];
        std::fill(buffer.begin(), buffer.end(), ' ');
        std::copy(text.begin(), text.end(), buffer.begin());
        return static_cast<std::int32_t>(text.size());
    }
}

template <class T> void LyingValues::Samples(int way, std::span<T> buffer) {
    using Real = std::numeric_limits<T>;
    for (T& value : buffer) {
        turn_ = !turn_;
        switch (way) {
        case 0:
            value = Real::quiet_NaN();
            break;
        case 1:
            value = turn_ ? Real::infinity() : -Real::infinity();
            break;
        case 2:
            value = turn_ ? Real::max() : Real::lowest();
            break;
        case 3:
            value = turn_ ? T(127) : T(-127);
            break;
        case 4:
            value = static_cast<T>(static_cast<std::int32_t>(random_()));
            break;
        case 5:
            value = Real::denorm_min();
            break;
        case 6:
            value = AnyBits<T>(random_);
            break;
        default:
            break; // what stood in the buffer stays
        }
    }
}

template void LyingValues::Samples<float>(int way, std::span<float> buffer);
template void LyingValues::Samples<double>(int way, std::span<double> buffer);
