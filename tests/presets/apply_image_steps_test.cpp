#include "presets/load_window.h"

namespace nrv::testing {
namespace {

/// The order of a load's steps, which of them are guarded, and what they leave in the window.
class ApplyImageSteps : public LoadWindow {
  protected:
    /// Notes the first change of a control under a step's name, and whether events were off at each.
    void Watch(controls::Control& control, controls::Aspect wanted, const std::string& step) {
        control.Observe([this, wanted, step](controls::Aspect aspect) {
            if (aspect != wanted) {
                return;
            }
            if (std::ranges::find(order_, step) == order_.end()) {
                order_.push_back(step);
            }
            guarded_[step].push_back(program.Windows.ControlEventsOff);
        });
    }
    template <class Range>
    void WatchAll(Range& range, std::size_t count, const std::string& step,
                  controls::Aspect wanted = controls::Aspect::Value) {
        for (std::size_t i = 0; i < count; ++i) {
            Watch(range[i], wanted, step);
        }
    }
    void ExpectGuarded(const std::string& step, bool guarded) {
        ASSERT_FALSE(guarded_[step].empty()) << step;
        for (const bool off : guarded_[step]) {
            EXPECT_EQ(off, guarded) << step;
        }
    }
    /// An image in which every control differs from the factory's.
    void PutOtherImage() {
        Body& body = image.PresetBody;
        body = RandomPreset(random);
        for (int channel = 0; channel < 8; ++channel) {
            body[ImageLayout::Gain(channel)] = 10;
            body[ImageLayout::Phase(channel)] = 1;
            body[ImageLayout::Delay(channel) + 1] = 99;
            body[ImageLayout::Delay(channel) + 2] = 9;
            body[ImageLayout::Dynamics(channel)] = 1;
            body[ImageLayout::Dynamics(channel) + 1] = 2;
            body[ImageLayout::Dynamics(channel) + 3] = 3;
            for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
                body[ImageLayout::Peq(channel, section) + 2] = 50;
                body[ImageLayout::Peq(channel, section) + 4] = 4;
            }
            for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
                body[ImageLayout::Tone(channel, filter) + 2] = 2;
                body[ImageLayout::Tone(channel, filter) + 4] = 7;
            }
        }
        for (int output = 0; output < 6; ++output) {
            body[ImageLayout::Source(output)] = 2;
            body[ImageLayout::Crossover(output, 0) + 2] = 5;
            body[ImageLayout::Crossover(output, 1) + 2] = 6;
        }
        body[ImageLayout::Master] = 11;
        image.SystemPage[16] = 0x54; // mutes with presets, digital, metres
        image.ViewState.fill(1);
        for (std::size_t output = 0; output < 6; ++output) {
            image.ViewState[40 + output] = 2;
        }
        body[71] = 0xFF;
        image.SystemPage[18] = 0xFF;
        values.MuteWithPreset = 1.0;
    }

    std::vector<std::string> order_;
    std::map<std::string, std::vector<bool>> guarded_;
};

