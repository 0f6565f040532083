#include "controls/design_keys.h"

#include "controls/fonts.h"

#include <algorithm>
#include <limits>

namespace {

constexpr auto kFamily = "Aerial"; // as the controls have always had it

QByteArray Key(const QString& prefix, const char* part) {
    return prefix.toLatin1() + part;
}

} // namespace

int ToInt16(int value) {
    using Limits = std::numeric_limits<qint16>;
    return std::clamp<int>(value, Limits::min(), Limits::max());
}

int ReadInt16(const QVariantMap& bag, const char* key, int fallback) {
    return ToInt16(ReadKey(bag, key, fallback));
}

QFont ReadFontKeys(const QVariantMap& bag, const QString& prefix, double points) {
    QFont font =
        InstrumentFont(ReadKey(bag, Key(prefix, "_Name"), QString::fromLatin1(kFamily)),
                       ReadKey(bag, Key(prefix, "_Size"), points), ReadKey(bag, Key(prefix, "_Bold"), false));
    font.setItalic(ReadKey(bag, Key(prefix, "_Italic"), false));
    font.setUnderline(ReadKey(bag, Key(prefix, "_Underline"), false));
    return font;
}

void WriteFontKeys(QVariantMap& bag, const QString& prefix, const QFont& font, double points) {
    const QFont plain = InstrumentFont(QString::fromLatin1(kFamily), points);
    WriteKey(bag, Key(prefix, "_Name"), font.family(), plain.family());
    WriteKey(bag, Key(prefix, "_Size"), FontPoints(font), FontPoints(plain));
    WriteKey(bag, Key(prefix, "_Bold"), font.bold(), false);
    WriteKey(bag, Key(prefix, "_Italic"), font.italic(), false);
    WriteKey(bag, Key(prefix, "_Underline"), font.underline(), false);
}
