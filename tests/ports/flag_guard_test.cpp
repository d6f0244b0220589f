#include "ports/flag_guard.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace nrv {
namespace {

TEST(FlagGuard, HoldsAFlagSetForTheScope) {
    bool flag = false;
    {
        const FlagGuard guard(flag);
        EXPECT_TRUE(flag);
    }
    EXPECT_FALSE(flag);
}

TEST(FlagGuard, HoldsAFlagClearForTheScope) {
    bool flag = true;
    {
        const FlagGuard guard(flag, false);
        EXPECT_FALSE(flag);
    }
    EXPECT_TRUE(flag);
}

TEST(FlagGuard, AnErrorCannotLeaveTheFlagSet) {
    bool flag = false;
    const auto fails = [&flag] {
        const FlagGuard guard(flag);
        throw std::runtime_error("on the way");
    };
    EXPECT_THROW(fails(), std::runtime_error);
    EXPECT_FALSE(flag);
}

// Meant: a stretch that sets a flag clears it at its end, also inside another stretch.
TEST(FlagGuard, LeavesTheFlagClearWhateverItWasBefore) {
    bool flag = true;
    {
        const FlagGuard guard(flag);
        EXPECT_TRUE(flag);
    }
    EXPECT_FALSE(flag);
}

TEST(FlagGuard, OverridesWhatHappensToTheFlagInBetween) {
    bool flag = false;
    {
        const FlagGuard guard(flag);
        flag = false;
    }
    EXPECT_FALSE(flag);
    {
        const FlagGuard guard(flag, false);
        flag = true;
    }
    EXPECT_TRUE(flag);
}

} // namespace
} // namespace nrv
