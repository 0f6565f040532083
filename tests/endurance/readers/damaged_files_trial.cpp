// Every reader against files damaged in every way: what it makes of them is its own affair, but it comes back
// and leaves no report. CORVANTINE_DAMAGED_FILES tells how many of each; 300 unless told.

#include "endurance/readers/readers.h"
#include "support/mutation.h"

#include <gtest/gtest.h>
#include <random>

namespace {

class DamagedFiles : public testing::TestWithParam<Reader> {};

TEST_P(DamagedFiles, AreRead) {
    const Reader& reader = GetParam();
    const int asked = qEnvironmentVariableIntValue("CORVANTINE_DAMAGED_FILES");
    const int files = asked > 0 ? asked : 300;
    std::mt19937 random(20);
    for (int i = 0; i < files; ++i) {
        QByteArray bytes = reader.sound.at(i % reader.sound.size());
        ASSERT_FALSE(bytes.isEmpty()) << "no sound file to damage";
        for (unsigned damage = random() % 4; damage < 4; ++damage) {
            bytes = Mutated(bytes, random);
        }
        reader.read(bytes);
    }
    for (const QByteArray& bytes : reader.sound) {
        for (int length = 0; length < std::min<int>(bytes.size(), files); ++length) {
            reader.read(bytes.left(length)); // cut off in every place of its header
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, DamagedFiles, testing::ValuesIn(AllReaders()),
                         [](const auto& reader) { return std::string(reader.param.name); });

} // namespace
