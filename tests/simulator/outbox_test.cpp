#include "simulator/outbox.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<Byte>;

const TimePoint kStart{1000s};

Transmission Sound(Bytes bytes) {
    return {std::move(bytes), {}, {}, {}};
}

TEST(Outbox, HasNothingToDoWhenEmpty) {
    Outbox outbox(1ms);
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
    EXPECT_EQ(outbox.TakeDue(kStart), Bytes{});
    outbox.Add(Sound({}), kStart);
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
}

TEST(Outbox, GivesEachByteAtItsOwnTime) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), kStart);
    EXPECT_EQ(outbox.TakeDue(kStart), Bytes{});
    EXPECT_EQ(outbox.NextDeadline(), kStart + 1ms);
    EXPECT_EQ(outbox.TakeDue(kStart + 1ms), Bytes{1});
    EXPECT_EQ(outbox.TakeDue(kStart + 1999us), Bytes{});
    EXPECT_EQ(outbox.TakeDue(kStart + 2ms), Bytes{2});
    EXPECT_EQ(outbox.TakeDue(kStart + 3ms), Bytes{3});
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
}

TEST(Outbox, CatchesUpAfterAPauseWithoutShiftingLaterBytes) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3, 4}), kStart);
    EXPECT_EQ(outbox.TakeDue(kStart + 3500us), (Bytes{1, 2, 3}));
    EXPECT_EQ(outbox.NextDeadline(), kStart + 4ms);
}

TEST(Outbox, SendsOneAnswerBehindTheOther) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), kStart);
    outbox.Add(Sound({4, 5}), kStart + 1ms);
    EXPECT_EQ(outbox.TakeDue(kStart + 3ms), (Bytes{1, 2, 3}));
    EXPECT_EQ(outbox.TakeDue(kStart + 3999us), Bytes{});
    EXPECT_EQ(outbox.TakeDue(kStart + 5ms), (Bytes{4, 5}));
}

TEST(Outbox, LateAnswerLetsAnotherPass) {
    Outbox outbox(1ms);
    outbox.Add({{1, 2}, 500ms, {}, {}}, kStart);
    outbox.Add(Sound({3, 4}), kStart + 200ms);
    EXPECT_EQ(outbox.NextDeadline(), kStart + 200ms);
    EXPECT_EQ(outbox.TakeDue(kStart + 202ms), (Bytes{3, 4}));
    EXPECT_EQ(outbox.NextDeadline(), kStart + 500ms);
    EXPECT_EQ(outbox.TakeDue(kStart + 501ms), Bytes{1});
    EXPECT_EQ(outbox.TakeDue(kStart + 502ms), Bytes{2});
}

TEST(Outbox, DrippingPausesBetweenBytes) {
    Outbox outbox(1ms);
    outbox.Add({{1, 2}, {}, 10ms, {}}, kStart);
    EXPECT_EQ(outbox.TakeDue(kStart + 1ms), Bytes{1});
    EXPECT_EQ(outbox.NextDeadline(), kStart + 12ms);
    EXPECT_EQ(outbox.TakeDue(kStart + 12ms), Bytes{2});
}

TEST(Outbox, SendsAtOnceWithoutAByteTime) {
    Outbox outbox(0ms);
    outbox.Add(Sound({1, 2, 3}), kStart);
    EXPECT_EQ(outbox.TakeDue(kStart), (Bytes{1, 2, 3}));
}

} // namespace
} // namespace nrv::simulator
