#include "presets/apply_image.h"
#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

/// The image of device 4 in the window of slot 0, with frames suppressed as at the opening of a window.
class ApplyImageTest : public ProgramTest {
  protected:
    ApplyImageTest() {
        program.Windows.WindowSlots[0] = {true, 4, 0};
        program.Link.ComIndex = 1;
        program.Link.OpenPort();
        program.Link.TxSuppressed = true;
    }
    void Apply() { presets::ApplyImage(context, program.Response); }

    const model::CommandContext context{program.Link, program.Stores, program.Windows};
    model::ParamRow& values = program.Stores.ParamValues[4];
    model::PresetImageRow& image = program.Stores.PresetImage[4];
    controls::FrmCtrl& form = Window(0);
};

TEST_F(ApplyImageTest, MutesComeFromTheLiveMarksAndNotFromThePresetsCopy) {
    image.SystemPage[18] = 0x81;
    image.PresetBody[71] = 0x7E;
    Apply();
    EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(image.PresetBody[71], 0x81);
    EXPECT_EQ(image.SystemPage[18], 0x81);
    for (std::size_t channel = 0; channel < 8; ++channel) {
        const int muted = channel == 0 || channel == 7 ? 1 : 0;
        EXPECT_EQ(form.Check1[channel].Value(), muted);
        EXPECT_EQ(form.Check1[channel + 8].Value(), muted);
        EXPECT_EQ(form.Line6[channel].Visible(), muted == 1);
        EXPECT_EQ(form.Line7[channel].Visible(), muted == 1);
        EXPECT_EQ(form.Label300[channel].ToolTip(), muted == 1 ? "Mute" : "Unmute");
    }
}

TEST_F(ApplyImageTest, OptionsAreDecodedAndTheLockIsLeft) {
    image.SystemPage[16] = 0xFF;
    Apply();
    EXPECT_EQ(values.MuteWithPreset, 1.0);
    EXPECT_EQ(values.OptionBit3, 1.0);
    EXPECT_EQ(values.InputType, 1.0);
    EXPECT_EQ(values.OptionBit5, 1.0);
    EXPECT_EQ(values.DelayUnit, 1.0);
    EXPECT_EQ(values.LockFlag, 0.0);
    EXPECT_EQ(form.Combo4.ShownText(), "Digital");
    EXPECT_EQ(form.Label400[1].ToolTip(), "In B: digital input"); // whatever its caption says at an opening
    EXPECT_EQ(image.SystemPage[16], 0xFF);
    image.SystemPage[16] = 0;
    values.LockFlag = 1.0;
    Apply();
    EXPECT_EQ(values.DelayUnit, 0.0);
    EXPECT_EQ(values.LockFlag, 1.0);
    EXPECT_EQ(form.Combo4.ShownText(), "Analog");
}

TEST_F(ApplyImageTest, GainsOfAllChannelsComeFromTheirBytes) {
    constexpr std::array<std::size_t, 8> places = {1, 73, 184, 232, 280, 328, 376, 424};
    for (std::size_t channel = 0; channel < 8; ++channel) {
        image.PresetBody[places[channel]] = static_cast<std::uint8_t>(60 + 5 * channel); // 0, 1, ... 7 dB
    }
    Apply();
    for (std::size_t channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(form.Slider1[channel].Position(), 60 - 5 * static_cast<int>(channel));
        EXPECT_EQ(form.Slider1[channel + 8].Position(), 60 - 5 * static_cast<int>(channel));
        EXPECT_EQ(form.Text1[channel].Text(), std::to_string(channel));
        EXPECT_EQ(form.Text1[channel + 8].Text(), std::to_string(channel));
        EXPECT_EQ(values.ChannelGain[channel], static_cast<double>(channel));
    }
}

TEST_F(ApplyImageTest, MasterGainComesFromTheSixthNameByteOfInB) {
    image.PresetBody[143] = 41;
    Apply();
    EXPECT_EQ(form.Slider100.Position(), 79);
    EXPECT_EQ(form.Text100.Text(), "-3.8");
    EXPECT_EQ(values.MasterGain, -3.8);
}

TEST_F(ApplyImageTest, TabThatTheUserWasOnIsShownAgain) {
    for (const int tab : {0, 5, 8, 10}) {
        form.SSTab1.SetTab(tab);
        Apply();
        EXPECT_EQ(form.SSTab1.Tab(), tab);
    }
}

