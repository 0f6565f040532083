#include "signal_line.h"

#include "saved_record.h"
#include "text_values.h"

#include <map>

namespace sim {

namespace {

constexpr double kMostVolts = 1e6;
constexpr double kSlowest = 1e-6; // hertz
constexpr double kFastest = 1e9;

/// The key=value words of a signal line; what nobody took is a mistake.
class Arguments {
  public:
    Arguments(std::string_view kind, const std::vector<std::string>& words) : kind_(kind) {
        for (std::size_t i = 1; i < words.size(); ++i) {
            const auto equals = words[i].find('=');
            if (equals == std::string::npos) {
                throw BadLine("\"" + words[i] + "\" is no key=value");
            }
            if (!values_.emplace(words[i].substr(0, equals), words[i].substr(equals + 1)).second) {
                throw BadLine("\"" + words[i].substr(0, equals) + "\" is there twice");
            }
        }
    }

    bool Has(const std::string& key) const { return values_.count(key) != 0; }

    std::string Text(const std::string& key) {
        const auto found = values_.find(key);
        if (found == values_.end()) {
            throw BadLine(kind_ + " needs " + key + "=");
        }
        std::string value = found->second;
        values_.erase(found);
        return value;
    }
    double Number(const std::string& key, std::string_view unit, double least, double most) {
        return ParseNumber(Text(key), unit, least, most);
    }
    double Number(const std::string& key, std::string_view unit, double least, double most,
                  double otherwise) {
        return Has(key) ? Number(key, unit, least, most) : otherwise;
    }

    void ExpectEmpty() const {
        if (!values_.empty()) {
            throw BadLine(kind_ + " has no \"" + values_.begin()->first + "\"");
        }
    }

  private:
    std::string kind_;
    std::map<std::string, std::string> values_;
};

Cycle CycleOf(Arguments& arguments) {
    Cycle cycle;
    cycle.frequency = arguments.Number("frequency", "Hz", kSlowest, kFastest);
    cycle.amplitude = arguments.Number("amplitude", "V", -kMostVolts, kMostVolts);
    cycle.level = arguments.Number("level", "V", -kMostVolts, kMostVolts, 0);
    const double turns = arguments.Number("phase", "deg", -360, 360, 0) / 360;
    cycle.phase = turns < 0 ? turns + 1 : turns;
    return cycle;
}

std::unique_ptr<Wave> PulseOf(Arguments& arguments) {
    const Cycle cycle = CycleOf(arguments);
    const double width = arguments.Number("width", "s", 0, 1 / kSlowest);
    if (width <= 0 || width * cycle.frequency >= 1) {
        throw BadLine("the width of a pulse lies between 0 and its period");
    }
    return MakePulse(cycle, width);
}

std::unique_ptr<Wave> PlaybackOf(Arguments& arguments, const std::string& folder) {
    const std::string path = arguments.Text("path");
    const double gain = arguments.Number("gain", "", -kMostVolts, kMostVolts, 1);
    SavedRecord record = ReadSavedRecord(!path.empty() && path.front() == '/' ? path : folder + path);
    const double interval =
        arguments.Has("interval") ? arguments.Number("interval", "s", 1 / kFastest, 1e6) : record.interval;
    if (interval <= 0) {
        throw BadLine("\"" + path + "\" tells no sample period, so file needs interval=");
    }
    for (float& value : record.values) {
        value *= static_cast<float>(gain);
    }
    return MakePlayback(std::move(record.values), interval);
}

} // namespace

void AddSignal(Signal& signal, std::string_view line, const std::string& folder, std::uint32_t seed) {
    const std::vector<std::string> words = Words(line);
    const std::string kind = words.empty() ? std::string() : words.front();
    Arguments arguments(kind, words);
    std::unique_ptr<Wave> wave;
    bool compensation = false;
    if (kind == "sine") {
        wave = MakeSine(CycleOf(arguments));
    } else if (kind == "square") {
        const Cycle cycle = CycleOf(arguments);
        wave = MakeSquare(cycle, arguments.Number("duty", "", 0.001, 0.999, 0.5));
    } else if (kind == "triangle") {
        const Cycle cycle = CycleOf(arguments);
        wave = MakeTriangle(cycle, arguments.Number("symmetry", "", 0.01, 0.99, 0.5));
    } else if (kind == "pulse") {
        wave = PulseOf(arguments);
    } else if (kind == "noise") {
        const double amplitude = arguments.Number("amplitude", "V", 0, kMostVolts);
        wave = MakeNoise(amplitude, arguments.Number("bandwidth", "Hz", kSlowest, kFastest, 5e6), seed);
    } else if (kind == "file") {
        wave = PlaybackOf(arguments, folder);
    } else if (kind == "compensation") {
        const double top = arguments.Number("amplitude", "V", 0, kMostVolts, 3);
        wave = MakeSquare({1000, top / 2, top / 2, 0}, 0.5);
        compensation = true;
    } else {
        throw BadLine("\"" + kind + "\" is no signal");
    }
    arguments.ExpectEmpty();
    compensation ? signal.AddCompensation(std::move(wave)) : signal.Add(std::move(wave));
}

} // namespace sim
