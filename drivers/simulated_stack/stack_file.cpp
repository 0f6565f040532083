#include "stack_file.h"

#include "signal_line.h"
#include "text_values.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <set>

namespace sim {

namespace {

constexpr std::int32_t kMostInteger = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kLongestName = 101;
constexpr double kLongestTime = 1e9;  ///< s
constexpr double kSlowestAnswer = 10; ///< s

/// Reads line by line; throws BadLine.
class Parser {
  public:
    explicit Parser(std::string folder) : folder_(std::move(folder)) {}

    void Take(std::string_view line) {
        if (line == "[module]") {
            BeginModule();
            return;
        }
        const auto equals = line.find('=');
        if (equals == std::string_view::npos) {
            throw BadLine("neither [module] nor key = value");
        }
        const std::string key(Trimmed(line.substr(0, equals)));
        const std::string value(Trimmed(line.substr(equals + 1)));
        if (value.empty()) {
            throw BadLine("\"" + key + "\" has no value");
        }
        if (key != "signal" && !seen_.insert(key).second) {
            throw BadLine("\"" + key + "\" is there twice");
        }
        stack_.modules.empty() ? SetStack(key, value) : SetModule(key, value);
    }

    StackDescription Finish() {
        if (stack_.modules.empty()) {
            throw BadLine("there is no [module]");
        }
        return std::move(stack_);
    }

  private:
    void BeginModule() {
        if (stack_.modules.size() == kSlots) {
            throw BadLine("a stack has no more than " + std::to_string(kSlots) + " modules");
        }
        const auto number = static_cast<std::int32_t>(stack_.modules.size()) + 1;
        ModuleDescription module;
        module.serial = "SIM000" + std::to_string(number);
        module.port = 2 + number;
        while (PortTaken(module.port)) {
            ++module.port;
        }
        stack_.modules.push_back(std::move(module));
        seen_.clear();
    }

    bool PortTaken(std::int32_t port) const {
        return std::any_of(stack_.modules.begin(), stack_.modules.end(),
                           [port](const ModuleDescription& other) { return other.port == port; });
    }

    void SetStack(const std::string& key, const std::string& value) {
        if (key == "speed") {
            stack_.speed = ParseNumber(value, "", 1e-6, 1e6);
        } else if (key == "seed") {
            stack_.seed = static_cast<std::uint32_t>(ParseInteger(value, 0, kMostInteger));
        } else if (key == "on_violation") {
            stack_.endOnViolation = OneOf(value, {"tell", "end"}) == 1;
        } else {
            throw BadLine("\"" + key + "\" is no key of a stack");
        }
    }

