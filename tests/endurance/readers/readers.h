#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <functional>
#include <vector>

/// A part of the program, or of the simulated stack, that reads a file which somebody may have damaged.
struct Reader {
    const char* name;
    QByteArrayList sound; ///< files as they should be, for damaging them
    std::function<void(const QByteArray&)> read;
};

std::vector<Reader> AllReaders();
