#pragma once

#include "frame/log/show_message.h"

#include <QFile>
#include <QString>

/// The plain trace of what the program does, with nested indents, beside the program. Silent unless enabled.
class DebugLog {
  public:
    /// folder: where the file lies. warn: shows the message when the file cannot be opened.
    DebugLog(QString folder, ShowMessage warn);
    ~DebugLog();
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    void OpenLog(const QString& fileName, bool enable);
    void CloseLog();
    void PrintLog(const QString& text);
    void IncIndent();
    void DecIndent();

    bool Enabled() const { return enabled_; }
    int Indent() const { return indent_; }

  private:
    QString folder_;
    ShowMessage warn_;
    QFile file_;
    int indent_ = 0;
    bool enabled_ = false;
};
