#include "support/counted_new.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> allocations{0};
} // namespace

std::size_t AllocationsSoFar() {
    return allocations.load();
}

#if !defined(__SANITIZE_ADDRESS__)
// The toolkit's containers take their memory from malloc, so that is where the counting has to happen;
// operator new ends there as well.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    ++allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    ++allocations;
    return __libc_realloc(memory, size);
}
}
#else
// The sanitizer owns malloc; operator new is left to count.
void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
#endif
