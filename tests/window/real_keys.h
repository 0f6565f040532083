#pragma once

#include "window/real_mouse.h"

/// Keys that go the whole way: through the X server and the window manager to the program.
namespace real_keys {

/// Brings the window in front, as a task bar does, and waits until the keys go there.
inline bool GoTo(const QWidget& window) {
    constexpr int kAttempts = 5; // one that came while another window took the focus is lost
    for (int attempt = 0; attempt < kAttempts && !window.isActiveWindow(); ++attempt) {
        real_mouse::Do({QStringLiteral("windowactivate"), QString::number(window.winId())});
        if (QTest::qWaitFor([&] { return window.isActiveWindow(); }, 6000)) {
            break;
        }
    }
    return window.isActiveWindow();
}

/// Each of the keys, by their names in the X Window System, one after the other.
inline void Press(const QStringList& keys) {
    real_mouse::Do(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("30")} +
                   keys);
}

inline void Press(const char* keys) {
    Press(QString::fromLatin1(keys).split(QLatin1Char(' ')));
}

} // namespace real_keys