TEST_F(ApplyImageSteps, ControlsFollowTheImageInTheirOrderGuardedOrNot) {
    PutOtherImage();
    WatchAll(form.Check1, 16, "mutes");
    Watch(form.Combo4, controls::Aspect::Value, "input");
    WatchAll(form.Combo3, 6, "1 sources");
    WatchAll(form.Slider4, 8, "2 thresholds");
    WatchAll(form.Slider5, 8, "2 releases");
    WatchAll(form.Slider6, 8, "2 attacks");
    WatchAll(form.Combo2, 12, "3 slopes");
    WatchAll(form.Slider2, 44, "4 peq gains");
    WatchAll(form.UpDown3, 44, "4 peq bandwidths");
    WatchAll(form.Slider3, 10, "5 tone gains");
    WatchAll(form.Combo1, 10, "5 tone types");
    WatchAll(form.Check2, 16, "6 phases");
    WatchAll(form.UpDown2, 16, "8 delays");
    WatchAll(form.UpDown1, 16, "8 fine delays");
    WatchAll(form.Option1, 2, "9 unit");
    WatchAll(form.Slider1, 16, "10 gains");
    WatchAll(form.Label300, 8, "11 names", controls::Aspect::Caption);
    Watch(form.Slider100, controls::Aspect::Value, "12 master");
    WatchAll(form.Check3, 8, "13 cursors");
    WatchAll(form.Check4, 6, "14 first boxes");
    WatchAll(form.Check5, 6, "14 second boxes");
    WatchAll(form.Check6, 6, "14 third boxes");
    WatchAll(form.Check7, 6, "14 fourth boxes");
    WatchAll(form.Check8, 6, "14 fifth boxes");
    WatchAll(form.Option2, 18, "15 sums");
    Apply(LoadedFromFile);
    EXPECT_THAT(order_,
                ::testing::ElementsAre("mutes", "input", "1 sources", "2 thresholds", "2 releases", "2 attacks",
                                       "3 slopes", "4 peq gains", "4 peq bandwidths", "5 tone gains", "5 tone types",
                                       "6 phases", "8 delays", "8 fine delays", "9 unit", "10 gains", "11 names",
                                       "12 master", "13 cursors", "14 first boxes", "14 second boxes", "14 third boxes",
                                       "14 fourth boxes", "14 fifth boxes", "15 sums"));
    for (const char* step : {"mutes", "input", "3 slopes", "4 peq gains", "4 peq bandwidths", "5 tone gains",
                             "5 tone types", "6 phases", "8 delays", "8 fine delays"}) {
        ExpectGuarded(step, true);
    }
    for (const char* step : {"1 sources", "2 thresholds", "2 releases", "2 attacks", "9 unit", "10 gains", "11 names",
                             "12 master", "13 cursors", "14 first boxes", "14 second boxes", "14 third boxes",
                             "14 fourth boxes", "14 fifth boxes", "15 sums"}) {
        ExpectGuarded(step, false);
    }
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(ApplyImageSteps, FrequencyTextsAreWrittenGuarded) {
    for (const std::size_t place : ImageLayout::FrequencyBytes()) {
        image.PresetBody[place] = 63; // 757 Hz, of no factory filter
    }
    WatchAll(form.Text8, 12, "3 crossovers", controls::Aspect::Text);
    WatchAll(form.Text4, 44, "4 peq", controls::Aspect::Text);
    WatchAll(form.Text7, 10, "5 tone", controls::Aspect::Text);
    Apply(LoadedFromFile);
    EXPECT_THAT(order_, ::testing::ElementsAre("3 crossovers", "4 peq", "5 tone"));
    for (const std::string& step : order_) {
        ExpectGuarded(step, true);
    }
    EXPECT_EQ(form.Text8[11].Text(), "757");
    EXPECT_EQ(form.Text4[43].Text(), "757");
    EXPECT_EQ(form.Text7[9].Text(), "757");
}

TEST_F(ApplyImageSteps, CommandsRunWithTheirEventsOn) {
    PutOtherImage();
    long frames = 0;
    world.Port.Answer = [&](const Frame& frame) {
        EXPECT_FALSE(program.Windows.ControlEventsOff) << "frame " << frames;
        ++frames;
        return line.Answer(frame);
    };
    Apply(LoadedFromFile);
    EXPECT_EQ(frames, BulkLoadFrames + 6 + 1); // with every source and the unit changed
}

TEST_F(ApplyImageSteps, CheckIsSuppressedDuringTheMutesOfAnImageReadFromTheDevice) {
    std::vector<bool> during;
    std::vector<bool> between;
    for (std::size_t c = 0; c < 8; ++c) {
        form.Line6[c].Observe([&](controls::Aspect) { during.push_back(program.Link.CheckSuppressed); });
        form.Check1[c].Observe([&](controls::Aspect) { between.push_back(program.Link.CheckSuppressed); });
    }
    struct Case {
        presets::ImageCase Flags;
        double Option;
        bool Expected;
    };
    for (const Case& one :
         {Case{ReadFromDevice, 1.0, true}, Case{ReadFromDevice, 0.0, false}, Case{LoadedFromFile, 1.0, false},
          Case{LoadedFromFile, 0.0, false}, Case{WindowOpens, 1.0, false}}) {
        // Every channel's mute changes.
        for (std::size_t c = 0; c < 8; ++c) {
            const bool muted = one.Option == 1.0 || c >= 2;
            program.Windows.ControlEventsOff = true;
            form.Check1[c].SetValue(muted ? 0 : 1);
            program.Windows.ControlEventsOff = false;
            form.Line6[c].SetVisible(!muted);
        }
        image.PresetBody[71] = 0xFF;
        image.SystemPage[18] = 0xFF;
        values.MuteWithPreset = one.Option;
        during.clear();
        between.clear();
        ApplySilently(one.Flags);
        EXPECT_EQ(during, std::vector<bool>(8, one.Expected));
        EXPECT_EQ(between, std::vector<bool>(8, false));
        EXPECT_FALSE(program.Link.CheckSuppressed);
    }
}

TEST_F(ApplyImageSteps, FlagsOfTheCallerAreLeft) {
    program.Link.TxSuppressed = true;
    program.Response.PlotSuspended = true;
    Apply(ReadFromDevice);
    EXPECT_TRUE(program.Link.TxSuppressed);
    EXPECT_TRUE(program.Response.PlotSuspended);
}

TEST_F(ApplyImageSteps, ButtonsAndNumbersOfTheSumsComeFromDifferentBytes) {
    const std::array<std::uint8_t, 6> bytes = {1, 2, 0, 0, 1, 2};
    std::ranges::copy(bytes, image.ViewState.begin() + 40);
    ApplySilently(WindowOpens);
    for (std::size_t output = 0; output < 6; ++output) {
        for (std::size_t m = 0; m < 3; ++m) {
            EXPECT_EQ(form.Option2[3 * output + m].Selected(), m == bytes[output]) << output;
        }
        // Bytes 40 and 41 decide for three outputs each; that is meant.
        EXPECT_EQ(program.Response.ViewMode[output], output < 3 ? 1 : 2) << output;
    }
    EXPECT_EQ(form.Check4[1].Caption(), " Out 1+InA"); // Out 1, on the tab of Out 2
    EXPECT_EQ(form.Check5[1].Caption(), " Out 3+InA");
    EXPECT_EQ(form.Check8[0].Caption(), " Out 6+InB");
}

TEST_F(ApplyImageSteps, SumByteBeyondItsOutputReachesTheNextOnes) {
    image.ViewState[40] = 4;
    ApplySilently(WindowOpens);
    // Option 4 was selected for Out 1, then option 3 for Out 2; the numbers handed on were 4, 7, 10, 9, 12 and 15.
    EXPECT_TRUE(form.Option2[0].Selected());
    EXPECT_TRUE(form.Option2[3].Selected());
    EXPECT_FALSE(form.Option2[4].Selected());
    const std::vector<int> modes(program.Response.ViewMode.begin(), program.Response.ViewMode.begin() + 6);
    EXPECT_THAT(modes, ::testing::ElementsAre(0, 0, 1, 0, 0, 0));
    const std::vector<int> bytes(image.ViewState.begin() + 40, image.ViewState.begin() + 46);
    EXPECT_THAT(bytes, ::testing::ElementsAre(4, 0, 0, 0, 0, 0));
}

TEST_F(ApplyImageSteps, SumByteWithoutAnOptionIsAnErrorThatLeavesNoFlagSet) {
    for (std::size_t output = 0; output < 6; ++output) {
        // The last option of all is Out 6 with In B, number 17.
        const int first_refused = 18 - 3 * static_cast<int>(output);
        for (const int byte : {first_refused, 63, 200, 255}) {
            image.ViewState[40 + output] = static_cast<std::uint8_t>(byte);
            program.Link.TxSuppressed = true;
            try {
                Apply(WindowOpens);
                ADD_FAILURE() << byte << " was taken for output " << output;
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.what(), "Out " + std::to_string(output + 1) + ": byte " + std::to_string(730 + output) +
                                            " of the image is the view option " + std::to_string(byte) +
                                            ", and options end at 2.");
                EXPECT_EQ(error.Kind(), ErrorKind::IndexOutOfRange);
            }
            program.Link.TxSuppressed = false;
            EXPECT_FALSE(program.Windows.ControlEventsOff);
            EXPECT_EQ(image.ViewState[40 + output], byte);
        }
        image.ViewState[40 + output] = static_cast<std::uint8_t>(first_refused - 1);
        ApplySilently(WindowOpens);
        EXPECT_EQ(image.ViewState[40 + output], first_refused - 1);
    }
}

