#pragma once

#include <QString>

/// The texts of the start-up's message boxes.
namespace messages {

QString CommandLineError(const QString& commandLine);
QString WrongInstrument();
QString TooManyInstruments(int found);
QString UnpoweredInStack(); ///< the master's detect line reads zero
QString NotInStack();       ///< a module does not hear the master

} // namespace messages
