#pragma once

#include "frame/log/debug_log.h"

#include <QString>

/// One traced routine or system call: its entry line now, its exit line when the scope ends.
class Trace {
  public:
    Trace(DebugLog& log, const QString& name, const QString& arguments = {}) : log_(log), name_(name) {
        log_.PrintLog(QStringLiteral(">>> %1(%2)").arg(name_, arguments));
        log_.IncIndent();
    }
    ~Trace() {
        log_.DecIndent();
        log_.PrintLog(QStringLiteral("(< %1").arg(name_));
    }
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    /// Logs the result on its way out.
    bool Returning(bool result) {
        log_.PrintLog(QStringLiteral("returning %1").arg(Text(result)));
        return result;
    }

    static QString Text(bool value) { return value ? QStringLiteral("True") : QStringLiteral("False"); }

  private:
    DebugLog& log_;
    QString name_;
};

/// A system call between its two lines, the second with what came back: "returned hDib: 1Ah".
inline void TraceCall(DebugLog& log, const QString& name, const QString& returned = {}) {
    log.PrintLog(QStringLiteral(">>> %1").arg(name));
    log.PrintLog(returned.isEmpty() ? QStringLiteral("(< %1").arg(name)
                                    : QStringLiteral("(< %1 returned %2").arg(name, returned));
}

/// Handles are printed in hexadecimal followed by "h".
inline QString HandleText(quintptr handle) {
    return QString::number(handle, 16).toUpper() + QLatin1Char('h');
}
