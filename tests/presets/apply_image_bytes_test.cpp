#include "presets/load_window.h"

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;

/// Bytes that no control can show, and bytes in general.
class ApplyImageBytes : public LoadWindow {
  protected:
    void Open() { ApplySilently(WindowOpens); }
};

TEST_F(ApplyImageBytes, AnyImageComesThroughUnchangedButForTheMutesCopy) {
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const Body body = RandomBody(random);
        image.PresetBody = body;
        for (std::uint8_t& byte : image.SystemPage) {
            byte = static_cast<std::uint8_t>(random());
        }
        for (std::size_t n = 0; n < image.ViewState.size(); ++n) {
            const bool sum = n >= 40 && n <= 45;
            // A sum byte may reach past its output's three options, but not past the last of all eighteen.
            image.ViewState[n] = static_cast<std::uint8_t>(sum ? random() % (18 - 3 * (n - 40)) : random());
        }
        auto before = image;
        Open();
        ExpectChanged(before, {{71, before.SystemPage[18]}});
        EXPECT_FALSE(program.Windows.ControlEventsOff);
    }
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(ApplyImageBytes, AnyPresetLoadedGoesOutAsItIs) {
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE(round);
        Body body = RandomBody(random);
        KeepSources(body);
        image.PresetBody = body;
        image.SystemPage[16] = 0x04;
        values.MuteWithPreset = 1.0;
        const std::vector<Frame> expected = Trace(body, {Id, 0x04, true, Sources(), 0});
        Apply(LoadedFromFile);
        ExpectSent(expected);
        EXPECT_EQ(image.PresetBody, body); // byte 71 is where the mutes came from
    }
}

TEST_F(ApplyImageBytes, GainsOutOfRangeShowTheTop) {
    image.PresetBody[184] = 200;
    image.PresetBody[9] = 200;  // the first PEQ section of In A
    image.PresetBody[59] = 200; // its first shelf
    image.PresetBody[143] = 200;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.Text1[2].Text(), "12");
    EXPECT_EQ(form.Slider1[10].Shown(), 0);
    EXPECT_EQ(values.ChannelGain[2], 12.0);
    EXPECT_EQ(form.Text3[0].Text(), "15");
    EXPECT_EQ(values.PeqGain[0], 15.0);
    EXPECT_EQ(form.Text6[0].Text(), "6");
    EXPECT_EQ(values.ToneGain[0], 6.0);
    EXPECT_EQ(form.Text100.Text(), "12");
    EXPECT_EQ(values.MasterGain, 12.0);
}

TEST_F(ApplyImageBytes, BandwidthOutOfRangeShowsTheWidest) {
    image.PresetBody[7] = 200;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.UpDown3[0].Shown(), 59);
    EXPECT_EQ(form.Text5[0].Text(), "3");
    EXPECT_EQ(values.PeqBandwidth[0], 3.0);
}

TEST_F(ApplyImageBytes, SlopeOutOfRangeShowsTheLast) {
    image.PresetBody[146] = 99;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.Combo2[0].ShownText(), "-24dB/oct Cv");
    EXPECT_THAT(form.Label100[10].ToolTip(), HasSubstr("-24dB/oct Cv -- LP: "));
}

TEST_F(ApplyImageBytes, ToneTypeAndSourceOutOfRangeShowTheLast) {
    image.PresetBody[57] = 99;
    image.PresetBody[172] = 99;
    image.PresetBody[185] = 99;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.Combo1[0].ShownText(), " 2' ord");
    EXPECT_EQ(form.Combo1[4].ShownText(), "2' ord Hi");
    EXPECT_EQ(form.Combo3[0].ShownText(), "In A+B");
}

TEST_F(ApplyImageBytes, PhaseOutOfRangeIsInverted) {
    image.PresetBody[65] = 7;
    image.PresetBody[422] = 255;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    for (const std::size_t i : {0U, 8U, 7U, 15U}) {
        EXPECT_TRUE(form.Check2[i].Checked());
    }
    EXPECT_EQ(values.ChannelPhase[0], 1.0);
    EXPECT_EQ(values.ChannelPhase[7], 1.0);
    EXPECT_EQ(form.Label100[4].ToolTip(), "180'");
}

