// What the library and its slots tell of themselves.

#include "sections.h"

#include <algorithm>
#include <set>
#include <vector>

namespace check {

namespace {

constexpr std::int32_t kPreset[] = {0x5A5A5A5A, -7};

bool IsPrintable(int character) {
    return character >= 0x20 && character != 0x7F && !(character >= 0x80 && character < 0xA0);
}

bool ArePrintable(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return IsPrintable(static_cast<unsigned char>(c)); });
}

/// A name, by the rules of its buffer.
template <class Ask> std::string Name(const Subject& subject, const char* rule, int ch, const Ask& ask) {
    Guarded<std::uint8_t> text("buffer of 101 characters", CORVANTINE_NAME_BYTES);
    Guarded<std::int32_t> length("length of a name", 1);
    ask(ch, text.Get(), length.Get());
    const int count = length[0];
    const bool good = !length.IsUntouched(0, 1) && count >= 0 && count <= CORVANTINE_NAME_BYTES;
    subject.findings.That(good && text.FrontIsIntact(), rule,
                          length.IsUntouched(0, 1) ? "slot %d: the length was not written"
                                                   : "slot %d: the length is %d",
                          ch, count);
    return good ? std::string(text.begin(), text.begin() + count) : std::string();
}

template <class T, class Ask> bool Writes(const Ask& ask) {
    for (const std::int32_t preset : kPreset) {
        Guarded<T> out("output of 4 bytes", 1);
        out[0] = static_cast<T>(preset);
        const T before = out[0];
        ask(out.Get());
        if (out[0] != before) {
            return true;
        }
    }
    return false;
}

void CheckFigures(const Subject& subject, int ch) {
    const Driver& driver = subject.driver;
    const auto whole = [&](const char* rule, const auto& operation) {
        subject.findings.That(Writes<std::int32_t>([&](std::int32_t* out) { operation(ch, out); }), rule,
                              "slot %d: the output was not written", ch);
    };
    whole("GetHWRev writes a number for each module", driver.GetHWRev);
    whole("GetPortNumber writes a number for each module", driver.GetPortNumber);
    driver.OpenAndReset(ch);
    whole("GetControllerRev writes a number for each module", driver.GetControllerRev);
    driver.InitScope(ch, ch == 1 ? CORVANTINE_TRUE : CORVANTINE_FALSE);
    whole("GetTriggerDACOffset writes a number for each module", driver.GetTriggerDACOffset);
    std::int32_t other = 0;
    subject.findings.That(
        Writes<std::int32_t>([&](std::int32_t* out) { driver.GetRISBand(ch, out, &other); }) &&
            Writes<std::int32_t>([&](std::int32_t* out) { driver.GetRISBand(ch, &other, out); }),
        "GetRISBand writes two numbers for each module", "slot %d: an output was not written", ch);

    const auto real = [&](const char* rule, const auto& operation) {
        float value = 0;
        const bool writes = Writes<float>([&](float* out) { operation(ch, out); });
        operation(ch, &value);
        const bool finite = value - value == 0;
        subject.findings.That(writes && finite, rule, "slot %d: %s", ch,
                              writes ? "it is no number" : "the output was not written");
    };
    real("GetRawChannelOffset writes a number for each module", driver.GetRawChannelOffset);
    real("GetOffsetDACScale writes a number for each module", driver.GetOffsetDACScale);
    driver.Close(ch);
}

void CheckIssue(const Subject& subject) {
    Guarded<char> issue("buffer of 100 characters", CORVANTINE_ISSUE_BYTES);
    subject.driver.DrvrIssue(issue.Get());
    const std::string text(issue.begin(), std::find(issue.begin(), issue.end(), '\0'));
    const bool blank = text.find_first_not_of(' ') == std::string::npos;
    subject.findings.That(!issue.IsUntouched(0, 1) && !blank && ArePrintable(text),
                          "DrvrIssue writes a line of text, zero-terminated or filled up with blanks",
                          issue.IsUntouched(0, 1) ? "nothing was written"
                          : blank                 ? "the text is empty"
                                                  : "there are control characters in it");
}

} // namespace

