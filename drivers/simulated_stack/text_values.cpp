#include "text_values.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace sim {

namespace {

double Prefix(char c) {
    switch (c) {
    case 'n':
        return 1e-9;
    case 'u':
        return 1e-6;
    case 'm':
        return 1e-3;
    case 'k':
        return 1e3;
    case 'M':
        return 1e6;
    case 'G':
        return 1e9;
    default:
        return 0;
    }
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// As short as a person would write it.
std::string Plain(double value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    bool any = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if (!quoted && (c == ' ' || c == '\t')) {
            if (any) {
                words.push_back(std::exchange(word, {}));
            }
            any = false;
        } else {
            word += c;
            any = true;
        }
    }
    if (quoted) {
        throw BadLine("a quote without its other half");
    }
    if (any) {
        words.push_back(word);
    }
    return words;
}

double ParseNumber(std::string_view text, std::string_view unit) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || !std::isfinite(value)) {
        throw BadLine(Quoted(text) + " is not a number");
    }
    std::string_view tail(rest, static_cast<std::size_t>(end - rest));
    if (!tail.empty() && tail != unit && Prefix(tail.front()) != 0) {
        value *= Prefix(tail.front());
        tail.remove_prefix(1);
    }
    if (!tail.empty() && tail != unit) {
        throw BadLine(Quoted(text) + " is not a number" +
                      (unit.empty() ? std::string() : " in " + std::string(unit)));
    }
    return value;
}

double ParseNumber(std::string_view text, std::string_view unit, double least, double most) {
    const double value = ParseNumber(text, unit);
    if (value < least || value > most) {
        throw BadLine(Quoted(text) + " is outside " + Plain(least) + " to " + Plain(most));
    }
    return value;
}

std::int32_t ParseInteger(std::string_view text, std::int32_t least, std::int32_t most) {
    const bool hexadecimal = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    const std::string_view digits = hexadecimal ? text.substr(2) : text;
    std::int32_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (error == std::errc::result_out_of_range ||
        (error == std::errc() && rest == end && !(value >= least && value <= most))) {
        throw BadLine(Quoted(text) + " is outside " + std::to_string(least) + " to " + std::to_string(most));
    }
    if (error != std::errc() || rest != end) {
        throw BadLine(Quoted(text) + " is not a whole number");
    }
    return value;
}

bool ParseYesNo(std::string_view text) {
    if (text != "yes" && text != "no") {
        throw BadLine(Quoted(text) + " is neither yes nor no");
    }
    return text == "yes";
}

} // namespace sim
