#pragma once

#include <functional>

/// How a handler waits. Tests hand in clocks of their own.
struct Waiting {
    std::function<void(int milliseconds)> Sleep; ///< blocks the interface thread
    std::function<void()> Yield;                 ///< lets pending events run
};

/// Waiting on the real clock and the real event loop.
Waiting RealWaiting();
