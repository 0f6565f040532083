#pragma once

#include <QString>

/// What the names of one save's files begin with, from the name that the user gave: without blanks around
/// it, and without everything from the first dot of the file's name on. Dots of folders stay.
QString SaveBase(QString given);

/// channel 1..6; a math channel's data goes by the number of the math channel, 1 or 2.
QString DataFileName(const QString& base, int channel);
/// channel 1..6; a math channel's spectrum goes by its channel number, 5 or 6, like any other.
QString SpectrumFileName(const QString& base, int channel);
