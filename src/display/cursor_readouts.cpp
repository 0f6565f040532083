#include "display/cursor_readouts.h"

#include "frame/helpers/helpers.h"

const QString& CursorReadouts::Text(int cursor, double position) {
    Kept& kept = kept_.at(static_cast<std::size_t>(cursor));
    if (kept.text.isEmpty() || !kept.single || kept.position != position) {
        kept = {QStringLiteral("t%1@ %2").arg(cursor + 1).arg(FormatSeconds(position)), position, 0, true};
    }
    return kept.text;
}

const QString& CursorReadouts::Text(int cursor, double position, int next, double nextPosition) {
    Kept& kept = kept_.at(static_cast<std::size_t>(cursor));
    if (kept.text.isEmpty() || kept.single || kept.position != position ||
        kept.nextPosition != nextPosition) {
        kept = {QStringLiteral("t%1@ %2 %3 t%4: %5")
                    .arg(cursor + 1)
                    .arg(FormatSeconds(position), QString(QChar(kArrow)))
                    .arg(next + 1)
                    .arg(FormatSeconds(nextPosition - position)),
                position, nextPosition, false};
    }
    return kept.text;
}
