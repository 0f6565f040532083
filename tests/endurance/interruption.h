#pragma once

#include <QString>
#include <functional>

enum class Ending { Killed, Done, Failed };

/// Runs work in a process of its own, which is killed when it asks the system for the call'th time, before
/// that call has any effect. Done: it asked less often. Failed: it ended by itself in another way than by
/// returning.
Ending KilledAtCall(int call, const std::function<void()>& work);

/// Runs work in a process of its own in which no file can become longer than so many bytes, as on a disk that
/// is full. Its exit code, or -1.
int OnAFullDisk(long bytes, const std::function<int()>& work);

/// A template for a temporary folder in memory, where a sync costs nothing: a process is killed in these
/// trials, not a machine.
QString FolderInMemory();
