#include "model/gain_commands.h"
#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

constexpr std::array<std::size_t, 8> GainBytes = {1, 73, 184, 232, 280, 328, 376, 424};
constexpr std::array<std::size_t, 8> GainLabels = {1, 6, 13, 18, 23, 28, 33, 38};
constexpr int Id = 14;

/// The window of device 14, whose every gain stands at 0 dB.
class GainCommands : public ProgramTest {
  protected:
    controls::FrmCtrl& Opened() {
        line.Add(Id, "Label of dev 014").Preset.assign(432, 60);
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        program.List.Timer1.Tick();
        DoubleClick(0);
        Forget();
        return Window(0);
    }
    static Frame FrameOf(std::uint8_t command, std::size_t channel, int value) {
        return {0xF0, 0xC3, Id, command, static_cast<std::uint8_t>(channel), 0,   0,
                0,    0,    0,  0,       static_cast<std::uint8_t>(value),   0xF7};
    }
    static Frame MuteBitsFrame(int bits) {
        return {0xF0, 0xC3, Id, 0x11, 0, 18, 0, 0, static_cast<std::uint8_t>(bits), 0, 0, 0, 0xF7};
    }

    controls::FrmCtrl& form = Opened();
    model::ParamRow& values = program.Stores.ParamValues[Id];
    model::PresetImageRow& image = program.Stores.PresetImage[Id];
};

TEST_F(GainCommands, EveryFaderSendsItsChannelsFrameAndBringsItsTwinIntoLine) {
    for (std::size_t i = 0; i < 16; ++i) {
        SCOPED_TRACE(i);
        const std::size_t channel = i % 8;
        const std::size_t twin = (i + 8) % 16;
        const int position = 30 + static_cast<int>(i);
        Forget();
        form.Slider1[i].UserMove(position);
        EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x01, channel, 120 - position)));
        EXPECT_EQ(form.Slider1[twin].Position(), position);
        EXPECT_EQ(image.PresetBody[GainBytes[channel]], 120 - position);
        EXPECT_EQ(form.Text1[i].Text(), form.Text1[twin].Text());
        EXPECT_EQ(form.Label100[GainLabels[channel]].ToolTip(), form.Text1[i].Text() + " dB");
    }
}

TEST_F(GainCommands, TextAndValueAreTheDecimalAPersonExpects) {
    struct Case {
        int Position;
        const char* Text;
        double Value;
    };
    for (const Case& one :
         {Case{0, "12", 12.0}, Case{1, "11.8", 11.8}, Case{59, "0.2", 0.2}, Case{60, "0", 0.0}, Case{61, "-0.2", -0.2},
          Case{67, "-1.4", -1.4}, Case{79, "-3.8", -3.8}, Case{119, "-11.8", -11.8}, Case{120, "-12", -12.0}}) {
        SCOPED_TRACE(one.Position);
        form.Slider1[9].SetPosition(50);
        form.Slider1[9].UserMove(one.Position);
        EXPECT_EQ(form.Text1[9].Text(), one.Text);
        EXPECT_EQ(form.Text1[1].Text(), one.Text);
        EXPECT_EQ(values.ChannelGain[1], one.Value);
        EXPECT_EQ(image.PresetBody[73], 120 - one.Position);
        EXPECT_EQ(form.Label100[6].ToolTip(), std::string(one.Text) + " dB");
    }
}

TEST_F(GainCommands, FirstByteOfTheGainFieldStays) {
    image.PresetBody[0] = 99;
    image.PresetBody[183] = 98;
    form.Slider1[0].UserMove(0);
    form.Slider1[2].UserMove(0);
    EXPECT_EQ(image.PresetBody[0], 99);
    EXPECT_EQ(image.PresetBody[183], 98);
}

TEST_F(GainCommands, OneChannelsGainTouchesNoOtherByte) {
    const auto before = image;
    form.Slider1[5].UserMove(10);
    for (std::size_t n = 0; n < 433; ++n) {
        EXPECT_EQ(image.PresetBody[n], n == 328 ? 110 : before.PresetBody[n]) << n;
    }
    EXPECT_EQ(image.SystemPage, before.SystemPage);
}

TEST_F(GainCommands, HeldByteOutOfRangeStaysInTheImage) {
    form.Slider1[3].SetPosition(120 - 200);
    model::SetGain({program.Link, program.Stores, program.Windows}, 3);
    EXPECT_EQ(image.PresetBody[232], 200);
    EXPECT_EQ(form.Text1[3].Text(), "12"); // as the fader shows it, at its top
    EXPECT_EQ(form.Slider1[11].Position(), -80);
    EXPECT_EQ(form.Slider1[11].Shown(), 0);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x01, 3, 200)));
    form.Slider1[3].UserMove(0); // where the fader is seen to stand already, chosen by the user
    EXPECT_EQ(image.PresetBody[232], 120);
}

