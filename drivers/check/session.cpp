#include "session.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace check {

Identity IdentityOf(const Driver& driver, int ch) {
    Guarded<std::uint8_t> text("buffer of 101 characters", CORVANTINE_NAME_BYTES);
    Identity identity;
    std::int32_t length = 0;
    driver.GetProductName(ch, text.Get(), &length);
    identity.product.assign(text.begin(), text.begin() + std::clamp(length, 0, text.Count()));
    length = 0;
    driver.GetSerialNumber(ch, text.Get(), &length);
    identity.serial.assign(text.begin(), text.begin() + std::clamp(length, 0, text.Count()));
    driver.GetPortNumber(ch, &identity.port);
    return identity;
}

void Sleep(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

bool WaitFor(double seconds, const std::function<bool()>& condition) {
    const double until = Now() + seconds;
    while (!condition()) {
        if (Now() > until) {
            return false;
        }
        Sleep(1e-3);
    }
    return true;
}

Session::Session(const Subject& subject, Mode mode) : subject_(subject), driver_(subject.driver) {
    handle_ = driver_.OpenDrvr();
    driver_.GetSampleDepth();
    Guarded<char> issue("buffer of 100 characters", CORVANTINE_ISSUE_BYTES);
    driver_.DrvrIssue(issue.Get());
    std::int32_t port = -2;
    std::int32_t channel = -2;
    driver_.Enumerate(&port, &channel);
    while (modules_ < kSlots && IdentityOf(driver_, modules_ + 1).IsModule()) {
        ++modules_;
    }
    if (mode == Mode::Demonstration) {
        modules_ = 0;
    }
    if (modules_ == 0) {
        driver_.SetDemoMode(1);
    }
    used_ = modules_ > 0 ? modules_ : kSlots;
    ForEach([&](int ch) {
        driver_.OpenAndReset(ch);
        driver_.SetTrigMaster(ch, CORVANTINE_FALSE);
        driver_.SetDetectLine(ch, CORVANTINE_FALSE, 1);
    });
    ForEach([&](int ch) {
        std::int32_t revision = 0;
        driver_.GetControllerRev(ch, &revision);
    });
    ForEach([&](int ch) {
        driver_.InitScope(ch, ch == 1 ? CORVANTINE_TRUE : CORVANTINE_FALSE);
        driver_.SetUpFrontEnd(ch, 2, CORVANTINE_TRUE, CORVANTINE_FALSE, 0);
        driver_.SetOffset(ch, 0);
    });
    driver_.SetTrigMaster(1, CORVANTINE_TRUE);
    ForEach([&](int ch) {
        driver_.SetTrigThresh(ch, 0);
        driver_.SetTrigType(ch, 3);
        driver_.SetNormTrig(ch, CORVANTINE_FALSE);
        driver_.SetPreTrigDepth(ch, 0.5F);
        driver_.SetTriggerDelay(ch, 0);
    });
    Timebase(50, 1, false);
}

Session::~Session() {
    ForEach([&](int ch) { driver_.Close(ch); });
    driver_.CloseDrvr(handle_);
}

void Session::ForEach(const std::function<void(int ch)>& act) const {
    for (int ch = 1; ch <= used_; ++ch) {
        act(ch);
    }
}

void Session::Timebase(int megahertz, int ratio, bool ris) const {
    ForEach([&](int ch) { driver_.AcquisitionEnd(ch); });
    ForEach([&](int ch) { driver_.SetBaseAdcClk(ch, megahertz); });
    ForEach([&](int ch) { driver_.SetDecimationRatio(ch, ratio); });
    ForEach([&](int ch) { driver_.SetRISMode(ch, ris ? 1 : 0); });
}

void Session::Flatten() const {
    ForEach([&](int ch) {
        driver_.SetUpFrontEnd(ch, 2, CORVANTINE_FALSE, CORVANTINE_TRUE, 0);
        driver_.SetOffset(ch, 0);
    });
}

void Session::SetTrigger(bool normal, int type, float percent) const {
    ForEach([&](int ch) {
        driver_.SetTrigType(ch, type);
        driver_.SetTrigThresh(ch, percent);
        driver_.SetNormTrig(ch, normal ? CORVANTINE_TRUE : CORVANTINE_FALSE);
    });
}

void Session::Start() const {
    for (int ch = used_; ch >= 1; --ch) {
        driver_.AcquisitionStart(ch);
    }
}

void Session::End() const {
    ForEach([&](int ch) { driver_.AcquisitionEnd(ch); });
}

bool Session::Runs() const {
    return driver_.GetAcquistionState(1) != 0;
}

bool Session::Finish() const {
    Sleep(1e-3);
    const bool complete = WaitFor(subject_.patience, [&] { return !Runs(); });
    End();
    return complete;
}

void Session::Read(Guarded<float>& blocks) const {
    blocks.Clear();
    driver_.GetBufferBlocksMultiChan(1, kSlots, blocks.Get(), CORVANTINE_ROW / kBlock);
}

} // namespace check
