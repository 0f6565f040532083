#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QVariant>

/// The value that a design bag holds under a key, which stored form data have in lower case; the default when
/// it holds none or one that is not of that kind.
template <class T> T ReadKey(const QVariantMap& bag, const char* key, const T& fallback) {
    const QString name = QString::fromLatin1(key);
    auto found = bag.constFind(name);
    if (found == bag.constEnd()) {
        found = bag.constFind(name.toLower());
    }
    if (found == bag.constEnd()) {
        return fallback;
    }
    QVariant value = *found;
    return value.convert(QMetaType::fromType<T>()) ? value.value<T>() : fallback;
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

// A control names its design keys once, each with its value and its default, in a function that takes one of
// these two. A value that is valid for nothing is taken as missing.

struct ReadKeys {
    const QVariantMap& bag;

    template <class T> void operator()(const char* key, T& value, const T& fallback) const {
        value = ReadKey(bag, key, fallback);
    }
    template <class T> void operator()(const char* key, T& value, const T& fallback, bool (*valid)(T)) const {
        const T read = ReadKey(bag, key, fallback);
        value = valid(read) ? read : fallback;
    }
    void Int16(const char* key, int& value, int fallback) const { value = ReadInt16(bag, key, fallback); }
    void Font(const QString& prefix, QFont& font, double points) const {
        font = ReadFontKeys(bag, prefix, points);
    }
};

struct WriteKeys {
    QVariantMap& bag;

    template <class T> void operator()(const char* key, const T& value, const T& fallback) const {
        WriteKey(bag, key, value, fallback);
    }
    template <class T>
    void operator()(const char* key, const T& value, const T& fallback, bool (* /*valid*/)(T)) const {
        WriteKey(bag, key, value, fallback);
    }
    void Int16(const char* key, int value, int fallback) const { WriteKey(bag, key, value, fallback); }
    void Font(const QString& prefix, const QFont& font, double points) const {
        WriteFontKeys(bag, prefix, font, points);
    }
};