TEST_F(ApplyImageTest, SuppressedFramesStaySuppressed) {
    Apply();
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(program.Link.TxSuppressed);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(ApplyImageTest, BytesOutOfRangeStayAsTheyAre) {
    for (const int code : {121, 200, 255}) {
        const auto byte = static_cast<std::uint8_t>(code);
        image.PresetBody[184] = byte;
        image.PresetBody[143] = byte;
        Apply();
        EXPECT_EQ(image.PresetBody[184], byte);
        EXPECT_EQ(image.PresetBody[143], byte);
        EXPECT_EQ(form.Slider1[2].Position(), 120 - code);
        EXPECT_EQ(form.Slider1[2].Shown(), 0);
        EXPECT_EQ(form.Slider100.Shown(), 0);
    }
}

TEST_F(ApplyImageTest, ErrorOnTheWayLeavesNoFlagSet) {
    image.SystemPage[18] = 0xFF;
    for (controls::CheckBox* box : {&form.Check1[5], &form.Check1[13]}) {
        bool refused = false;
        box->Observe([&](controls::Aspect) {
            refused = true;
            throw RuntimeError(ErrorKind::IndexOutOfRange, "Refused.");
        });
        EXPECT_THROW(Apply(), RuntimeError);
        EXPECT_TRUE(refused);
        EXPECT_FALSE(program.Windows.ControlEventsOff);
        box->Observe({});
    }
    Apply();
    EXPECT_EQ(image.PresetBody[71], 0xFF);
}

TEST_F(ApplyImageTest, BothPlacesOfAChannelShowTheImageThoughNoFrameGoesThrough) {
    constexpr std::array<std::size_t, 8> gains = {1, 73, 184, 232, 280, 328, 376, 424};
    image.SystemPage[18] = 0xA5;
    for (std::size_t channel = 0; channel < 8; ++channel) {
        image.PresetBody[gains[channel]] = static_cast<std::uint8_t>(60 + channel);
        image.PresetBody[model::PhaseOffsets[channel]] = static_cast<std::uint8_t>(channel % 2);
        const std::size_t delay = model::DelayOffsets[channel];
        image.PresetBody[delay + 1] = static_cast<std::uint8_t>(3 + channel);
        image.PresetBody[delay + 2] = static_cast<std::uint8_t>(5 + channel);
    }
    program.Link.TxSuppressed = false; // nothing answers, and after the first report nothing is sent
    program.Link.ReportLinkFailure = true;
    program.Windows.Loaded[0] = true;
    program.Events.Run(UserIn(0), [this] { Apply(); });
    EXPECT_FALSE(world.Port.Sent.empty());
    for (std::size_t channel = 0; channel < 8; ++channel) {
        const std::size_t twin = channel + 8;
        EXPECT_EQ(form.Check1[channel].Value(), (0xA5 >> channel) & 1) << channel;
        EXPECT_EQ(form.Check1[twin].Value(), (0xA5 >> channel) & 1) << channel;
        EXPECT_EQ(form.Check2[channel].Value(), static_cast<int>(channel % 2)) << channel;
        EXPECT_EQ(form.Check2[twin].Value(), static_cast<int>(channel % 2)) << channel;
        EXPECT_EQ(form.Slider1[twin].Position(), 60 - static_cast<int>(channel)) << channel;
        EXPECT_EQ(form.Text1[twin].Text(), form.Text1[channel].Text()) << channel;
        EXPECT_EQ(form.UpDown2[twin].Position(), 3 + static_cast<int>(channel)) << channel;
        EXPECT_EQ(form.UpDown1[twin].Position(), 5 + static_cast<int>(channel)) << channel;
        EXPECT_EQ(form.Text2[twin].Text(), form.Text2[channel].Text()) << channel;
        EXPECT_FALSE(form.Text2[channel].Text().empty());
    }
}

TEST_F(ApplyImageTest, AnOverlayThatAnotherWindowLeftGoesWhereTheImageHasNone) {
    program.Response.OverlayMatrix[2][3] = true;
    Apply();
    EXPECT_FALSE(program.Response.OverlayMatrix[2][3]);
}

TEST_F(ApplyImageTest, AShelfOfTheImageIsInItsChannelsCurve) {
    const std::size_t shelf = model::ToneOffsets[0];
    image.PresetBody[shelf + 1] = 68; // high above 10 Hz
    image.PresetBody[shelf + 2] = 1;
    image.PresetBody[shelf + 4] = 0; // -12 dB
    Apply();
    const response::Curve with = program.Response.ChannelTotal(0);
    const response::Curve& without = program.Response.ChannelTotal(1); // the same but for the shelf
    EXPECT_NEAR(with.front() - without.front(), -12.0, 0.1);
}

} // namespace
} // namespace nrv::testing
