#include "simulator/console.h"
#include "terminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Console : public ::testing::Test {
  protected:
    Console() : line_(MakeRack(), {.Paced = false, .Trace = {}}), terminal_(line_.DevicePath()) { line_.Start(); }

    static Rack MakeRack() {
        Rack rack;
        rack.Add(5, "Stage left");
        rack.Add(6).SetLocked(true);
        return rack;
    }

    std::string Run(std::string_view command) { return RunCommand(line_, command, quit_); }
    Bytes Ask(std::size_t size = 13) {
        terminal_.Send(Request(5, {}));
        return terminal_.Read(size);
    }
    bool AskInVain() {
        terminal_.Send(Request(5, {}));
        return terminal_.Silent();
    }

    bool quit_ = false;
    Line line_;
    Terminal terminal_;
};

TEST_F(Console, OrdersReachTheLine) {
    EXPECT_EQ(Run("lose 5 2"), "");
    EXPECT_TRUE(AskInVain());
    EXPECT_TRUE(AskInVain());
    EXPECT_EQ(Ask().size(), 13U);
    EXPECT_EQ(Run("cut 5 1 6"), "");
    EXPECT_EQ(Ask(6).size(), 6U);
    EXPECT_TRUE(terminal_.Silent());
    EXPECT_EQ(Run("  double   any "), "");
    EXPECT_EQ(Ask(26).size(), 26U);
    EXPECT_EQ(Run("garble 5 1 4 0x1F"), "");
    EXPECT_EQ(Ask().at(4), 0x1F);
    EXPECT_EQ(Run("as 5 1 7"), "");
    EXPECT_EQ(Ask().at(2), 7);
    EXPECT_EQ(Run("from 5 1 6"), "");
    EXPECT_EQ(Ask().at(2), 6);
    EXPECT_EQ(Run("late 5 1 500"), "");
    EXPECT_TRUE(AskInVain());
    EXPECT_EQ(terminal_.Read(13).size(), 13U);
    EXPECT_EQ(Run("drip 5 1 20"), "");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask().size(), 13U);
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(240));
}

TEST_F(Console, KillsAndRevives) {
    EXPECT_EQ(Run("die 5"), "");
    EXPECT_TRUE(AskInVain());
    EXPECT_EQ(Run("revive 5"), "");
    EXPECT_EQ(Ask().size(), 13U);
    EXPECT_EQ(Run("die any"), "");
    EXPECT_EQ(Run("die 5"), "");
    EXPECT_TRUE(AskInVain());
    EXPECT_EQ(Run("revive any"), "");
    EXPECT_EQ(Ask().size(), 13U);
    EXPECT_EQ(Run("die 5 1"), "");
    EXPECT_TRUE(AskInVain());
    EXPECT_EQ(Ask().size(), 13U);
    EXPECT_EQ(Run("lose 5 0"), "");
    EXPECT_EQ(Run("calm"), "");
    EXPECT_EQ(Ask().size(), 13U);
}

TEST_F(Console, SetsMeters) {
    EXPECT_EQ(Run("meters 5 0 1 2 3 4 5 6 7"), "");
    const Bytes answer = terminal_.Ask(Request(5, {0x12}));
    EXPECT_EQ(Bytes(answer.begin() + 4, answer.begin() + 12), (Bytes{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(Run("meters 5 move"), "");
    EXPECT_LE(terminal_.Ask(Request(5, {0x12})).at(11), 6);
    EXPECT_EQ(Run("meters any 9 9 9 9 9 9 9 255"), "");
    EXPECT_EQ(terminal_.Ask(Request(6, {0x12})).at(11), 255);
}

TEST_F(Console, SaysThatADeviceIsNotThere) {
    for (const char* order : {"die 8", "revive 8", "lose 8 2", "late 8 1 5", "cut 8 1 5", "double 8", "garble 8 1 1 1",
                              "as 8 1 5", "from 8 1 5", "from 5 1 8", "drip 8 1 1", "meters 8 move"}) {
        EXPECT_EQ(Run(order), "error: no device 8 on the line\n") << order;
    }
    EXPECT_EQ(Run("as 5 1 8"), ""); // an answer may bear any ID
    EXPECT_EQ(Ask().at(2), 8);
}

TEST_F(Console, ListsDevices) {
    EXPECT_EQ(Run("list"), "ID 5  Stage left      \nID 6   NRV-718  ID 06   locked\n");
}

TEST_F(Console, QuitsAndHelps) {
    EXPECT_EQ(Run(""), "");
    EXPECT_EQ(Run("   "), "");
    for (const char* command : {"die", "revive", "lose", "late", "cut", "double", "garble", "as", "from", "drip",
                                "calm", "meters", "list", "quit", "help"}) {
        EXPECT_THAT(Run("help"), HasSubstr(std::string(command) + " ")) << command;
    }
    EXPECT_FALSE(quit_);
    EXPECT_EQ(Run("quit"), "");
    EXPECT_TRUE(quit_);
}

TEST_F(Console, SaysWhatIsWrong) {
    EXPECT_EQ(Run("loose 5"), "error: unknown command \"loose\"; try \"help\"\n");
    EXPECT_EQ(Run("lose"), "error: \"lose\" has too few words behind it; try \"help\"\n");
    EXPECT_EQ(Run("lose 5 2 3"), "error: \"lose\" has too many words behind it; try \"help\"\n");
    EXPECT_EQ(Run("lose 33"), "error: the ID must be a number from 0 to 32, not \"33\"\n");
    EXPECT_EQ(Run("garble 5 1 4 0x"), "error: the value must be a number from 0 to 255, not \"0x\"\n");
    for (const char* bad : {"lose x", "lose -1", "lose 5 -1", "lose 5 1x", "lose 5 99999999999", "late 5 1 -1",
                            "cut 5 1 433", "garble 5 1 432 0", "garble 5 1 4 256", "as 5 1 any", "meters 5",
                            "meters 5 1 2 3", "meters 5 1 2 3 4 5 6 7 8 9", "meters 5 move 1",
                            "meters 5 1 1 1 1 1 1 1 x", "revive any 1", "revive", "quit now", "calm 1"}) {
        EXPECT_THAT(Run(bad), StartsWith("error: ")) << bad;
    }
    EXPECT_FALSE(quit_);
    EXPECT_EQ(Ask().size(), 13U);
}

} // namespace
} // namespace nrv::simulator
