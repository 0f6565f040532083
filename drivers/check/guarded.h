#pragma once

#include <cstddef>
#include <cstring>

namespace check {

/// Memory whose last byte is followed by a page that nobody may touch. What lies before it is watched by a
/// page like that and by a pattern.
class GuardedMemory {
  public:
    GuardedMemory(const char* name, std::size_t bytes);
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    std::byte* Data() const { return data_; }
    std::size_t Bytes() const { return bytes_; }
    /// Puts the pattern everywhere.
    void Clear();
    bool IsUntouched(std::size_t offset, std::size_t bytes) const;
    /// Nothing was written between the page before and the first byte.
    bool FrontIsIntact() const;
    /// From now on writing is an accident as well.
    void MakeReadOnly();

  private:
    std::byte* map_;
    std::size_t mapped_;
    std::byte* data_;
    std::size_t bytes_;
};

/// A buffer of `count` values for a driver to fill.
template <class T> class Guarded {
  public:
    Guarded(const char* name, int count)
        : memory_(name, static_cast<std::size_t>(count) * sizeof(T)), count_(count) {}

    T* Get() { return reinterpret_cast<T*>(memory_.Data()); }
    T& operator[](int i) { return Get()[i]; }
    T* begin() { return Get(); }
    T* end() { return Get() + count_; }
    int Count() const { return count_; }

    void Clear() { memory_.Clear(); }
    /// The driver wrote none of [from, to).
    bool IsUntouched(int from, int to) const {
        return memory_.IsUntouched(static_cast<std::size_t>(from) * sizeof(T),
                                   static_cast<std::size_t>(to - from) * sizeof(T));
    }
    /// The first of [from, to) that the driver left as it was, or to.
    int FirstUntouched(int from, int to) const {
        int i = from;
        while (i < to && !IsUntouched(i, i + 1)) {
            ++i;
        }
        return i;
    }
    bool FrontIsIntact() const { return memory_.FrontIsIntact(); }
    void MakeReadOnly() { memory_.MakeReadOnly(); }

  private:
    GuardedMemory memory_;
    int count_;
};

/// Lets a touched guard page end the process with a text at `accident` that says where it was.
void TellAccidentsTo(char* accident, std::size_t size);

} // namespace check
