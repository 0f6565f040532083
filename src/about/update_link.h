#pragma once

#include <QString>

namespace about {

/// The address of the update page that the file holds: everything from its first "http" on, line ends and
/// all. Empty without one, and for a file that cannot be read, is no plain file or is far too large.
QString UpdateLink(const QString& file);

} // namespace about
