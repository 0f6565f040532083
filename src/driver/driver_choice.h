#pragma once

#include "driver/driver_backend.h"

#include <QString>
#include <memory>

/// The driver that the program uses.
struct DriverChoice {
    std::unique_ptr<DriverBackend> backend; ///< never null
    QString library;                        ///< the library in use; empty: the built-in driver
    QString failure; ///< not empty: for standard error and a message box; the built-in driver stands in
};

/// What the environment variable CORVANTINE_DRIVER names, if set.
QString NamedDriver();

/// The driver that lies beside the program: CorvantineDrvr_W32 with the platform's ending, in folder.
QString DriverBesideProgram(const QString& folder);

/// named: a library to use and no other, unless empty; the word "demonstration" is the built-in driver,
/// whatever lies beside the program. Else the one in the application's folder, if it is there, else the
/// built-in driver. No other folder is searched.
DriverChoice ChooseDriver(const QString& named, const QString& applicationFolder);
