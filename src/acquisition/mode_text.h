#pragma once

#include <QString>

/// What AcqModeLabel says of the sampling: mode and sample interval.
/// samplePeriod: seconds, as the instrument reports it. risMode wins over rollMode.
QString ModeText(float samplePeriod, bool risMode, bool rollMode);
