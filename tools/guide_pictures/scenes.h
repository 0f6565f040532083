#pragma once

#include "camera.h"

struct Instrument;

/// The program in the states that the guide shows, on the stack of four modules. Files are saved into the
/// folder as by the data panel.
void TakeFastSignals(Instrument& instrument, Camera& camera, const QDir& saved);
/// The same on signals that are slow enough to be seen rolling.
void TakeSlowSignals(Instrument& instrument, Camera& camera);
