#include "driver/library_backend.h"

#include <QFileInfo>
#include <QLibrary>
#include <QStringList>

namespace {

constexpr int kMissingNamed = 3;

/// The loader repeats the file's name, which the caller says already.
QString LoaderReason(const QString& error, const QString& path) {
    const QString prefix = path + ": ";
    const auto at = error.lastIndexOf(prefix);
    QString reason = at < 0 ? error : error.mid(at + prefix.size());
    while (reason.endsWith(')') && reason.count('(') < reason.count(')')) {
        reason.chop(1);
    }
    return reason;
}

QString MissingExports(const QStringList& missing) {
    const QString named = missing.mid(0, kMissingNamed).join(", ");
    return missing.size() <= kMissingNamed ? QString("it lacks the export %1").arg(named)
                                           : QString("it lacks the exports %1 and %2 more")
                                                 .arg(named)
                                                 .arg(missing.size() - kMissingNamed);
}

} // namespace

LibraryBackend::Loaded LibraryBackend::Load(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists()) {
        return {nullptr, "there is no such file"};
    }
    if (!file.isFile() && !file.isDir()) {
        return {nullptr, "it is no file"}; // the loader would wait for somebody to write into a pipe
    }
    const QString absolute = file.absoluteFilePath();
    QLibrary library(absolute);
    // A symbol that the library lacks itself is found out here and not in the middle of a measurement.
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library.load()) {
        return {nullptr, LoaderReason(library.errorString(), absolute)};
    }

    DriverExports exports;
    QStringList missing;
    const auto resolve = [&](auto& pointer, const char* name) {
        pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(library.resolve(name));
        if (pointer == nullptr) {
            missing.append(name);
        }
    };
#define CORVANTINE_RESOLVE(operation) resolve(exports.operation, "CorvantineDrvr_" #operation);
    CORVANTINE_OPERATIONS(CORVANTINE_RESOLVE)
#undef CORVANTINE_RESOLVE
    if (!missing.isEmpty()) {
        // Not unloaded: what it lacks does not tell whether it runs threads already.
        return {nullptr, MissingExports(missing)};
    }
    return {std::make_unique<LibraryBackend>(exports), {}};
}
