#include "presets/load_window.h"
#include "presets/read_dialog.h"

namespace nrv::testing {
namespace {

/// A device that keeps what is written to its memory and gives a memory position back from there.
class ReadDialogTest : public LoadWindow {
  protected:
    ReadDialogTest() {
        world.Port.Answer = [this](const Frame& frame) { return AnswerFromMemory(frame); };
        for (std::size_t position = 0; position < 8; ++position) {
            values.PresetNames[position] = "Name of place  " + std::to_string(position + 1);
            values.PresetUsed[position] = 85.0;
        }
        // Long ago, so that no value of these can pass for one that was fetched.
        values.ChannelMute.fill(0.0);
    }
    Bytes AnswerFromMemory(const Frame& frame) {
        pointers.push_back(program.Main.Window.MousePointer());
        auto& memory = line.Devices.at(Id).Memory;
        if (frame[3] == 0x11) {
            memory[frame[4] * 256 + frame[5]] = frame[8];
        }
        if (frame[3] == 0x0B) {
            Bytes preset;
            for (int i = 0; i < 432; ++i) {
                preset.push_back(memory[640 + 432 * frame[4] + i]);
            }
            return preset;
        }
        return line.Answer(frame);
    }
    void Keep(int position, const Body& body) {
        for (int i = 0; i < 432; ++i) {
            line.Devices.at(Id).Memory[640 + 432 * position + i] = body[static_cast<std::size_t>(i)];
        }
    }
    void Open(const std::function<void()>& while_it_stands) { InDialog(controls::ReadPresetTool, while_it_stands); }
    void ReadThrough(int position) {
        Open([this, position] {
            dialog.List1.UserSelect(position);
            dialog.Command1[1].UserClick();
        });
    }
    void ExpectBody(const Body& expected) {
        for (std::size_t n = 0; n < 432; ++n) {
            ASSERT_EQ(image.PresetBody[n], expected[n]) << "byte " << n;
        }
    }
    void ExpectAtRest() const {
        EXPECT_EQ(program.Main.Window.MousePointer(), controls::Pointer::Default);
        EXPECT_FALSE(program.Windows.ControlEventsOff);
        EXPECT_FALSE(program.Link.TxSuppressed);
        EXPECT_FALSE(program.Link.CheckSuppressed);
        EXPECT_FALSE(program.Response.PlotSuspended);
    }
    std::vector<Frame> TwoRequests(int position) const { return {FrameOf({0x10, 0, 18}), FrameOf({0x0B, position})}; }

