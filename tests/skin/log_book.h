#pragma once

#include "frame/log/debug_log.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

/// A log of its own folder whose lines a test reads back without their time.
class LogBook {
  public:
    explicit LogBook(bool enable = true) { log.OpenLog(QStringLiteral("log.txt"), enable); }

    /// Everything logged so far with its indents; nothing can be logged afterwards.
    QStringList Lines() {
        log.CloseLog();
        QFile file(folder_.filePath(QStringLiteral("log.txt")));
        QStringList lines;
        if (file.open(QIODevice::ReadOnly)) {
            for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
                const auto end = line.indexOf(QLatin1String("   (@ "));
                if (end >= 0) {
                    lines += line.left(end);
                }
            }
        }
        return lines;
    }

  private:
    QTemporaryDir folder_;

  public:
    DebugLog log{folder_.path(), {}};
};
