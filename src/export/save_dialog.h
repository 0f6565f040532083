#pragma once

#include <QString>
#include <functional>
#include <optional>

class QWidget;

/// Asks with the desktop's own save-file dialog, or the toolkit's where there is none, for the file to save
/// to, and hands the answer on; nothing: the user cancelled. It neither asks about a file that is there
/// already nor adds a suffix. It begins in that folder, or in the user's documents if that is empty.
///
/// Returns at once. A dialog that ran in here would hold up whoever let the click through: within a tick of
/// the run loop that is the acquisition.
void AskForDataFile(QWidget* owner, const QString& folder,
                    std::function<void(std::optional<QString>)> answer);

/// A message with an exclamation mark, until it was read. Returns at once.
void ShowSaveFailure(QWidget* owner, const QString& text);
