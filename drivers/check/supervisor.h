#pragma once

#include "sections.h"

#include <string>
#include <vector>

namespace check {

struct Options {
    std::string library;
    std::string only;     ///< a section's name, or empty for all
    double patience = 10; ///< seconds
};

/// Runs the sections, each in a process of its own. Prints what they find as TAP, and how long the calls
/// took. Returns how many rules were broken.
int Supervise(const Options& options);

} // namespace check
