#include "frame/log/debug_log.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <fcntl.h>
#include <utility>

namespace {
constexpr int kStep = 4;
constexpr int kDeepest = 32764; ///< the indent is a 16-bit quantity of steps
} // namespace

DebugLog::DebugLog(QString folder, ShowMessage warn) : folder_(std::move(folder)), warn_(std::move(warn)) {}

DebugLog::~DebugLog() {
    CloseLog();
}

void DebugLog::OpenLog(const QString& fileName, bool enable) {
    CloseLog();
    enabled_ = enable;
    if (!enabled_) {
        return;
    }
    file_.setFileName(QDir(folder_).filePath(fileName));
    // A pipe that nobody reads would keep the program from starting, a full one from going on.
    const int handle = ::open(QFile::encodeName(file_.fileName()).constData(),
                              O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    if (handle < 0 ||
        !file_.open(handle, QIODevice::WriteOnly | QIODevice::Text, QFileDevice::AutoCloseHandle)) {
        if (warn_) {
            warn_(
                QStringLiteral("Warning:  failed to open Corvantinelog.txt for writing/append\n"
                               "DEBUG output will be discarded\n"
                               "Make sure the disk is not full, the disk is writable or the log file is not "
                               "read only"));
        }
        return;
    }
    file_.write("*********************************START****************************************\n");
}

void DebugLog::CloseLog() {
    if (enabled_ && file_.isOpen()) {
        file_.write("*********************************STOP*****************************************\n");
        file_.close();
    }
}

void DebugLog::PrintLog(const QString& text) {
    if (!enabled_ || !file_.isOpen()) {
        return;
    }
    // A text of a module may bring line ends of its own; a line that began with one would seem to be ours.
    QString line = text;
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    const QString now = QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat);
    // What a write or a close fails at is nobody's business: the log must not disturb what it watches.
    file_.write(
        (QString(indent_, QLatin1Char(' ')) + line + QStringLiteral("   (@ ") + now + QStringLiteral(")\n"))
            .toUtf8());
    file_.flush(); // the last line before a crash is the one that counts
}

void DebugLog::IncIndent() {
    if (enabled_ && indent_ < kDeepest) {
        indent_ += kStep;
    }
}

void DebugLog::DecIndent() {
    if (enabled_) {
        indent_ = indent_ < kStep ? 0 : indent_ - kStep;
    }
}