TEST_F(ApplyImageSteps, ViewBoxesAndCursorsComeFromTheViewState) {
    image.ViewState.fill(0);
    image.ViewState[6 * 2 + 4] = 1; // third box of Out 5's tab: Out 3
    image.ViewState[6 * 4 + 0] = 1; // fifth box of Out 1's tab: Out 6
    image.ViewState[30 + 1] = 1;
    image.ViewState[30 + 7] = 1;
    ApplySilently(WindowOpens);
    for (std::size_t output = 0; output < 6; ++output) {
        EXPECT_EQ(form.Check4[output].Value(), 0);
        EXPECT_EQ(form.Check5[output].Value(), 0);
        EXPECT_EQ(form.Check6[output].Value(), output == 4 ? 1 : 0);
        EXPECT_EQ(form.Check7[output].Value(), 0);
        EXPECT_EQ(form.Check8[output].Value(), output == 0 ? 1 : 0);
    }
    for (std::size_t onto = 0; onto < 8; ++onto) {
        for (std::size_t drawn = 0; drawn < 8; ++drawn) {
            const bool expected = (onto == 6 && drawn == 4) || (onto == 2 && drawn == 7);
            EXPECT_EQ(program.Response.OverlayMatrix[onto][drawn], expected) << onto << " " << drawn;
        }
    }
    for (std::size_t section = 0; section < 44; ++section) {
        const bool shown = (section >= 10 && section < 20) || section >= 40;
        EXPECT_EQ(form.Label5[section].Visible(), shown) << section;
    }
}

