#include "frame/session/exit_keeper.h"

#include <cstdlib>
#include <utility>

namespace {

std::function<void()>* armed = nullptr;

void Keep() {
    // What is called may itself end in exit.
    if (auto* keep = std::exchange(armed, nullptr)) {
        (*keep)();
    }
}

} // namespace

ExitKeeper::ExitKeeper(std::function<void()> keep) : keep_(std::move(keep)) {
    [[maybe_unused]] static const bool registered = std::atexit(Keep) == 0;
    armed = &keep_;
}

ExitKeeper::~ExitKeeper() {
    armed = nullptr;
}
