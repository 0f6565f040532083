#pragma once

#include "frame/log/show_message.h"

class Driver;
struct Record;

/// Proves over the detect line that the modules hang in one stack: the master drives the line low and
/// every other module must hear it. To be called for channels 1..4 in turn. Returns False when a module
/// does not hear the master: all modules are closed then and the test is over.
bool TestStackMember(int channel, Record& record, Driver& driver, const ShowMessage& show);
