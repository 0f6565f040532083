#include "driver/driver_choice.h"

#include "driver/builtin_backend.h"
#include "driver/library_backend.h"

#include <QDir>
#include <QFileInfo>

namespace {

#if defined(Q_OS_WIN)
constexpr auto kEnding = ".dll";
#elif defined(Q_OS_MACOS)
constexpr auto kEnding = ".dylib";
#else
constexpr auto kEnding = ".so";
#endif

constexpr auto kDemonstration = "demonstration";

} // namespace

QString NamedDriver() {
    return qEnvironmentVariable("CORVANTINE_DRIVER");
}

QString DriverBesideProgram(const QString& folder) {
    return QDir(folder).filePath(QString("CorvantineDrvr_W32") + kEnding);
}

DriverChoice ChooseDriver(const QString& named, const QString& applicationFolder) {
    if (named == QLatin1String(kDemonstration)) {
        return {std::make_unique<BuiltinBackend>(), {}, {}};
    }
    const QString beside = DriverBesideProgram(applicationFolder);
    const QString library = !named.isEmpty() ? named : QFileInfo::exists(beside) ? beside : QString();
    if (library.isEmpty()) {
        return {std::make_unique<BuiltinBackend>(), {}, {}};
    }
    LibraryBackend::Loaded loaded = LibraryBackend::Load(library);
    if (loaded.backend) {
        return {std::move(loaded.backend), library, {}};
    }
    return {std::make_unique<BuiltinBackend>(),
            {},
            QString("The driver library\n%1\ncannot be used: %2.\nUsing the built-in driver instead.")
                .arg(library, loaded.reason)};
}
