#pragma once

#include "frame/log/debug_log.h"
#include "frame/log/show_message.h"

class Driver;
struct Record;

/// Finding the modules and settling whether the program runs on them or in demonstration mode.
namespace discovery {

/// Asks the driver for the modules and counts those that are ours; shows what is wrong with the rest.
/// Settles DemoMode, which then holds for the run.
void FindScopes(const QString& commandLine, Record& record, Driver& driver, DebugLog& log,
                const ShowMessage& show);

/// Reads a module's facts, settles whether it is in use and opens it. Returns whether it is in use.
bool OpenScope(int channel, Record& record, Driver& driver, DebugLog& log);

/// Makes a module in use ready to acquire and reads its factory numbers.
void InitScope(int channel, Record& record, Driver& driver);

} // namespace discovery
