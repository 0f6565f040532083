#include "library.h"

#include <chrono>
#include <cstdio>
#include <thread>

Library::~Library() {
    if (!closed) {
        std::fprintf(stderr, "simulated stack: the library was not closed\n");
        rules.Tell();
    }
}

std::unique_ptr<Library>& TheLibrary() {
    static std::unique_ptr<Library> library;
    return library;
}

Library* Call::In() const {
    Library* library = TheLibrary().get();
    if (library == nullptr) {
        std::fprintf(stderr, "simulated stack: %s: the library is not open\n", Text().c_str());
    }
    return library;
}

bool Call::Expect(bool holds, const char* rule) const {
    if (!holds && TheLibrary()) {
        TheLibrary()->rules.Break(*this, rule);
    }
    return holds;
}

Library* Call::InSlot(std::int32_t ch) const {
    Library* library = In();
    if (library == nullptr) {
        return nullptr;
    }
    Expect(IsChannel(ch), "no such channel");
    if (!IsChannel(ch)) {
        return nullptr;
    }
    Expect(library->enumerated, "before Enumerate");
    return library;
}

Library* Call::On(std::int32_t ch, Needs needs) const {
    Library* library = InSlot(ch);
    if (library == nullptr) {
        return nullptr;
    }
    const bool open = library->stack.IsOpen(ch);
    Expect(open || needs == Needs::Enumerated, "the channel is not open");
    Expect(!open || needs != Needs::Initialised || library->initialised[static_cast<std::size_t>(ch - 1)],
           "before InitScope");
    if (!open) {
        return nullptr;
    }
    const sim::Module* module = library->stack.InSlot(ch);
    if (module != nullptr && module->Description().faults.answerTime > 0) {
        std::this_thread::sleep_for(std::chrono::duration<double>(module->Description().faults.answerTime));
    }
    return library;
}
