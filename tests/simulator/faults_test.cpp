#include "simulator/faults.h"
#include "terminal.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace nrv::simulator {
namespace {

class Faults : public ::testing::Test {
  protected:
    Faults() {
        rack_.Add(5);
        rack_.Add(6);
    }

    /// What goes on the line; empty for nothing.
    Bytes Ask(int id, std::initializer_list<int> payload = {}) {
        last_ = plan_.Answer(rack_, Request(id, payload), note_);
        return last_ ? last_->Bytes : Bytes{};
    }

    static Bytes Presence(int id) { return {0xF0, 0xC3, static_cast<Byte>(id), 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7}; }

    Rack rack_;
    FaultPlan plan_;
    std::optional<Transmission> last_;
    std::string note_;
};

TEST_F(Faults, WithoutOrdersAnswersAreSound) {
    EXPECT_EQ(Ask(5), Presence(5));
    EXPECT_EQ(last_->Late.count(), 0);
    EXPECT_EQ(last_->Pause.count(), 0);
    EXPECT_EQ(last_->Note, "");
    EXPECT_EQ(Ask(7), Bytes{});
    EXPECT_EQ(note_, "");
}

TEST_F(Faults, LosesAnswersButObeys) {
    plan_.Order(Fault::Lose(5, 2));
    EXPECT_EQ(Ask(5, {1, 0, 0, 0, 0, 0, 0, 0, 99}), Bytes{});
    EXPECT_EQ(note_, "lost");
    EXPECT_EQ(rack_.At(5).LiveImage()[1], 99);
    EXPECT_EQ(Ask(6), Presence(6));
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(5), Presence(5));
    EXPECT_TRUE(plan_.Empty());
}

TEST_F(Faults, LateAnswerIsWholeAndLate) {
    plan_.Order(Fault::Late(5, 1, milliseconds(250)));
    EXPECT_EQ(Ask(5), Presence(5));
    EXPECT_EQ(last_->Late, milliseconds(250));
    EXPECT_EQ(last_->Note, "late by 250 ms");
    Ask(5);
    EXPECT_EQ(last_->Late.count(), 0);
}

TEST_F(Faults, CutsShortAndLongAnswers) {
    plan_.Order(Fault::Cut(5, 2, 6));
    EXPECT_EQ(Ask(5), (Bytes{0xF0, 0xC3, 5, 0, 0xC3, 0}));
    EXPECT_EQ(Ask(5, {0x0B, 0xFF}).size(), 6U);
    plan_.Order(Fault::Cut(5, 1, 100));
    EXPECT_EQ(Ask(5).size(), 13U);
}

TEST_F(Faults, DoublesAnAnswer) {
    plan_.Order(Fault::Double(5));
    Bytes twice = Presence(5);
    twice.insert(twice.end(), {0xF0, 0xC3, 5, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7});
    EXPECT_EQ(Ask(5), twice);
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, GarblesOneByte) {
    plan_.Order(Fault::Garble(5, 1, 4, 0x11));
    EXPECT_EQ(Ask(5), (Bytes{0xF0, 0xC3, 5, 0, 0x11, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    plan_.Order(Fault::Garble(5, 1, 300, 0x11));
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, SignsWithAnotherId) {
    plan_.Order(Fault::AnswerAs(5, 1, 17));
    EXPECT_EQ(Ask(5), Presence(17));
}

TEST_F(Faults, AnswersFromAnotherDevice) {
    rack_.At(6).SetMemory(16, 99);
    plan_.Order(Fault::AnswerFrom(5, 1, 6));
    const Bytes answer = Ask(5, {0x10, 0, 16});
    ASSERT_EQ(answer.size(), 13U);
    EXPECT_EQ(answer[2], 6);
    EXPECT_EQ(answer[8], 99);
    EXPECT_EQ(Ask(5, {0x10, 0, 16})[8], 32);
    plan_.Order(Fault::AnswerFrom(5, 1, 20));
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(note_, "from ID 20, which is not there");
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, DripsWithAPause) {
    plan_.Order(Fault::Drip(5, 1, milliseconds(40)));
    EXPECT_EQ(Ask(5), Presence(5));
    EXPECT_EQ(last_->Pause, milliseconds(40));
}

TEST_F(Faults, DeadDeviceNeitherObeysNorAnswersUntilRevived) {
    plan_.Order(Fault::Die(5));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(Ask(5, {1, 0, 0, 0, 0, 0, 0, 0, 99}), Bytes{});
    }
    EXPECT_EQ(note_, "dead");
    EXPECT_EQ(rack_.At(5).LiveImage()[1], 60);
    EXPECT_EQ(Ask(6), Presence(6));
    plan_.Revive(5);
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, DeadDeviceLivesAgainAfterSoManyRequests) {
    plan_.Order(Fault::Die(5, 3));
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(6), Presence(6));
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, OrderForAnyDeviceIsUsedUpByThoseOnTheLine) {
    plan_.Order(Fault::Lose(std::nullopt, 2));
    EXPECT_EQ(Ask(20), Bytes{});
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(6), Bytes{});
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, OrdersAreWorkedOffInSequence) {
    plan_.Order(Fault::Lose(5));
    plan_.Order(Fault::Cut(5, 1, 2));
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(5).size(), 2U);
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, CountZeroIsForEver) {
    plan_.Order(Fault::Lose(5, 0));
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(Ask(5), Bytes{});
    }
    plan_.Clear();
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, RequestsWithoutAnswerDoNotUseUpAnOrder) {
    plan_.Order(Fault::Lose(5));
    Ask(5, {0x0F});
    Ask(5, {0x8F});
    EXPECT_EQ(Ask(5), Bytes{});
    EXPECT_EQ(Ask(5), Presence(5));
}

TEST_F(Faults, RefusesWhatMakesNoSense) {
    EXPECT_THROW(plan_.Order(Fault::Lose(33)), std::invalid_argument);
    EXPECT_THROW(plan_.Order(Fault::Lose(5, -1)), std::invalid_argument);
    EXPECT_THROW(plan_.Order(Fault::Late(5, 1, milliseconds(-1))), std::invalid_argument);
    EXPECT_THROW(Fault::AnswerAs(5, 1, 33), std::invalid_argument);
    EXPECT_TRUE(plan_.Empty());
}

} // namespace
} // namespace nrv::simulator
