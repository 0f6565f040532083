#include "export/file_names.h"

#include "frame/record/samples.h"

#include <algorithm>

QString SaveBase(QString given) {
    given.replace(QChar(u'\0'), QLatin1Char(' '));
    qsizetype from = 0;
    qsizetype to = given.size();
    while (from < to && given[from] == QLatin1Char(' ')) {
        ++from;
    }
    while (to > from && given[to - 1] == QLatin1Char(' ')) {
        --to;
    }
    given = given.mid(from, to - from);
    const qsizetype name = std::max<qsizetype>(given.lastIndexOf(QLatin1Char('/')), 0);
    const qsizetype dot = given.indexOf(QLatin1Char('.'), name);
    return dot < 0 ? given : given.left(dot);
}

QString DataFileName(const QString& base, int channel) {
    return channel > kScopeChannels ? base + QStringLiteral(".math%1data.txt").arg(channel - kScopeChannels)
                                    : base + QStringLiteral(".ch%1data.txt").arg(channel);
}

QString SpectrumFileName(const QString& base, int channel) {
    return base + QStringLiteral(".ch%1fft.txt").arg(channel);
}
