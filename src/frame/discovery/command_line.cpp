#include "frame/discovery/command_line.h"

#include "frame/discovery/messages.h"
#include "frame/record/record.h"

#include <cmath>
#include <limits>
#include <optional>

namespace {

/// The number that a text is, rounded with ties to even. Its size is not looked at.
std::optional<double> WholeNumber(const QString& text) {
    bool numeric = false;
    const double value = text.trimmed().toDouble(&numeric);
    return numeric && std::isfinite(value) ? std::optional(std::nearbyint(value)) : std::nullopt;
}

bool FitsPort(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return value >= Limits::min() && value <= Limits::max();
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
    const QString p = rest.left(colon);
    const QString c = rest.mid(colon + 1);
    const auto port = WholeNumber(p);
    const auto channel = WholeNumber(c);
    if (!port || !channel || !FitsPort(*port)) {
        return;
    }
    record.ForcedPort = static_cast<std::int32_t>(*port);
    if (*channel < 1 || *channel > kScopeChannels) {
        return;
    }
    record.ForcedChannel = static_cast<std::int32_t>(*channel);
    record.MasterChannel = record.ForcedChannel;
    // As they were typed: "/MIS05:1" and "/MIS5:1" keep settings of their own.
    record.SettingsSuffix = QLatin1Char('_') + p + QLatin1Char(':') + c;
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
