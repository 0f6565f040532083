#pragma once

#include "arithmetic/demo_waveforms.h"
#include "arithmetic/spectrum.h"
#include "rules.h"
#include "stack.h"

#include <memory>

/// All that lives between OpenDrvr and CloseDrvr.
struct Library {
    Library() = default;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    /// Says so if there was no CloseDrvr, and tells what is told there.
    ~Library();

    sim::Stack stack;
    sim::Rules rules;
    bool enumerated = false;
    bool closed = false;
    std::array<bool, sim::kSlots> initialised{}; ///< InitScope was called since the channel was opened
    instrument::DemoWaveforms waveforms;
    instrument::Spectrum spectrum;
};

/// C functions have nowhere else to keep it. Null outside OpenDrvr and CloseDrvr.
std::unique_ptr<Library>& TheLibrary();

/// What an operation asks of its channel.
enum class Needs {
    Enumerated,  ///< nothing: the program makes such calls on unused channels too
    Open,        ///< between OpenAndReset and Close
    Initialised, ///< and after InitScope
};

/// One call of the program: checks it against the interface's rules.
class Call : public sim::CallText {
  public:
    using CallText::CallText;

    /// Null outside the library's life, which is told at once: there will be no end to tell it at.
    Library* In() const;
    /// The same, or null too if the channel cannot be worked with: it is none or closed. Takes the time that
    /// the module takes to answer.
    Library* On(std::int32_t ch, Needs needs) const;
    /// As On, for a channel whose name and numbers are asked for, open or not.
    Library* InSlot(std::int32_t ch) const;
    /// Returns holds, for those that leave unused what is out of range.
    bool Expect(bool holds, const char* rule) const;
};

inline bool IsChannel(std::int32_t ch) {
    return ch >= 1 && ch <= sim::kSlots;
}

inline bool IsFlag(std::int32_t value) {
    return value == 0 || value == -1;
}
