#include "model/equaliser_window.h"
#include "response/equaliser_editing.h"

#include <cmath>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EqualiserEditing : public EqualiserWindow {
  protected:
    void SetEventsOff(bool off) { program.Windows.ControlEventsOff = off; }
};

// ---- Keys in the frequency boxes

TEST_F(EqualiserEditing, Typed25000Gives20000AndTyped5Gives20AndTyped1010TheNearestEntry) {
    struct Case {
        const char* Typed;
        const char* Shown;
        double Hz;
        int Code;
    };
    for (const Case& one :
         {Case{"25000", "20000", 20000, 120}, Case{"5", "20", 20, 0}, Case{"1010", "1000", 1000, 68},
          Case{"20001", "20000", 20000, 120}, Case{"0", "20", 20, 0}, Case{"19", "20", 20, 0}, Case{"24", "23", 23, 3},
          Case{"00063", "63", 63, 20}, Case{"999999999999999999999", "20000", 20000, 120}}) {
        SCOPED_TRACE(one.Typed);
        for (const bool peq : {true, false}) {
            controls::TextBox& box = peq ? form.Text4[21] : form.Text7[1];
            box.SetText("");
            Forget();
            Type(box, std::string(one.Typed) + '\r');
            EXPECT_EQ(box.Text(), one.Shown);
            EXPECT_EQ(peq ? values.PeqFrequency[21] : values.ToneFrequency[1], one.Hz);
            EXPECT_EQ(image.PresetBody[peq ? 156 : 61], one.Code);
            EXPECT_THAT(world.Port.Sent,
                        ElementsAre(peq ? PeqFrame(2, 1, one.Code, 8, 75) : ToneFrame(0, 1, one.Code, 0, 24)));
            EXPECT_THAT(world.Boxes.Shown, IsEmpty());
        }
        form.Text8[3].SetText("");
        Forget();
        Type(form.Text8[3], std::string(one.Typed) + '\r');
        EXPECT_EQ(form.Text8[3].Text(), one.Shown);
        EXPECT_EQ(values.CrossoverFrequency[3], one.Hz);
        EXPECT_EQ(image.PresetBody[196], one.Code);
        EXPECT_THAT(world.Port.Sent, ElementsAre(CrossoverFrame(3, 1, one.Code, 2)));
    }
}

TEST_F(EqualiserEditing, HalfWayBetweenTwoEntriesGoesToTheLower) {
    Enter(form.Text4[0], "4125"); // 4000 and 4250
    EXPECT_EQ(form.Text4[0].Text(), "4000");
    Enter(form.Text4[0], "4126");
    EXPECT_EQ(form.Text4[0].Text(), "4250");
}

