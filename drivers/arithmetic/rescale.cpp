#include "arithmetic/rescale.h"

namespace instrument {

void RescaleSamples(const float* source, float* destination, int count, float oldOffset, float newOffset,
                    float oldVolts, float newVolts) {
    const float oldSteps = oldOffset * kStepsPerPercent;
    const float newSteps = newOffset * kStepsPerPercent;
    const float ratio = oldVolts > 0 && newVolts > 0 ? oldVolts / newVolts : 1.0F;
    for (int i = 0; i < count; ++i) {
        destination[i] = (source[i] - oldSteps) * ratio + newSteps;
    }
}

} // namespace instrument
