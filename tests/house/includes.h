#pragma once

#include <map>
#include <string>
#include <vector>

/// The rooms of a line each: in floors, from the ground up, those that stand side by side; in reaches, a room
/// and after it all rooms that the links of its libraries lead to.
using Lines = std::vector<std::vector<std::string>>;
Lines ReadLines(const std::string& text);

/// The rooms' headers that a source includes, as written between the quotes.
std::vector<std::string> IncludesOf(const std::string& source);

/// The room that a path below src/ lies in, "" if in none: "frame/log/debug_log.h" in "frame/log".
std::string RoomOf(const Lines& floors, const std::string& path);

/// What is wrong with the includes of a tree of sources, a sentence each: includes that lead to a neighbour's
/// room or upwards, and those of rooms that the including room does not link. sources: contents by path below
/// src/. A source that lies in no room stands above them all, and links them all.
std::vector<std::string> WrongIncludes(const Lines& floors, const Lines& reaches,
                                       const std::map<std::string, std::string>& sources);
