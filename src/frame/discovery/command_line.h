#pragma once

#include "frame/log/show_message.h"

#include <cstdint>

struct Record;

inline constexpr std::int32_t kNothingForced = -2;   ///< empty command line
inline constexpr std::int32_t kNoUsableForcing = -1; ///< a command line that forces nothing

/// The word that turns the log on; nothing else may stand on the command line.
bool IsDebugWord(const QString& commandLine);

/// Reads "/MISp:c" into ForcedPort, ForcedChannel, MasterChannel and SettingsSuffix. A port without a
/// channel 1..4 keeps the port and forces no channel; a p or c that is no number, and a p beyond 32 bits,
/// force nothing. The suffix holds p and c as they were typed.
void ReadCommandLine(const QString& commandLine, Record& record);

/// Unless the command line is the debug word, a forcing that is not usable is dropped whole and shown.
void CheckCommandLineError(const QString& commandLine, Record& record, const ShowMessage& show);
