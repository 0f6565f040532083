#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

/// What is wrong with a line; whoever reads the lines adds which one it was.
struct BadLine : std::runtime_error {
    using runtime_error::runtime_error;
};

std::string_view Trimmed(std::string_view text);
/// Words at blanks; a part in double quotes may hold blanks and loses the quotes.
std::vector<std::string> Words(std::string_view text);

/// A number, with a decimal point whatever the locale, an SI prefix (n u m k M G) and a unit if it likes.
double ParseNumber(std::string_view text, std::string_view unit);
/// The same, or BadLine unless it lies in least..most.
double ParseNumber(std::string_view text, std::string_view unit, double least, double most);
/// Decimal, or hexadecimal behind 0x.
std::int32_t ParseInteger(std::string_view text, std::int32_t least, std::int32_t most);
bool ParseYesNo(std::string_view text);

} // namespace sim
