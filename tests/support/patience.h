#pragma once

inline constexpr int kPatience = 60000; ///< ms for anything that has to come true
