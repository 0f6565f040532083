#pragma once

#include "findings.h"

#include "corvantine_driver.h"
#include "corvantine_driver_operations.h"

#include <cstddef>
#include <string>
#include <type_traits>

namespace check {

/// Seconds of a clock that only goes on.
double Now();

/// Tells the supervising process what runs, and keeps how long it took.
class Watch {
  public:
    explicit Watch(Shared& shared) : shared_(shared) {}

    void Name(const char* operation);
    void Argument(double value);
    void Argument(const void* pointer);
    void Begin(bool mayBeSlow);
    void End(int operation);

  private:
    void Add(const char* text);

    Shared& shared_;
    std::size_t length_ = 0;
    bool first_ = true;
};

template <class Function> class Operation;

/// An export of the driver library, called under watch.
template <class Result, class... Parameters> class Operation<Result(Parameters...)> {
  public:
    Operation(Watch& watch, const char* name, int index, void* symbol)
        : watch_(watch), name_(name), index_(index),
          function_(reinterpret_cast<Result (*)(Parameters...)>(symbol)) {}

    Result operator()(Parameters... arguments) const {
        watch_.Name(name_);
        (Tell(arguments), ...);
        watch_.Begin(MayBeSlow(name_));
        if constexpr (std::is_void_v<Result>) {
            function_(arguments...);
            watch_.End(index_);
        } else {
            const Result result = function_(arguments...);
            watch_.End(index_);
            return result;
        }
    }

    const char* Name() const { return name_; }
    int Index() const { return index_; }

  private:
    template <class T> void Tell(T value) const {
        if constexpr (std::is_pointer_v<T>) {
            watch_.Argument(static_cast<const void*>(value));
        } else {
            watch_.Argument(static_cast<double>(value));
        }
    }
    static bool MayBeSlow(const std::string& name) {
        return name == "OpenDrvr" || name == "Enumerate" || name == "OpenAndReset" || name == "InitScope" ||
               name == "Close" || name == "CloseDrvr";
    }

    Watch& watch_;
    const char* name_;
    int index_;
    Result (*function_)(Parameters...);
};

/// A loaded driver library. Load first, then make one.
struct Driver {
    Driver(Watch& watch, void* library);

// NOLINTNEXTLINE(bugprone-macro-parentheses): a name to declare takes none
#define CORVANTINE_CHECKED_OPERATION(name) Operation<decltype(CorvantineDrvr_##name)> name;
    CORVANTINE_OPERATIONS(CORVANTINE_CHECKED_OPERATION)
#undef CORVANTINE_CHECKED_OPERATION
    bool loaded_;
};

/// The library as the program loads it, or null and the reason.
void* LoadLibrary(const char* path, std::string& reason);
/// The exports that the library lacks, separated by blanks.
std::string MissingExports(void* library);
/// Names of the operations by index.
const char* OperationName(int index);
int OperationCount();

} // namespace check
