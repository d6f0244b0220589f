#include "model/decimal_text.h"
#include "model/equaliser_commands.h"
#include "model/equaliser_window.h"

#include <cmath>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;

class EqualiserCommands : public EqualiserWindow {};

struct Frequency {
    const char* Typed;
    double Hz;
    int Code;
};
// Looked up by hand; 24, 4125 and 19500 are midway and go to the lower.
constexpr std::array<Frequency, 13> Frequencies = {{{"1010", 1000, 68},
                                                    {"20", 20, 0},
                                                    {"20000", 20000, 120},
                                                    {"24", 23, 3},
                                                    {"63", 63, 20},
                                                    {"4125", 4000, 92},
                                                    {"19500", 19000, 119},
                                                    {"999", 1000, 68},
                                                    {"331", 336, 49},
                                                    {"9999", 10000, 108},
                                                    {"12937", 12500, 112},
                                                    {"12938", 13375, 113},
                                                    {"200", 200, 40}}};

TEST_F(EqualiserCommands, EverySectionStoresShowsAndSendsItsOwn) {
    for (int section = 0; section < 44; ++section) {
        SCOPED_TRACE(section);
        const auto s = static_cast<std::size_t>(section);
        const Frequency& frequency = Frequencies[s % Frequencies.size()];
        const int gain = (7 * section + 3) % 151;
        const int bandwidth = (3 * section + 10) % 60;
        form.Slider2[s].SetPosition(150 - gain);
        form.UpDown3[s].SetPosition(bandwidth);
        form.Text4[s].SetText(frequency.Typed);
        Forget();
        model::SetPeq(Context(), section);

        const auto [channel, number] = PlaceOfPeq(section);
        EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(channel, number, frequency.Code, bandwidth, gain)));
        EXPECT_EQ(form.Text3[s].Text(), model::DecimalText(2 * gain - 150, 1));
        EXPECT_EQ(form.Text4[s].Text(), std::to_string(static_cast<int>(frequency.Hz)));
        EXPECT_EQ(form.Text5[s].Text(), model::DecimalText(5 * bandwidth + 5, 2));
        EXPECT_EQ(values.PeqGain[s], std::stod(model::DecimalText(2 * gain - 150, 1)));
        EXPECT_EQ(values.PeqFrequency[s], frequency.Hz);
        EXPECT_EQ(values.PeqBandwidth[s], std::stod(model::DecimalText(5 * bandwidth + 5, 2)));
        const std::size_t block = BlockOfPeq(section);
        EXPECT_EQ(image.PresetBody[block], 0);
        EXPECT_EQ(image.PresetBody[block + 1], frequency.Code);
        EXPECT_EQ(image.PresetBody[block + 2], bandwidth);
        EXPECT_EQ(image.PresetBody[block + 3], 0);
        EXPECT_EQ(image.PresetBody[block + 4], gain);
        EXPECT_NEAR(form.Label5[s].Left(), std::log10(frequency.Hz / 20.0) * 2885.0 - 60.0, 1e-6);
        EXPECT_NEAR(form.Label5[s].Top(), 1447.5 - (0.2 * gain - 15.0 + 0.1) * 48.0 + 60.0, 1e-6);
    }
}

TEST_F(EqualiserCommands, OneSectionTouchesNoOtherByte) {
    const auto before = image;
    form.Slider2[25].SetPosition(10);
    form.Text4[25].SetText("5000");
    model::SetPeq(Context(), 25); // the second of Out 2, whose block starts at 144 + 48 + 6 + 5 = 203
    for (std::size_t n = 0; n < 433; ++n) {
        EXPECT_EQ(image.PresetBody[n], n == 204 ? 96 : n == 207 ? 140 : before.PresetBody[n]) << n;
    }
    EXPECT_EQ(image.SystemPage, before.SystemPage);
    EXPECT_EQ(image.ViewState, before.ViewState);
}

