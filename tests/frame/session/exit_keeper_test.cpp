#include "frame/session/exit_keeper.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

TEST(ExitKeeper, KeepsAtAnExitFromWithin) {
    EXPECT_EXIT(
        {
            const ExitKeeper keeper([] { std::fputs("kept", stderr); });
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^kept$");
}

TEST(ExitKeeper, KeepsNothingOnceItIsGone) {
    EXPECT_EXIT(
        {
            {
                const ExitKeeper keeper([] { std::fputs("kept", stderr); });
            }
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^$");
}

} // namespace
