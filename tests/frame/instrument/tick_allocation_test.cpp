#include "driver/builtin_backend.h"
#include "frame/instrument/instrument.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/counted_new.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

// A whole tick with everything behind it: driver, run loop, samples, picture. What the toolkit does in the
// tick's yield, painting the widgets on the screen, is not the program's and does not run here.

TEST(TickAllocation, TheCounterCounts) {
    const std::size_t before = AllocationsSoFar();
    const auto something = std::make_unique<int>(1);
    EXPECT_GT(AllocationsSoFar(), before);
}

TEST(TickAllocation, ATickInDemonstrationTakesNoMemoryAfterTheFirst) {
    const QTemporaryDir folder;
    bool pump = true;
    Environment environment;
    environment.applicationFolder = folder.path();
    environment.settingsFolder = folder.path();
    environment.show = [](const QString& text) { ADD_FAILURE() << qPrintable(text); };
    environment.sleep = [](int) {};
    environment.yield = [&pump] {
        if (pump) {
            QApplication::processEvents();
        }
    };
    Record record;
    Driver driver(std::make_unique<BuiltinBackend>());
    Instrument instrument(record, driver, std::move(environment));
    StartUp(instrument);
    instrument.runLoop->RunTimer_Timer();

    pump = false;
    for (int tick = 0; tick < 20; ++tick) {
        const auto passes = instrument.acquisition.PassCount;
        const std::size_t before = AllocationsSoFar();
        instrument.runLoop->RunTimer_Timer();
        EXPECT_EQ(AllocationsSoFar() - before, 0U) << "in tick " << tick;
        EXPECT_EQ(instrument.acquisition.PassCount, passes + 1);
    }
}
