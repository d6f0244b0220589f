#include "presets/load_window.h"

namespace nrv::testing {
namespace {

/// What a load says to the device, frame by frame.
class ApplyImageFrames : public LoadWindow {
  protected:
    /// Compares frame by frame, so that a difference names its place.
    void ExpectTrace(const std::vector<Frame>& expected) {
        const std::vector<Frame> sent = TakeSent();
        EXPECT_EQ(sent.size(), expected.size());
        for (std::size_t n = 0; n < std::min(sent.size(), expected.size()); ++n) {
            ASSERT_EQ(sent[n], expected[n]) << "frame " << n;
        }
    }
    LoadSituation Situation(int option_bits, bool option_on) const {
        return {Id, option_bits, option_on, Sources(), static_cast<int>(values.DelayUnit)};
    }
};

TEST_F(ApplyImageFrames, LoadWithMuteWithPresetHasABulkUpdateAroundIt) {
    for (int round = 0; round < 5; ++round) {
        Body body = RandomPreset(random);
        KeepSources(body);
        image.PresetBody = body;
        image.SystemPage[16] = 0x04;
        values.MuteWithPreset = 1.0;
        const std::vector<Frame> expected = Trace(body, Situation(0x04, true));
        EXPECT_EQ(expected.size(), std::size_t{BulkLoadFrames});
        Apply(LoadedFromFile);
        ExpectTrace(expected);
    }
}

TEST_F(ApplyImageFrames, EachCommandGoesOutAsOftenAsItsControlsAreThere) {
    Body body = RandomPreset(random);
    KeepSources(body);
    image.PresetBody = body;
    image.SystemPage[16] = 0x04;
    values.MuteWithPreset = 1.0;
    Apply(LoadedFromFile);
    constexpr std::array<std::pair<int, long>, 16> counts = {{{0x01, 8},
                                                              {0x02, 16},
                                                              {0x03, 8},
                                                              {0x04, 12},
                                                              {0x05, 44},
                                                              {0x06, 10},
                                                              {0x07, 24},
                                                              {0x08, 6},
                                                              {0x09, 8},
                                                              {0x0A, 2},
                                                              {0x0B, 0},
                                                              {0x0C, 1},
                                                              {0x0D, 0},
                                                              {0x0E, 6},
                                                              {0x10, 0},
                                                              {0x11, 8}}};
    for (const auto& [command, count] : counts) {
        EXPECT_EQ(world.Port.CountSent(static_cast<std::uint8_t>(command)), count) << command;
    }
    ASSERT_EQ(world.Port.Sent.size(), std::size_t{BulkLoadFrames});
    EXPECT_EQ(world.Port.Sent.front(), FrameOf({0x0A}));
    EXPECT_EQ(world.Port.Sent.back(), FrameOf({0x0A, 1}));
}

TEST_F(ApplyImageFrames, SourceThatChangesGoesOutTwice) {
    for (int round = 0; round < 5; ++round) {
        Body body = RandomPreset(random);
        KeepSources(body);
        for (const int output : {0, 3, 5}) {
            std::uint8_t& source = body[ImageLayout::Source(output)];
            source = static_cast<std::uint8_t>((source + 1) % 3);
        }
        image.PresetBody = body;
        image.SystemPage[16] = 0x04;
        values.MuteWithPreset = 1.0;
        const std::vector<Frame> expected = Trace(body, Situation(0x04, true));
        EXPECT_EQ(expected.size(), std::size_t{BulkLoadFrames + 3});
        Apply(LoadedFromFile);
        ExpectTrace(expected);
    }
}

TEST_F(ApplyImageFrames, AllSourcesChangedAreTwelveFrames) {
    Body body = RandomPreset(random);
    for (int output = 0; output < 6; ++output) {
        body[ImageLayout::Source(output)] = 2; // the factory's are 1
    }
    image.PresetBody = body;
    Apply(LoadedFromFile);
    EXPECT_EQ(world.Port.CountSent(0x08), 12);
}

TEST_F(ApplyImageFrames, OtherListsAndUpDownsDoNotRepeatTheirFrames) {
    // All of them change here, in guarded stretches.
    Body body = RandomPreset(random);
    KeepSources(body);
    for (int channel = 0; channel < 8; ++channel) {
        for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
            body[ImageLayout::Peq(channel, section) + 2] = 33; // was 8
        }
        for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
            body[ImageLayout::Tone(channel, filter) + 2] = 1; // was 0
        }
        body[ImageLayout::Phase(channel)] = 1;     // was 0
        body[ImageLayout::Delay(channel) + 2] = 5; // was 0
    }
    for (int output = 0; output < 6; ++output) {
        body[ImageLayout::Crossover(output, 0) + 2] = 9; // were 0 and 2
        body[ImageLayout::Crossover(output, 1) + 2] = 9;
    }
    image.PresetBody = body;
    const std::vector<Frame> expected = Trace(body, Situation(0, false));
    EXPECT_EQ(expected.size(), std::size_t{LoadFrames});
    Apply(LoadedFromFile);
    ExpectTrace(expected);
}

