#include "session/program_fixture.h"
#include "window/control_window.h"

namespace nrv::testing {
namespace {

class ControlEvents : public ProgramTest {
  protected:
    controls::FrmCtrl& Opened() {
        StartDemo(1);
        DoubleClick(0);
        return Window(0);
    }
    controls::FrmCtrl& form = Opened();
};

TEST_F(ControlEvents, BlocksLeadToTheirTabs) {
    constexpr std::array<int, 42> tabs = {8, 8, 0, 9, 8, // In A: Master, Gain, PEQ, Delay, Phase
                                          8, 8, 1, 9, 8, // In B
                                          2, 9, 2, 8, 8, // Out 1: X-over, Delay, Limiter, Gain, Phase
                                          3, 9, 3, 8, 8, // Out 2
                                          4, 9, 4, 8, 8, // Out 3
                                          5, 9, 5, 8, 8, // Out 4
                                          6, 9, 6, 8, 8, // Out 5
                                          7, 9, 7, 8, 8, // Out 6
                                          0, 1};         // NGate of In A and In B
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        form.SSTab1.SetTab(10);
        form.Label100[i].UserClick();
        EXPECT_EQ(form.SSTab1.Tab(), tabs[i]) << i;
    }
}

TEST_F(ControlEvents, SourcesLeadToTheOutputsTabs) {
    for (std::size_t output = 0; output < 6; ++output) {
        form.SSTab1.SetTab(10);
        form.Label200[output].UserClick();
        EXPECT_EQ(form.SSTab1.Tab(), static_cast<int>(output) + 2);
    }
}

TEST_F(ControlEvents, SocketsLeadToTheGains) {
    for (controls::Label& socket : form.Label400) {
        form.SSTab1.SetTab(10);
        socket.UserClick();
        EXPECT_EQ(form.SSTab1.Tab(), 8);
    }
}

TEST_F(ControlEvents, ToolsWithoutAnActionAreNotVisible) {
    EXPECT_TRUE(form.Command2[5].Visible());
    EXPECT_FALSE(form.Command2[6].Visible());
    form.Command2[6].UserClick(); // and does nothing
    EXPECT_TRUE(Loaded(0));
    for (const controls::Button& tool : form.Command2) {
        EXPECT_EQ(tool.Visible(), static_cast<bool>(tool.Clicked)) << tool.ToolTip();
    }
}

TEST_F(ControlEvents, ToolsCarryTheirTexts) {
    EXPECT_EQ(form.Command2[5].ToolTip(), "Unconnect device");
    EXPECT_EQ(form.Command2[6].ToolTip(), "");
}

TEST_F(ControlEvents, GuardedEventsDoNothingWhileTheProgramWrites) {
    program.Windows.ControlEventsOff = true;
    form.Slider1[3].UserMove(20);
    form.Check1[3].UserToggle();
    EXPECT_EQ(form.Text1[3].Text(), "0");
    EXPECT_EQ(program.Stores.ParamValues[0].ChannelMute[3], 0.0);
    EXPECT_EQ(form.Check1[11].Value(), 0);
    program.Windows.ControlEventsOff = false;
    form.Slider1[3].UserMove(21);
    EXPECT_EQ(form.Text1[3].Text(), "7.8"); // 99 / 5 - 12
}

TEST_F(ControlEvents, MasterIsNotGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Slider100.UserMove(20);
    EXPECT_EQ(form.Text100.Text(), "8");
}

TEST_F(ControlEvents, FadersSetInCodeRunNothing) {
    form.Slider1[3].SetPosition(20);
    form.Slider100.SetPosition(20);
    EXPECT_EQ(form.Text1[3].Text(), "0");
    EXPECT_EQ(program.Stores.PresetImage[0].PresetBody[232], 60);
}

TEST_F(ControlEvents, DynamicsAreNotGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Slider4[2].UserMove(0);
    form.Slider5[2].UserMove(0);
    form.Slider6[2].UserMove(0);
    EXPECT_EQ(form.Text9[2].Text(), "20");
    EXPECT_EQ(form.Text10[2].Text(), "2.0s");
    EXPECT_EQ(form.Text11[2].Text(), "200ms");
    form.Slider4[1].UserMove(10);
    EXPECT_EQ(form.Text9[1].Text(), "OFF");
}

TEST_F(ControlEvents, ViewsOfAChannelAreNotGuarded) {
    program.Windows.ControlEventsOff = true;
    const auto& view = program.Stores.PresetImage[0].ViewState;
    form.Option2[3 * 4 + 2].Select();
    EXPECT_EQ(program.Response.ViewMode[4], 2);
    EXPECT_EQ(view[44], 2);
    form.Check3[1].UserToggle();
    EXPECT_EQ(view[31], 1);
    form.Check6[2].UserToggle();
    EXPECT_EQ(view[14], 1);
}

} // namespace
} // namespace nrv::testing
