#include "simulator/line.h"
#include "terminal.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

using std::chrono::steady_clock;

/// Each fault as the far end of the line sees it.
class LineFaults : public ::testing::Test {
  protected:
    LineFaults() : line_(MakeRack(), {.Paced = false, .Trace = {}}), terminal_(line_.DevicePath()) { line_.Start(); }

    static Rack MakeRack() {
        Rack rack;
        rack.Add(5);
        rack.Add(6);
        return rack;
    }

    static Bytes Presence(int id) { return {0xF0, 0xC3, static_cast<Byte>(id), 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7}; }

    void ExpectSound() { EXPECT_EQ(terminal_.Ask(Request(5, {})), Presence(5)); }

    Line line_;
    Terminal terminal_;
};

TEST_F(LineFaults, LostAnswerNeverComes) {
    line_.Order(Fault::Lose(5));
    terminal_.Send(Request(5, {}));
    EXPECT_TRUE(terminal_.Silent());
    ExpectSound();
}

TEST_F(LineFaults, LateAnswerComesLateAndLetsOthersPass) {
    line_.Order(Fault::Late(5, 1, milliseconds(300)));
    const auto start = steady_clock::now();
    terminal_.Send(Request(5, {}));
    EXPECT_EQ(terminal_.Ask(Request(6, {})), Presence(6));
    EXPECT_EQ(terminal_.Read(13), Presence(5));
    EXPECT_GE(steady_clock::now() - start, milliseconds(300));
    ExpectSound();
}

TEST_F(LineFaults, CutAnswerEndsEarlyAndTheNextCompletesIt) {
    line_.Order(Fault::Cut(5, 1, 6));
    terminal_.Send(Request(5, {}));
    EXPECT_EQ(terminal_.Read(6), (Bytes{0xF0, 0xC3, 5, 0, 0xC3, 0}));
    EXPECT_TRUE(terminal_.Silent());
    ExpectSound();
}

TEST_F(LineFaults, CutPresetEndsEarly) {
    line_.Order(Fault::Cut(5, 1, 216));
    terminal_.Send(Request(5, {0x0B, 0xFF}));
    EXPECT_EQ(terminal_.Read(216).size(), 216U);
    EXPECT_TRUE(terminal_.Silent());
}

TEST_F(LineFaults, DoubledAnswerComesTwice) {
    line_.Order(Fault::Double(5));
    EXPECT_EQ(terminal_.Ask(Request(5, {})), Presence(5));
    EXPECT_EQ(terminal_.Read(13), Presence(5));
    EXPECT_TRUE(terminal_.Silent());
}

TEST_F(LineFaults, GarbledByteArrivesGarbled) {
    line_.Order(Fault::Garble(5, 1, 4, 0x00));
    EXPECT_EQ(terminal_.Ask(Request(5, {})).at(4), 0x00);
    ExpectSound();
}

TEST_F(LineFaults, AnswerBearsAnotherId) {
    line_.Order(Fault::AnswerAs(5, 1, 30));
    EXPECT_EQ(terminal_.Ask(Request(5, {})), Presence(30));
    line_.Order(Fault::AnswerFrom(5, 1, 6));
    EXPECT_EQ(terminal_.Ask(Request(5, {})), Presence(6));
    ExpectSound();
}

TEST_F(LineFaults, DrippingAnswerTakesItsTime) {
    line_.Order(Fault::Drip(5, 1, milliseconds(10)));
    const auto start = steady_clock::now();
    ExpectSound();
    EXPECT_GE(steady_clock::now() - start, milliseconds(120)); // twelve pauses between thirteen bytes
    ExpectSound();
}

TEST_F(LineFaults, DeadDeviceIsSilentUntilRevived) {
    line_.Order(Fault::Die(5));
    terminal_.Send(Request(5, {}));
    terminal_.Send(Request(5, {0x0B, 0xFF}));
    EXPECT_TRUE(terminal_.Silent());
    EXPECT_EQ(terminal_.Ask(Request(6, {})), Presence(6));
    line_.Revive(5);
    ExpectSound();
}

TEST_F(LineFaults, DeadDeviceComesBackByItself) {
    line_.Order(Fault::Die(5, 2));
    terminal_.Send(Request(5, {}));
    terminal_.Send(Request(5, {}));
    EXPECT_TRUE(terminal_.Silent());
    ExpectSound();
}

TEST_F(LineFaults, ClearedOrdersAreForgotten) {
    line_.Order(Fault::Die(5));
    line_.Order(Fault::Lose(5, 0));
    line_.ClearOrders();
    ExpectSound();
}

} // namespace
} // namespace nrv::simulator
