#include "link/link_rig.h"
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

/// Whole seconds on from the day that the system tells.
class SecondsFromToday final : public Clock {
  public:
    explicit SecondsFromToday(const testing::ScriptedClock& clock) : clock_(clock) {}
    double Now() override { return (start_ + static_cast<double>(clock_.Seconds)) / SecondsPerDay; }

  private:
    static constexpr double SecondsPerDay = 86400.0;
    const testing::ScriptedClock& clock_;
    double start_ = std::round(SystemClock().Now() * SecondsPerDay);
};

TEST(SystemClock, TodaysNumberOfDaysTellsTheNinthSecondOfAWaitFromTheTenth) {
    testing::LinkRig rig;
    SecondsFromToday today(rig.Clock);
    Link link(rig.Port, today, rig.Process, rig.Boxes, rig.SerialTimer, rig.Operation);
    link.LinkReady = true;
    link.SendFrame(1, {GainCommand});
    EXPECT_EQ(rig.Port.Polls, 5 * 10); // after 0 to 9 seconds
    EXPECT_EQ(rig.Clock.Seconds, 5 * 10);
}

} // namespace
} // namespace nrv::link