TEST_F(ApplyImageFrames, LoadWithoutMuteWithPresetSoundsTheInputsAndMutesTheOutputs) {
    for (const int mutes : {0x00, 0xFF, 0x03, 0xA5}) {
        Body body = RandomPreset(random);
        body[71] = static_cast<std::uint8_t>(mutes);
        image.PresetBody = body;
        image.SystemPage[16] = 0;
        values.MuteWithPreset = 0.0;
        const std::vector<Frame> expected = Trace(body, Situation(0, false));
        Apply(LoadedFromFile);
        EXPECT_EQ(world.Port.CountSent(0x0A), 0);
        ExpectTrace(expected);
        EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(0.0, 0.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0));
        EXPECT_EQ(image.PresetBody[71], 0xFC);
        EXPECT_EQ(image.SystemPage[18], 0xFC);
        for (std::size_t i = 0; i < 16; ++i) {
            EXPECT_EQ(form.Check1[i].Value(), i % 8 < 2 ? 0 : 1);
        }
    }
}

TEST_F(ApplyImageFrames, LoadWithoutMuteWithPresetRebuildsTheOptionsFromTheOldOnes) {
    values.MuteWithPreset = 0.0;
    values.OptionBit3 = 1.0;
    values.InputType = 1.0;
    values.OptionBit5 = 0.0;
    values.DelayUnit = 0.0;
    values.LockFlag = 1.0;
    image.SystemPage[16] = 0x67; // bits 0, 1, 2, 5 and 6: nothing of it is decoded
    const int input_before = form.Combo4.Index();
    Apply(LoadedFromFile);
    EXPECT_EQ(image.SystemPage[16], 0x98); // 8 + 16 + 128
    EXPECT_EQ(values.MuteWithPreset, 0.0);
    EXPECT_EQ(values.OptionBit3, 1.0);
    EXPECT_EQ(values.InputType, 1.0);
    EXPECT_EQ(values.OptionBit5, 0.0);
    EXPECT_EQ(values.DelayUnit, 0.0);
    EXPECT_EQ(values.LockFlag, 1.0);
    EXPECT_EQ(form.Combo4.Index(), input_before); // the list is left alone
    EXPECT_EQ(world.Port.CountSent(0x0D), 0);
}

TEST_F(ApplyImageFrames, MuteWithPresetDecodesTheLoadedOptionsAndChoosesTheInputWithoutAFrame) {
    values.MuteWithPreset = 1.0;
    values.LockFlag = 1.0;
    image.SystemPage[16] = 0x3F;
    Apply(LoadedFromFile);
    EXPECT_EQ(image.SystemPage[16], 0x3F); // bits 0 and 1 as well
    EXPECT_EQ(values.OptionBit3, 1.0);
    EXPECT_EQ(values.InputType, 1.0);
    EXPECT_EQ(values.OptionBit5, 1.0);
    EXPECT_EQ(values.LockFlag, 1.0);
    EXPECT_EQ(form.Combo4.ShownText(), "Digital");
    EXPECT_EQ(world.Port.CountSent(0x0D), 0);
}

