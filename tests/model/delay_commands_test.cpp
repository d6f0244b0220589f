#include "model/command_window.h"
#include "model/delay_commands.h"

namespace nrv::testing {
namespace {

constexpr std::array<std::size_t, 8> DelayBytes = {2, 74, 175, 223, 271, 319, 367, 415};
constexpr std::array<std::size_t, 8> DelayLabels = {3, 8, 11, 16, 21, 26, 31, 36};

class DelayCommands : public CommandWindow {
  protected:
    static Frame DelayFrame(std::size_t channel, int coarse, int fine) {
        return FrameOf({2, static_cast<int>(channel), 0, 0, 0, 0, coarse / 256, coarse % 256, fine});
    }
    static Frame OptionBitsFrame(int bits) { return FrameOf({17, 0, 16, 0, 0, bits}); }
    /// Positions without events, as the program sets them.
    void Put(std::size_t i, int coarse, int fine) {
        program.Windows.ControlEventsOff = true;
        form.UpDown2[i].SetPosition(coarse);
        form.UpDown1[i].SetPosition(fine);
        program.Windows.ControlEventsOff = false;
    }
    /// The box's text and then the Enter key.
    void TypeIn(std::size_t i, const std::string& text) {
        form.Text2[i].UserText(text);
        EXPECT_EQ(form.Text2[i].UserKey(controls::EnterKey), controls::EnterKey);
    }
    void ExpectDelay(std::size_t i, int coarse, int fine, const std::string& text) {
        EXPECT_EQ(form.UpDown2[i].Position(), coarse);
        EXPECT_EQ(form.UpDown1[i].Position(), fine);
        EXPECT_EQ(form.Text2[i].Text(), text);
    }
    void Distance() {
        form.Option1[1].Select();
        TakeSent();
    }
};

TEST_F(DelayCommands, EveryArrowSendsItsChannelsFrameAndBringsItsTwinIntoLine) {
    for (std::size_t i = 0; i < 16; ++i) {
        SCOPED_TRACE(i);
        const std::size_t channel = i % 8;
        const std::size_t twin = (i + 8) % 16;
        Put(i, 299, 10);
        auto before = image;
        form.UpDown2[i].UserStep(1);
        ExpectSent({DelayFrame(channel, 300, 10)});
        // 300 is 0x012C
        ExpectChanged(before,
                      {{DelayBytes[channel], 1}, {DelayBytes[channel] + 1, 0x2C}, {DelayBytes[channel] + 2, 10}});
        before = image;
        form.UpDown1[i].UserStep(-1);
        ExpectSent({DelayFrame(channel, 300, 9)});
        ExpectChanged(before, {{DelayBytes[channel] + 2, 9}});
        EXPECT_EQ(values.DelayCoarse[channel], 300.0);
        EXPECT_EQ(values.DelayFine[channel], 9.0);
        ExpectDelay(i, 300, 9, "300.189 ms"); // 9 x 0.021 = 0.189
        ExpectDelay(twin, 300, 9, "300.189 ms");
        EXPECT_EQ(form.Label100[DelayLabels[channel]].ToolTip(), "300.189 ms");
        EXPECT_FALSE(program.Windows.ControlEventsOff);
        form.UpDown2[i].UserStep(-1);
        ExpectSent({DelayFrame(channel, 299, 9)});
    }
}

TEST_F(DelayCommands, TextIsTheDecimalAPersonExpects) {
    struct Case {
        int Coarse;
        int Fine;
        const char* Ms;
        const char* Metres;
    };
    const std::array<Case, 8> cases = {{{0, 0, "0 ms", "0 m"},
                                        {0, 1, "0.021 ms", "0.00714 m"},
                                        {1, 1, "1.021 ms", "0.34714 m"},
                                        {10, 0, "10 ms", "3.4 m"},
                                        {0, 47, "0.987 ms", "0.33558 m"},
                                        {3, 10, "3.21 ms", "1.0914 m"},
                                        {1000, 29, "1000.609 ms", "340.20706 m"},
                                        {2500, 47, "2500.987 ms", "850.33558 m"}}};
    const auto context = Context();
    for (const Case& one : cases) {
        SCOPED_TRACE(one.Ms);
        values.DelayUnit = 0.0;
        Put(3, one.Coarse, one.Fine);
        model::SetDelay(context, 3);
        EXPECT_EQ(form.Text2[3].Text(), one.Ms);
        EXPECT_EQ(form.Text2[11].Text(), one.Ms);
        EXPECT_EQ(form.Label100[16].ToolTip(), one.Ms);
        values.DelayUnit = 1.0;
        model::SetDelay(context, 3);
        EXPECT_EQ(form.Text2[3].Text(), one.Metres);
        EXPECT_EQ(form.Text2[11].Text(), one.Metres);
        EXPECT_EQ(form.Label100[16].ToolTip(), one.Metres);
    }
}

TEST_F(DelayCommands, ArrowsStopAtTheEndsOfTheirRangesAndTheWholePartSendsWhatStands) {
    Put(2, 2500, 47);
    form.UpDown1[2].UserStep(1);
    EXPECT_TRUE(world.Port.Sent.empty());
    form.UpDown2[2].UserStep(1);
    ExpectSent({DelayFrame(2, 2500, 47)});
    ExpectDelay(2, 2500, 47, "2500.987 ms");
    Put(2, 0, 0);
    form.UpDown1[2].UserStep(-1);
    EXPECT_TRUE(world.Port.Sent.empty());
    form.UpDown2[2].UserStep(-1);
    ExpectSent({DelayFrame(2, 0, 0)});
    ExpectDelay(2, 0, 0, "0 ms");
}

TEST_F(DelayCommands, FinePartSetInCodeRunsItsEventAndTheWholePartDoesNot) {
    form.UpDown1[4].SetPosition(5);
    ExpectSent({DelayFrame(4, 0, 5)});
    form.UpDown2[4].SetPosition(7);
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(DelayCommands, DelayStopsAtAReportedFailure) {
    Put(9, 99, 3);
    line.Devices.at(Id).Alive = false;
    form.UpDown2[9].UserStep(1);
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(image.PresetBody[75], 100);
    EXPECT_EQ(image.PresetBody[76], 3);
    EXPECT_EQ(values.DelayCoarse[1], 100.0);
    EXPECT_EQ(values.DelayFine[1], 3.0);
    EXPECT_EQ(form.Text2[9].Text(), "100.063 ms");
    ExpectDelay(1, 0, 0, "0 ms"); // the twin stays behind, and so does the tool tip
    EXPECT_EQ(form.Label100[8].ToolTip(), "0 ms");
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(DelayCommands, BytesOutOfRangeAreHeldAndShownAsTheNearest) {
    Put(7, 60000, 200);
    model::SetDelay(Context(), 7);
    ExpectSent({DelayFrame(7, 60000, 200)});
    EXPECT_EQ(image.PresetBody[415], 0xEA); // 60000 is 0xEA60
    EXPECT_EQ(image.PresetBody[416], 0x60);
    EXPECT_EQ(image.PresetBody[417], 200);
    EXPECT_EQ(form.Text2[7].Text(), "2500.987 ms");
    EXPECT_EQ(form.UpDown2[15].Shown(), 2500);
    EXPECT_EQ(form.UpDown1[15].Shown(), 47);
}

TEST_F(DelayCommands, UnitGoesToTheDevicesMemoryAndEveryTextIsWrittenAnew) {
    for (std::size_t c = 0; c < 8; ++c) {
        Put(c, 100 * static_cast<int>(c), 10);
        model::SetDelay(Context(), static_cast<int>(c));
    }
    TakeSent();
    image.SystemPage[16] = 0x83;
    auto before = image;
    form.Option1[1].Select();
    ExpectSent({OptionBitsFrame(0xC3)}); // no delay frame
    ExpectChanged(before, {{SystemPage + 16, 0xC3}});
    EXPECT_EQ(values.DelayUnit, 1.0);
    // (100c + 0.21) x 0.34
    const std::array<std::string, 8> metres = {"0.0714",   "34.0714",  "68.0714",  "102.0714",
                                               "136.0714", "170.0714", "204.0714", "238.0714"};
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Text2[c].Text(), metres[c] + " m");
        EXPECT_EQ(form.Text2[c + 8].Text(), metres[c]); // the bare number is meant
        EXPECT_EQ(form.Label100[DelayLabels[c]].ToolTip(), metres[c] + " m");
    }
    before = image;
    form.Option1[0].Select();
    ExpectSent({OptionBitsFrame(0x83)});
    ExpectChanged(before, {{SystemPage + 16, 0x83}});
    EXPECT_EQ(values.DelayUnit, 0.0);
    EXPECT_EQ(form.Text2[7].Text(), "700.21 ms");
    EXPECT_EQ(form.Text2[15].Text(), "700.21");
    EXPECT_EQ(form.Label100[36].ToolTip(), "700.21 ms");
}

TEST_F(DelayCommands, CopyOnTheChannelsTabHasItsUnitAgainAfterItsNextChange) {
    Distance();
    EXPECT_EQ(form.Text2[10].Text(), "0");
    Put(2, 9, 0);
    form.UpDown2[2].UserStep(1);
    EXPECT_EQ(form.Text2[2].Text(), "3.4 m");
    EXPECT_EQ(form.Text2[10].Text(), "3.4 m");
    EXPECT_EQ(form.Text2[11].Text(), "0");
}

TEST_F(DelayCommands, OptionBitThatStandsAlreadyIsLeftAndSentAllTheSame) {
    image.SystemPage[16] = 0x40;
    model::SetDelayUnit(Context(), 1);
    ExpectSent({OptionBitsFrame(0x40)});
    image.SystemPage[16] = 0x3F;
    model::SetDelayUnit(Context(), 0);
    ExpectSent({OptionBitsFrame(0x3F)});
}

TEST_F(DelayCommands, UnitStopsAtAReportedFailure) {
    Silence(0x11);
    form.Option1[1].Select();
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_EQ(values.DelayUnit, 1.0);
    EXPECT_EQ(image.SystemPage[16] & 0x40, 0x40);
    EXPECT_EQ(form.Text2[0].Text(), "20 ms"); // the factory's delay of In A, 0 20 0 in bytes
    EXPECT_EQ(form.Text2[8].Text(), "20 ms");
    EXPECT_FALSE(Loaded(0));
}

TEST_F(DelayCommands, UnitIsGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Option1[1].Select();
    program.Windows.ControlEventsOff = false;
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(values.DelayUnit, 0.0);
}

TEST_F(DelayCommands, EveryKeyButANumbersBecomesABlank) {
    for (int code = 0; code < 256; ++code) {
        const char key = static_cast<char>(code);
        if (key == controls::EnterKey) {
            continue;
        }
        char expected = ' ';
        if ((key >= '0' && key <= '9') || key == '.' || key == ' ' || key == controls::BackspaceKey) {
            expected = key;
        } else if (key == ',') {
            expected = '.';
        }
        const controls::KeyEntry entry = form.Text2[static_cast<std::size_t>(code % 16)].UserKey(key);
        EXPECT_EQ(entry, expected) << code;
        EXPECT_EQ(entry.Refused, expected == ' ' && key != ' ') << code;
    }
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(DelayCommands, TypedNumberWithItsUnitIsTaken) {
    TypeIn(4, "1.021 ms");
    ExpectSent({DelayFrame(4, 1, 1)});
    ExpectDelay(4, 1, 1, "1.021 ms");
    ExpectDelay(12, 1, 1, "1.021 ms");
}

TEST_F(DelayCommands, TypedNumberIsCutAtItsFirstBlank) {
    for (const char* text : {"12", "  12", "12   ", "12 5", "12 .. 9", " 12 metres "}) {
        SCOPED_TRACE(text);
        Put(13, 0, 7);
        TypeIn(13, text);
        ExpectSent({DelayFrame(5, 12, 0)});
        ExpectDelay(13, 12, 0, "12 ms");
        ExpectDelay(5, 12, 0, "12 ms");
    }
}

TEST_F(DelayCommands, TypedFineStepIsTheNearest) {
    struct Case {
        const char* Text;
        int Coarse;
        int Fine;
    };
    for (const Case& one : {Case{".5", 0, 24}, // 23.8
                            Case{"7.01", 7, 0}, Case{"7.011", 7, 1}, Case{"2.042", 2, 2}, Case{"0.987", 0, 47},
                            Case{"5.999", 5, 47}, // 47.6, held
                            Case{"3.", 3, 0}}) {
        SCOPED_TRACE(one.Text);
        Put(0, 99, 9);
        TypeIn(0, one.Text);
        ExpectSent({DelayFrame(0, one.Coarse, one.Fine)});
    }
}

TEST_F(DelayCommands, TypedNumberIsHeldToTheRanges) {
    TypeIn(1, "2501");
    ExpectSent({DelayFrame(1, 2500, 0)});
    TypeIn(1, "9999.987");
    ExpectSent({DelayFrame(1, 2500, 47)});
    TypeIn(1, "-5");
    ExpectSent({DelayFrame(1, 0, 0)});
    TypeIn(1, "1" + std::string(300, '0'));
    ExpectSent({DelayFrame(1, 2500, 0)});
}

TEST_F(DelayCommands, HugeTypedDistanceIsHeldToTheRanges) {
    Distance();
    for (const std::size_t zeros : {20U, 300U, 308U}) {
        Put(1, 0, 47);
        TypeIn(1, "1" + std::string(zeros, '0'));
        ExpectSent({DelayFrame(1, 2500, 0)});
        ExpectDelay(1, 2500, 0, "850 m");
    }
}

TEST_F(DelayCommands, TypedMetresAreDividedByTheirSpeed) {
    Distance();
    TypeIn(6, "3.4");
    ExpectSent({DelayFrame(6, 10, 0)});
    ExpectDelay(6, 10, 0, "3.4 m");
    ExpectDelay(14, 10, 0, "3.4 m");
    // Each whole number of milliseconds is met from its own text.
    for (int coarse = 1; coarse <= 2500; coarse += 7) {
        const int hundredths = 34 * coarse;
        const std::string text =
            std::to_string(hundredths / 100) + (hundredths % 100 < 10 ? ".0" : ".") + std::to_string(hundredths % 100);
        TypeIn(6, text + " m");
        ExpectSent({DelayFrame(6, coarse, 0)});
    }
}

TEST_F(DelayCommands, WhatIsShownAndTypedAgainIsTheSameDelay) {
    for (const int unit : {0, 1}) {
        model::SetDelayUnit(Context(), unit);
        for (const int coarse : {0, 1, 9, 255, 256, 1234, 2499, 2500}) {
            for (int fine = 0; fine <= 47; ++fine) {
                Put(0, coarse, fine);
                model::SetDelay(Context(), 0);
                TakeSent();
                const std::string text = form.Text2[0].Text();
                Put(0, 77, 7);
                TypeIn(0, text);
                ExpectSent({DelayFrame(0, coarse, fine)});
                EXPECT_EQ(form.Text2[0].Text(), text);
            }
        }
    }
}

TEST_F(DelayCommands, EmptyTextIsRefusedWithAMessage) {
    for (const char* text : {"", " ", "     "}) {
        world.Boxes.Shown.clear();
        const auto before = image;
        TypeIn(2, text);
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Warning", "  Incorrect value", BoxIcon::None, BoxButtons::Ok);
        EXPECT_EQ(form.Text2[2].Text(), text);
        EXPECT_TRUE(form.Text2[2].UserKey(controls::EnterKey).Refused);
        ExpectChanged(before, {});
        EXPECT_TRUE(world.Port.Sent.empty());
    }
}

TEST_F(DelayCommands, ANumberIsTaken) {
    form.Text2[2].UserText("5");
    EXPECT_FALSE(form.Text2[2].UserKey(controls::EnterKey).Refused);
}

TEST_F(DelayCommands, UnreadableTextIsAnErrorAndChangesNothing) {
    const auto before = image;
    for (const std::string& text : {std::string("1.2.3"), std::string("."), std::string("x"), std::string(400, '9')}) {
        form.Text2[2].UserText(text);
        EXPECT_THROW(form.Text2[2].UserKey(controls::EnterKey), RuntimeError);
        EXPECT_FALSE(program.Windows.ControlEventsOff);
    }
    ExpectChanged(before, {});
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(form.UpDown2[2].Position(), 0);
}

TEST_F(DelayCommands, UnreadableTextIsToldWithTheRangeOfItsUnit) {
    const auto refusal = [this](std::size_t i, const std::string& text) -> std::string {
        form.Text2[i].UserText(text);
        try {
            form.Text2[i].UserKey(controls::EnterKey);
        } catch (const RuntimeError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(refusal(3, "1.2.3"), "Out 2, Delay: \"1.2.3\" is no delay. Type 0 to 2500.987 ms and press Enter.");
    Distance(); // 0.34 m to a ms
    EXPECT_EQ(refusal(9, "1.2.3"), "In B, Delay: \"1.2.3\" is no delay. Type 0 to 850.33558 m and press Enter.");
    EXPECT_EQ(refusal(9, "abcdefghijklmnopqrstuvwxyz"), // of a long text the first 24 characters
              "In B, Delay: \"abcdefghijklmnopqrstuvwx...\" is no delay. Type 0 to 850.33558 m and press Enter.");
}

TEST_F(DelayCommands, KeysPassWhileTheProgramWrites) {
    program.Windows.ControlEventsOff = true;
    form.Text2[0].UserText("55");
    EXPECT_EQ(form.Text2[0].UserKey('x'), 'x');
    EXPECT_EQ(form.Text2[0].UserKey(','), ',');
    EXPECT_EQ(form.Text2[0].UserKey(controls::EnterKey), controls::EnterKey);
    program.Windows.ControlEventsOff = false;
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(form.UpDown2[0].Position(), 20);
}

TEST_F(DelayCommands, TypedDelayOfADeadDeviceStaysStored) {
    line.Devices.at(Id).Alive = false;
    TypeIn(8, "256.021");
    EXPECT_EQ(TakeSent().size(), 5U);
    EXPECT_EQ(image.PresetBody[2], 1);
    EXPECT_EQ(image.PresetBody[3], 0);
    EXPECT_EQ(image.PresetBody[4], 1);
    ExpectDelay(0, 20, 0, "20 ms"); // the twin
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

} // namespace
} // namespace nrv::testing