void CheckNames(const Subject& subject) {
    const Driver& driver = subject.driver;
    Findings& findings = subject.findings;
    const int handle = driver.OpenDrvr();
    const int depth = driver.GetSampleDepth();
    findings.That(depth == kDepth, "GetSampleDepth returns 3000", "it returned %d", depth);
    CheckIssue(subject);

    std::int32_t port = -2;
    std::int32_t channel = -2;
    const int found = driver.Enumerate(&port, &channel);
    findings.That(port == -2 && channel == -2, "Enumerate leaves what the user asked for as it stands",
                  "-2, -2 became %d, %d", port, channel);

    std::vector<int> modules;
    std::set<std::string> serials;
    std::set<int> ports;
    for (int ch = 1; ch <= kSlots; ++ch) {
        const char* rule = "GetProductName writes a length of 0..101 for every slot";
        const std::string product = Name(subject, rule, ch, driver.GetProductName);
        findings.That(Name(subject, rule, ch, driver.GetProductName) == product,
                      "GetProductName tells the same when asked again", "slot %d: another name", ch);
        const std::string serial = Name(subject, "GetSerialNumber writes a length of 0..101 for every slot",
                                        ch, driver.GetSerialNumber);
        if (product != "Corvantine") {
            continue;
        }
        modules.push_back(ch);
        const bool newSerial = serials.insert(serial).second;
        findings.That(!serial.empty() && ArePrintable(serial) && newSerial,
                      "each module has a serial string of its own, in printable characters",
                      "slot %d has \"%s\"", ch, serial.c_str());
        std::int32_t number = 0;
        driver.GetPortNumber(ch, &number);
        findings.That(number > 0 && ports.insert(number).second,
                      "each module has a port number of its own, 1 or more", "slot %d has port %d", ch,
                      number);
    }
    const int count = static_cast<int>(modules.size());
    findings.That(found >= count && found >= 0, "Enumerate counts at least the modules in the slots",
                  "it returned %d, and %d slots hold a module", found, count);
    findings.That(modules.empty() || modules.back() == count,
                  "modules named \"Corvantine\" fill the slots from 1 on",
                  "%d of them, the last in slot %d: the program would use the slots 1..%d", count,
                  modules.empty() ? 0 : modules.back(), count);
    for (const int ch : modules) {
        CheckFigures(subject, ch);
    }
    if (modules.empty()) {
        findings.Skip("figures of each module", "no module was found");
    }
    driver.CloseDrvr(handle);
}

void CheckForcing(const Subject& subject) {
    const Driver& driver = subject.driver;
    const auto slots = [&](int port, int channel) {
        const int handle = driver.OpenDrvr();
        std::int32_t p = port;
        std::int32_t c = channel;
        driver.Enumerate(&p, &c);
        std::vector<Identity> found;
        for (int ch = 1; ch <= kSlots; ++ch) {
            found.push_back(IdentityOf(driver, ch));
        }
        driver.CloseDrvr(handle);
        return found;
    };
    const std::vector<Identity> unforced = slots(-2, -2);
    for (const auto& [port, channel] : {std::pair(-1, -1), std::pair(unforced[0].port, -1)}) {
        subject.findings.That(slots(port, channel) == unforced, "half a forcing changes nothing",
                              "with port %d and channel %d the slots hold something else", port, channel);
    }
    const char* rule = "the module at the forced port goes to the forced slot";
    if (!unforced[0].IsModule()) {
        subject.findings.Skip(rule, "no module was found");
        return;
    }
    for (int channel = 1; channel <= kSlots; ++channel) {
        const Identity forced = slots(unforced[0].port, channel)[static_cast<std::size_t>(channel - 1)];
        subject.findings.That(forced == unforced[0], rule,
                              "port %d was forced to slot %d, where now \"%s\" with serial \"%s\" is",
                              unforced[0].port, channel, forced.product.c_str(), forced.serial.c_str());
    }
}

} // namespace check
