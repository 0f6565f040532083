#pragma once

#include <cstdint>

/// Four pixels, or four rows, in one register.
using Quad [[gnu::vector_size(16), gnu::may_alias]] = std::uint32_t;
using QuadInt [[gnu::vector_size(16), gnu::may_alias]] = std::int32_t;
