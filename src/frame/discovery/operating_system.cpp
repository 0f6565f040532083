#include "frame/discovery/operating_system.h"
#include "frame/record/record.h"

QString DetectOperatingSystem(std::uint32_t versionWord, Record& record) {
    constexpr std::uint32_t kFamilyBits = 0x8000000F;
    constexpr std::uint32_t kReleaseBits = 0x8000FFFF;
    const std::uint32_t family = versionWord & kFamilyBits;
    record.OSVersionWord = static_cast<std::int32_t>(family);
    record.IsWinXP = (versionWord & kReleaseBits) == 0x105;
    if (record.IsWinXP) {
        return QStringLiteral("Detected O.S.: Win XP");
    }
    if (family == 0x80000004) {
        return QStringLiteral("Detected O.S.: Win 98");
    }
    return family == 5 ? QStringLiteral("Detected O.S.: Win 2000") : QStringLiteral("Detected O.S.: Win ?");
}