TEST_F(ApplyImageFrames, LoadedMutesComeFromThePresetsCopyAndNotFromTheLiveMarks) {
    for (const auto& flags : {LoadedFromFile, ReadFromDevice}) {
        values.MuteWithPreset = 1.0;
        image.SystemPage[16] = 0x04;
        image.SystemPage[18] = 0x7E;
        image.PresetBody[71] = 0x81;
        program.Link.TxSuppressed = flags == ReadFromDevice;
        Apply(flags);
        program.Link.TxSuppressed = false;
        EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0));
        EXPECT_EQ(image.PresetBody[71], 0x81);
        EXPECT_EQ(image.SystemPage[18], 0x81);
    }
}

TEST_F(ApplyImageFrames, LastBulkUpdateHangsOnTheLoadedOption) {
    // On before the load and off in the image: the update is begun and not ended; that is meant.
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0;
    Apply(LoadedFromFile);
    EXPECT_EQ(values.MuteWithPreset, 0.0);
    ASSERT_EQ(world.Port.CountSent(0x0A), 1);
    EXPECT_EQ(world.Port.Sent.front(), FrameOf({0x0A}));
    TakeSent();
    // Off before the load: the image's option is not even looked at.
    image.SystemPage[16] = 0x04;
    Apply(LoadedFromFile);
    EXPECT_EQ(world.Port.CountSent(0x0A), 0);
    EXPECT_EQ(image.SystemPage[16], 0);
}

TEST_F(ApplyImageFrames, ChangedDelayUnitRunsItsCommandBetweenDelaysAndGains) {
    Body body = RandomPreset(random);
    KeepSources(body);
    image.PresetBody = body;
    image.SystemPage[16] = 0x44;
    values.MuteWithPreset = 1.0;
    std::vector<Frame> expected = Trace(body, Situation(0x44, true));
    ASSERT_EQ(expected.size(), std::size_t{BulkLoadFrames + 1});
    // 1 + 16 + 6 + 24 + 12 + 44 + 10 + 8 + 16 frames come before it.
    EXPECT_EQ(expected[137], FrameOf({0x11, 0, 16, 0, 0, 0x44}));
    Apply(LoadedFromFile);
    ExpectTrace(expected);
    EXPECT_TRUE(form.Option1[1].Selected());
    EXPECT_FALSE(form.Option1[0].Selected());
    EXPECT_THAT(form.Text2[3].Text(), ::testing::EndsWith(" m"));
    EXPECT_EQ(form.Text2[11].Text() + " m", form.Text2[3].Text()); // the bare number of a change of unit
    // The same unit again: no frame of its own, and both copies bear it.
    expected = Trace(body, Situation(0x44, true));
    ASSERT_EQ(expected.size(), std::size_t{BulkLoadFrames});
    Apply(LoadedFromFile);
    ExpectTrace(expected);
    EXPECT_EQ(form.Text2[11].Text(), form.Text2[3].Text());
}

TEST_F(ApplyImageFrames, ImageOfTheDeviceItselfSendsNothing) {
    for (const double option : {0.0, 1.0}) {
        image.PresetBody = RandomPreset(random);
        image.SystemPage[16] = static_cast<std::uint8_t>(random());
        values.MuteWithPreset = option;
        program.Windows.NewSlot = 0;
        program.Control.Load();
        EXPECT_TRUE(world.Port.Sent.empty());
        values.MuteWithPreset = option;
        program.ReadDialog.ReadPreset(0);
        ExpectSent({FrameOf({0x10, 0, 18}), FrameOf({0x0B, 0})});
    }
}

TEST_F(ApplyImageFrames, OpeningWindowsBulkUpdateIsNeverSentEvenUnsuppressed) {
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    Apply(WindowOpens);
    EXPECT_EQ(world.Port.CountSent(0x0A), 0);
}

