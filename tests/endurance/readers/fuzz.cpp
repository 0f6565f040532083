// The readers under a fuzzer that is guided by coverage: CORVANTINE_READER names the one. With
// CORVANTINE_SOUND_FILES the sound files are left in that folder first, to begin from.

#include "endurance/readers/readers.h"

#include <QDir>
#include <QFile>
#include <cstdint>

namespace {

Reader Chosen() {
    const QByteArray name = qgetenv("CORVANTINE_READER");
    for (Reader& reader : AllReaders()) {
        if (name == reader.name) {
            return reader;
        }
    }
    qFatal("CORVANTINE_READER names no reader");
}

void LeaveSoundFiles(const Reader& reader, const QString& folder) {
    for (int i = 0; i < reader.sound.size(); ++i) {
        QFile file(QDir(folder).filePath(QStringLiteral("sound%1").arg(i)));
        if (!file.open(QIODevice::WriteOnly) || file.write(reader.sound[i]) != reader.sound[i].size()) {
            qFatal("the sound files cannot be written");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const Reader reader = [] {
        Reader chosen = Chosen();
        if (qEnvironmentVariableIsSet("CORVANTINE_SOUND_FILES")) {
            LeaveSoundFiles(chosen, qEnvironmentVariable("CORVANTINE_SOUND_FILES"));
        }
        return chosen;
    }();
    reader.read(QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}
