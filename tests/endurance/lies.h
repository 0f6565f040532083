#pragma once

#include "corvantine_driver_operations.h"

#include <string>
#include <vector>

/// The operations of the interface as numbers, in the order of its list.
enum class Operation {
#define CORVANTINE_NUMBER(operation) operation,
    CORVANTINE_OPERATIONS(CORVANTINE_NUMBER)
#undef CORVANTINE_NUMBER
};

/// What of an operation can be wrong: what it answers, what it writes, or that it is done at all.
enum class Part { Deed, Whole, SecondWhole, Real, SecondReal, Text, Length, Samples };

/// One operation that lies in one way about one thing.
struct Lie {
    Operation operation;
    Part part;
    int way; ///< which of the ways that the part's type allows, from 0
    bool operator==(const Lie&) const = default;
};

/// Every lie that the types of the interface allow: whole numbers at and beyond every end, wrong booleans,
/// numbers that are none, texts that are full or mean something to somebody, buffers of garbage, answers
/// that change with every question, deeds that are not done.
const std::vector<Lie>& AllLies();

/// Such as "GetRISBand, second whole: smallest".
std::string NameOf(const Lie& lie);
