#include "driver/stack_fixture.h"

#include <gmock/gmock.h>

namespace {

class StackFile : public StackFixture {
  protected:
    /// What the library says of a file, which has to leave it without modules.
    std::string Refusal(const std::string& text) { return RefusalOf(Write("bad.stack", text)); }
    std::string RefusalOf(const std::string& path) {
        EXPECT_EQ(Leave(), "");
        testing::internal::CaptureStderr();
        EXPECT_EQ(FindFile(path), 0);
        EXPECT_EQ(driver->GetProductName(1), "");
        std::string said = testing::internal::GetCapturedStderr();
        const std::string place = path + ":";
        EXPECT_EQ(said.find(place), 0U) << said;
        said.erase(0, place.size());
        return said;
    }
};

TEST_F(StackFile, MistakesAreRefusedWithTheirLine) {
    struct Case {
        const char* text;
        const char* said;
    };
    const Case cases[] = {
        {"", "1: there is no [module]\n"},
        {"# nothing\n\nspeed = 2\n", "3: there is no [module]\n"},
        {"speed = fast\n", "1: \"fast\" is not a number\n"},
        {"speed = 0\n", "1: \"0\" is outside 1e-06 to 1e+06\n"},
        {"speed = nan\n", "1: \"nan\" is not a number\n"},
        {"seed = -1\n", "1: \"-1\" is outside 0 to 2147483647\n"},
        {"seed = 99999999999\n", "1: \"99999999999\" is outside 0 to 2147483647\n"},
        {"seed = 1.5\n", "1: \"1.5\" is not a whole number\n"},
        {"\nport = 3\n", "2: \"port\" is no key of a stack\n"},
        {"[modul]\n", "1: neither [module] nor key = value\n"},
        {"[module]\nspeed = 2\n", "2: \"speed\" is no key of a module\n"},
        {"[module]\nserial =\n", "2: \"serial\" has no value\n"},
        {"[module]\nserial = # x\n", "2: \"serial\" has no value\n"},
        {"[module]\nnoise = 1\nnoise = 1\n", "3: \"noise\" is there twice\n"},
        {"[module]\nnoise = 1steps\n", "2: \"1steps\" is not a number\n"},
        {"[module]\nnoise = -1\n", "2: \"-1\" is outside 0 to 127\n"},
        {"[module]\nstacked = maybe\n", "2: \"maybe\" is neither yes nor no\n"},
        {"[module]\nprobe = 0\n", "2: \"0\" is outside 0.001 to 1000\n"},
        {"[module]\nport = 70000\n", "2: \"70000\" is outside 0 to 65535\n"},
        {"[module]\nport = 8\n[module]\nport = 8\n", "4: port 8 is taken by another module\n"},
        {"[module]\nrange_offsets = 1 2\n", "2: 3 numbers are needed\n"},
        {"[module]\nris_band = 1\n", "2: 2 numbers are needed\n"},
        {"[module]\nhardware_revision = 0xZZ\n", "2: \"0xZZ\" is not a whole number\n"},
        {"on_violation = shout\n", "1: \"shout\" is none of tell, end\n"},
        {"[module]\nris_passes = bad\n", "2: \"bad\" is none of valid, invalid, misplaced\n"},
        {"[module]\nbad_readings = 1.5\n", "2: \"1.5\" is outside 0 to 1\n"},
        {"[module]\nbusy_after = -1\n", "2: \"-1\" is outside 0 to 1e+09\n"},
        {"[module]\nstops_answering_after = soon\n", "2: \"soon\" is not a number\n"},
        {"[module]\nanswer_time = 11\n", "2: \"11\" is outside 0 to 10\n"},
        {"[module]\n[module]\n[module]\n[module]\n[module]\n", "5: a stack has no more than 4 modules\n"},
        {"[module]\nsignal = sawtooth\n", "2: \"sawtooth\" is no signal\n"},
        {"[module]\nsignal = sine\n", "2: sine needs frequency=\n"},
        {"[module]\nsignal = sine frequency=1kHz\n", "2: sine needs amplitude=\n"},
        {"[module]\nsignal = sine frequency=1kV amplitude=1V\n", "2: \"1kV\" is not a number in Hz\n"},
        {"[module]\nsignal = sine frequency=0 amplitude=1V\n", "2: \"0\" is outside 1e-06 to 1e+09\n"},
        {"[module]\nsignal = sine frequency=1 amplitude=1 duty=0.5\n", "2: sine has no \"duty\"\n"},
        {"[module]\nsignal = sine frequency=1 frequency=2\n", "2: \"frequency\" is there twice\n"},
        {"[module]\nsignal = sine 48kHz\n", "2: \"48kHz\" is no key=value\n"},
        {"[module]\nsignal = square frequency=1 amplitude=1 duty=1\n",
         "2: \"1\" is outside 0.001 to 0.999\n"},
        {"[module]\nsignal = pulse frequency=1kHz amplitude=1 width=1ms\n",
         "2: the width of a pulse lies between 0 and its period\n"},
        {"[module]\nsignal = file path=\"a b\n", "2: a quote without its other half\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Refusal(c.text), c.said) << c.text;
    }
}

TEST_F(StackFile, ThatCannotBeReadIsRefused) {
    EXPECT_THAT(RefusalOf(folder.filePath("nothing").toStdString()),
                testing::HasSubstr("cannot be read: No such file"));
    EXPECT_THAT(RefusalOf(folder.path().toStdString()), testing::HasSubstr("cannot be read: Is a directory"));
}

TEST_F(StackFile, FilesToPlayAreRefusedWithTheirLineToo) {
    const std::string where = folder.path().toStdString() + "/";
    const auto played = [&](const std::string& content, const std::string& more = "interval=1us") {
        Write("played.txt", content);
        return Refusal("[module]\nnoise = 0\nsignal = file path=played.txt " + more + "\n");
    };
    const std::string name = "3: \"" + where + "played.txt\"";
    EXPECT_EQ(played("1\n2\nx\n"), name + ", line 3: \"x\" is not a number\n");
    EXPECT_EQ(played(""), name + " holds no values\n");
    EXPECT_EQ(played("\n1\n"), name + " holds no values\n");
    EXPECT_EQ(played("nan\n"), name + ", line 1: \"nan\" is not a number\n");
    EXPECT_EQ(played("1\n", ""), "3: \"played.txt\" tells no sample period, so file needs interval=\n");
    EXPECT_THAT(Refusal("[module]\nsignal = file path=missing.txt interval=1us\n"),
                testing::HasSubstr("2: \"" + where + "missing.txt\" cannot be read: No such file"));
}

TEST_F(StackFile, WithRubbishIsRefused) {
    std::string rubbish(100000, '\0');
    for (std::size_t i = 0; i < rubbish.size(); ++i) {
        rubbish[i] = static_cast<char>(i * 2654435761U >> 13);
    }
    Refusal(rubbish);
    Refusal(std::string(1000000, '['));
}

TEST_F(StackFile, LineEndsBlanksAndCommentsDoNotMatter) {
    EXPECT_EQ(Find("  # first\r\n\r\n[module]\t\r\n  serial  =  X#1  # the first\r\n"
                   "signal = sine frequency=1e3 amplitude=20m level=-1.5 phase=-90\r\n"
                   "signal = square amplitude=1kV frequency=2MHz # turned round"),
              1);
    EXPECT_EQ(driver->GetSerialNumber(1), "X#1");
}

TEST_F(StackFile, PortsThatAreNotGivenAreFree) {
    EXPECT_EQ(Find("[module]\nport = 4\n[module]\n[module]\n"), 3);
    EXPECT_EQ(driver->GetPortNumber(1), 4);
    EXPECT_EQ(driver->GetPortNumber(2), 5);
    EXPECT_EQ(driver->GetPortNumber(3), 6);
}

} // namespace
