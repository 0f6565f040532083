#pragma once

#include <cstddef>

/// Allocations of this program by operator new and by malloc's family since it began. Link
/// support/counted_new.cpp into the test program.
std::size_t AllocationsSoFar();
