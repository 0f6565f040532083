#pragma once

#include "module.h"

#include <optional>

namespace sim {

/// Looks for the moment at which a module's comparator fires. It goes forward as time does and never
/// looks at a stretch twice.
class TriggerSearch {
  public:
    /// From then on. resolution: how finely to look where the signal is close to the threshold.
    void Begin(double from, double resolution);
    /// The first moment up to now, if there is one. Does a bounded amount of work and goes on from there at
    /// the next call; of what it cannot keep up with it skips the oldest, so that it is never more than
    /// longestLag behind.
    std::optional<double> Find(const Module& module, double now, double longestLag);

  private:
    double at_ = 0;
    double resolution_ = 1e-9;
};

} // namespace sim