    void SetModule(const std::string& key, const std::string& value) {
        using Set = std::function<void(ModuleDescription&, const std::string&)>;
        static const std::map<std::string, Set> kKeys = {
            {"product", [](auto& m, auto& v) { m.product = Name(v); }},
            {"serial", [](auto& m, auto& v) { m.serial = Name(v); }},
            {"hardware_revision",
             [](auto& m, auto& v) { m.hardwareRevision = ParseInteger(v, 0, kMostInteger); }},
            {"controller_revision",
             [](auto& m, auto& v) { m.controllerRevision = ParseInteger(v, 0, kMostInteger); }},
            {"ris_band",
             [](auto& m, auto& v) {
                 const auto words = Expect(Words(v), 2);
                 m.risBand = {Shown(words[0]), Shown(words[1])};
             }},
            {"trigger_dac_offset", [](auto& m, auto& v) { m.triggerDACOffset = Shown(v); }},
            {"raw_channel_offset",
             [](auto& m, auto& v) {
                 m.rawChannelOffset = static_cast<float>(ParseNumber(v, "", -1e6, 1e6));
             }},
            {"offset_dac_scale",
             [](auto& m, auto& v) { m.offsetDACScale = static_cast<float>(ParseNumber(v, "", -1e6, 1e6)); }},
            {"stacked", [](auto& m, auto& v) { m.stacked = ParseYesNo(v); }},
            {"powered", [](auto& m, auto& v) { m.powered = ParseYesNo(v); }},
            {"opens", [](auto& m, auto& v) { m.opens = ParseYesNo(v); }},
            {"probe", [](auto& m, auto& v) { m.probe = ParseNumber(v, "", 0.001, 1000); }},
            {"range_offsets",
             [](auto& m, auto& v) {
                 const auto words = Expect(Words(v), kRanges);
                 std::transform(words.begin(), words.end(), m.rangeOffsets.begin(), [](const auto& word) {
                     return static_cast<float>(ParseNumber(word, "", -127, 127));
                 });
             }},
            {"noise", [](auto& m, auto& v) { m.noise = static_cast<float>(ParseNumber(v, "", 0, 127)); }},
            {"stops_answering_after",
             [](auto& m, auto& v) { m.faults.stopsAnsweringAfter = ParseNumber(v, "s", 0, kLongestTime); }},
            {"busy_after",
             [](auto& m, auto& v) { m.faults.busyAfter = ParseNumber(v, "s", 0, kLongestTime); }},
            {"ris_passes",
             [](auto& m, auto& v) {
                 m.faults.risPasses =
                     static_cast<Faults::RISPasses>(OneOf(v, {"valid", "invalid", "misplaced"}));
             }},
            {"bad_readings", [](auto& m, auto& v) { m.faults.badReadings = ParseNumber(v, "", 0, 1); }},
            {"answer_time",
             [](auto& m, auto& v) { m.faults.answerTime = ParseNumber(v, "s", 0, kSlowestAnswer); }},
        };
        ModuleDescription& module = stack_.modules.back();
        if (key == "signal") {
            AddSignal(module.signal, value, folder_, stack_.seed + ++signals_);
        } else if (key == "port") {
            SetPort(module, ParseInteger(value, 0, 65535));
        } else if (const auto found = kKeys.find(key); found != kKeys.end()) {
            found->second(module, value);
        } else {
            throw BadLine("\"" + key + "\" is no key of a module");
        }
    }

    void SetPort(ModuleDescription& module, std::int32_t port) {
        if (port != module.port && PortTaken(port)) {
            throw BadLine("port " + std::to_string(port) + " is taken by another module");
        }
        module.port = port;
    }

    static std::string Name(const std::string& value) {
        if (value.size() > kLongestName) {
            throw BadLine("a name has no more than " + std::to_string(kLongestName) + " characters");
        }
        return value;
    }

    /// Which of the words it is.
    static int OneOf(const std::string& value, std::initializer_list<std::string_view> words) {
        int number = 0;
        std::string all;
        for (const std::string_view word : words) {
            if (value == word) {
                return number;
            }
            all += (number++ == 0 ? "" : ", ") + std::string(word);
        }
        throw BadLine("\"" + value + "\" is none of " + all);
    }

    static std::int32_t Shown(const std::string& value) {
        return ParseInteger(value, -kMostInteger, kMostInteger);
    }

    static std::vector<std::string> Expect(std::vector<std::string> words, std::size_t count) {
        if (words.size() != count) {
            throw BadLine(std::to_string(count) + " numbers are needed");
        }
        return words;
    }

    std::string folder_;
    StackDescription stack_;
    std::set<std::string> seen_;
    std::uint32_t signals_ = 0;
};

/// A mark at the start or behind a blank begins a comment; one inside a word belongs to it.
std::string_view WithoutComment(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '#' && (i == 0 || line[i - 1] == ' ' || line[i - 1] == '\t')) {
            return line.substr(0, i);
        }
    }
    return line;
}

} // namespace

StackFile ParseStack(std::istream& text, const std::string& name, const std::string& folder) {
    Parser parser(folder);
    std::string line;
    int number = 0;
    try {
        while (std::getline(text, line)) {
            ++number;
            const std::string_view content = Trimmed(WithoutComment(line));
            if (!content.empty()) {
                parser.Take(content);
            }
        }
        return {parser.Finish(), {}};
    } catch (const BadLine& bad) {
        return {std::nullopt, name + ":" + std::to_string(std::max(number, 1)) + ": " + bad.what()};
    }
}

StackFile ReadStackFile(const std::string& path) {
    std::ifstream file(path);
    // A folder opens like a file and fails at the first character.
    if (!file || (file.peek(), file.bad())) {
        return {std::nullopt, path + ":0: cannot be read: " + std::strerror(errno)};
    }
    file.clear();
    const auto separator = path.find_last_of("/\\");
    return ParseStack(file, path,
                      separator == std::string::npos ? std::string() : path.substr(0, separator + 1));
}

} // namespace sim
