#include "frame/discovery/stack_test.h"

#include "driver/driver.h"
#include "frame/discovery/messages.h"
#include "frame/record/record.h"

namespace {

/// The line before the master drives it: low means that a module without power holds it down.
void TestMaster(int master, Record& record, Driver& driver, const ShowMessage& show) {
    if (record.ScopeInUse[master] && !record.DemoMode) {
        driver.SetDetectLine(master, 0, 1);
        record.ScopeInUse[master] = driver.GetDetectLine(master) != 0;
        if (!record.ScopeInUse[master]) {
            show(messages::UnpoweredInStack());
            driver.Close(master);
        }
    }
    driver.SetDetectLine(master, -1, 0);
}

} // namespace

bool TestStackMember(int channel, Record& record, Driver& driver, const ShowMessage& show) {
    if (channel == record.MasterChannel) {
        TestMaster(channel, record, driver, show);
        return true;
    }
    if (!record.ScopeInUse[channel]) {
        return true;
    }
    driver.SetDetectLine(channel, 0, 1);
    if (driver.GetDetectLine(channel) == 0) {
        return true;
    }
    show(messages::NotInStack());
    for (int other = 1; other <= kScopeChannels; ++other) {
        driver.Close(other);
        record.ScopeInUse[other] = false;
    }
    return false;
}
