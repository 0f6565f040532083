#pragma once

struct Instrument;

/// The end of the desktop's session saves as CloseButton does. Another program may still call the end off,
/// so this one goes on until it is told to quit,
/// which is a close as any other.
void SaveWithTheSession(Instrument& instrument);