TEST_F(EqualiserCommands, GainsAreTheDecimalsAPersonExpects) {
    struct Case {
        int Position;
        const char* Text;
        double Value;
    };
    for (const Case& one :
         {Case{0, "15", 15.0}, Case{1, "14.8", 14.8}, Case{12, "12.6", 12.6}, Case{74, "0.2", 0.2}, Case{75, "0", 0.0},
          Case{76, "-0.2", -0.2}, Case{82, "-1.4", -1.4}, Case{149, "-14.8", -14.8}, Case{150, "-15", -15.0}}) {
        form.Slider2[4].SetPosition(one.Position);
        model::SetPeq(Context(), 4);
        EXPECT_EQ(form.Text3[4].Text(), one.Text);
        EXPECT_EQ(values.PeqGain[4], one.Value);
        EXPECT_FALSE(std::signbit(values.PeqGain[4]) && one.Value == 0.0);
    }
}

TEST_F(EqualiserCommands, BandwidthsAreTheDecimalsAPersonExpects) {
    struct Case {
        int Code;
        const char* Text;
        double Octaves;
    };
    for (const Case& one : {Case{0, "0.05", 0.05}, Case{1, "0.1", 0.1}, Case{2, "0.15", 0.15}, Case{5, "0.3", 0.3},
                            Case{29, "1.5", 1.5}, Case{58, "2.95", 2.95}, Case{59, "3", 3.0}}) {
        form.UpDown3[4].SetPosition(one.Code);
        EXPECT_EQ(form.Text5[4].Text(), one.Text);
        EXPECT_EQ(values.PeqBandwidth[4], one.Octaves);
    }
}

TEST_F(EqualiserCommands, MarkerStandsAtThePlaceOfItsValue) {
    form.Slider2[0].SetPosition(0);
    form.Text4[0].SetText("20000");
    model::SetPeq(Context(), 0);
    EXPECT_NEAR(form.Label5[0].Left(), 8595.0, 1e-6);
    EXPECT_NEAR(form.Label5[0].Top(), 782.7, 1e-6);
    form.Slider2[0].SetPosition(150);
    form.Text4[0].SetText("20");
    model::SetPeq(Context(), 0);
    EXPECT_NEAR(form.Label5[0].Left(), -60.0, 1e-6);
    EXPECT_NEAR(form.Label5[0].Top(), 2222.7, 1e-6);
    form.Slider2[0].SetPosition(75);
    form.Text4[0].SetText("200"); // one decade up
    model::SetPeq(Context(), 0);
    EXPECT_NEAR(form.Label5[0].Left(), 2825.0, 1e-6);
    EXPECT_NEAR(form.Label5[0].Top(), 1502.7, 1e-6);
}

TEST_F(EqualiserCommands, TypedFrequencyOf1010ShowsAndStoresAs1000) {
    form.Text4[0].SetText("1010");
    model::SetPeq(Context(), 0);
    EXPECT_EQ(form.Text4[0].Text(), "1000");
    EXPECT_EQ(values.PeqFrequency[0], 1000.0);
    EXPECT_EQ(image.PresetBody[6], 68);
    EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 0, 68, 8, 75)));
}

// No event of a section lets a typed text past 20000; the setter itself snaps it to the bottom, which is meant.
TEST_F(EqualiserCommands, FrequencyAboveTheTableFallsToItsBottom) {
    form.Text4[0].SetText("20001");
    model::SetPeq(Context(), 0);
    EXPECT_EQ(form.Text4[0].Text(), "20");
    EXPECT_EQ(image.PresetBody[6], 0);
}

TEST_F(EqualiserCommands, BytesOutOfRangeStayAndTheirNearestShows) {
    form.Slider2[3].SetPosition(150 - 200);
    program.Windows.ControlEventsOff = true;
    form.UpDown3[3].SetPosition(190);
    program.Windows.ControlEventsOff = false;
    model::SetPeq(Context(), 3);
    EXPECT_EQ(form.Text3[3].Text(), "15"); // as the fader shows it, at its top
    EXPECT_EQ(form.Text5[3].Text(), "3");
    EXPECT_EQ(values.PeqGain[3], 15.0);
    EXPECT_EQ(values.PeqBandwidth[3], 3.0);
    EXPECT_EQ(image.PresetBody[24], 200);
    EXPECT_EQ(image.PresetBody[22], 190);
    EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 3, 40, 190, 200)));
    EXPECT_NEAR(form.Label5[3].Top(), 782.7, 1e-6);

    form.Slider3[3].SetPosition(36 - 255);
    model::SetTone(Context(), 3);
    EXPECT_EQ(form.Text6[3].Text(), "6");
    EXPECT_EQ(image.PresetBody[136], 255);
}

