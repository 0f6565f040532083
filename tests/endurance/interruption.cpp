#include "endurance/interruption.h"

#include <QDir>
#include <csignal>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

Ending HowItEnded(int status) {
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Ending::Done : Ending::Failed;
}

} // namespace

Ending KilledAtCall(int call, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(1);
        }
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) {
        return Ending::Failed;
    }
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    constexpr int kSystemCall = SIGTRAP | 0x80;
    int stops = 0; // one at the begin and one at the end of each call
    long signal = 0;
    for (;;) {
        ptrace(PTRACE_SYSCALL, child, nullptr, signal);
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status)) {
            return HowItEnded(status);
        }
        signal = WSTOPSIG(status) == kSystemCall ? 0 : WSTOPSIG(status);
        stops += signal == 0 ? 1 : 0;
        if (signal == 0 && stops == 2 * call - 1) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return Ending::Killed;
        }
    }
}

int OnAFullDisk(long bytes, const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        const auto limit = static_cast<rlim_t>(bytes);
        const rlimit most{limit, limit};
        std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
        setrlimit(RLIMIT_FSIZE, &most);
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

QString FolderInMemory() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
           QStringLiteral("/interrupted-XXXXXX");
}
