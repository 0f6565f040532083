#pragma once

#include "description.h"

#include <istream>
#include <optional>
#include <string>

namespace sim {

/// Either a stack or the reason why there is none, as "file:line: reason".
struct StackFile {
    std::optional<StackDescription> stack;
    std::string error;
};

/// name: for the error's text. folder: where relative paths of files to play start, with a separator at
/// its end unless empty.
StackFile ParseStack(std::istream& text, const std::string& name, const std::string& folder);
StackFile ReadStackFile(const std::string& path);

} // namespace sim