TEST_F(EqualiserCommands, TypeBeyondTheListStaysInTheImage) {
    program.Windows.ControlEventsOff = true;
    form.Combo1[0].Select(77);
    program.Windows.ControlEventsOff = false;
    model::SetTone(Context(), 0);
    EXPECT_EQ(form.Combo1[0].ShownText(), " 2' ord");
    EXPECT_EQ(image.PresetBody[57], 77);
    EXPECT_EQ(values.ToneType[0], 77.0);
}

TEST_F(EqualiserCommands, FlatMarkOfAnInputTellsWhetherAnySectionIsNotZero) {
    EXPECT_EQ(form.Label100[2].ToolTip(), "Flat");
    EXPECT_EQ(form.Label100[7].ToolTip(), "Flat");
    for (const std::size_t s : {10U, 14U, 19U}) {
        form.Slider2[s].UserMove(74);
        EXPECT_EQ(form.Label100[7].ToolTip(), "~~~~~~");
        EXPECT_EQ(form.Label100[2].ToolTip(), "Flat");
        form.Slider2[s].UserMove(75);
        EXPECT_EQ(form.Label100[7].ToolTip(), "Flat");
    }
    form.Slider2[9].UserMove(150);
    EXPECT_EQ(form.Label100[2].ToolTip(), "~~~~~~");
    EXPECT_EQ(form.Label100[7].ToolTip(), "Flat");
}

TEST_F(EqualiserCommands, TwoSectionsOffZeroBothHaveToComeBack) {
    form.Slider2[10].UserMove(10);
    form.Slider2[11].UserMove(10);
    form.Slider2[10].UserMove(75);
    EXPECT_EQ(form.Label100[7].ToolTip(), "~~~~~~");
    form.Slider2[11].UserMove(75);
    EXPECT_EQ(form.Label100[7].ToolTip(), "Flat");
}

TEST_F(EqualiserCommands, OutputsHaveNoFlatMark) {
    std::vector<std::string> before;
    for (const controls::Label& block : form.Label100) {
        before.push_back(block.ToolTip());
    }
    form.Slider2[20].UserMove(10);
    form.Slider2[43].UserMove(10);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(form.Label100[i].ToolTip(), before[i]) << i;
    }
}

TEST_F(EqualiserCommands, EveryToneFilterStoresShowsAndSendsItsOwn) {
    constexpr std::array<std::pair<int, int>, 10> places = {
        {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {6, 0}, {7, 0}}};
    constexpr std::array<std::size_t, 10> blocks = {55, 60, 127, 132, 170, 218, 266, 314, 362, 410};
    for (int filter = 0; filter < 10; ++filter) {
        SCOPED_TRACE(filter);
        const auto h = static_cast<std::size_t>(filter);
        const Frequency& frequency = Frequencies[h];
        const int gain = (11 * filter + 2) % 37;
        const int type = filter < 4 ? (filter + 1) % 3 : filter % 5;
        form.Slider3[h].SetPosition(36 - gain);
        form.Combo1[h].Select(type);
        form.Text7[h].SetText(frequency.Typed);
        Forget();
        model::SetTone(Context(), filter);

        EXPECT_THAT(world.Port.Sent,
                    ElementsAre(ToneFrame(places[h].first, places[h].second, frequency.Code, type, gain)));
        EXPECT_EQ(form.Text6[h].Text(), model::DecimalText(5 * gain - 120, 1));
        EXPECT_EQ(form.Text7[h].Text(), std::to_string(static_cast<int>(frequency.Hz)));
        EXPECT_EQ(values.ToneGain[h], gain / 2.0 - 12.0);
        EXPECT_EQ(values.ToneFrequency[h], frequency.Hz);
        EXPECT_EQ(values.ToneType[h], type);
        EXPECT_EQ(image.PresetBody[blocks[h]], 0);
        EXPECT_EQ(image.PresetBody[blocks[h] + 1], frequency.Code);
        EXPECT_EQ(image.PresetBody[blocks[h] + 2], type);
        EXPECT_EQ(image.PresetBody[blocks[h] + 3], 0);
        EXPECT_EQ(image.PresetBody[blocks[h] + 4], gain);
    }
}