TEST_F(ApplyImageBytes, DelayOutOfRangeShowsTheLongest) {
    image.PresetBody[175] = 0xEA; // 60000
    image.PresetBody[176] = 0x60;
    image.PresetBody[177] = 255;
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.UpDown2[2].Shown(), 2500);
    EXPECT_EQ(form.UpDown1[10].Shown(), 47);
    EXPECT_EQ(form.Text2[2].Text(), "2500.987 ms");
    EXPECT_EQ(form.Text2[10].Text(), "2500.987 ms");
}

TEST_F(ApplyImageBytes, FirstStepFromOutOfRangeGoesFromWhatIsShown) {
    image.PresetBody[175] = 0xEA;
    image.PresetBody[176] = 0x60;
    image.PresetBody[184] = 200;
    Open();
    form.UpDown2[2].UserStep(-1);
    EXPECT_EQ(image.PresetBody[175], 2499 / 256);
    EXPECT_EQ(image.PresetBody[176], 2499 % 256);
    form.Slider1[2].UserMove(1);
    EXPECT_EQ(image.PresetBody[184], 119);
}

TEST_F(ApplyImageBytes, EveryFrequencyCodeAboveTheTableEndsTheLoadAndNamesItsPlace) {
    struct Case {
        std::size_t Byte;
        const char* Channel;
    };
    for (const Case& one :
         {Case{145, "Out 1"}, Case{388, "Out 6"}, Case{6, "In A"}, Case{123, "In B"}, Case{151, "Out 1"},
          Case{406, "Out 6"}, Case{56, "In A"}, Case{133, "In B"}, Case{171, "Out 1"}, Case{267, "Out 3"}}) {
        SCOPED_TRACE(one.Byte);
        for (const int code : {121, 200, 255}) {
            const std::uint8_t good = image.PresetBody[one.Byte];
            image.PresetBody[one.Byte] = static_cast<std::uint8_t>(code);
            auto before = image;
            program.Link.TxSuppressed = true;
            try {
                Apply(WindowOpens);
                ADD_FAILURE() << "was taken";
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.Kind(), ErrorKind::IndexOutOfRange);
                const std::string text = error.what();
                EXPECT_THAT(text, HasSubstr(one.Channel));
                EXPECT_THAT(text,
                            HasSubstr("byte " + std::to_string(one.Byte) + " of the image is the frequency code " +
                                      std::to_string(code) + ", and codes end at 120."));
                EXPECT_THAT(text, HasSubstr(std::to_string(code)));
            }
            program.Link.TxSuppressed = false;
            EXPECT_FALSE(program.Windows.ControlEventsOff);
            EXPECT_FALSE(program.Link.CheckSuppressed);
            ExpectChanged(before, {});
            image.PresetBody[one.Byte] = good;
        }
    }
    Open(); // and the next image is taken
    EXPECT_EQ(form.Text8[0].Text(), "36");
}

TEST_F(ApplyImageBytes, HighestFrequencyCodeIsTaken) {
    for (const std::size_t place : ImageLayout::FrequencyBytes()) {
        image.PresetBody[place] = 120;
    }
    auto before = image;
    Open();
    ExpectChanged(before, {});
    EXPECT_EQ(form.Text4[43].Text(), "20000");
    EXPECT_EQ(values.PeqFrequency[43], 20000.0);
}

TEST_F(ApplyImageBytes, BrokenFrequencyStopsALoadWhereItStands) {
    Body body = RandomPreset(random);
    KeepSources(body);
    body[193] = 121; // the high-pass of Out 2
    image.PresetBody = body;
    image.SystemPage[16] = 0x04;
    values.MuteWithPreset = 1.0;
    std::vector<Frame> expected = Trace(body, {Id, 0x04, true, Sources(), 0});
    expected.resize(1 + 16 + 6 + 24 + 2); // as far as the low-pass of Out 1
    EXPECT_THROW(Apply(LoadedFromFile), RuntimeError);
    ExpectSent(expected);
    EXPECT_EQ(image.PresetBody, body);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

} // namespace
} // namespace nrv::testing
