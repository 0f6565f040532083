#pragma once

#include <cstdint>

/// A colour as the instrument keeps it: 0x00BBGGRR, red in the low byte.
using Colour = std::uint32_t;
