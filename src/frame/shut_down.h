#pragma once

struct Instrument;

/// The one way the program ends: stop, save, close the modules, close the driver. Windows are hidden here
/// and freed by their owners, since the call may come from inside a running tick.
void ShutDown(Instrument& instrument);