    std::vector<controls::Pointer> pointers; ///< at each frame
    controls::FrmRead& dialog = world.Forms.Read;
};

TEST_F(ReadDialogTest, OpensOnTheFirstPosition) {
    Open([&] {
        EXPECT_EQ(dialog.List1.Shown(), 0);
        dialog.List1.UserSelect(6);
    });
    Open([&] {
        EXPECT_THAT(dialog.List1.Items(),
                    ::testing::ElementsAreArray(values.PresetNames.begin(), values.PresetNames.begin() + 8));
        EXPECT_EQ(dialog.List1.Shown(), 0);
    });
    EXPECT_EQ(dialog.Window.Caption(), "NRV-718 Read Preset");
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(ReadDialogTest, CancelClosesIt) {
    Open([&] { dialog.Command1[0].UserClick(); });
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 2", "close tool dialog 2"));
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(ReadDialogTest, PositionWithoutTheExactMarkIsEmpty) {
    for (const double mark : {0.0, 84.0, 86.0, 255.0}) { // 84 is 0x54
        values.PresetUsed[3] = mark;
        Forget();
        ReadThrough(3);
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Read Preset", "Preset empty", BoxIcon::Critical, BoxButtons::Ok);
        EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 2"));
        EXPECT_TRUE(world.Port.Sent.empty());
        EXPECT_TRUE(world.Port.Log.empty());
    }
}

TEST_F(ReadDialogTest, AnsweredNoDoesNothingAndStaysOpen) {
    const model::PresetImageRow before = image;
    world.Boxes.Answers = {BoxAnswer::No};
    ReadThrough(2);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Read Preset", "Overwrite current editing, are you sure ? ", BoxIcon::None,
              BoxButtons::YesNo);
    EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 2"));
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectChanged(before, {});
}

TEST_F(ReadDialogTest, TwoRequestsGoOutAndThePortIsMadeReadyAndSetBack) {
    Keep(5, RandomPreset(random));
    ReadThrough(5);
    ExpectSent(TwoRequests(5));
    EXPECT_THAT(world.Port.Log, ::testing::ElementsAre("close", "buffer 432", "input 432", "open", "close", "buffer 13",
                                                       "input 13", "open"));
    EXPECT_THAT(pointers, ::testing::ElementsAre(controls::Pointer::Hourglass, controls::Pointer::Hourglass));
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 2", "close tool dialog 2"));
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from DEVICE - Name of place  6");
    ExpectAtRest();
}

TEST_F(ReadDialogTest, MutesOfTheLiveByteAreDecodedShifted) {
    // Seen while the long reply is asked for, before the image is applied.
    std::array<double, 8> decoded{};
    std::uint8_t page = 0;
    world.Port.Answer = [&](const Frame& frame) {
        if (frame[3] == 0x0B) {
            decoded = values.ChannelMute;
            page = image.SystemPage[18];
        }
        return AnswerFromMemory(frame);
    };
    Keep(0, RandomPreset(random));
    const auto read = [&](int live) {
        line.Devices.at(Id).Memory[18] = static_cast<std::uint8_t>(live);
        values.ChannelMute = {0.5, 0.25, 9, 9, 9, 9, 9, 9};
        program.ReadDialog.ReadPreset(0);
        EXPECT_EQ(page, live);
    };
    read(0x03); // bits 0 and 1 are overwritten by bits 2 and 3
    EXPECT_THAT(decoded, ::testing::ElementsAre(0.5, 0.25, 0, 0, 0, 0, 0, 0));
    read(0x04);
    EXPECT_THAT(decoded, ::testing::ElementsAre(0.5, 0.25, 1, 0, 0, 0, 0, 0));
    read(0xA9); // bits 0, 3, 5 and 7
    EXPECT_THAT(decoded, ::testing::ElementsAre(0.5, 0.25, 0, 1, 0, 1, 0, 1));
    read(0x50); // bits 4 and 6
    EXPECT_THAT(decoded, ::testing::ElementsAre(0.5, 0.25, 0, 0, 1, 0, 1, 0));
}

TEST_F(ReadDialogTest, WithTheMuteOptionOnTheMutesAreThePresets) {
    Body body = RandomPreset(random);
    body[71] = 0x25;
    Keep(1, body);
    line.Devices.at(Id).Memory[18] = 0xFF;
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x2C;
    ReadThrough(1);
    EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(1, 0, 1, 0, 0, 1, 0, 0));
    EXPECT_EQ(image.SystemPage[18], 0x25);
    EXPECT_EQ(image.SystemPage[16], 0x2C);
    EXPECT_EQ(values.OptionBit3, 1.0);
    EXPECT_EQ(values.OptionBit5, 1.0);
    ExpectBody(body);
    EXPECT_EQ(form.Check1[5].Value(), 1);
    EXPECT_EQ(form.Check1[13].Value(), 1);
}

TEST_F(ReadDialogTest, WithTheMuteOptionOffTheOutputsComeUpMuted) {
    Body body = RandomPreset(random);
    body[71] = 0x03;
    Keep(1, body);
    line.Devices.at(Id).Memory[18] = 0x00;
    values.MuteWithPreset = 0.0;
    values.OptionBit3 = 1.0;
    image.SystemPage[16] = 0x03;
    ReadThrough(1);
    EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(0, 0, 1, 1, 1, 1, 1, 1));
    EXPECT_EQ(image.SystemPage[18], 0xFC);
    EXPECT_EQ(image.SystemPage[16], 0x08);
    body[71] = 0xFC;
    ExpectBody(body);
    ExpectSent(TwoRequests(1)); // nothing of it goes back
}

TEST_F(ReadDialogTest, ByteBehindThePresetViewStateAndTheRestOfThePageStay) {
    Keep(1, RandomPreset(random));
    image.PresetBody[432] = 0x77;
    for (std::size_t n = 0; n < 257; ++n) {
        image.SystemPage[n] = static_cast<std::uint8_t>(n * 3);
    }
    for (std::size_t n = 0; n < 81; ++n) {
        image.ViewState[n] = static_cast<std::uint8_t>(n >= 40 && n < 46 ? 2 : n % 2);
    }
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    const model::PresetImageRow before = image;
    ReadThrough(1);
    for (std::size_t n = 0; n < 257; ++n) {
        EXPECT_EQ(image.SystemPage[n], n == 18 ? image.PresetBody[71] : before.SystemPage[n]) << n;
    }
    EXPECT_EQ(image.ViewState, before.ViewState);
    EXPECT_EQ(image.PresetBody[432], 0x77);
    EXPECT_EQ(form.Check4[1].Value(), 1); // the boxes are those of the unchanged state
    EXPECT_TRUE(form.Option2[2].Selected());
}

TEST_F(ReadDialogTest, GraphsAreDrawnOnceAllOfItIsThere) {
    Keep(1, RandomPreset(random));
    bool drawn_on_the_way = false;
    for (controls::Picture& graph : form.Picture1) {
        graph.Clear();
        graph.Observe(
            [&](controls::Aspect) { drawn_on_the_way |= program.Response.PlotSuspended && !graph.Strokes().empty(); });
    }
    ReadThrough(1);
    for (controls::Picture& graph : form.Picture1) {
        graph.Observe({});
        EXPECT_FALSE(graph.Strokes().empty());
    }
    EXPECT_FALSE(drawn_on_the_way);
}

TEST_F(ReadDialogTest, FailedMemoryReadChangesNothing) {
    const model::PresetImageRow before = image;
    const auto mutes = values.ChannelMute;
    const std::string title = form.Window.Caption();
    Silence(0x10);
    ReadThrough(4);
    EXPECT_EQ(TakeSent(), std::vector<Frame>(5, FrameOf({0x10, 0, 18})));
    ExpectChanged(before, {});
    EXPECT_EQ(values.ChannelMute, mutes);
    EXPECT_EQ(form.Window.Caption(), title);
    EXPECT_TRUE(world.Port.Log.empty());
    EXPECT_EQ(world.Host.Log.back(), "close tool dialog 2");
    ExpectAtRest();
}

TEST_F(ReadDialogTest, LongReplyThatNeverComesEndsTheProgram) {
    Silence(0x0B);
    ReadThrough(4);
    EXPECT_EQ(world.Port.CountSent(0x0B), 6);
    EXPECT_TRUE(world.Process.Ended);
    EXPECT_EQ(world.Boxes.Shown.back().Text, "Time out");
    ExpectAtRest();
}

TEST_F(ReadDialogTest, CodeWithoutAnEntryIsToldAndLeavesNoFlagSet) {
    Body body = RandomPreset(random);
    body[6] = 121;
    Keep(1, body);
    ReadThrough(1);
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_THAT(world.Boxes.Shown[1].Text, ::testing::HasSubstr("In A: byte 6 "));
    ExpectAtRest();
    EXPECT_EQ(world.Port.InputLen, 13);
}

TEST_F(ReadDialogTest, CodeWithoutAnEntryLeavesEveryGraphDrawnAsItsCurvesStand) {
    Body body = image.PresetBody;
    body[ImageLayout::Crossover(0, 0) + 1] = 68; // a high-pass of 24 dB at 1 kHz, applied before the equaliser
    body[ImageLayout::Crossover(0, 0) + 2] = 8;
    body[ImageLayout::Crossover(0, 1) + 2] = 0;
    body[ImageLayout::Peq(3, 0) + 1] = 121; // of Out 2
    Keep(1, body);
    for (controls::Picture& graph : form.Picture1) {
        graph.Clear();
    }
    EXPECT_THROW(program.ReadDialog.ReadPreset(1), RuntimeError);
    for (controls::Picture& graph : form.Picture1) {
        ASSERT_FALSE(graph.Strokes().empty());
    }
    const auto row_at = [this](std::size_t channel, int column) {
        const auto& points = form.Picture1[channel].Strokes().back().Points;
        return std::ranges::find(points, column, &controls::Picture::Point::X)->Y;
    };
    EXPECT_EQ(row_at(2, 575), 95);
    // 200 Hz is a decade from the left edge, 191.67 pixels; five times below the corner is 24 log2(5) = 56 dB down.
    EXPECT_NEAR(row_at(2, 192), 95.4 + 56.0 * 191.0 / 60.0, 5.0);
}

TEST_F(ReadDialogTest, PortThatCannotBeOpenedAgainIsToldAndLeavesNoFlagSet) {
    const model::PresetImageRow before = image;
    world.Port.Present = false;
    ReadThrough(1);
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(world.Boxes.Shown[1].Title, "Communication problem"); // one report, as of a frame that failed
    EXPECT_FALSE(Loaded(0));
    EXPECT_TRUE(program.State.DeviceUnconnected[9]);
    EXPECT_EQ(program.Main.StatusLine.Caption(),
              "The port is absent; the read stopped. Double-click the row of ID:9 to connect it again.");
    EXPECT_EQ(image.PresetBody, before.PresetBody);
    ExpectAtRest();
}

TEST_F(ReadDialogTest, DemoModeAppliesTheImageAsItStands) {
    program.Link.DemoMode = true;
    const Body body = RandomPreset(random);
    image.PresetBody = body;
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    ReadThrough(7);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Port.Log.empty());
    ExpectBody(body);
    EXPECT_EQ(form.Slider1[0].Position(), 120 - body[1]);
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from DEVICE - Name of place  8");
}

