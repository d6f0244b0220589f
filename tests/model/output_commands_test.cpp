#include "model/command_window.h"
#include "model/output_commands.h"

namespace nrv::testing {
namespace {

constexpr std::array<std::size_t, 12> CrossoverBytes = {144, 147, 192, 195, 240, 243, 288, 291, 336, 339, 384, 387};
constexpr std::array<std::size_t, 8> LimiterBytes = {66, 138, 178, 226, 274, 322, 370, 418};
constexpr std::array<std::size_t, 6> SourceBytes = {185, 233, 281, 329, 377, 425};
constexpr std::array<std::size_t, 6> CrossoverLabels = {10, 15, 20, 25, 30, 35};
constexpr std::array<std::size_t, 8> LimiterLabels = {40, 41, 12, 17, 22, 27, 32, 37};
const std::array<std::string, 11> SlopeTexts = {"    Bypass",   "- 6 dB/oct Bw", "-12dB/oct Bw", "-12dB/oct Lz",
                                                "-12dB/oct Bs", "-12dB/oct Cv",  "-18dB/oct Bw", "-18dB/oct Cv",
                                                "-24dB/oct Bw", "-24dB/oct Lz",  "-24dB/oct Cv"};
const std::array<std::string, 30> Attacks = {"  5ms", "  6ms", "  7ms", "  8ms", "  9ms", " 10ms", " 11ms", " 12ms",
                                             " 13ms", " 14ms", " 15ms", " 16ms", " 17ms", " 18ms", " 19ms", " 20ms",
                                             " 25ms", " 30ms", " 40ms", " 50ms", " 60ms", " 70ms", " 80ms", " 90ms",
                                             "100ms", "120ms", "140ms", "160ms", "180ms", "200ms"};

class OutputCommands : public CommandWindow {
  protected:
    static Frame CrossoverFrame(std::size_t side, int frequency, int slope) {
        const int x = static_cast<int>(side);
        return FrameOf({4, 2 + x / 2, x % 2, 0, 0, 0, 0, frequency, slope});
    }
    static Frame LimiterFrame(std::size_t channel, int attack, int release, int threshold) {
        return FrameOf({7, static_cast<int>(channel), 0, 0, 0, attack, release, 0, threshold});
    }
    void PutLimiterCodes(std::size_t channel, int attack, int release, int threshold) {
        image.PresetBody[LimiterBytes[channel]] = static_cast<std::uint8_t>(attack);
        image.PresetBody[LimiterBytes[channel] + 1] = static_cast<std::uint8_t>(release);
        image.PresetBody[LimiterBytes[channel] + 3] = static_cast<std::uint8_t>(threshold);
    }
};

TEST_F(OutputCommands, EverySlopeOfEverySideIsOneFrameAndTwoBytes) {
    for (std::size_t x = 0; x < 12; ++x) {
        SCOPED_TRACE(x);
        form.Combo2[x].UserSelect(x % 2 == 0 ? 3 : 4);
        for (int slope = 0; slope <= 10; ++slope) {
            const auto before = image;
            // Factory frequencies: the low-pass of output k (from 1) has code 20k, the high-pass that of the one below,
            // 10 on the first.
            const int output = static_cast<int>(x / 2) + 1;
            const int frequency = x % 2 == 1 ? 20 * output : output == 1 ? 10 : 20 * (output - 1);
            TakeSent();
            form.Combo2[x].UserSelect(slope);
            ExpectSent({CrossoverFrame(x, frequency, slope)});
            EXPECT_EQ(values.CrossoverSlope[x], slope);
            ExpectChanged(before, {{CrossoverBytes[x] + 1, frequency}, {CrossoverBytes[x] + 2, slope}});
        }
    }
}

TEST_F(OutputCommands, SlopesAreListedInCodeOrder) {
    for (const controls::List& list : form.Combo2) {
        EXPECT_THAT(list.Items(), ::testing::ElementsAreArray(SlopeTexts));
    }
}

TEST_F(OutputCommands, TypedFrequencyIsPulledToTheTableAndSentWithTheSlope) {
    form.Combo2[7].UserSelect(9);
    TakeSent();
    const auto before = image;
    form.Text8[7].UserText("1010");
    EXPECT_EQ(form.Text8[7].UserKey(controls::EnterKey), controls::EnterKey);
    EXPECT_EQ(form.Text8[7].Text(), "1000");
    EXPECT_EQ(values.CrossoverFrequency[7], 1000.0);
    EXPECT_EQ(values.CrossoverSlope[7], 9.0);
    // The low-pass of Out 4: channel 5, side 1; 1000 Hz is code 68.
    ExpectSent({FrameOf({4, 5, 1, 0, 0, 0, 0, 68, 9})});
    ExpectChanged(before, {{292, 68}});
}

TEST_F(OutputCommands, FrequencyMidwayBetweenTwoEntriesGoesToTheLower) {
    const model::CommandContext context = Context();
    form.Text8[0].SetText("20.5");
    model::SetCrossover(context, 0);
    EXPECT_EQ(form.Text8[0].Text(), "20");
    EXPECT_EQ(image.PresetBody[145], 0);
    form.Text8[0].SetText("19500");
    model::SetCrossover(context, 0);
    EXPECT_EQ(values.CrossoverFrequency[0], 19000.0);
    EXPECT_EQ(image.PresetBody[145], 119);
}

TEST_F(OutputCommands, FrequencyAboveTheTableFallsToItsBottom) {
    form.Text8[3].SetText("20001"); // meant; the keys of the box keep it from coming here
    model::SetCrossover(Context(), 3);
    EXPECT_EQ(form.Text8[3].Text(), "20");
    EXPECT_EQ(values.CrossoverFrequency[3], 20.0);
    EXPECT_EQ(image.PresetBody[196], 0);
}

TEST_F(OutputCommands, UnreadableFrequencyChangesNothingAndSendsNothing) {
    const auto before = image;
    const double frequency = values.CrossoverFrequency[4];
    form.Text8[4].SetText("12?");
    EXPECT_THROW(model::SetCrossover(Context(), 4), RuntimeError);
    ExpectChanged(before, {});
    EXPECT_EQ(values.CrossoverFrequency[4], frequency);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(OutputCommands, CrossoverToolTipTellsBothSidesWhicheverMoved) {
    for (std::size_t output = 0; output < 6; ++output) {
        SCOPED_TRACE(output);
        const std::size_t high = 2 * output;
        form.Text8[high].UserText("80");
        form.Text8[high].UserKey(controls::EnterKey);
        form.Text8[high + 1].UserText("2500");
        form.Text8[high + 1].UserKey(controls::EnterKey);
        form.Combo2[high].UserSelect(1);
        EXPECT_EQ(form.Label100[CrossoverLabels[output]].ToolTip(),
                  "HP: 80 Hz, - 6 dB/oct Bw -- LP: 2500 Hz, -12dB/oct Bw");
        form.Combo2[high + 1].UserSelect(0);
        EXPECT_EQ(form.Label100[CrossoverLabels[output]].ToolTip(),
                  "HP: 80 Hz, - 6 dB/oct Bw -- LP: 2500 Hz,     Bypass");
        const std::string other = output == 0 ? "" : form.Label100[CrossoverLabels[output - 1]].ToolTip();
        form.Combo2[high].UserSelect(10);
        EXPECT_EQ(form.Label100[CrossoverLabels[output]].ToolTip(),
                  "HP: 80 Hz, -24dB/oct Cv -- LP: 2500 Hz,     Bypass");
        if (output > 0) {
            EXPECT_EQ(form.Label100[CrossoverLabels[output - 1]].ToolTip(), other);
        }
    }
}

TEST_F(OutputCommands, SlopeBeyondTheListIsHeldAndShownAsTheNearest) {
    program.Windows.ControlEventsOff = true;
    form.Combo2[2].Select(99);
    program.Windows.ControlEventsOff = false;
    model::SetCrossover(Context(), 2);
    EXPECT_EQ(image.PresetBody[194], 99);
    EXPECT_EQ(values.CrossoverSlope[2], 99.0);
    EXPECT_EQ(form.Combo2[2].ShownText(), "-24dB/oct Cv");
    EXPECT_THAT(form.Label100[15].ToolTip(), ::testing::StartsWith("HP: 63 Hz, -24dB/oct Cv -- LP: "));
}

TEST_F(OutputCommands, NoiseGateThresholdHasElevenTexts) {
    const std::array<std::string, 11> texts = {"OFF",   "-99.0", "-98.0", "-97.0", "-96.0", "-95.0",
                                               "-94.0", "-93.0", "-92.0", "-91.0", "-90.0"};
    for (std::size_t c = 0; c < 2; ++c) {
        PutLimiterCodes(c, 3, 4, 0);
        for (int position = 10; position >= 0; --position) {
            SCOPED_TRACE(position);
            const int code = 10 - position;
            form.Slider4[c].SetPosition(position == 5 ? 6 : 5);
            const auto before = image;
            TakeSent();
            form.Slider4[c].UserMove(position);
            const std::string& text = texts[static_cast<std::size_t>(code)];
            EXPECT_EQ(form.Text9[c].Text(), text);
            EXPECT_EQ(form.Label100[LimiterLabels[c]].ToolTip(), code == 0 ? "OFF" : text + " dBu");
            EXPECT_EQ(values.LimiterThreshold[c], code);
            ExpectChanged(before, {{LimiterBytes[c] + 3, code}});
            ExpectSent({LimiterFrame(c, 3, 4, code)});
        }
    }
}

TEST_F(OutputCommands, LimiterThresholdIsHalfADecibelAStep) {
    struct Case {
        int Position;
        int Code;
        const char* Text;
    };
    for (std::size_t c = 2; c < 8; ++c) {
        SCOPED_TRACE(c);
        PutLimiterCodes(c, 29, 18, 7);
        for (const Case& one : {Case{0, 60, "20"}, Case{1, 59, "19.5"}, Case{2, 58, "19"}, Case{39, 21, "0.5"},
                                Case{40, 20, "0"}, Case{41, 19, "-0.5"}, Case{60, 0, "-10"}}) {
            form.Slider4[c].SetPosition(30);
            const auto before = image;
            TakeSent();
            form.Slider4[c].UserMove(one.Position);
            EXPECT_EQ(form.Text9[c].Text(), one.Text);
            EXPECT_EQ(form.Label100[LimiterLabels[c]].ToolTip(), std::string(one.Text) + " dBu");
            EXPECT_EQ(values.LimiterThreshold[c], one.Code);
            ExpectChanged(before, {{LimiterBytes[c] + 3, one.Code}});
            ExpectSent({LimiterFrame(c, 29, 18, one.Code)});
        }
    }
}

TEST_F(OutputCommands, EveryReleaseOfEveryChannelSendsAllThreeCodes) {
    for (std::size_t c = 0; c < 8; ++c) {
        PutLimiterCodes(c, 11, 0, 9);
        const std::string hint = form.Label100[LimiterLabels[c]].ToolTip();
        for (int position = 18; position >= 0; --position) {
            SCOPED_TRACE(position);
            const int code = 18 - position;
            form.Slider5[c].SetPosition(position == 9 ? 8 : 9);
            const auto before = image;
            TakeSent();
            form.Slider5[c].UserMove(position);
            const int tenths = code + 2;
            EXPECT_EQ(form.Text10[c].Text(), std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "s");
            EXPECT_EQ(values.LimiterRelease[c], code);
            ExpectChanged(before, {{LimiterBytes[c] + 1, code}});
            ExpectSent({LimiterFrame(c, 11, code, 9)});
        }
        EXPECT_EQ(form.Label100[LimiterLabels[c]].ToolTip(), hint); // the threshold's alone
    }
}

TEST_F(OutputCommands, EveryAttackOfEveryChannelSendsAllThreeCodes) {
    for (std::size_t c = 0; c < 8; ++c) {
        PutLimiterCodes(c, 0, 7, 10);
        const std::string hint = form.Label100[LimiterLabels[c]].ToolTip();
        for (int position = 29; position >= 0; --position) {
            SCOPED_TRACE(position);
            const int code = 29 - position;
            form.Slider6[c].SetPosition(position == 9 ? 8 : 9);
            const auto before = image;
            TakeSent();
            form.Slider6[c].UserMove(position);
            EXPECT_EQ(form.Text11[c].Text(), Attacks[static_cast<std::size_t>(code)]);
            EXPECT_EQ(values.LimiterAttack[c], code);
            ExpectChanged(before, {{LimiterBytes[c], code}});
            ExpectSent({LimiterFrame(c, code, 7, 10)});
        }
        EXPECT_EQ(form.Label100[LimiterLabels[c]].ToolTip(), hint);
    }
}

TEST_F(OutputCommands, ReleaseOfOut3SendsItsThresholdAndAttackUnchanged) {
    form.Slider5[4].UserMove(0);
    // The factory's limiter: attack 5, threshold 58.
    ExpectSent({FrameOf({7, 4, 0, 0, 0, 5, 18, 0, 58})});
}

TEST_F(OutputCommands, NoiseGateSharesItsBytesWithTheName) {
    // The factory's name bytes of In B are " In ", so its codes are 32, 73 and 32, out of every range.
    form.Slider6[1].UserMove(20);
    ExpectSent({FrameOf({7, 1, 0, 0, 0, 9, 73, 0, 32})});
    EXPECT_EQ(image.PresetBody[138], 9);
    EXPECT_EQ(image.PresetBody[139], 73);
    EXPECT_EQ(image.PresetBody[140], 'n');
    EXPECT_EQ(image.PresetBody[141], 32);
}

TEST_F(OutputCommands, CodesOutOfRangeAreHeldAndShownAsTheNearest) {
    // Filled from the factory image at the window's opening.
    for (std::size_t c = 0; c < 2; ++c) {
        EXPECT_EQ(form.Slider4[c].Position(), -22);
        EXPECT_EQ(form.Slider5[c].Position(), -55);
        EXPECT_EQ(form.Slider6[c].Position(), -3);
        EXPECT_EQ(form.Text9[c].Text(), "-90.0");
        EXPECT_EQ(form.Text10[c].Text(), "2.0s");
        EXPECT_EQ(form.Text11[c].Text(), "200ms");
        EXPECT_EQ(form.Label100[LimiterLabels[c]].ToolTip(), "-90.0 dBu");
        EXPECT_EQ(image.PresetBody[LimiterBytes[c]], 32);
        EXPECT_EQ(image.PresetBody[LimiterBytes[c] + 1], 73);
        EXPECT_EQ(image.PresetBody[LimiterBytes[c] + 3], 32);
        EXPECT_EQ(values.LimiterThreshold[c], 32.0);
        EXPECT_EQ(values.LimiterRelease[c], 73.0);
        EXPECT_EQ(values.LimiterAttack[c], 32.0);
    }
    form.Slider4[2].SetPosition(60 - 255);
    model::SetThreshold(Context(), 2);
    EXPECT_EQ(form.Text9[2].Text(), "20");
    EXPECT_EQ(form.Label100[12].ToolTip(), "20 dBu");
    EXPECT_EQ(image.PresetBody[181], 255);
    EXPECT_EQ(values.LimiterThreshold[2], 255.0);
}

TEST_F(OutputCommands, SourceShowsItsWiresAndSendsItsFrame) {
    const std::array<std::string, 3> names = {"In A", "In B", "In A+B"};
    for (std::size_t y = 0; y < 6; ++y) {
        for (const int v : {0, 2, 1, 2, 0, 1}) {
            SCOPED_TRACE(names[static_cast<std::size_t>(v)] + " to output " + std::to_string(y));
            TakeSent();
            const auto before = image;
            form.Combo3[y].UserSelect(v);
            ExpectSent({FrameOf({8, static_cast<int>(y) + 2, 0, 0, 0, 0, 0, 0, v})});
            ExpectChanged(before, {{SourceBytes[y], v}});
            EXPECT_EQ(values.OutputSource[y], v);
            EXPECT_EQ(form.Label200[y].ToolTip(), names[static_cast<std::size_t>(v)]);
            EXPECT_EQ(form.Line1000[y].Visible(), v == 0 || v == 2);
            EXPECT_EQ(form.Line1100[y].Visible(), v == 1 || v == 2);
            EXPECT_EQ(form.Line1[y].Visible(), v == 0 || v == 2);
            EXPECT_EQ(form.Line2[y].Visible(), v == 1 || v == 2);
        }
    }
}

TEST_F(OutputCommands, SourceBeyondTheListChangesNoLine) {
    form.Combo3[5].UserSelect(0);
    TakeSent();
    form.Combo3[5].Select(3); // the first that the list does not have
    EXPECT_FALSE(form.Line1100[5].Visible());
    EXPECT_FALSE(form.Line2[5].Visible());
    TakeSent();
    form.Combo3[5].Select(77);
    ExpectSent({FrameOf({8, 7, 0, 0, 0, 0, 0, 0, 77})});
    EXPECT_EQ(image.PresetBody[425], 77);
    EXPECT_EQ(values.OutputSource[5], 77.0);
    EXPECT_TRUE(form.Line1000[5].Visible());
    EXPECT_FALSE(form.Line1100[5].Visible());
    EXPECT_TRUE(form.Line1[5].Visible());
    EXPECT_FALSE(form.Line2[5].Visible());
    EXPECT_EQ(form.Label200[5].ToolTip(), "In A+B"); // as the list shows it
}

TEST_F(OutputCommands, NoSourceAtAllChangesNoLine) {
    form.Combo3[1].Select(0);
    ASSERT_TRUE(form.Line1000[1].Visible());
    ASSERT_FALSE(form.Line1100[1].Visible());
    form.Combo3[1].Select(-1);
    EXPECT_TRUE(form.Line1000[1].Visible());
    EXPECT_FALSE(form.Line1100[1].Visible());
    EXPECT_TRUE(form.Line1[1].Visible());
    EXPECT_FALSE(form.Line2[1].Visible());
}

TEST_F(OutputCommands, SourceSetInCodeRunsItsEventEvenWhileGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Combo3[1].Select(2);
    program.Windows.ControlEventsOff = false;
    ExpectSent({FrameOf({8, 3, 0, 0, 0, 0, 0, 0, 2})});
}

TEST_F(OutputCommands, FailedFrameLeavesTheChangeStored) {
    line.Devices.at(Id).Alive = false;
    form.Combo3[0].UserSelect(2);
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(image.PresetBody[185], 2);
    EXPECT_EQ(values.OutputSource[0], 2.0);
    EXPECT_EQ(form.Label200[0].ToolTip(), "In A+B");
    form.Slider5[2].UserMove(0);
    form.Combo2[0].UserSelect(5);
    EXPECT_EQ(image.PresetBody[179], 18);
    EXPECT_EQ(image.PresetBody[146], 5);
    EXPECT_THAT(form.Label100[10].ToolTip(), ::testing::HasSubstr("-12dB/oct Cv"));
}

TEST_F(OutputCommands, ToolTipOfASourceStandsBeforeTheFrameGoes) {
    bool looked = false;
    world.Port.OnOutput = [&] {
        looked = true;
        EXPECT_EQ(form.Label200[3].ToolTip(), "In A+B");
    };
    form.Combo3[3].UserSelect(2);
    EXPECT_TRUE(looked);
}

} // namespace
} // namespace nrv::testing
