#include "link/system_clock.h"

#include <cmath>
#include <ctime>
#include <gtest/gtest.h>

namespace nrv::link {
namespace {

TEST(SystemClock, CountsDaysInWholeSeconds) {
    SystemClock clock;
    const std::time_t before = std::time(nullptr);
    const double seconds = clock.Now() * 86400.0;
    const std::time_t after = std::time(nullptr);
    EXPECT_NEAR(seconds, std::round(seconds), 1e-5);
    // The two ways of asking the system may differ by the length of one of its own ticks.
    EXPECT_GE(std::lround(seconds), before - 1);
    EXPECT_LE(std::lround(seconds), after + 1);
}

TEST(SystemClock, OneSecondIsMoreThanADoubleOfDaysCanBlur) {
    SystemClock clock;
    const double now = clock.Now();
    // Nine seconds more stay below the limit of a frame's wait and ten pass it, on today's number of days.
    EXPECT_LT((now + 9.0 / 86400.0 - now) * 1000.0, 0.11);
    EXPECT_GT((now + 10.0 / 86400.0 - now) * 1000.0, 0.11);
}

} // namespace
} // namespace nrv::link
