#include "driver.h"

#include <chrono>
#include <cstdio>
#include <dlfcn.h>

namespace check {

namespace {

#define CORVANTINE_OPERATION_NAME(operation) #operation,
constexpr const char* kNames[] = {CORVANTINE_OPERATIONS(CORVANTINE_OPERATION_NAME)};
#undef CORVANTINE_OPERATION_NAME

enum Index : int {
#define CORVANTINE_OPERATION_INDEX(operation) k##operation,
    CORVANTINE_OPERATIONS(CORVANTINE_OPERATION_INDEX)
#undef CORVANTINE_OPERATION_INDEX
        kCount
};
static_assert(kCount <= Shared::kOperations);

void* Symbol(void* library, const char* name) {
    return dlsym(library, (std::string("CorvantineDrvr_") + name).c_str());
}

} // namespace

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Watch::Add(const char* text) {
    const std::size_t room = shared_.call.size() - length_;
    const int written = std::snprintf(shared_.call.data() + length_, room, "%s", text);
    length_ += written < static_cast<int>(room) ? static_cast<std::size_t>(written) : room - 1;
}

void Watch::Name(const char* operation) {
    length_ = 0;
    first_ = true;
    Add(operation);
    Add("(");
}

void Watch::Argument(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%s%.10g", first_ ? "" : ", ", value);
    first_ = false;
    Add(text);
}

void Watch::Argument(const void*) {
    Add(first_ ? "..." : ", ...");
    first_ = false;
}

void Watch::Begin(bool mayBeSlow) {
    Add(")");
    shared_.callMayBeSlow = mayBeSlow;
    shared_.callBegan = Now();
}

void Watch::End(int operation) {
    shared_.timings[static_cast<std::size_t>(operation)].Add(Now() - shared_.callBegan);
    shared_.callBegan = 0;
}

Driver::Driver(Watch& watch, void* library)
#define CORVANTINE_MAKE_OPERATION(operation)                                                                 \
    operation(watch, #operation, k##operation, Symbol(library, #operation)),
    : CORVANTINE_OPERATIONS(CORVANTINE_MAKE_OPERATION) loaded_(true)
#undef CORVANTINE_MAKE_OPERATION
{
}

void* LoadLibrary(const char* path, std::string& reason) {
    // All symbols at once, as the program does: what the library lacks itself is found out here.
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        reason = dlerror();
    }
    return library;
}

std::string MissingExports(void* library) {
    std::string missing;
    for (const char* name : kNames) {
        if (Symbol(library, name) == nullptr) {
            missing += missing.empty() ? "" : " ";
            missing += std::string("CorvantineDrvr_") + name;
        }
    }
    return missing;
}

const char* OperationName(int index) {
    return kNames[index];
}

int OperationCount() {
    return kCount;
}

} // namespace check
