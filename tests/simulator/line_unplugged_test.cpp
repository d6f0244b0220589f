#include "simulator/console.h"
#include "simulator/line.h"
#include "support/test_folder.h"
#include "terminal.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

class UnpluggedLine : public ::testing::Test {
  protected:
    UnpluggedLine() : line_(OneDevice(), {.Paced = false, .Trace = {}}) {
        line_.LinkAs(folder_ / "com1");
        line_.Start();
    }
    static Rack OneDevice() {
        Rack rack;
        rack.Add(5);
        return rack;
    }
    std::string Link() const { return (folder_ / "com1").string(); }

    testing::TestFolder folder_;
    Line line_;
};

TEST_F(UnpluggedLine, HangsUpOnWhoeverHasItOpen) {
    const Descriptor end(::open(Link().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    line_.Unplug();
    EXPECT_FALSE(line_.PluggedIn());
    pollfd state{end.Get(), POLLIN, 0};
    EXPECT_EQ(::poll(&state, 1, 1000), 1);
    EXPECT_NE(state.revents & POLLHUP, 0);
    EXPECT_EQ(folder_.Entries(), 0U);
    line_.Unplug();
}

TEST_F(UnpluggedLine, ComesBackUnderTheSameLinkWithItsDevices) {
    {
        Terminal before(Link());
        before.Ask(Request(5, {0x11, 1, 44, 0, 0, 42}));
        line_.Unplug();
        line_.PlugIn(); // while the old end is still open
        line_.PlugIn();
    }
    Terminal after(Link());
    EXPECT_EQ(after.Ask(Request(5, {0x10, 1, 44})).at(8), 42);
}

TEST_F(UnpluggedLine, IsStoppedAndStartedAsAnyOther) {
    line_.Unplug();
    line_.Stop();
    line_.PlugIn();
    Terminal terminal(Link());
    terminal.Send(Request(5, {}));
    EXPECT_TRUE(terminal.Silent());
    line_.Unplug();
    line_.Start();
    line_.PlugIn();
    Terminal again(Link());
    EXPECT_EQ(again.Ask(Request(5, {})).size(), 13U);
}

TEST_F(UnpluggedLine, StaysSoWhenSomethingTookTheLinksPlace) {
    line_.Unplug();
    folder_.WriteText("com1", "precious");
    EXPECT_THROW(line_.PlugIn(), std::runtime_error);
    EXPECT_FALSE(line_.PluggedIn());
    EXPECT_EQ(folder_.ReadText("com1"), "precious");
    std::filesystem::remove(folder_ / "com1");
    line_.PlugIn();
    EXPECT_TRUE(line_.PluggedIn());
}

TEST_F(UnpluggedLine, ObeysOrdersFromTheConsole) {
    bool quit = false;
    EXPECT_EQ(RunCommand(line_, "unplug", quit), "");
    EXPECT_EQ(folder_.Entries(), 0U);
    EXPECT_EQ(RunCommand(line_, "list", quit), "ID 5   NRV-718  ID 05 \n");
    const std::string said = RunCommand(line_, "replug", quit);
    EXPECT_EQ(said, "plugged in on " + line_.DevicePath() + "\n");
    Terminal terminal(Link());
    EXPECT_EQ(RunCommand(line_, "reboot 5 500 factory", quit), "");
    terminal.Send(Request(5, {}));
    EXPECT_TRUE(terminal.Silent());
    std::this_thread::sleep_for(milliseconds(500));
    EXPECT_EQ(terminal.Ask(Request(5, {})).size(), 13U);
}

} // namespace
} // namespace nrv::simulator
