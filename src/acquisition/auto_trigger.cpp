#include "acquisition/auto_trigger.h"

#include <algorithm>
#include <cmath>

int ProbeWait(float samplePeriod) {
    const float milliseconds = samplePeriod * 4500.0F / static_cast<float>(kProbeWaits) * 1000.0F;
    // The comparison order makes a period that is no number wait the shortest time.
    return static_cast<int>(std::nearbyint(std::min(100.0F, std::max(1.0F, milliseconds))));
}
