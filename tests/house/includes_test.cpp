#include "house/includes.h"
#include "rooms.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const Lines kTwoFloors = {{"frame/ground"}, {"left", "right"}, {"frame/roof"}};
const Lines kAllLinked = {
    {"frame/ground"}, {"left", "frame/ground"}, {"right"}, {"frame/roof", "left", "right", "frame/ground"}};

std::map<std::string, std::string> Sources() {
    std::map<std::string, std::string> sources;
    const std::filesystem::path top(kSources);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
        const std::string ending = entry.path().extension().string();
        if (ending == ".cpp" || ending == ".h") {
            std::ifstream file(entry.path());
            std::ostringstream text;
            text << file.rdbuf();
            sources[std::filesystem::relative(entry.path(), top).string()] = text.str();
        }
    }
    return sources;
}

TEST(Includes, OfTheProgramLeadDownwardsToWhatIsLinked) {
    const auto sources = Sources();
    ASSERT_GT(sources.size(), 200U);
    EXPECT_THAT(WrongIncludes(ReadLines(kFloors), ReadLines(kReaches), sources), IsEmpty());
}

TEST(Includes, EverySourceLiesInARoomOrAtTheTop) {
    const Lines floors = ReadLines(kFloors);
    for (const auto& [path, source] : Sources()) {
        EXPECT_TRUE(path.find('/') == std::string::npos || !RoomOf(floors, path).empty()) << path;
    }
}

TEST(Includes, EveryRoomIsThere) {
    for (const auto& rooms : ReadLines(kFloors)) {
        for (const std::string& room : rooms) {
            EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(kSources) / room)) << room;
        }
    }
}

TEST(Includes, AreFoundWhereverTheyStand) {
    EXPECT_THAT(IncludesOf("#include \"a/b.h\"\n  # include  \"c.h\"\n#include <d.h>\n// #include \"e.h\"\n"),
                ElementsAre("a/b.h", "c.h"));
}

TEST(Includes, DownwardsAndWithinARoomAreRight) {
    EXPECT_THAT(WrongIncludes(kTwoFloors, kAllLinked,
                              {{"left/a.cpp", "#include \"left/a.h\"\n#include \"frame/ground/g.h\"\n"},
                               {"frame/roof/r.cpp", "#include \"right/b.h\"\n#include \"other.h\"\n"},
                               {"main.cpp", "#include \"frame/roof/r.h\"\n"}}),
                IsEmpty());
}

TEST(Includes, UpwardsAndSidewaysAreWrong) {
    EXPECT_THAT(WrongIncludes(kTwoFloors, kAllLinked,
                              {{"frame/ground/g.h", "#include \"frame/roof/r.h\"\n"},
                               {"left/a.h", "#include <x>\n#include \"right/b.h\"\n"}}),
                ElementsAre("frame/ground/g.h includes frame/roof/r.h, which does not stand below it",
                            "left/a.h includes right/b.h, which does not stand below it"));
}

TEST(Includes, OfARoomThatIsNotLinkedAreWrong) {
    EXPECT_THAT(WrongIncludes(kTwoFloors, kAllLinked, {{"right/b.h", "#include \"frame/ground/g.h\"\n"}}),
                ElementsAre("right/b.h includes frame/ground/g.h, which its room does not link"));
}

TEST(Includes, TheListsOfThisBuildHaveEveryRoomOnce) {
    const Lines floors = ReadLines(kFloors);
    const Lines reaches = ReadLines(kReaches);
    std::size_t rooms = 0;
    for (const auto& floor : floors) {
        rooms += floor.size();
    }
    EXPECT_EQ(reaches.size(), rooms);
    EXPECT_THAT(floors.front(), Contains("frame/record"));
}

} // namespace