TEST_F(EqualiserCommands, ToneFilter3IsInBSection1AndToneFilter9IsOut6Section0) {
    model::SetTone(Context(), 3);
    model::SetTone(Context(), 9);
    EXPECT_THAT(world.Port.Sent, ElementsAre(ToneFrame(1, 1, 60, 0, 24), ToneFrame(7, 0, 10, 0, 24)));
}

TEST_F(EqualiserCommands, ToneGainsRunFromMinus12To6InHalves) {
    struct Case {
        int Position;
        const char* Text;
    };
    for (const Case& one : {Case{0, "6"}, Case{1, "5.5"}, Case{12, "0"}, Case{13, "-0.5"}, Case{36, "-12"}}) {
        form.Slider3[5].SetPosition(one.Position);
        model::SetTone(Context(), 5);
        EXPECT_EQ(form.Text6[5].Text(), one.Text);
    }
}

TEST_F(EqualiserCommands, FlatSendsOneFrameForEachSectionInRisingOrder) {
    for (int channel = 0; channel < 8; ++channel) {
        SCOPED_TRACE(channel);
        const int first = channel < 2 ? 10 * channel : 20 + 4 * (channel - 2);
        const int count = channel < 2 ? 10 : 4;
        std::vector<Frame> expected;
        for (int section = first; section < first + count; ++section) {
            const auto s = static_cast<std::size_t>(section);
            form.Slider2[s].SetPosition(section + 1);
            form.UpDown3[s].SetPosition(section);
            form.Text4[s].SetText("500");
            model::SetPeq(Context(), section);
            expected.push_back(PeqFrame(channel, section - first, 56, section, 75));
        }
        const auto before = image;
        Forget();
        response::FlatEqualiser(Context(), program.Response, channel);
        EXPECT_EQ(world.Port.Sent, expected);
        for (int section = 0; section < 44; ++section) {
            const auto s = static_cast<std::size_t>(section);
            const std::size_t block = BlockOfPeq(section);
            const bool flattened = section >= first && section < first + count;
            EXPECT_EQ(image.PresetBody[block + 4], flattened ? 75 : before.PresetBody[block + 4]);
            EXPECT_EQ(image.PresetBody[block + 1], before.PresetBody[block + 1]);
            EXPECT_EQ(image.PresetBody[block + 2], before.PresetBody[block + 2]);
            if (flattened) {
                EXPECT_EQ(form.Slider2[s].Position(), 75);
                EXPECT_EQ(form.Text3[s].Text(), "0");
                EXPECT_EQ(values.PeqGain[s], 0.0);
                EXPECT_EQ(form.Text4[s].Text(), "500");
            }
        }
    }
    EXPECT_EQ(form.Label100[2].ToolTip(), "Flat");
    EXPECT_EQ(form.Label100[7].ToolTip(), "Flat");
}

