#include "support/mutation.h"

#include <QList>

namespace {

const QList<QByteArray>& OddValues() {
    static const QList<QByteArray> values = {"",
                                             "-1",
                                             "0",
                                             "1",
                                             "2147483647",
                                             "2147483648",
                                             "-99999999",
                                             "1e999",
                                             "-1e308",
                                             "1e-320",
                                             "nan",
                                             "inf",
                                             "0x1F",
                                             "1,5",
                                             "1.000,5",
                                             "True",
                                             "False",
                                             "#TRUE#",
                                             "\"",
                                             "\"\\x",
                                             "@Variant(",
                                             "@Invalid()",
                                             "\xd9\xa1\xd9\xa2",
                                             "\xff\xfe",
                                             "1;2",
                                             "a, b, c",
                                             "%41",
                                             "..",
                                             "3.4028235e38",
                                             "-32769",
                                             "32768",
                                             "0.99999999",
                                             "-0.0000001",
                                             "\\0\\0",
                                             "999999999999999999",
                                             QByteArray(70000, '9')};
    return values;
}

std::size_t Below(std::mt19937& random, qsizetype bound) {
    return bound > 0 ? random() % static_cast<std::size_t>(bound) : 0;
}

void ReplaceValue(QByteArray& bytes, std::mt19937& random) {
    const auto from = static_cast<qsizetype>(Below(random, bytes.size()));
    const auto equals = bytes.indexOf('=', from);
    if (equals < 0) {
        return;
    }
    const auto end = bytes.indexOf('\n', equals);
    bytes.replace(equals + 1, (end < 0 ? bytes.size() : end) - equals - 1,
                  OddValues()[static_cast<qsizetype>(Below(random, OddValues().size()))]);
}

void MutateOnce(QByteArray& bytes, std::mt19937& random) {
    const auto at = static_cast<qsizetype>(Below(random, bytes.size()));
    const auto length = static_cast<qsizetype>(Below(random, 40));
    switch (random() % 9) {
    case 0:
        if (!bytes.isEmpty()) {
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << (random() % 8)));
        }
        break;
    case 1:
        if (!bytes.isEmpty()) {
            bytes[at] = static_cast<char>(random() & 0xFF);
        }
        break;
    case 2:
        bytes.remove(at, length);
        break;
    case 3:
        bytes.insert(at, bytes.mid(static_cast<qsizetype>(Below(random, bytes.size())), length));
        break;
    case 4:
        bytes.insert(at, QByteArray(length, static_cast<char>(random() & 0xFF)));
        break;
    case 5:
        if (random() % 8 == 0) {
            bytes.truncate(at);
        }
        break;
    default: // by far the best way to a handler
        ReplaceValue(bytes, random);
    }
}

} // namespace

QByteArray Mutated(QByteArray bytes, std::mt19937& random) {
    for (auto times = 1 + random() % 12; times > 0; --times) {
        MutateOnce(bytes, random);
    }
    return bytes;
}
