#pragma once

#include "frame/instrument/environment.h"

#include <QApplication>
#include <QThread>
#include <cstdio>

/// What the program itself lives in, but for its settings, which lie in that folder, and its boxes, which go
/// to standard error: nobody is there to answer.
inline Environment LiveEnvironment(const QString& settingsFolder) {
    Environment environment;
    environment.applicationFolder = QApplication::applicationDirPath();
    environment.settingsFolder = settingsFolder;
    environment.show = [](const QString& text) { std::fprintf(stderr, "%s\n", qPrintable(text)); };
    environment.sleep = [](int milliseconds) { QThread::msleep(static_cast<unsigned long>(milliseconds)); };
    environment.yield = [] { QApplication::processEvents(); };
    return environment;
}
