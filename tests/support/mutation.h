#pragma once

#include <QByteArray>
#include <random>

/// A text damaged as files get damaged: bits and bytes changed, pieces lost, doubled or filled in, the end
/// cut off, values replaced by what no program would have written. The same generator gives the same texts.
QByteArray Mutated(QByteArray bytes, std::mt19937& random);