TEST_F(GainCommands, GainIsStoredWhateverBecomesOfItsFrame) {
    line.Devices.at(Id).Alive = false;
    form.Slider1[4].UserMove(59);
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(image.PresetBody[280], 61);
    EXPECT_EQ(values.ChannelGain[4], 0.2);
    EXPECT_EQ(form.Text1[12].Text(), "0.2");
}

TEST_F(GainCommands, MasterGainGoesByItsOwnFrameToByte143) {
    form.Slider100.UserMove(79);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x0C, 0, 41)));
    EXPECT_EQ(image.PresetBody[143], 41);
    EXPECT_EQ(form.Text100.Text(), "-3.8");
    EXPECT_EQ(values.MasterGain, -3.8);
    EXPECT_EQ(form.Label100[0].ToolTip(), "-3.8 dB");
    EXPECT_EQ(form.Label100[5].ToolTip(), "-3.8 dB");
    form.Slider100.UserMove(60);
    EXPECT_EQ(image.PresetBody[143], 60);
    EXPECT_EQ(form.Text100.Text(), "0");
}

TEST_F(GainCommands, MuteIsTwoFramesAndBothMarks) {
    form.Check1[3].UserToggle();
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x09, 3, 1), MuteBitsFrame(0x08)));
    EXPECT_EQ(image.PresetBody[71], 0x08);
    EXPECT_EQ(image.SystemPage[18], 0x08);
    EXPECT_EQ(values.ChannelMute[3], 1.0);
    EXPECT_EQ(form.Label300[3].ToolTip(), "Mute");
    EXPECT_TRUE(form.Line6[3].Visible());
    EXPECT_TRUE(form.Line7[3].Visible());
    EXPECT_EQ(form.Check1[11].Value(), 1); // without a third frame
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(GainCommands, EveryBoxMutesItsChannelAndItsTwinFollows) {
    for (std::size_t i = 0; i < 16; ++i) {
        SCOPED_TRACE(i);
        const std::size_t channel = i % 8;
        const std::size_t twin = (i + 8) % 16;
        Forget();
        form.Check1[i].UserToggle();
        EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x09, channel, 1), MuteBitsFrame(1 << channel)));
        EXPECT_EQ(form.Check1[twin].Value(), 1);
        Forget();
        form.Check1[twin].UserToggle();
        EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(FrameOf(0x09, channel, 0), MuteBitsFrame(0)));
        EXPECT_EQ(form.Check1[i].Value(), 0);
        EXPECT_EQ(form.Label300[channel].ToolTip(), "Unmute");
        EXPECT_FALSE(form.Line6[channel].Visible());
        EXPECT_FALSE(form.Line7[channel].Visible());
    }
}

TEST_F(GainCommands, MuteBitsAddUp) {
    for (const std::size_t channel : {0U, 2U, 7U}) {
        form.Check1[channel].UserToggle();
    }
    EXPECT_EQ(image.PresetBody[71], 0x85);
    EXPECT_EQ(image.SystemPage[18], 0x85);
    EXPECT_EQ(world.Port.Sent.back(), MuteBitsFrame(0x85));
    form.Check1[10].UserToggle();
    EXPECT_EQ(image.PresetBody[71], 0x81);
}

TEST_F(GainCommands, MuteStopsAtAReportedFailureOfItsFirstFrame) {
    line.Devices.at(Id).Alive = false;
    form.Check1[3].UserToggle();
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(world.Port.CountSent(0x11), 0);
    EXPECT_EQ(values.ChannelMute[3], 1.0); // what was stored before the frame stays
    EXPECT_EQ(image.PresetBody[71], 0);
    EXPECT_EQ(image.SystemPage[18], 0);
    EXPECT_EQ(form.Check1[11].Value(), 0);
    EXPECT_FALSE(Loaded(0));
}

TEST_F(GainCommands, MuteStopsAtAReportedFailureOfItsSecondFrame) {
    world.Port.Answer = [this](const Frame& frame) { return frame[3] == 0x11 ? Bytes{} : line.Answer(frame); };
    form.Check1[3].UserToggle();
    EXPECT_EQ(world.Port.CountSent(0x09), 1);
    EXPECT_EQ(world.Port.CountSent(0x11), 5);
    EXPECT_EQ(image.PresetBody[71], 0x08);
    EXPECT_EQ(image.SystemPage[18], 0x08);
    EXPECT_EQ(form.Check1[11].Value(), 0);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(GainCommands, UnreportedFailureGoesOnToTheTwin) {
    program.Link.ReportLinkFailure = false;
    line.Devices.at(Id).Alive = false;
    form.Check1[3].UserToggle();
    EXPECT_EQ(world.Port.Sent.size(), 10U);
    EXPECT_EQ(image.PresetBody[71], 0x08);
    EXPECT_EQ(form.Check1[11].Value(), 1);
    EXPECT_TRUE(Loaded(0));
}

} // namespace
} // namespace nrv::testing
