#pragma once

#include <QString>
#include <cstdint>

struct Record;

/// Fills OSVersionWord and IsWinXP from the version word of the system and returns the splash's text. A
/// system that has no such word (0) is named as unknown.
QString DetectOperatingSystem(std::uint32_t versionWord, Record& record);
