#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QVariant>

/// The value that a design bag holds under a key; the default when it holds none or one of another kind.
template <class T> T ReadKey(const QVariantMap& bag, const char* key, const T& fallback) {
    const QVariant value = bag.value(QString::fromLatin1(key));
    return value.isValid() && value.canConvert<T>() ? value.value<T>() : fallback;
}

/// Stores a value under a key unless it equals the default, which is left out of the bag.
template <class T> void WriteKey(QVariantMap& bag, const char* key, const T& value, const T& fallback) {
    if (value != fallback) {
        bag[QString::fromLatin1(key)] = QVariant::fromValue(value);
    }
}

/// A whole number of a design bag, cut to 16 bits.
int ReadInt16(const QVariantMap& bag, const char* key, int fallback);
int ToInt16(int value);

/// The five keys of a font, `<prefix>_Name` to `<prefix>_Underline`; "Aerial", the given size and no style
/// where they are missing.
QFont ReadFontKeys(const QVariantMap& bag, const QString& prefix, double points);
void WriteFontKeys(QVariantMap& bag, const QString& prefix, const QFont& font, double points);
