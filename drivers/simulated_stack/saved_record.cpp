#include "saved_record.h"

#include "text_values.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>

namespace sim {

namespace {

constexpr std::size_t kMostValues = 4'000'000;
constexpr std::string_view kPeriodKey = "SAMPLE PERIOD (s):";

/// Files carry the decimal separator of whoever wrote them.
double Value(std::string_view text) {
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), ',', '.');
    return ParseNumber(plain, "V", -1e9, 1e9);
}

} // namespace

SavedRecord ReadSavedRecord(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw BadLine("\"" + path + "\" cannot be read: " + std::strerror(errno));
    }
    SavedRecord record;
    std::string text;
    int line = 0;
    bool facts = false;
    while (std::getline(file, text)) {
        ++line;
        const std::string_view content = Trimmed(text);
        try {
            if (content.empty()) {
                facts = true;
            } else if (!facts) {
                record.values.push_back(static_cast<float>(Value(content)));
            } else if (content.substr(0, kPeriodKey.size()) == kPeriodKey) {
                record.interval = Value(Trimmed(content.substr(kPeriodKey.size())));
            }
        } catch (const BadLine& bad) {
            throw BadLine("\"" + path + "\", line " + std::to_string(line) + ": " + bad.what());
        }
        if (record.values.size() > kMostValues) {
            throw BadLine("\"" + path + "\" has more than " + std::to_string(kMostValues) + " values");
        }
    }
    if (record.values.empty()) {
        throw BadLine("\"" + path + "\" holds no values");
    }
    return record;
}

} // namespace sim