TEST_F(EqualiserCommands, FlatKeepsFrequencyAndBandwidthWhateverStandsTypedBesideThem) {
    for (const std::size_t s : {20U, 21U, 22U, 23U}) {
        form.Slider2[s].SetPosition(10);
        form.UpDown3[s].SetPosition(30);
        form.Text4[s].SetText("1000");
        model::SetPeq(Context(), static_cast<int>(s));
    }
    form.Text4[20].UserText("1?");
    form.Text4[21].UserText("500");
    form.Text4[22].UserText("25000");
    form.Text4[23].UserText("");
    for (const std::size_t s : {20U, 21U, 22U, 23U}) {
        form.Text5[s].UserText("2.5x");
    }
    Forget();
    form.Command1[2].UserClick();
    // 1000 Hz is code 68.
    EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(2, 0, 68, 30, 75), PeqFrame(2, 1, 68, 30, 75),
                                             PeqFrame(2, 2, 68, 30, 75), PeqFrame(2, 3, 68, 30, 75)));
    for (const std::size_t s : {20U, 21U, 22U, 23U}) {
        const std::size_t block = BlockOfPeq(static_cast<int>(s));
        EXPECT_EQ(image.PresetBody[block + 1], 68);
        EXPECT_EQ(image.PresetBody[block + 2], 30);
        EXPECT_EQ(image.PresetBody[block + 4], 75);
        EXPECT_EQ(form.Text4[s].Text(), "1000");
        EXPECT_EQ(form.Text5[s].Text(), "1.55");
        EXPECT_EQ(values.PeqFrequency[s], 1000.0);
        EXPECT_EQ(values.PeqBandwidth[s], 1.55);
    }
    EXPECT_EQ(world.Boxes.Shown.size(), 1U); // the question
}

TEST_F(EqualiserCommands, FlatLeavesToneFiltersAlone) {
    form.Slider3[4].UserMove(0);
    Forget();
    response::FlatEqualiser(Context(), program.Response, 2);
    EXPECT_EQ(form.Slider3[4].Position(), 0);
    EXPECT_EQ(image.PresetBody[174], 36);
    EXPECT_EQ(world.Port.CountSent(0x06), 0);
}

TEST_F(EqualiserCommands, FlatBringsTheCurveDown) {
    form.Slider2[2].UserMove(0);
    EXPECT_GT(*std::ranges::max_element(program.Response.ChannelTotal(0)), 14.0);
    response::FlatEqualiser(Context(), program.Response, 0);
    for (const double level : program.Response.ChannelTotal(0)) {
        EXPECT_NEAR(level, 0.0, 1e-9);
    }
}

TEST_F(EqualiserCommands, FlatAsksFirstUnderTheSameTitleOnEveryTab) {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        SCOPED_TRACE(channel);
        Forget();
        world.Boxes.Answers = {BoxAnswer::No};
        form.Command1[channel].UserClick();
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Flat Eq", "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
        EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
        EXPECT_TRUE(world.Port.Sent.empty());
        world.Boxes.Answers = {BoxAnswer::Yes};
        form.Command1[channel].UserClick();
        EXPECT_EQ(world.Port.Sent.size(), channel < 2 ? 10U : 4U);
    }
}

TEST_F(EqualiserCommands, FailedFrameKeepsWhatWasChanged) {
    line.Devices.at(Id).Alive = false;
    form.Slider2[5].SetPosition(74);
    form.Text4[5].SetText("1010");
    model::SetPeq(Context(), 5);
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(form.Text3[5].Text(), "0.2");
    EXPECT_EQ(values.PeqGain[5], 0.2);
    EXPECT_EQ(values.PeqFrequency[5], 1000.0);
    EXPECT_EQ(image.PresetBody[34], 76);
    EXPECT_EQ(image.PresetBody[31], 68);
    form.Slider3[0].SetPosition(0);
    model::SetTone(Context(), 0);
    EXPECT_EQ(values.ToneGain[0], 6.0);
    EXPECT_EQ(image.PresetBody[59], 36);
}

// No setter looks at the result of its frame, so the rest of the sections follow a failed one; that is meant.
TEST_F(EqualiserCommands, FlatGoesOnAfterAFailedFrame) {
    for (std::size_t s = 20; s < 24; ++s) {
        form.Slider2[s].UserMove(0);
    }
    Forget();
    line.Devices.at(Id).Alive = false;
    response::FlatEqualiser(Context(), program.Response, 2);
    EXPECT_EQ(world.Port.Sent.size(), 20U); // five attempts for each of four sections
    for (const std::size_t gain : {154U, 159U, 164U, 169U}) {
        EXPECT_EQ(image.PresetBody[gain], 75);
    }
}

