#pragma once

#include <QString>
#include <optional>

class QWidget;

/// Asks with the desktop's own save-file dialog, or the toolkit's where there is none, for the file to save
/// to. It neither asks about a file that is there already nor adds a suffix. It begins in that folder, or in
/// the user's documents if that is empty. Nothing: the user cancelled.
std::optional<QString> AskForDataFile(QWidget* owner, const QString& folder);

/// A message with an exclamation mark; returns when it was read.
void ShowSaveFailure(QWidget* owner, const QString& text);
