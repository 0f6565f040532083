#pragma once

#include <QIcon>
#include <QPixmap>

/// The instrument as a task bar shows it: a dark screen with two traces, painted for each usual size.
QIcon InstrumentIcon();
QPixmap InstrumentIconAt(int side);
