#include "house/includes.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace {

std::size_t FloorOf(const Lines& floors, const std::string& room) {
    const auto floor = std::find_if(floors.begin(), floors.end(), [&room](const auto& rooms) {
        return std::find(rooms.begin(), rooms.end(), room) != rooms.end();
    });
    return static_cast<std::size_t>(floor - floors.begin());
}

bool Links(const Lines& reaches, const std::string& room, const std::string& other) {
    return std::any_of(reaches.begin(), reaches.end(), [&](const auto& reach) {
        return reach.front() == room && std::find(reach.begin(), reach.end(), other) != reach.end();
    });
}

} // namespace

Lines ReadLines(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::vector<std::string> rooms;
        for (std::string room; words >> room;) {
            rooms.push_back(room);
        }
        if (!rooms.empty()) {
            lines.push_back(rooms);
        }
    }
    return lines;
}

std::vector<std::string> IncludesOf(const std::string& source) {
    static const std::regex kInclude("(?:^|\n)[ \t]*#[ \t]*include[ \t]*\"([^\"\n]+)\"");
    std::vector<std::string> includes;
    for (std::sregex_iterator at(source.begin(), source.end(), kInclude), end; at != end; ++at) {
        includes.push_back((*at)[1]);
    }
    return includes;
}

std::string RoomOf(const Lines& floors, const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash);
    return FloorOf(floors, folder) < floors.size() ? folder : "";
}

std::vector<std::string> WrongIncludes(const Lines& floors, const Lines& reaches,
                                       const std::map<std::string, std::string>& sources) {
    std::vector<std::string> wrong;
    for (const auto& [path, source] : sources) {
        const std::string room = RoomOf(floors, path);
        for (const std::string& include : IncludesOf(source)) {
            const std::string other = RoomOf(floors, include);
            if (room.empty() || other.empty() || room == other) {
                continue;
            }
            if (FloorOf(floors, other) >= FloorOf(floors, room)) {
                wrong.push_back(path + " includes " + include + ", which does not stand below it");
            } else if (!Links(reaches, room, other)) {
                wrong.push_back(path + " includes " + include + ", which its room does not link");
            }
        }
    }
    return wrong;
}
