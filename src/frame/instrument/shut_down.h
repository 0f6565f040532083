#pragma once

struct Instrument;

/// Ends the program as a press of CloseButton does: at once, or when the handlers have returned that stand
/// in the middle of their work.
void ShutDown(Instrument& instrument);

/// The first step: no timer runs any more.
void BeginShutDown(Instrument& instrument);
/// All the others, in their order. What was not yet restored is not saved.
void EndShutDown(Instrument& instrument);
