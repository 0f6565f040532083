#pragma once

#include <cstdint>

// Several figures in one register; an operator works on all of them.
using Quad [[gnu::vector_size(16), gnu::may_alias]] = std::uint32_t;
using QuadInt [[gnu::vector_size(16)]] = std::int32_t;
using QuadFloat [[gnu::vector_size(16)]] = float;
using Pair [[gnu::vector_size(16)]] = double;
using PairMask [[gnu::vector_size(16)]] = std::int64_t;