TEST_F(ReadDialogTest, TitleIsTheSameAfterAStoreAndAReadOfAPosition) {
    std::string name = "Church";
    program.StoreDialog.StorePreset(6, name);
    const std::string title = form.Window.Caption();
    form.Window.SetCaption("");
    program.ReadDialog.ReadPreset(6);
    EXPECT_EQ(form.Window.Caption(), title);
    EXPECT_EQ(title, "ID:9 NRV-718 - Last preset loaded: come from DEVICE - Church          ");
}

TEST_F(ReadDialogTest, AnyImageComesBackFromDeviceMemoryByteForByte) {
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    std::map<int, Body> stored;
    for (int position = 0; position < 8; ++position) {
        Body body = RandomBody(random);
        image.PresetBody = body;
        model::DecodeMuteBits(body[71], values);
        std::string name = "p" + std::to_string(position);
        program.StoreDialog.StorePreset(position, name);
        stored[position] = body;
    }
    for (const int position : {3, 0, 7, 5, 1, 6, 2, 4}) {
        program.ReadDialog.ReadPreset(position);
        ExpectBody(stored[position]);
        EXPECT_EQ(image.SystemPage[18], stored[position][71]);
        EXPECT_EQ(line.Devices.at(Id).Memory[48 + position], 0x55);
    }
    ExpectAtRest();
}

} // namespace
} // namespace nrv::testing
