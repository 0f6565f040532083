#pragma once

#include "acquisition.h"
#include "module.h"

#include <optional>

namespace sim {

/// Looks for the moment at which a module's comparator fires. It goes forward as time does and never
/// looks at a stretch twice.
class TriggerSearch {
  public:
    /// From then on. resolution: how finely to look where the signal is close to the threshold.
    void Begin(double from, double resolution);
    /// The first moment up to now, if there is one. longestLag: how far back it looks at all. What a bounded
    /// amount of work does not reach is given up, so that a call costs what the time since the last one
    /// costs and no backlog grows.
    std::optional<double> Find(const Module& module, const TriggerSettings& settings, double now,
                               double longestLag);
    /// Forgets what has not been looked at: what the comparator does changes now.
    void SkipTo(double now);

  private:
    std::optional<double> Look(const Module& module, const TriggerSettings& settings, double now);

    double at_ = 0;
    double resolution_ = 1e-9;
};

} // namespace sim
