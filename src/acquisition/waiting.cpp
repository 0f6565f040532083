#include "acquisition/waiting.h"

#include <QCoreApplication>
#include <QThread>

Waiting RealWaiting() {
    return {[](int milliseconds) { QThread::msleep(static_cast<unsigned long>(milliseconds)); },
            [] { QCoreApplication::processEvents(); }};
}
