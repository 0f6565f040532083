#pragma once

/// Logical pixels beyond which nothing is placed: toolkits keep places in 16 bits on some desktops.
inline constexpr int kFarAway = 30000;
