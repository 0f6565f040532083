#pragma once

#include "frame/record/indexed.h"

// How many there are of what the instrument has several of, and arrays of one value for each.

inline constexpr int kScopeChannels = 4; ///< instrument channels, numbered from 1
inline constexpr int kAllChannels = 6;   ///< with the two math channels
inline constexpr int kCursors = 3;       ///< of either direction, numbered from 0
inline constexpr int kTabSlots = 19;     ///< places of panels, numbered from 1

template <class T> using PerScope = Indexed<T, 1, kScopeChannels>;
template <class T> using PerChannel = Indexed<T, 1, kAllChannels>;
template <class T> using PerCursor = Indexed<T, 0, kCursors - 1>;
template <class T> using PerTab = Indexed<T, 1, kTabSlots>;
