#include "export/output_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr mode_t kReadableAndWritable = 0666; // less what the user's mask takes away

/// A pipe whose reader has gone, or a limit on the size of files, makes write fail: the signals that would
/// end the program besides are kept away while this lives.
class NoDeadlySignals {
  public:
    NoDeadlySignals() {
        sigemptyset(&deadly_);
        sigaddset(&deadly_, SIGPIPE);
        sigaddset(&deadly_, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &deadly_, &before_);
    }
    ~NoDeadlySignals() {
        const timespec now{};
        while (sigtimedwait(&deadly_, nullptr, &now) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    NoDeadlySignals(const NoDeadlySignals&) = delete;
    NoDeadlySignals& operator=(const NoDeadlySignals&) = delete;

  private:
    sigset_t deadly_{};
    sigset_t before_{};
};

/// One text for one place, however its folders are written.
QString PlaceOf(const QString& path) {
    const QFileInfo file(path);
    return QDir(QDir(file.absolutePath()).canonicalPath()).filePath(file.fileName());
}

bool WaitUntilTaken(int handle, long milliseconds) {
    pollfd taken{.fd = handle, .events = POLLOUT, .revents = 0};
    return milliseconds > 0 && ::poll(&taken, 1, static_cast<int>(milliseconds)) > 0;
}

} // namespace

OutputFiles::System OutputFiles::RealSystem() {
    return {.open =
                [](const char* path) {
                    return ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                                  kReadableAndWritable);
                },
            .write = [](int file, const char* bytes,
                        std::size_t count) { return static_cast<long>(::write(file, bytes, count)); },
            .close = [](int file) { return ::close(file); }};
}

OutputFiles::OutputFiles(System system) : system_(std::move(system)) {}

OutputFiles::~OutputFiles() {
    for (const File& file : files_) {
        if (file.handle >= 0) {
            system_.close(file.handle);
        }
    }
}

bool OutputFiles::WasLeftOpen(const QString& path) const {
    if (files_.empty()) {
        return false;
    }
    const QString place = PlaceOf(path);
    struct stat there {};
    const bool exists = ::stat(QFile::encodeName(path).constData(), &there) == 0;
    return std::any_of(files_.begin(), files_.end(), [&](const File& file) {
        struct stat here {};
        return file.path == place || (exists && file.handle >= 0 && ::fstat(file.handle, &here) == 0 &&
                                      here.st_dev == there.st_dev && here.st_ino == there.st_ino);
    });
}

bool OutputFiles::Open(const QString& path) {
    if (WasLeftOpen(path)) {
        return false;
    }
    const QByteArray name = QFile::encodeName(path);
    int handle = -1;
    do {
        handle = system_.open(name.constData());
    } while (handle < 0 && errno == EINTR);
    if (handle < 0) {
        return false;
    }
    files_.push_back({PlaceOf(path), handle});
    return true;
}

bool OutputFiles::Write(std::string_view bytes) {
    const NoDeadlySignals guard;
    using Clock = std::chrono::steady_clock;
    const auto giveUp = Clock::now() + kPatience;
    const int handle = files_.back().handle;
    while (!bytes.empty()) {
        const long written = system_.write(handle, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0) {
            return false;
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(giveUp - Clock::now());
            if (!WaitUntilTaken(handle, left.count())) {
                return false;
            }
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool OutputFiles::Close() {
    // Whatever close answers, the handle is gone; after EINTR too.
    if (system_.close(std::exchange(files_.back().handle, -1)) != 0 && errno != EINTR) {
        return false;
    }
    files_.pop_back();
    return true;
}
