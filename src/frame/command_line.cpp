#include "frame/command_line.h"

#include <cmath>
#include <limits>
#include <optional>

namespace {

std::optional<std::int32_t> WholeNumber(const QString& text) {
    bool numeric = false;
    const double value = std::nearbyint(text.trimmed().toDouble(&numeric));
    using Limits = std::numeric_limits<std::int32_t>;
    if (!numeric || !(value >= Limits::min() && value <= Limits::max())) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

} // namespace

bool IsDebugWord(const QString& commandLine) {
    return commandLine == QLatin1String("DEBUG");
}

void ReadCommandLine(const QString& commandLine, Record& record) {
    static const QString kForce = QStringLiteral("/MIS");
    record.ForcedPort = kNothingForced;
    record.ForcedChannel = kNothingForced;
    record.MasterChannel = 1;
    if (commandLine.isEmpty()) {
        return;
    }
    record.ForcedPort = kNoUsableForcing;
    record.ForcedChannel = kNoUsableForcing;
    const auto found = commandLine.indexOf(kForce);
    if (found < 0) {
        return;
    }
    const QString rest = commandLine.mid(found + kForce.size());
    const auto colon = rest.indexOf(QLatin1Char(':'));
    if (colon < 0) {
        return;
    }
    const auto port = WholeNumber(rest.left(colon));
    const auto channel = WholeNumber(rest.mid(colon + 1));
    if (!port || !channel) {
        return;
    }
    record.ForcedPort = *port;
    if (*channel < 1 || *channel > kScopeChannels) {
        return;
    }
    record.ForcedChannel = *channel;
    record.MasterChannel = *channel;
    record.SettingsSuffix = QStringLiteral("_%1:%2").arg(*port).arg(*channel);
}

void CheckCommandLineError(const QString& commandLine, Record& record, const ShowMessage& show) {
    const bool unusable = record.ForcedPort == kNoUsableForcing || record.ForcedChannel == kNoUsableForcing;
    if (!unusable || record.DebugMode) {
        return;
    }
    record.ForcedPort = kNoUsableForcing;
    record.ForcedChannel = kNoUsableForcing;
    show(messages::CommandLineError(commandLine));
}