TEST_F(EqualiserEditing, DigitsAndBackspaceAloneSendNothing) {
    for (controls::TextBox* box : {&form.Text4[0], &form.Text7[0], &form.Text8[0], &form.Text5[0]}) {
        box->SetText("");
        Type(*box, "0123456789\b\b");
        EXPECT_EQ(box->Text(), "01234567");
    }
    EXPECT_THAT(world.Port.Sent, IsEmpty());
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, EveryOtherKeyIsRefusedInTheWordsOfItsBox) {
    struct Case {
        controls::TextBox* Box;
        const char* Text;
        const char* Replacement;
    };
    for (const Case& one :
         {Case{&form.Text4[7], "  Incorrect frequency value", "?"},
          Case{&form.Text7[7], "  Incorrect frequency value", "?"}, Case{&form.Text8[7], "  Incorrect f value", "?"},
          Case{&form.Text5[7], "  Incorrect Q value", " "}}) {
        for (int code = 1; code < 256; ++code) {
            const char key = static_cast<char>(code);
            const bool digit = code >= '0' && code <= '9';
            const bool of_numbers = one.Box == &form.Text5[7] && (key == '.' || key == ',');
            if (digit || code == 8 || code == 13 || of_numbers) {
                continue;
            }
            one.Box->SetText("1");
            Type(*one.Box, std::string(1, key));
            EXPECT_EQ(one.Box->Text(), std::string("1") + one.Replacement) << code;
            ExpectWarning(one.Text);
            EXPECT_TRUE(one.Box->UserKey(key).Refused) << code;
            ExpectWarning(one.Text);
        }
    }
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(EqualiserEditing, ALetterLeavesAQuestionMarkAndALaterEnterAddsAnother) {
    const double before = values.PeqFrequency[0];
    form.Text4[0].SetText("");
    Type(form.Text4[0], "12x");
    ExpectWarning("  Incorrect frequency value");
    EXPECT_EQ(form.Text4[0].Text(), "12?");
    Type(form.Text4[0], "\r");
    ExpectWarning("  Incorrect frequency value");
    EXPECT_EQ(form.Text4[0].Text(), "12??");
    EXPECT_EQ(values.PeqFrequency[0], before);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
    Type(form.Text4[0], "\b\b5\r"); // until the user deletes it
    EXPECT_EQ(form.Text4[0].Text(), "125");
    EXPECT_EQ(world.Port.Sent.size(), 1U);
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, BadTextAtEnterRaisesTheBoxStoresAndSendsNothing) {
    const std::string long_text(10'000, '9');
    const auto image_before = image;
    const auto frequencies = values.PeqFrequency;
    const auto corners = values.ToneFrequency;
    const auto crossovers = values.CrossoverFrequency;
    for (const std::string& text : {std::string(), std::string("   "), std::string("?"), std::string("1,5"),
                                    std::string("12 30"), std::string("1000 Hz\n20"), std::string("0x20"),
                                    std::string("nan"), std::string("inf"), long_text, std::string(10'000, 'x')}) {
        SCOPED_TRACE(text.substr(0, 20));
        Enter(form.Text4[2], text);
        ExpectWarning("  Incorrect frequency value");
        EXPECT_EQ(form.Text4[2].Text(), text + "?");
        Enter(form.Text7[2], text);
        ExpectWarning("  Incorrect frequency value");
        EXPECT_EQ(form.Text7[2].Text(), text + "?");
        Enter(form.Text8[2], text);
        ExpectWarning("  Incorrect f value");
        EXPECT_EQ(form.Text8[2].Text(), text + "?");
    }
    EXPECT_EQ(image.PresetBody, image_before.PresetBody);
    EXPECT_EQ(values.PeqFrequency, frequencies);
    EXPECT_EQ(values.ToneFrequency, corners);
    EXPECT_EQ(values.CrossoverFrequency, crossovers);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

// What reads as a number is held to 20 to 20000 whatever way it came into the box.
TEST_F(EqualiserEditing, OddNumbersAtEnterAreHeldToTheRange) {
    struct Case {
        const char* Text;
        const char* Shown;
    };
    for (const Case& one : {Case{"1e9", "20000"}, Case{"-5", "20"}, Case{"-1e300", "20"}, Case{"1e3", "1000"},
                            Case{"999.6", "1000"}, Case{"  63  ", "63"}, Case{"+200", "200"}, Case{"0", "20"}}) {
        SCOPED_TRACE(one.Text);
        Enter(form.Text4[30], one.Text);
        Enter(form.Text7[6], one.Text);
        Enter(form.Text8[6], one.Text);
        EXPECT_EQ(form.Text4[30].Text(), one.Shown);
        EXPECT_EQ(form.Text7[6].Text(), one.Shown);
        EXPECT_EQ(form.Text8[6].Text(), one.Shown);
    }
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, TypedFrequencyMovesTheCurve) {
    form.Slider2[0].UserMove(0);
    Enter(form.Text4[0], "1000");
    // The grid's points of 988 and 1009 Hz; the gain is that of the middle.
    EXPECT_NEAR(program.Response.ChannelTotal(0)[798], 15.0, 0.1);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[799], 15.0, 0.1);
}

// ---- Keys in the bandwidth box

TEST_F(EqualiserEditing, Typed1Comma5Gives1Point5AndCode29) {
    form.Text5[3].SetText("");
    Type(form.Text5[3], "1,5");
    EXPECT_EQ(form.Text5[3].Text(), "1.5");
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
    Type(form.Text5[3], "\r");
    EXPECT_EQ(form.UpDown3[3].Position(), 29);
    EXPECT_EQ(form.Text5[3].Text(), "1.5");
    EXPECT_EQ(values.PeqBandwidth[3], 1.5);
    EXPECT_EQ(image.PresetBody[22], 29);
    EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 3, 40, 29, 75)));
}

TEST_F(EqualiserEditing, TypedBandwidthReadsFourCharactersAlone) {
    form.Text5[3].SetText("");
    Type(form.Text5[3], "0.123456\r");
    EXPECT_EQ(form.UpDown3[3].Position(), 1);
    EXPECT_EQ(form.Text5[3].Text(), "0.1");
    Enter(form.Text5[3], "  2.0599"); // leading blanks do not count
    EXPECT_EQ(form.UpDown3[3].Position(), 40);
    EXPECT_EQ(form.Text5[3].Text(), "2.05");
}

TEST_F(EqualiserEditing, BandwidthIsHeldToItsRange) {
    Enter(form.Text5[3], "0");
    EXPECT_EQ(form.UpDown3[3].Position(), 0);
    EXPECT_EQ(form.Text5[3].Text(), "0.05");
    Enter(form.Text5[3], "9");
    EXPECT_EQ(form.UpDown3[3].Position(), 59);
    EXPECT_EQ(form.Text5[3].Text(), "3");
    Enter(form.Text5[3], "-1");
    EXPECT_EQ(form.UpDown3[3].Position(), 0);
    Enter(form.Text5[3], "20001"); // 2000
    EXPECT_EQ(form.UpDown3[3].Position(), 59);
    Enter(form.Text5[3], "1e-3");
    EXPECT_EQ(form.UpDown3[3].Position(), 0);
    Enter(form.Text5[3], "1e99");
    EXPECT_EQ(form.UpDown3[3].Position(), 59);
    Enter(form.Text5[3], std::string(10'000, '0'));
    EXPECT_EQ(form.UpDown3[3].Position(), 0);
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, TheSameBandwidthCodeLeavesTheTextAsTyped) {
    Enter(form.Text5[3], "0.46"); // code 8, as before
    EXPECT_EQ(form.UpDown3[3].Position(), 8);
    EXPECT_EQ(form.Text5[3].Text(), "0.46");
    EXPECT_EQ(values.PeqBandwidth[3], 0.45);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, BadBandwidthRaisesTheBoxAndPutsABlank) {
    const auto before = image.PresetBody;
    for (const std::string& text :
         {std::string(), std::string("   "), std::string("?"), std::string("."), std::string("1.2.3"),
          std::string("1 2 3"), std::string("abcdef"), std::string(10'000, 'x')}) {
        SCOPED_TRACE(text.substr(0, 20));
        Enter(form.Text5[3], text);
        ExpectWarning("  Incorrect Q value");
        EXPECT_EQ(form.Text5[3].Text(), text + " ");
    }
    EXPECT_EQ(form.UpDown3[3].Position(), 8);
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(EqualiserEditing, TheBlankOfARefusedKeyDoesNotSpoilTheBandwidth) {
    form.Text5[3].SetText("");
    Type(form.Text5[3], "1.5x");
    ExpectWarning("  Incorrect Q value");
    Type(form.Text5[3], "\r");
    EXPECT_EQ(form.UpDown3[3].Position(), 29);
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

// ---- Faders, up-downs and lists

TEST_F(EqualiserEditing, FaderAndUpDownSendOneFrameAStep) {
    form.Slider2[40].UserMove(74);
    form.UpDown3[40].UserStep(1);
    form.Slider3[9].UserMove(11);
    EXPECT_THAT(world.Port.Sent,
                ElementsAre(PeqFrame(7, 0, 5, 8, 76), PeqFrame(7, 0, 5, 9, 76), ToneFrame(7, 0, 10, 0, 25)));
}

TEST_F(EqualiserEditing, ShelvingFaderHoldsTheFrequencyFirst) {
    form.Text7[4].UserText("25000");
    form.Slider3[4].UserMove(0);
    EXPECT_EQ(form.Text7[4].Text(), "20000");
    EXPECT_THAT(world.Port.Sent, ElementsAre(ToneFrame(2, 0, 120, 0, 36)));
    form.Text7[4].UserText("3");
    form.Combo1[4].UserSelect(4);
    EXPECT_EQ(form.Text7[4].Text(), "20");
    EXPECT_EQ(world.Port.Sent.back(), ToneFrame(2, 0, 0, 4, 36));
    EXPECT_EQ(world.Port.Sent.size(), 2U);
}

TEST_F(EqualiserEditing, SlopeListHoldsTheFrequencyFirst) {
    form.Text8[5].UserText("25000");
    form.Combo2[5].UserSelect(9);
    EXPECT_EQ(form.Text8[5].Text(), "20000");
    EXPECT_THAT(world.Port.Sent, ElementsAre(CrossoverFrame(4, 1, 120, 9)));
}

TEST_F(EqualiserEditing, GainFaderAndBandwidthHoldATypedFrequencyToTheTablesTop) {
    struct Case {
        const char* Typed;
        const char* Shown;
        int Code;
    };
    int gain = 75;
    int bandwidth = 8;
    for (const Case& one :
         {Case{"25000", "20000", 120}, Case{"20001", "20000", 120}, Case{"20000", "20000", 120},
          Case{"1e9", "20000", 120}, Case{"19600", "20000", 120}, Case{"1010", "1000", 68}, Case{"5", "20", 0}}) {
        SCOPED_TRACE(one.Typed);
        form.Text4[0].UserText(one.Typed);
        form.Slider2[0].UserMove(150 - ++gain);
        EXPECT_EQ(form.Text4[0].Text(), one.Shown);
        form.Text4[0].UserText(one.Typed);
        form.UpDown3[0].UserStep(1);
        ++bandwidth;
        EXPECT_EQ(form.Text4[0].Text(), one.Shown);
        EXPECT_EQ(image.PresetBody[6], one.Code);
        EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 0, one.Code, bandwidth - 1, gain),
                                                 PeqFrame(0, 0, one.Code, bandwidth, gain)));
        Forget();
    }
}

TEST_F(EqualiserEditing, ShelvingFaderBesideAnUnreadableFrequencySaysSoAndChangesNothing) {
    const auto before = image.PresetBody;
    const std::string gain = form.Text6[4].Text();
    for (const char* text : {"?", "", "1,5"}) {
        form.Text7[4].SetText(text);
        form.Slider3[4].UserMove(form.Slider3[4].Position() - 1);
        ExpectWarning("  Incorrect value");
        EXPECT_EQ(form.Text7[4].Text(), text);
    }
    form.Text7[4].SetText("?");
    form.Combo1[4].UserSelect(3);
    ExpectWarning("  Incorrect frequency value");
    EXPECT_EQ(form.Combo1[4].Index(), 0);
    EXPECT_EQ(form.Text7[4].Text(), "?");
    EXPECT_EQ(form.Text6[4].Text(), gain);
    EXPECT_EQ(values.ToneType[4], 0.0);
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(EqualiserEditing, SlopeListAloneHasNoGuard) {
    const auto before = image.PresetBody;
    const int slope = form.Combo2[0].Index();
    int attended = 0;
    CountAttention(form.Text8[0], attended);
    form.Text8[0].SetText("?");
    EXPECT_THROW(form.Combo2[0].UserSelect(3), RuntimeError);
    EXPECT_EQ(form.Combo2[0].Index(), slope);
    EXPECT_EQ(attended, 1);
    program.Events.Run(UserIn(0), [&] { form.Combo2[0].UserSelect(4); });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Error");
    EXPECT_EQ(world.Boxes.Shown[0].Icon, BoxIcon::Critical);
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_EQ(form.Text8[0].Text(), "?");
    EXPECT_THAT(world.Port.Sent, IsEmpty());
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(EqualiserEditing, GainFaderAndBandwidthBesideAnUnreadableFrequencyReachTheEventBoundary) {
    const auto before = image.PresetBody;
    int position = 10;
    int attended = 0;
    CountAttention(form.Text4[0], attended);
    for (const std::string& text : {std::string("?"), std::string(), std::string(10'000, '9')}) {
        form.Text4[0].SetText(text);
        const int so_far = attended;
        EXPECT_THROW(form.Slider2[0].UserMove(position), RuntimeError);
        EXPECT_EQ(attended, so_far + 1);
        EXPECT_EQ(form.Text3[0].Text(), "0");
        EXPECT_EQ(form.Slider2[0].Position(), 75);
        EXPECT_THROW(form.UpDown3[0].UserStep(1), RuntimeError);
        EXPECT_EQ(form.Text4[0].Text(), text);
        position = position == 10 ? 11 : 10;
    }
    try {
        form.Text4[12].SetText("?");
        form.Slider2[12].UserMove(10);
        ADD_FAILURE() << "was taken";
    } catch (const RuntimeError& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("PEQ 3")); // of In B, the thirteenth of all
    }
    form.Text4[12].SetText(form.Text4[2].Text());
    // A text as long as one that is told whole, and a longer one.
    for (const std::string& text : {std::string(24, '?'), std::string(25, '?')}) {
        form.Text4[1].SetText(text);
        try {
            form.Slider2[1].UserMove(10);
            ADD_FAILURE() << "was taken";
        } catch (const RuntimeError& error) {
            EXPECT_THAT(error.what(),
                        ::testing::HasSubstr('"' + std::string(24, '?') + (text.size() > 24 ? "..." : "") + '"'));
        }
    }
    // All back as it was.
    EXPECT_EQ(form.UpDown3[0].Position(), 8);
    EXPECT_EQ(form.Text5[0].Text(), "0.45");
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_EQ(values.PeqGain[0], 0.0);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(EqualiserEditing, GuardedEventsDoNothingWhileTheProgramFillsTheWindow) {
    const auto before = image;
    SetEventsOff(true);
    form.Slider2[0].UserMove(10);
    form.UpDown3[0].UserStep(1);
    form.UpDown3[0].SetPosition(40);
    form.Combo1[0].UserSelect(1);
    form.Combo2[0].UserSelect(4);
    form.Text4[0].SetText("");
    Type(form.Text4[0], "1x\r");
    EXPECT_EQ(form.Text4[0].Text(), "1x"); // no notice is taken of the keys
    form.Text5[0].SetText("");
    Type(form.Text5[0], "1,x\r");
    EXPECT_EQ(form.Text5[0].Text(), "1,x");
    SetEventsOff(false);
    EXPECT_EQ(image.PresetBody, before.PresetBody);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
    EXPECT_THAT(world.Boxes.Shown, IsEmpty());
}

TEST_F(EqualiserEditing, UnguardedEventsRunWhileTheProgramFillsTheWindow) {
    SetEventsOff(true);
    form.Slider3[0].UserMove(10);
    Enter(form.Text7[1], "1000");
    Enter(form.Text8[0], "1000");
    form.Label5[5].Pressed();
    Drag(5, 2825.0, 1500.0);
    form.Label5[5].Released();
    SetEventsOff(false);
    EXPECT_THAT(world.Port.Sent, ElementsAre(ToneFrame(0, 0, 25, 0, 26), ToneFrame(0, 1, 68, 0, 24),
                                             CrossoverFrame(2, 0, 68, 0), PeqFrame(0, 5, 40, 8, 75)));
    Forget();
    SetEventsOff(true);
    form.Text7[1].SetText("");
    Type(form.Text7[1], "x");
    ExpectWarning("  Incorrect frequency value");
    form.Text8[1].SetText("");
    Type(form.Text8[1], "x");
    ExpectWarning("  Incorrect f value");
    SetEventsOff(false);
}

TEST_F(EqualiserEditing, SlopeAndTypedFrequencyMoveTheCurveOfACrossover) {
    // A low pass of Out 1 far below 20 kHz takes the last point down; with none the channel is flat there.
    form.Combo2[1].UserSelect(0);
    const double open = program.Response.ChannelTotal(2).back();
    form.Combo2[1].UserSelect(2);
    Enter(form.Text8[1], "1000");
    const double octaves = std::log2(20.0);
    EXPECT_NEAR(program.Response.ChannelTotal(2).back() - open, -12.04 * octaves, 0.5);
    Enter(form.Text8[1], "2000");
    EXPECT_NEAR(program.Response.ChannelTotal(2).back() - open, -12.04 * (octaves - 1.0), 0.5);
    form.Combo2[1].UserSelect(0);
    EXPECT_NEAR(program.Response.ChannelTotal(2).back(), open, 1e-9);
}

TEST_F(EqualiserEditing, FaderListAndTypedFrequencyMoveTheCurveOfATone) {
    // An input's second order low shelf of -12 dB tends to its gain below its corner; 20 Hz is the 11th of the grid.
    form.Combo1[0].UserSelect(2);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[10], 0.0, 1e-9);
    form.Slider3[0].UserMove(36);
    Enter(form.Text7[0], "4000");
    EXPECT_NEAR(program.Response.ChannelTotal(0)[10], -12.0, 0.05);
    Enter(form.Text7[0], "20");
    const double at_the_corner = program.Response.ChannelTotal(0)[10];
    EXPECT_GT(at_the_corner, -11.0);
    form.Slider3[0].UserMove(12);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[10], 0.0, 1e-9);
    form.Slider3[0].UserMove(36);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[10], at_the_corner, 1e-9);
    form.Combo1[0].UserSelect(0);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[10], 0.0, 1e-9);
}

} // namespace
} // namespace nrv::testing
