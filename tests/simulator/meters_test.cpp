#include "simulator/meters.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>

namespace nrv::simulator {
namespace {

using std::chrono::milliseconds;

TEST(MovingLevels, ReachEveryLevelAndNoOther) {
    std::set<int> seen;
    for (int ms = 0; ms < 60000; ms += 30) {
        for (Byte level : MovingLevels(1, 5, milliseconds(ms))) {
            seen.insert(level);
        }
    }
    EXPECT_EQ(seen, (std::set<int>{0, 1, 2, 3, 4, 5, 6}));
}

TEST(MovingLevels, AreTheSameForTheSameSeedAndTime) {
    EXPECT_EQ(MovingLevels(7, 3, milliseconds(12345)), MovingLevels(7, 3, milliseconds(12345)));
}

TEST(MovingLevels, DifferBySeedDeviceAndChannel) {
    int by_seed = 0;
    int by_device = 0;
    int by_channel = 0;
    for (int ms = 0; ms < 10000; ms += 100) {
        const Levels levels = MovingLevels(7, 3, milliseconds(ms));
        by_seed += levels != MovingLevels(8, 3, milliseconds(ms)) ? 1 : 0;
        by_device += levels != MovingLevels(7, 4, milliseconds(ms)) ? 1 : 0;
        by_channel += std::ranges::adjacent_find(levels, std::not_equal_to<>()) != levels.end() ? 1 : 0;
    }
    EXPECT_GT(by_seed, 90);
    EXPECT_GT(by_device, 90);
    EXPECT_GT(by_channel, 90);
}

TEST(MovingLevels, MoveByOneStepAtMostInTenMilliseconds) {
    for (int ms = 0; ms < 20000; ms += 10) {
        const Levels now = MovingLevels(7, 3, milliseconds(ms));
        const Levels next = MovingLevels(7, 3, milliseconds(ms + 10));
        for (std::size_t channel = 0; channel < now.size(); ++channel) {
            EXPECT_LE(std::abs(now[channel] - next[channel]), 1) << ms;
        }
    }
}

} // namespace
} // namespace nrv::simulator