TEST_F(EqualiserCommands, UnreadableFrequencyStoresAndSendsNothing) {
    const auto image_before = image;
    const double frequency = values.PeqFrequency[1];
    const double left = form.Label5[1].Left();
    for (const char* text : {"", " ", "?", "12?", "1,5", "abc", "--1", "1e999"}) {
        SCOPED_TRACE(text);
        form.Slider2[1].SetPosition(0);
        form.Text4[1].SetText(text);
        EXPECT_THROW(model::SetPeq(Context(), 1), RuntimeError);
        form.Slider3[1].SetPosition(0);
        form.Text7[1].SetText(text);
        EXPECT_THROW(model::SetTone(Context(), 1), RuntimeError);
    }
    EXPECT_EQ(image.PresetBody, image_before.PresetBody);
    EXPECT_EQ(values.PeqGain[1], 0.0);
    EXPECT_EQ(values.PeqFrequency[1], frequency);
    EXPECT_EQ(values.ToneGain[1], 0.0);
    EXPECT_EQ(form.Label5[1].Left(), left);
    EXPECT_TRUE(world.Port.Sent.empty());
}

/// Without a line: every step but the sending.
class DemoEqualiser : public ProgramTest {};

TEST_F(DemoEqualiser, EveryStepButTheSendingHappens) {
    StartDemo(1);
    DoubleClick(0);
    controls::FrmCtrl& form = Window(0);
    Forget();
    form.Slider2[12].UserMove(25);
    form.Slider3[9].UserMove(2);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(form.Text3[12].Text(), "10");
    EXPECT_EQ(form.Text6[9].Text(), "5");
    EXPECT_EQ(program.Stores.ParamValues[0].PeqGain[12], 10.0);
    EXPECT_EQ(program.Stores.PresetImage[0].PresetBody[91], 125); // 72 + 5 + 2 * 5 + 4
    EXPECT_EQ(program.Stores.PresetImage[0].PresetBody[414], 34);
    EXPECT_EQ(form.Label100[7].ToolTip(), "~~~~~~");
    EXPECT_NEAR(form.Label5[12].Top(), 1447.5 - 10.1 * 48.0 + 60.0, 1e-6);
    EXPECT_GT(*std::ranges::max_element(program.Response.ChannelTotal(1)), 9.5);
    response::FlatEqualiser({program.Link, program.Stores, program.Windows}, program.Response, 1);
    EXPECT_EQ(program.Stores.PresetImage[0].PresetBody[91], 75);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(EqualiserCommands, GainAndBandwidthAreShownBesideAnUnreadableFrequency) {
    const auto before = image.PresetBody;
    form.Text4[5].SetText("?");
    form.Slider2[5].SetPosition(50);
    program.Windows.ControlEventsOff = true;
    form.UpDown3[5].SetPosition(19);
    program.Windows.ControlEventsOff = false;
    EXPECT_THROW(model::SetPeq(Context(), 5), RuntimeError);
    EXPECT_EQ(form.Text3[5].Text(), "5"); // (150 - 50) / 5 - 15
    EXPECT_EQ(form.Text5[5].Text(), "1"); // (19 + 1) / 20
    form.Text7[5].SetText("?");
    form.Slider3[5].SetPosition(10);
    EXPECT_THROW(model::SetTone(Context(), 5), RuntimeError);
    EXPECT_EQ(form.Text6[5].Text(), "1"); // (36 - 10) / 2 - 12
    EXPECT_EQ(values.PeqGain[5], 0.0);
    EXPECT_EQ(values.ToneGain[5], 0.0);
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(EqualiserCommands, MarkerAndFlatMarkStandBeforeTheFrameGoes) {
    bool looked = false;
    world.Port.OnOutput = [&] {
        looked = true;
        EXPECT_NEAR(form.Label5[12].Top(), 1447.5 - (5.0 + 0.1) * 48.0 + 60.0, 1e-9);
        EXPECT_NEAR(form.Label5[12].Left(), std::log10(1000.0 / 20.0) * 2885.0 - 60.0, 1e-6);
        EXPECT_EQ(form.Label100[7].ToolTip(), "~~~~~~");
    };
    form.Text4[12].SetText("1000");
    form.Slider2[12].SetPosition(50);
    model::SetPeq(Context(), 12);
    EXPECT_TRUE(looked);
}

} // namespace
} // namespace nrv::testing
