#include "model/tables.h"
#include "presets/parameter_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace nrv::testing {
namespace {

using presets::Parameter;
using enum presets::ParameterKind;

class ParameterWords : public ::testing::Test {
  protected:
    void Put(std::size_t place, int before, int after) {
        from.PresetBody[place] = static_cast<std::uint8_t>(before);
        to.PresetBody[place] = static_cast<std::uint8_t>(after);
    }
    std::string Change(Parameter parameter) { return presets::ChangeInWords(parameter, from, to, form); }

    controls::FrmCtrl form;
    model::PresetImageRow from;
    model::PresetImageRow to;
};

// Places by the layout of a channel's block: an input's 72 bytes at 72c, an output's 48 at 144 + 48k.

TEST_F(ParameterWords, TellWhereAndWhatAndInWhichUnit) {
    Put(192 + 6 + 2 * 5 + 4, 75, 68); // Out 2, the third section's gain
    EXPECT_EQ(Change({Peq, 20 + 4 + 2}), "Out 2, PEQ 3: gain 0 to -1.4 dB");
    Put(192 + 6 + 2 * 5 + 1, 68, 69);
    EXPECT_EQ(Change({Peq, 26}), "Out 2, PEQ 3: gain 0 to -1.4 dB, frequency 1000 to 1062 Hz");
    Put(192 + 6 + 2 * 5 + 2, 0, 59);
    EXPECT_EQ(Change({Peq, 26}), "Out 2, PEQ 3: gain 0 to -1.4 dB, frequency 1000 to 1062 Hz, bandwidth 0.05 to 3 oct");
    Put(1, 60, 120);
    EXPECT_EQ(Change({Gain, 0}), "In A: gain 0 to 12 dB");
    Put(143, 0, 60);
    EXPECT_EQ(Change({MasterGain}), "master gain -12 to 0 dB");
    Put(144 + 1, 0, 120);
    Put(144 + 2, 0, 9);
    EXPECT_EQ(Change({Crossover, 0}), "Out 1, high pass: frequency 20 to 20000 Hz, slope Bypass to -24dB/oct Lz");
    Put(55 + 4, 24, 36);
    Put(55 + 2, 0, 2);
    EXPECT_EQ(Change({Tone, 0}), "In A, low shelving: gain 0 to 6 dB, type Bypass to 2' ord");
    Put(144 + 41, 0, 2);
    EXPECT_EQ(Change({Source, 0}), "Out 1: source In A to In A+B");
    Put(144 + 38, 0, 1);
    EXPECT_EQ(Change({Phase, 2}), "Out 1: phase 0 to 180");
    Put(2 + 1, 3, 4);
    Put(2 + 2, 1, 1);
    EXPECT_EQ(Change({Delay, 0}), "In A: delay 3.021 to 4.021 ms");
}

TEST_F(ParameterWords, TellThresholdsAndTimes) {
    Put(144 + 34 + 3, 0, 60);
    EXPECT_EQ(Change({Threshold, 2}), "Out 1, limiter: threshold -10 to 20 dBu");
    Put(144 + 34 + 1, 0, 18);
    EXPECT_EQ(Change({Release, 2}), "Out 1, limiter: release 0.2 to 2.0 s");
    Put(144 + 34, 0, 29);
    EXPECT_EQ(Change({Attack, 2}), "Out 1, limiter: attack 5 to 200 ms");
    Put(66 + 3, 0, 10);
    EXPECT_EQ(Change({Threshold, 0}), "In A, noise gate: threshold OFF to -90.0 dBu");
}

TEST_F(ParameterWords, TellMutesOptionsAndNames) {
    to.SystemPage[18] = 1 << 3;
    EXPECT_EQ(Change({Mute, 3}), "Out 2: mute off to on");
    EXPECT_EQ(Change({Mute, 2}), "Out 1: ");
    to.SystemPage[16] = 16 + 64;
    EXPECT_EQ(Change({InputType}), "input Analog to Digital");
    EXPECT_EQ(Change({DelayUnit}), "delays shown in milliseconds to in metres");
    for (std::size_t n = 0; n < 6; ++n) {
        from.PresetBody[192 + 42 + n] = static_cast<std::uint8_t>("Out 2 "[n]);
        to.PresetBody[192 + 42 + n] = static_cast<std::uint8_t>(" Subs "[n]);
    }
    EXPECT_EQ(Change({ChannelName, 1}), "Out 2: name \"Out 2\" to \"Subs\"");
}

TEST_F(ParameterWords, ACodeThatStandsForNothingIsToldAsOne) {
    Put(1, 120, 121);
    EXPECT_EQ(Change({Gain, 0}), "In A: gain 12 dB to code 121");
    Put(5 + 1, 120, 121);
    EXPECT_EQ(Change({Peq, 0}), "In A, PEQ 1: frequency 20000 Hz to code 121");
    Put(5 + 1, 0, 0);
    Put(5 + 2, 60, 0);
    EXPECT_EQ(Change({Peq, 0}), "In A, PEQ 1: bandwidth code 60 to 0.05 oct");
    Put(144 + 2, 11, 255);
    EXPECT_EQ(Change({Crossover, 0}), "Out 1, high pass: slope code 11 to code 255");
    Put(2, 0, 10);
    EXPECT_EQ(Change({Delay, 0}), "In A: delay 0 ms to codes 2560 and 0");
    Put(66 + 3, 11, 0);
    EXPECT_EQ(Change({Threshold, 0}), "In A, noise gate: threshold code 11 to OFF");
    Put(66, 30, 0);
    EXPECT_EQ(Change({Attack, 0}), "In A, noise gate: attack code 30 to 5 ms");
}

/// Every byte that a command of the program writes is some parameter's, and but for the names and gates of the inputs
/// no byte is two's.
TEST(ParametersOfAPreset, AreEachThereOnce) {
    std::set<std::pair<std::size_t, int>> bits;
    for (const Parameter parameter : presets::Parameters()) {
        for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
            for (int bit = 0; bit < 8; ++bit) {
                if (((place.Bits >> bit) & 1) != 0) {
                    EXPECT_TRUE(bits.insert({place.Byte, bit}).second) << place.Byte << ' ' << bit;
                }
            }
        }
    }
    // Per input: gain, 3 of delay, 10 x 3, 2 x 3, phase, 3 of the gate; per output: 2 x 2, 3, 4 x 3, 3, 3 of the
    // limiter, phase, gain, source, 6 of the name; the master gain; eight mutes and two options.
    EXPECT_EQ(bits.size(), 8U * (2 * (1 + 3 + 30 + 6 + 1 + 3) + 6 * (4 + 3 + 12 + 3 + 3 + 1 + 1 + 1 + 6) + 1) + 8 + 2);
    EXPECT_EQ(presets::Parameters().size(), 8U + 1 + 6 + 24 + 12 + 44 + 10 + 8 + 8 + 1 + 8 + 6 + 1);
}

/// One that is in no list would be loaded, told and taken back by nothing.
TEST(ParametersOfAPreset, HoldEveryKindThatHasAPlace) {
    std::set<int> listed;
    for (const Parameter parameter : presets::Parameters()) {
        listed.insert(static_cast<int>(parameter.Kind));
    }
    int kinds = 0;
    while (presets::PlacesOf({static_cast<presets::ParameterKind>(kinds), 0}).size() > 0) {
        EXPECT_TRUE(listed.contains(kinds)) << kinds;
        ++kinds;
    }
    EXPECT_GE(kinds, 15);
}

} // namespace
} // namespace nrv::testing
