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

} // namespace
} // namespace nrv::testing
