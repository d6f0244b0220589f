#include "simulator/outbox.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<Byte>;

const TimePoint Start{1000s};

Transmission Sound(Bytes bytes) {
    return {std::move(bytes), {}, {}, {}};
}

TEST(Outbox, HasNothingToDoWhenEmpty) {
    Outbox outbox(1ms);
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
    EXPECT_EQ(outbox.TakeDue(Start), Bytes{});
    outbox.Add(Sound({}), Start);
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
}

TEST(Outbox, GivesEachByteAtItsOwnTime) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), Start);
    EXPECT_EQ(outbox.TakeDue(Start), Bytes{});
    EXPECT_EQ(outbox.NextDeadline(), Start + 1ms);
    EXPECT_EQ(outbox.TakeDue(Start + 1ms), Bytes{1});
    EXPECT_EQ(outbox.TakeDue(Start + 1999us), Bytes{});
    EXPECT_EQ(outbox.TakeDue(Start + 2ms), Bytes{2});
    EXPECT_EQ(outbox.TakeDue(Start + 3ms), Bytes{3});
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
}

TEST(Outbox, CatchesUpAfterAPauseWithoutShiftingLaterBytes) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3, 4}), Start);
    EXPECT_EQ(outbox.TakeDue(Start + 3500us), (Bytes{1, 2, 3}));
    EXPECT_EQ(outbox.NextDeadline(), Start + 4ms);
}

TEST(Outbox, SendsOneAnswerBehindTheOther) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), Start);
    outbox.Add(Sound({4, 5}), Start + 1ms);
    EXPECT_EQ(outbox.TakeDue(Start + 3ms), (Bytes{1, 2, 3}));
    EXPECT_EQ(outbox.TakeDue(Start + 3999us), Bytes{});
    EXPECT_EQ(outbox.TakeDue(Start + 5ms), (Bytes{4, 5}));
}

TEST(Outbox, LateAnswerLetsAnotherPass) {
    Outbox outbox(1ms);
    outbox.Add({{1, 2}, 500ms, {}, {}}, Start);
    outbox.Add(Sound({3, 4}), Start + 200ms);
    EXPECT_EQ(outbox.NextDeadline(), Start + 200ms);
    EXPECT_EQ(outbox.TakeDue(Start + 202ms), (Bytes{3, 4}));
    EXPECT_EQ(outbox.NextDeadline(), Start + 500ms);
    EXPECT_EQ(outbox.TakeDue(Start + 501ms), Bytes{1});
    EXPECT_EQ(outbox.TakeDue(Start + 502ms), Bytes{2});
}

TEST(Outbox, DrippingPausesBetweenBytes) {
    Outbox outbox(1ms);
    outbox.Add({{1, 2}, {}, 10ms, {}}, Start);
    EXPECT_EQ(outbox.TakeDue(Start + 1ms), Bytes{1});
    EXPECT_EQ(outbox.NextDeadline(), Start + 12ms);
    EXPECT_EQ(outbox.TakeDue(Start + 12ms), Bytes{2});
}

TEST(Outbox, LosesWhatIsDueLastWhenTooMuchWaits) {
    Outbox outbox(1ms);
    outbox.Add({Bytes(432, 1), 1h, {}, {}}, Start);
    for (int i = 0; i < 10000; ++i) {
        outbox.Add(Sound(Bytes(432, 2)), Start + i * 1ms);
    }
    std::size_t sent = 0;
    for (Byte byte : outbox.TakeDue(Start + 3h)) {
        EXPECT_EQ(byte, 2);
        ++sent;
    }
    EXPECT_EQ(sent, Outbox::MostWaiting / 432 * 432);
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
}

TEST(Outbox, ForgetsAllWhenCleared) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), Start);
    outbox.Add(Sound({4, 5}), Start);
    EXPECT_EQ(outbox.TakeDue(Start + 1ms), Bytes{1});
    outbox.Clear();
    EXPECT_EQ(outbox.NextDeadline(), std::nullopt);
    outbox.Add(Sound({6}), Start + 5ms);
    EXPECT_EQ(outbox.TakeDue(Start + 6ms), Bytes{6});
}

TEST(Outbox, LosesAnAnswerThatMeetsARequest) {
    Outbox outbox(1ms);
    outbox.Add(Sound({1, 2, 3}), Start);
    EXPECT_EQ(outbox.TakeDue(Start + 1ms), Bytes{1});
    outbox.Meet(Start + 2ms, Start + 15ms);
    outbox.Add(Sound({4, 5}), Start + 10ms); // begins while the request is on the wire
    outbox.Add(Sound({6, 7}), Start + 15ms); // begins when it is over
    EXPECT_EQ(outbox.TakeDue(Start + 20ms), (Bytes{6, 7}));
    EXPECT_EQ(outbox.TakeLost(), 2);
    EXPECT_EQ(outbox.TakeLost(), 0);
    outbox.Meet(Start + 30ms, Start + 43ms);
    outbox.Add(Sound({8}), Start + 20ms);
    EXPECT_EQ(outbox.TakeDue(Start + 50ms), Bytes{8}); // over before the request began
}

TEST(Outbox, SendsAtOnceWithoutAByteTime) {
    Outbox outbox(0ms);
    outbox.Add(Sound({1, 2, 3}), Start);
    EXPECT_EQ(outbox.TakeDue(Start), (Bytes{1, 2, 3}));
}

} // namespace
} // namespace nrv::simulator
