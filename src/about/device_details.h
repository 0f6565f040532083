#pragma once

#include <QString>
#include <cstdint>

struct Record;

namespace about {

/// What the box says about a module: eight lines, and a note if the module is not in use, joined by the
/// record's line break. channel: 1..4. portOpen: what the driver says of the module's port.
QString DeviceDetails(int channel, const Record& record, bool portOpen);

/// Upper-case hexadecimal of the 32 bits, no prefix, no leading zeros.
QString Hex(std::int32_t value);

} // namespace about