TEST_F(ApplyImageSteps, TabIsShownAgainAfterEveryKindOfLoad) {
    for (const double option : {0.0, 1.0}) {
        for (const auto& flags : {ReadFromDevice, LoadedFromFile, WindowOpens}) {
            for (const int tab : {0, 7, 8, 10}) {
                values.MuteWithPreset = option;
                image.SystemPage[16] = option == 1.0 ? 4 : 0;
                program.Link.TxSuppressed = flags != LoadedFromFile;
                form.SSTab1.SetTab(tab);
                Apply(flags);
                program.Link.TxSuppressed = false;
                EXPECT_EQ(form.SSTab1.Tab(), tab);
            }
        }
    }
}

TEST_F(ApplyImageSteps, DelayAndItsTwinShowTheSame) {
    for (const int option_bits : {0x00, 0x40, 0x40}) {
        image.PresetBody = RandomPreset(random);
        image.SystemPage[16] = static_cast<std::uint8_t>(option_bits);
        const bool unit_changes = (option_bits == 0x40) != form.Option1[1].Selected();
        ApplySilently(WindowOpens);
        for (std::size_t c = 0; c < 8; ++c) {
            EXPECT_EQ(form.UpDown1[c].Position(), form.UpDown1[c + 8].Position());
            EXPECT_EQ(form.UpDown2[c].Position(), form.UpDown2[c + 8].Position());
            if (!unit_changes) {
                EXPECT_EQ(form.Text2[c].Text(), form.Text2[c + 8].Text());
            }
        }
    }
}

TEST_F(ApplyImageSteps, NamesAreTheImagesBytesUntrimmed) {
    const std::string bytes = std::string("\x01\0 \xFFz\x7F", 6);
    std::ranges::copy(bytes, image.PresetBody.begin() + 186);
    std::ranges::copy(std::string("  ab  "), image.PresetBody.begin() + 426);
    ApplySilently(WindowOpens);
    EXPECT_EQ(form.Label300[2].Caption(), bytes);
    EXPECT_EQ(form.SSTab1.TabCaptions()[7], "  ab  ");
    EXPECT_EQ(program.Stores.ChannelNames[Id][2], bytes);
    // In B of a device without settings of its own.
    EXPECT_EQ(form.Label300[1].Caption(), std::string(" In \0<", 6));
}

} // namespace
} // namespace nrv::testing
