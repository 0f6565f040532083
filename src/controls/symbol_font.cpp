#include "controls/symbol_font.h"

#include <QFontDatabase>
#include <QStringList>
#include <array>

// Outside any namespace: the resource of a static library has to be asked for by name.
static void InitResource() {
    Q_INIT_RESOURCE(symbol_font);
}

namespace {

constexpr std::array kStandIns = {u'<', u'>', u'\\', u'/', u'\u00D7', u'_', u'=', u'\u25A1', u':'};

} // namespace

bool LoadSymbolFont() {
    static const bool loaded = [] {
        InitResource();
        const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/controls/Corvantine.ttf"));
        return QFontDatabase::applicationFontFamilies(id).contains(QLatin1String(kSymbolFamily));
    }();
    return loaded;
}

QString PrintedCaption(const QString& caption, const QFont& font, bool symbolsLoaded) {
    if (symbolsLoaded || font.family().compare(QLatin1String(kSymbolFamily), Qt::CaseInsensitive) != 0) {
        return caption;
    }
    QString printed = caption;
    for (QChar& c : printed) {
        const int index = c.unicode() - u'0';
        if (index >= 0 && index < static_cast<int>(kStandIns.size())) {
            c = QChar(kStandIns[static_cast<std::size_t>(index)]);
        }
    }
    return printed;
}