TEST_F(ApplyImageFrames, FailedFirstBulkUpdateLeavesControlsAndValues) {
    const auto mutes = values.ChannelMute;
    const auto gains = values.ChannelGain;
    values.MuteWithPreset = 1.0;
    const Body body = RandomPreset(random);
    image.PresetBody = body;
    image.SystemPage[16] = 0xFC;
    form.SSTab1.SetTab(4);
    line.Devices.at(Id).Alive = false;
    Apply(LoadedFromFile);
    EXPECT_EQ(world.Port.Sent, std::vector<Frame>(5, FrameOf({0x0A})));
    EXPECT_EQ(image.PresetBody, body); // the new data is there already
    EXPECT_EQ(values.ChannelMute, mutes);
    EXPECT_EQ(values.ChannelGain, gains);
    EXPECT_EQ(values.DelayUnit, 0.0);
    EXPECT_EQ(form.Slider1[0].Position(), 60); // the factory's 0 dB
    EXPECT_EQ(form.Text1[0].Text(), "0");
    EXPECT_EQ(form.Combo3[0].Index(), 1);
    EXPECT_FALSE(Loaded(0));
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(ApplyImageFrames, FailedLastBulkUpdateLeavesTheTabOfTheNames) {
    world.Port.Answer = [this](const Frame& frame) {
        return frame[3] == 0x0A && frame[4] == 1 ? Bytes{} : line.Answer(frame);
    };
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    image.PresetBody[1] = 61;
    form.SSTab1.SetTab(4);
    Apply(LoadedFromFile);
    EXPECT_EQ(form.SSTab1.Tab(), 7);
    EXPECT_EQ(form.Text1[0].Text(), "0.2");
    EXPECT_FALSE(Loaded(0));
}

TEST_F(ApplyImageFrames, FailureOfAnyOtherFrameStaysWithItsCommand) {
    Silence(0x07);
    Body body = RandomPreset(random);
    image.PresetBody = body;
    form.SSTab1.SetTab(9);
    const std::vector<Frame> whole = Trace(body, Situation(0, false));
    Apply(LoadedFromFile);
    std::vector<Frame> expected;
    for (const Frame& frame : whole) {
        expected.insert(expected.end(), frame[3] == 0x07 ? 5 : 1, frame);
    }
    ExpectTrace(expected);
    EXPECT_EQ(form.SSTab1.Tab(), 9);
    EXPECT_EQ(world.Boxes.Shown.size(), 24U);
}

TEST_F(ApplyImageFrames, FailedNameEndsTheNamesAndNotTheLoad) {
    Silence(0x0E);
    Body body = RandomPreset(random);
    body[71] = 0xFC;
    image.PresetBody = body;
    form.SSTab1.SetTab(10);
    const std::string caption = form.Frame1[2].Caption();
    Apply(LoadedFromFile);
    EXPECT_EQ(world.Port.CountSent(0x0E), 5); // one name, five times
    EXPECT_EQ(world.Port.CountSent(0x0C), 1); // which comes behind the names
    EXPECT_EQ(form.Frame1[2].Caption(), caption);
    EXPECT_EQ(form.Frame1[1].Caption(), std::string(body.begin() + 138, body.begin() + 144));
    EXPECT_EQ(image.PresetBody, body);
    EXPECT_EQ(form.SSTab1.Tab(), 10);
}

TEST_F(ApplyImageFrames, FramesGoToTheDeviceOfTheCurrentWindow) {
    Apply(LoadedFromFile);
    EXPECT_EQ(world.Port.Sent.size(), std::size_t{LoadFrames});
    for (const Frame& frame : world.Port.Sent) {
        EXPECT_EQ(frame[0], 0xF0);
        EXPECT_EQ(frame[1], 0xC3);
        EXPECT_EQ(frame[2], Id);
        EXPECT_EQ(frame[12], 0xF7);
    }
}

} // namespace
} // namespace nrv::testing
