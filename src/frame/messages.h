#pragma once

#include <QString>
#include <functional>

/// Shows a text in a box with an OK button and returns when it was read.
using ShowMessage = std::function<void(const QString& text)>;

/// The texts of the start-up's message boxes.
namespace messages {

QString CommandLineError(const QString& commandLine);
QString WrongInstrument();
QString TooManyInstruments(int found);
QString UnpoweredInStack(); ///< the master's detect line reads zero
QString NotInStack();       ///< a module does not hear the master

} // namespace messages
