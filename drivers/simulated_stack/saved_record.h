#pragma once

#include <istream>
#include <string>
#include <vector>

namespace sim {

/// A text file with one value a line, up to an empty line or the end.
struct SavedRecord {
    std::vector<float> values;
    double interval = 0; ///< seconds, if the facts behind the empty line tell it, else 0
};

/// Throws BadLine with a reason that names the file and its line.
SavedRecord ReadSavedRecord(const std::string& path);

} // namespace sim
