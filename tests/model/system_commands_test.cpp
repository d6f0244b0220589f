#include "model/command_window.h"
#include "model/system_commands.h"

namespace nrv::testing {
namespace {

constexpr std::array<std::size_t, 8> PhaseBytes = {65, 137, 182, 230, 278, 326, 374, 422};
constexpr std::array<std::size_t, 8> PhaseLabels = {4, 9, 14, 19, 24, 29, 34, 39};

class SystemCommands : public CommandWindow {
  protected:
    static Frame PhaseFrame(std::size_t channel, int value) {
        return FrameOf({3, static_cast<int>(channel), 0, 0, 0, 0, 0, 0, value});
    }
    static Frame InputTypeFrame(int value) { return FrameOf({13, 0, 0, 0, 0, 0, 0, 0, value}); }
};

TEST_F(SystemCommands, EveryPhaseBoxSendsOneFrameAndItsTwinFollows) {
    for (std::size_t i = 0; i < 16; ++i) {
        SCOPED_TRACE(i);
        const std::size_t channel = i % 8;
        const std::size_t twin = (i + 8) % 16;
        for (const int value : {1, 0}) {
            const auto before = image;
            TakeSent();
            form.Check2[i].UserToggle();
            ExpectSent({PhaseFrame(channel, value)});
            ExpectChanged(before, {{PhaseBytes[channel], value}});
            EXPECT_EQ(values.ChannelPhase[channel], value);
            EXPECT_EQ(form.Check2[twin].Value(), value);
            EXPECT_EQ(form.Label100[PhaseLabels[channel]].ToolTip(), value == 1 ? "180'" : "0'");
            EXPECT_FALSE(program.Windows.ControlEventsOff);
        }
    }
}

TEST_F(SystemCommands, PhaseStopsAtAReportedFailure) {
    line.Devices.at(Id).Alive = false;
    form.Check2[13].UserToggle();
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(values.ChannelPhase[5], 1.0);
    EXPECT_EQ(image.PresetBody[326], 1);
    EXPECT_EQ(form.Label100[29].ToolTip(), "180'");
    EXPECT_EQ(form.Check2[5].Value(), 0); // the twin stays behind
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(SystemCommands, PhaseGoesOnToTheTwinWhenAFailureIsNotReported) {
    program.Link.ReportLinkFailure = false;
    line.Devices.at(Id).Alive = false;
    form.Check2[2].UserToggle();
    EXPECT_EQ(form.Check2[10].Value(), 1);
}

TEST_F(SystemCommands, GuardedBoxDoesNothing) {
    const auto before = image;
    program.Windows.ControlEventsOff = true;
    form.Check2[3].UserToggle();
    form.Combo4.UserSelect(1);
    program.Windows.ControlEventsOff = false;
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectChanged(before, {});
    EXPECT_EQ(form.Check2[11].Value(), 0);
}

TEST_F(SystemCommands, PhaseByteOutOfRangeIsHeldAndShownAsSet) {
    program.Windows.ControlEventsOff = true;
    form.Check2[6].SetValue(7);
    program.Windows.ControlEventsOff = false;
    model::SetPhase(Context(), 6);
    EXPECT_EQ(image.PresetBody[374], 7);
    EXPECT_EQ(values.ChannelPhase[6], 1.0);
    EXPECT_EQ(form.Label100[34].ToolTip(), "180'");
    EXPECT_TRUE(form.Check2[14].Checked());
    form.Check2[14].UserToggle();
    EXPECT_EQ(image.PresetBody[374], 0);
    EXPECT_EQ(form.Check2[6].Value(), 0);
}

TEST_F(SystemCommands, InputTypeIsOneFrameAndABitOfTheImageAlone) {
    image.SystemPage[16] = 0xEF; // all but the bit
    form.Label400[0].SetCaption("x");
    form.Label400[1].SetCaption("x");
    auto before = image;
    form.Combo4.UserSelect(1);
    ExpectSent({InputTypeFrame(1)}); // and no write to the device's memory
    ExpectChanged(before, {{SystemPage + 16, 0xFF}});
    EXPECT_EQ(values.InputType, 1.0);
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
    EXPECT_EQ(form.Label400[0].Caption(), " SPDIF ");
    EXPECT_EQ(form.Label400[1].Caption(), " SPDIF ");
    EXPECT_EQ(form.Label400[0].ToolTip(), "In A: digital input");

    before = image;
    form.Combo4.UserSelect(0);
    ExpectSent({InputTypeFrame(0)});
    ExpectChanged(before, {{SystemPage + 16, 0xEF}});
    EXPECT_EQ(values.InputType, 0.0);
    EXPECT_EQ(program.Stores.LastInputType, 0.0);
    EXPECT_EQ(form.Label400[0].Caption(), "Input 1");
    EXPECT_EQ(form.Label400[1].Caption(), "Input 2");
    EXPECT_EQ(form.Label400[0].ToolTip(), "In A: analog input 1");
    EXPECT_EQ(form.Label400[1].ToolTip(), "In B: analog input 2");
}

TEST_F(SystemCommands, InputTypeLeavesABitThatStandsAlready) {
    image.SystemPage[16] = 0x11;
    form.Combo4.UserSelect(1);
    EXPECT_EQ(image.SystemPage[16], 0x11);
    image.SystemPage[16] = 0x03;
    form.Combo4.UserSelect(0);
    EXPECT_EQ(image.SystemPage[16], 0x03);
}

TEST_F(SystemCommands, InputTypeIsStoredWhateverBecomesOfItsFrame) {
    line.Devices.at(Id).Alive = false;
    form.Combo4.UserSelect(1);
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_EQ(image.SystemPage[16], 0x10);
    EXPECT_EQ(values.InputType, 1.0);
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
    EXPECT_EQ(form.Label400[1].Caption(), " SPDIF ");
}

TEST_F(SystemCommands, CursorBoxShowsItsChannelsMarkersAndSendsNothing) {
    constexpr std::array<std::size_t, 9> first = {0, 10, 20, 24, 28, 32, 36, 40, 44};
    for (std::size_t channel = 0; channel < 8; ++channel) {
        for (const int value : {1, 0}) {
            const auto before = image;
            form.Check3[channel].UserToggle();
            ExpectChanged(before, {{ViewState + 30 + channel, value}});
            for (std::size_t section = 0; section < 44; ++section) {
                const bool own = section >= first[channel] && section < first[channel + 1];
                EXPECT_EQ(form.Label5[section].Visible(), own && value == 1) << section;
            }
        }
    }
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(SystemCommands, ViewBoxesNameTheOtherOutputsAndSendNothing) {
    for (int output = 0; output < 6; ++output) {
        const std::array<controls::CheckBox*, 5> boxes = {
            &form.Check4[static_cast<std::size_t>(output)], &form.Check5[static_cast<std::size_t>(output)],
            &form.Check6[static_cast<std::size_t>(output)], &form.Check7[static_cast<std::size_t>(output)],
            &form.Check8[static_cast<std::size_t>(output)]};
        std::vector<int> others = {0, 1, 2, 3, 4, 5};
        others.erase(others.begin() + output);
        for (std::size_t row = 0; row < 5; ++row) {
            SCOPED_TRACE("box " + std::to_string(row) + " of output " + std::to_string(output));
            const std::size_t place = ViewState + 6 * row + static_cast<std::size_t>(output);
            for (const int value : {1, 0}) {
                const auto before = image;
                boxes[row]->UserToggle();
                ExpectChanged(before, {{place, value}});
                for (int j = 0; j < 8; ++j) {
                    EXPECT_EQ(program.Response
                                  .OverlayMatrix[static_cast<std::size_t>(output) + 2][static_cast<std::size_t>(j)],
                              value == 1 && j == others[row] + 2);
                }
            }
        }
    }
    EXPECT_TRUE(world.Port.Sent.empty());
}

} // namespace
} // namespace nrv::testing
