#pragma once

struct Instrument;

/// From nothing to a running picture, in one fixed order. Returns before the event loop takes over.
void StartUp(Instrument& instrument);
