#include "frame/discovery/messages.h"

namespace messages {

QString CommandLineError(const QString& commandLine) {
    return QStringLiteral("Command line error !\n"
                          "Detected: `%1` on the command line.\n"
                          "The correct format is `/MISp:c` where p=valid com port# and c=channel# (1..4).\n"
                          "Example: `Corvantine /MIS5:1` to force com5 on Ch1\n"
                          "Example: `Corvantine /MIS12:3` to force com12 on Ch3")
        .arg(commandLine);
}

QString WrongInstrument() {
    return QStringLiteral("This application can only run with Corvantine's.\n"
                          "Please close this application and replace instrument with Corvantine.\n"
                          "Starting Application in DEMO Mode...");
}

QString TooManyInstruments(int found) {
    return QStringLiteral("This application can only run with up to 4 Corvantine's\n"
                          "but %1 were detected.  Please close this\n"
                          "application then change the stack to include only 4 or fewer devices.")
        .arg(found);
}

QString UnpoweredInStack() {
    return QStringLiteral("WARNING:  There may be one or more Corvantines in the stack\n"
                          "that are not connected to a USB port.  The stack cannot work\n"
                          "like this.  Please connect all stacked Corvantines to USB ports\n"
                          "and check the power LED on each is illuminated");
}

QString NotInStack() {
    return QStringLiteral("WARNING:  There may be one or more Corvantines that are not\n"
                          "in the main stack.  The stack cannot work like this.  Please\n"
                          "either stack all connected Corvantines or unplug any non-stacked\n"
                          "scopes from their USB port");
}

} // namespace messages
