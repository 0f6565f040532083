#pragma once

#include <functional>

/// Runs keep when the process is ended by exit() from within, as the toolkit does when the window system goes
/// away, while whatever stands on main's stack still lives. Once destroyed it keeps nothing any more. One at
/// a time: an exit handler sees nothing but globals.
class ExitKeeper {
  public:
    explicit ExitKeeper(std::function<void()> keep);
    ~ExitKeeper();
    ExitKeeper(const ExitKeeper&) = delete;
    ExitKeeper& operator=(const ExitKeeper&) = delete;

  private:
    std::function<void()> keep_;
};
