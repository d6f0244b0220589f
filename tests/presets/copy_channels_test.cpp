#include "presets/copy_channels.h"
#include "presets/copy_trace.h"
#include "presets/load_window.h"
#include "presets/parameter_words.h"

namespace nrv::testing {
namespace {

/// Copies between channels of a window whose every value is a random one.
class CopyChannels : public LoadWindow {
  protected:
    /// Any preset, with the source's and the destination's box, list and mute values unlike.
    void Spread(const Body& body) {
        image.PresetBody = body;
        image.SystemPage[18] = body[71];
        ApplySilently(WindowOpens);
        TakeSent();
    }
    void ExpectTrace(const CopyTrace& expected) {
        const std::vector<Frame> sent = TakeSent();
        EXPECT_EQ(sent.size(), expected.Frames.size());
        for (std::size_t n = 0; n < std::min(sent.size(), expected.Frames.size()); ++n) {
            ASSERT_EQ(sent[n], expected.Frames[n]) << "frame " << n;
        }
        for (std::size_t n = 0; n < 433; ++n) {
            ASSERT_EQ(image.PresetBody[n], expected.After[n]) << "byte " << n;
        }
        EXPECT_EQ(image.SystemPage[18], expected.After[71]);
    }
    /// All that a preset tells of a channel, but for its name.
    std::vector<std::string> Told(int channel) {
        const std::string title = ChannelTitles[static_cast<std::size_t>(channel)];
        std::vector<std::string> told;
        for (const presets::Parameter parameter : presets::Parameters()) {
            const std::string place = presets::PlaceOf(parameter);
            if (place.starts_with(title) && parameter.Kind != presets::ParameterKind::ChannelName) {
                for (const presets::Field& field : presets::FieldsOf(parameter, image, form)) {
                    told.push_back(place.substr(title.size()) + " " + field.Name + " " + field.Value);
                }
            }
        }
        return told;
    }
    void CopyInput(int source, int destination) {
        presets::CopyInput(Context(), program.Response, source, destination);
    }
    void CopyOutput(int source, int destination) {
        presets::CopyOutput(Context(), program.Response, source, destination);
    }
    CopyTrace FromNow() const { return {image.PresetBody, Id}; }
};

TEST_F(CopyChannels, InputsGoOutFrameByFrameWhereTheValuesDiffer) {
    for (int round = 0; round < 4; ++round) {
        for (const auto& [source, destination] : {std::pair{0, 1}, std::pair{1, 0}}) {
            Spread(RandomPreset(random));
            CopyTrace expected = FromNow();
            expected.CopyInput(source, destination);
            CopyInput(source, destination);
            ExpectTrace(expected);
            EXPECT_THAT(Told(destination), ::testing::ElementsAreArray(Told(source)));
        }
    }
}

TEST_F(CopyChannels, OutputsGoOutFrameByFrameWhereTheValuesDiffer) {
    for (int source = 0; source < 6; ++source) {
        for (int destination = 0; destination < 6; ++destination) {
            if (source == destination) {
                continue;
            }
            Spread(RandomPreset(random));
            CopyTrace expected = FromNow();
            expected.CopyOutput(source, destination);
            CopyOutput(source, destination);
            ExpectTrace(expected);
            EXPECT_THAT(Told(destination + 2), ::testing::ElementsAreArray(Told(source + 2)));
        }
    }
}

TEST_F(CopyChannels, EqualChannelsSendEachCommandOnce) {
    Spread(RandomPreset(random));
    CopyInput(0, 1);
    TakeSent();
    CopyTrace inputs = FromNow();
    inputs.CopyInput(0, 1);
    CopyInput(0, 1);
    EXPECT_EQ(inputs.Frames.size(), 1U + 10 + 2 + 1 + 1 + 3 + 2);
    ExpectTrace(inputs);

    CopyOutput(0, 3);
    TakeSent();
    CopyTrace outputs = FromNow();
    outputs.CopyOutput(0, 3);
    CopyOutput(0, 3);
    EXPECT_EQ(outputs.Frames.size(), 1U + 1 + 3 + 2 + 4 + 1 + 1 + 1 + 2);
    ExpectTrace(outputs);
}

TEST_F(CopyChannels, EveryChangedControlRunsItsEventBesideTheCommand) {
    Body body = RandomPreset(random);
    // Out 1 and Out 4 differ in every list, box and up-down.
    body[ImageLayout::Source(0)] = 1;
    body[ImageLayout::Source(3)] = 2;
    for (const int side : {0, 1}) {
        body[ImageLayout::Crossover(0, side) + 2] = 3;
        body[ImageLayout::Crossover(3, side) + 2] = 4;
    }
    for (int section = 0; section < 4; ++section) {
        body[ImageLayout::Peq(2, section) + 2] = 10;
        body[ImageLayout::Peq(5, section) + 2] = 11;
    }
    body[ImageLayout::Tone(2, 0) + 2] = 0;
    body[ImageLayout::Tone(5, 0) + 2] = 1;
    body[ImageLayout::Phase(2)] = 1;
    body[ImageLayout::Phase(5)] = 0;
    body[71] = 0x04;
    Spread(body);
    CopyOutput(0, 3);
    // Twice: source, two sides, four sections, tone, phase, mute with its memory write. Once: gain, delay; thrice:
    // limiter.
    constexpr std::array<std::pair<int, long>, 9> counts = {
        {{0x01, 1}, {0x02, 1}, {0x03, 2}, {0x04, 4}, {0x05, 8}, {0x06, 2}, {0x07, 3}, {0x08, 2}, {0x09, 2}}};
    for (const auto& [command, count] : counts) {
        EXPECT_EQ(world.Port.CountSent(static_cast<std::uint8_t>(command)), count) << command;
    }
    EXPECT_EQ(world.Port.CountSent(0x11), 2);
}

TEST_F(CopyChannels, PhaseCommandOfACopyToOut2IsThatOfInB) {
    Body body = RandomPreset(random);
    body[ImageLayout::Phase(1)] = 1;
    body[ImageLayout::Phase(2)] = 1;
    body[ImageLayout::Phase(3)] = 1; // equal, so that its own event does not run
    Spread(body);
    CopyOutput(0, 1);
    std::vector<Frame> phases;
    for (const Frame& frame : TakeSent()) {
        if (frame[3] == 3) {
            phases.push_back(frame);
        }
    }
    EXPECT_THAT(phases, ::testing::ElementsAre(FrameOf({3, 1, 0, 0, 0, 0, 0, 0, 1})));

    body[ImageLayout::Phase(1)] = 0;
    body[ImageLayout::Phase(2)] = 1;
    body[ImageLayout::Phase(3)] = 0;
    Spread(body);
    CopyOutput(0, 1);
    phases.clear();
    for (const Frame& frame : TakeSent()) {
        if (frame[3] == 3) {
            phases.push_back(frame);
        }
    }
    // The box of Out 2 changes and runs its event; the command itself repeats what In B has.
    EXPECT_THAT(phases, ::testing::ElementsAre(FrameOf({3, 3, 0, 0, 0, 0, 0, 0, 1}), FrameOf({3, 1})));
    EXPECT_EQ(form.Check2[3].Value(), 1);
    EXPECT_EQ(form.Check2[11].Value(), 1);
    EXPECT_EQ(form.Check2[1].Value(), 0);
    EXPECT_EQ(form.Check2[9].Value(), 0);
}

TEST_F(CopyChannels, ControlsAndTheirTwinsShowTheSource) {
    Spread(RandomPreset(random));
    CopyInput(1, 0);
    CopyOutput(4, 2);
    for (const auto& [s, d] : {std::pair<std::size_t, std::size_t>{1, 0}, {6, 4}}) {
        for (const std::size_t to : {d, d + 8}) {
            EXPECT_EQ(form.Slider1[to].Position(), form.Slider1[s].Position());
            EXPECT_EQ(form.Text1[to].Text(), form.Text1[s].Text());
            EXPECT_EQ(form.Check1[to].Value(), form.Check1[s].Value());
            EXPECT_EQ(form.Check2[to].Value(), form.Check2[s].Value());
            EXPECT_EQ(form.UpDown1[to].Position(), form.UpDown1[s].Position());
            EXPECT_EQ(form.UpDown2[to].Position(), form.UpDown2[s].Position());
            EXPECT_EQ(form.Text2[to].Text(), form.Text2[s].Text());
        }
        EXPECT_EQ(form.Text9[d].Text(), form.Text9[s].Text());
        EXPECT_EQ(form.Text10[d].Text(), form.Text10[s].Text());
        EXPECT_EQ(form.Text11[d].Text(), form.Text11[s].Text());
        EXPECT_EQ(values.ChannelGain[d], values.ChannelGain[s]);
        EXPECT_EQ(values.ChannelMute[d], values.ChannelMute[s]);
    }
    EXPECT_EQ(form.Combo3[2].Index(), form.Combo3[4].Index());
    EXPECT_EQ(form.Text8[4].Text(), form.Text8[8].Text());
    EXPECT_EQ(form.Text8[5].Text(), form.Text8[9].Text());
    EXPECT_EQ(values.PeqGain[28], values.PeqGain[36]);
    EXPECT_EQ(values.ToneFrequency[6], values.ToneFrequency[8]);
}

TEST_F(CopyChannels, FlagIsSetForTheTwinsAndTheDelayAlone) {
    Body body = RandomPreset(random);
    for (const int channel : {0, 1}) {
        const auto other = static_cast<std::uint8_t>(channel);
        body[ImageLayout::Phase(channel)] = other;
        body[ImageLayout::Delay(channel) + 1] = static_cast<std::uint8_t>(10 + channel);
        body[ImageLayout::Delay(channel) + 2] = static_cast<std::uint8_t>(20 + channel);
        body[ImageLayout::Peq(channel, 0) + 2] = static_cast<std::uint8_t>(30 + channel);
        body[ImageLayout::Tone(channel, 0) + 2] = other;
    }
    body[71] = 0x02;
    Spread(body);
    std::vector<std::string> seen;
    const auto watch = [&](controls::Control& control, const std::string& name) {
        control.Observe([&seen, name, this](controls::Aspect aspect) {
            if (aspect == controls::Aspect::Value) {
                seen.push_back(name + (program.Windows.ControlEventsOff ? " guarded" : " open"));
            }
        });
    };
    watch(form.UpDown3[10], "bandwidth");
    watch(form.Combo1[2], "type");
    watch(form.Check2[1], "phase");
    watch(form.UpDown2[1], "coarse");
    watch(form.UpDown1[1], "fine");
    watch(form.Check1[1], "mute");
    CopyInput(0, 1);
    EXPECT_THAT(seen, ::testing::ElementsAre("bandwidth open", "type open", "phase open", "coarse guarded",
                                             "fine guarded", "mute open"));
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(CopyChannels, CommandsRunWithTheFlagClear) {
    Spread(RandomPreset(random));
    std::vector<bool> off;
    world.Port.Answer = [&](const Frame& frame) {
        off.push_back(program.Windows.ControlEventsOff);
        return line.Answer(frame);
    };
    CopyInput(0, 1);
    EXPECT_GE(off.size(), 20U);
    CopyOutput(5, 0);
    EXPECT_GE(off.size(), 20U + 16U);
    EXPECT_THAT(off, ::testing::Each(false));
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(CopyChannels, NamesAndViewsAreNotCopied) {
    Spread(RandomPreset(random));
    form.Check3[1].SetValue(1);
    form.Check4[0].SetValue(1);
    form.Option2[1].Select();
    const auto view = image.ViewState;
    const auto names = program.Stores.ChannelNames[Id];
    std::array<std::string, 8> labels;
    for (std::size_t c = 0; c < 8; ++c) {
        labels[c] = form.Label300[c].Caption();
    }
    const Body before = image.PresetBody;
    TakeSent();
    CopyInput(1, 0);
    CopyOutput(0, 3);
    EXPECT_EQ(image.ViewState, view);
    EXPECT_EQ(program.Stores.ChannelNames[Id], names);
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Label300[c].Caption(), labels[c]);
    }
    for (std::size_t j = 0; j < 6; ++j) {
        EXPECT_EQ(image.PresetBody[ImageLayout::Name(5) + j], before[ImageLayout::Name(5) + j]);
    }
    EXPECT_EQ(world.Port.CountSent(0x0E), 0);
    EXPECT_EQ(form.Check3[0].Value(), 0);
    EXPECT_TRUE(form.Option2[9].Selected()); // Out 4 alone, as it was
}

TEST_F(CopyChannels, FailureOfAFrameLetsTheCopyGoOn) {
    Spread(RandomPreset(random));
    Silence(0x01);
    CopyInput(0, 1);
    EXPECT_EQ(world.Port.CountSent(0x01), 5);
    EXPECT_GE(world.Port.CountSent(0x09), 1);
    EXPECT_EQ(form.Slider6[1].Position(), form.Slider6[0].Position());
}

TEST_F(CopyChannels, CurveOfTheDestinationFollows) {
    Spread(RandomPreset(random));
    CopyOutput(0, 3);
    EXPECT_EQ(program.Response.ChannelTotal(5), program.Response.ChannelTotal(2));
}

TEST_F(CopyChannels, CurvesFollowWhereNoListAndNoUpDownChanges) {
    // Alike in types, slopes and bandwidths, whose changes would run the event that updates the curve too.
    Body body = RandomPreset(random);
    const auto make_alike = [&body](std::size_t source, std::size_t destination, int gain) {
        body[destination + 2] = body[source + 2];
        body[source + 1] = 40;
        body[destination + 1] = 80;
        if (gain > 0) {
            body[source + 4] = static_cast<std::uint8_t>(gain);
            body[destination + 4] = static_cast<std::uint8_t>(gain / 2);
        }
    };
    const auto make_channels_alike = [&](int source, int destination) {
        for (int section = 0; section < ImageLayout::PeqCount(source); ++section) {
            make_alike(ImageLayout::Peq(source, section), ImageLayout::Peq(destination, section), 100 + section);
        }
        for (int filter = 0; filter < ImageLayout::ToneCount(source); ++filter) {
            body[ImageLayout::Tone(source, filter) + 2] = 1;
            make_alike(ImageLayout::Tone(source, filter), ImageLayout::Tone(destination, filter), 30);
        }
    };
    make_channels_alike(0, 1);
    make_channels_alike(2, 5);
    for (const int side : {0, 1}) {
        body[ImageLayout::Crossover(0, side) + 2] = 8;
        make_alike(ImageLayout::Crossover(0, side), ImageLayout::Crossover(3, side), 0);
    }
    Spread(body);
    ASSERT_NE(program.Response.ChannelTotal(1), program.Response.ChannelTotal(0));
    ASSERT_NE(program.Response.ChannelTotal(5), program.Response.ChannelTotal(2));
    CopyInput(0, 1);
    EXPECT_EQ(program.Response.ChannelTotal(1), program.Response.ChannelTotal(0));
    CopyOutput(0, 3);
    EXPECT_EQ(program.Response.ChannelTotal(5), program.Response.ChannelTotal(2));
}

TEST_F(CopyChannels, BothPlacesOfTheDestinationShowTheSourceThoughNoFrameGoesThrough) {
    Spread(RandomPreset(random));
    const std::size_t source = 2;
    const std::size_t destination = 6;
    form.Check1[source].SetValue(1);
    form.Check1[destination].SetValue(0);
    form.Check1[destination + 8].SetValue(0);
    form.Check2[source].SetValue(1);
    form.Check2[destination].SetValue(0);
    form.Check2[destination + 8].SetValue(0);
    TakeSent();
    world.Port.Answer = nullptr; // after the first report nothing is sent
    program.Link.ReportLinkFailure = true;
    program.Events.Run(UserIn(0), [this] { CopyOutput(0, 4); });
    EXPECT_THAT(world.Port.Sent, ::testing::SizeIs(5));
    EXPECT_EQ(form.Check1[destination + 8].Value(), 1);
    EXPECT_EQ(form.Check2[destination + 8].Value(), 1);
    EXPECT_EQ(form.Slider1[destination + 8].Position(), form.Slider1[source].Position());
    EXPECT_EQ(form.Text1[destination + 8].Text(), form.Text1[source].Text());
    EXPECT_EQ(form.Text2[destination + 8].Text(), form.Text2[source].Text());
    EXPECT_EQ(form.UpDown1[destination + 8].Position(), form.UpDown1[source].Position());
    EXPECT_EQ(form.UpDown2[destination + 8].Position(), form.UpDown2[source].Position());
}

} // namespace
} // namespace nrv::testing
