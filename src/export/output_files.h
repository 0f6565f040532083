#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

/// Writes files one after the other. A file that was opened and not closed, since writing or closing it
/// failed or its writer gave up, stays open as long as this lives, and nobody can open it again.
class OutputFiles {
  public:
    /// The system's calls, with errno; a test may put failures in their place.
    struct System {
        std::function<int(const char* path)> open;
        std::function<long(int file, const char* bytes, std::size_t count)> write;
        std::function<int(int file)> close;
    };
    static System RealSystem();

    explicit OutputFiles(System system = RealSystem());
    ~OutputFiles();
    OutputFiles(const OutputFiles&) = delete;
    OutputFiles& operator=(const OutputFiles&) = delete;

    /// Makes the file, or empties it. False if that cannot be, or if it was left open before. Waits for
    /// nobody: a pipe without a reader fails at once.
    bool Open(const QString& path);
    /// Writes to the file that was opened last, all of it or false. A reader that takes nothing for a second
    /// is given up.
    bool Write(std::string_view bytes);
    bool Close();

  private:
    struct File {
        QString path; ///< without links in its folders
        int handle = -1;
    };
    bool WasLeftOpen(const QString& path) const;

    System system_;
    std::vector<File> files_; ///< the one being written is the last
};
