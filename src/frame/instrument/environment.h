#pragma once

#include "frame/log/show_message.h"

#include <QString>
#include <functional>

/// What the program takes from its surroundings; tests put their own in its place.
struct Environment {
    QString applicationFolder; ///< skins, guide and log lie here
    QString settingsFolder;    ///< what survives a restart lies here
    QString commandLine;       ///< the program's arguments, joined by single blanks
    ShowMessage show;
    std::function<void(int milliseconds)> sleep;
    std::function<void()> yield; ///< lets pending events run
};
