#include "guarded.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace check {

namespace {

constexpr std::byte kPattern{0xA5};

/// What a signal handler can look through.
struct Region {
    const char* name;
    const std::byte* map;
    std::size_t mapped;
    const std::byte* data;
    std::size_t bytes;
};
std::array<Region, 64> regions;
char* accidentText;
std::size_t accidentSize;

std::size_t PageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void OnAccident(int signal, siginfo_t* info, void*) {
    const auto* at = static_cast<const std::byte*>(info->si_addr);
    for (const Region& region : regions) {
        if (region.name == nullptr || at < region.map || at >= region.map + region.mapped) {
            continue;
        }
        const std::byte* end = region.data + region.bytes;
        if (at >= end) {
            std::snprintf(accidentText, accidentSize, "touched the byte %ld behind the end of the %s",
                          static_cast<long>(at - end) + 1, region.name);
        } else if (at < region.data) {
            std::snprintf(accidentText, accidentSize, "touched the byte %ld before the %s",
                          static_cast<long>(region.data - at), region.name);
        } else {
            std::snprintf(accidentText, accidentSize, "wrote to the %s", region.name);
        }
        _exit(EXIT_FAILURE);
    }
    // None of ours: die of it, for the supervisor to see.
    std::signal(signal, SIG_DFL);
    raise(signal);
}

} // namespace

GuardedMemory::GuardedMemory(const char* name, std::size_t bytes) : bytes_(bytes) {
    const std::size_t page = PageSize();
    const std::size_t inner = std::max<std::size_t>(1, (bytes + page - 1) / page) * page;
    mapped_ = inner + 2 * page;
    map_ = static_cast<std::byte*>(mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(map_ + page, inner, PROT_READ | PROT_WRITE);
    data_ = map_ + page + inner - bytes;
    std::fill(map_ + page, map_ + page + inner, kPattern);
    const auto slot =
        std::find_if(regions.begin(), regions.end(), [](const Region& r) { return r.name == nullptr; });
    if (slot != regions.end()) {
        *slot = {name, map_, mapped_, data_, bytes_};
    }
}

GuardedMemory::~GuardedMemory() {
    for (Region& region : regions) {
        if (region.map == map_) {
            region = {};
        }
    }
    munmap(map_, mapped_);
}

void GuardedMemory::Clear() {
    std::fill(data_, data_ + bytes_, kPattern);
}

bool GuardedMemory::IsUntouched(std::size_t offset, std::size_t bytes) const {
    const std::byte* from = data_ + offset;
    return std::all_of(from, from + bytes, [](std::byte value) { return value == kPattern; });
}

bool GuardedMemory::FrontIsIntact() const {
    return std::all_of(map_ + PageSize(), data_, [](std::byte value) { return value == kPattern; });
}

void GuardedMemory::MakeReadOnly() {
    mprotect(map_ + PageSize(), mapped_ - 2 * PageSize(), PROT_READ);
}

void TellAccidentsTo(char* accident, std::size_t size) {
    accidentText = accident;
    accidentSize = size;
    struct sigaction action {};
    action.sa_sigaction = OnAccident;
    action.sa_flags = SA_SIGINFO;
    sigemptyset(&action.sa_mask);
    sigaction(SIGSEGV, &action, nullptr);
    sigaction(SIGBUS, &action, nullptr);
}

} // namespace check
