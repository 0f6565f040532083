#pragma once

#include <QString>
#include <functional>

/// Shows a text in a box with an OK button and returns when it was read.
using ShowMessage = std::function<void(const QString& text)>;
