#include "model/encodings.h"
#include "model/graph_scale.h"
#include "model/tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace nrv::model {
namespace {

constexpr std::string_view factory_hex = "003c001400000a08004b001408004b001e08004b00280800"
                                         "4b003208004b003c08004b004608004b005008004b005a08"
                                         "004b006408004b0019000018003c0000180020496e204120"
                                         "003c000000000a08004b001408004b001e08004b00280800"
                                         "4b003208004b003c08004b004608004b005008004b005a08"
                                         "004b006408004b0019000018003c0000180020496e20003c"
                                         "000a00001402000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742031"
                                         "001402002802000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742032"
                                         "002802003c02000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742033"
                                         "003c02005002000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742034"
                                         "005002006402000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742035"
                                         "006402007802000508004b000a08004b000f08004b001408"
                                         "004b000a000018000000050a003a00003c01204f75742036";

constexpr const char* frequencies =
    "20 21 22 23 25 26 28 30 31 33 36 38 40 42 45 47 50 53 57 59 63 67 71 76 80 85 90 95 100 106 "
    "113 119 125 134 143 151 160 170 180 190 200 212 225 237 250 266 283 299 315 336 358 379 400 "
    "425 450 475 500 532 565 597 630 672 715 757 800 850 900 950 1000 1062 1125 1187 1250 1337 1425 "
    "1512 1600 1700 1800 1900 2000 2125 2250 2375 2500 2662 2825 2987 3150 3362 3575 3787 4000 4250 "
    "4500 4750 5000 5325 5650 5975 6300 6725 7150 7575 8000 8500 9000 9500 10000 10625 11250 11875 "
    "12500 13375 14250 15125 16000 17000 18000 19000 20000";

std::vector<double> FrequencyList() {
    std::istringstream in(frequencies);
    std::vector<double> list;
    for (double hz = 0; in >> hz;) {
        list.push_back(hz);
    }
    return list;
}

TEST(FactoryImage, HoldsEveryByteOfTheList) {
    ASSERT_EQ(factory_hex.size(), 2 * FactoryImage.size());
    for (std::size_t i = 0; i < FactoryImage.size(); ++i) {
        EXPECT_EQ(FactoryImage[i], std::stoi(std::string(factory_hex.substr(2 * i, 2)), nullptr, 16)) << "byte " << i;
    }
}

TEST(FactoryImage, HasZeroAndSixtyAtTheGainOfEveryChannel) {
    for (const std::uint32_t offset : GainOffsets) {
        EXPECT_EQ(FactoryImage[offset], 0) << offset;
        EXPECT_EQ(FactoryImage[offset + 1], 60) << offset;
    }
}

TEST(FactoryImage, HasOneInTheSourceByteOfEveryOutput) {
    for (const std::uint32_t offset : SourceOffsets) {
        EXPECT_EQ(FactoryImage[offset], 1) << offset;
    }
}

TEST(FactoryImage, StartsInAWithTwentyMillisecondsAndEverythingElseWithoutDelay) {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        const std::uint32_t offset = DelayOffsets[channel];
        EXPECT_EQ(FactoryImage[offset], 0) << channel;
        EXPECT_EQ(FactoryImage[offset + 1], channel == 0 ? 20 : 0) << channel;
        EXPECT_EQ(FactoryImage[offset + 2], 0) << channel;
    }
}

TEST(FactoryImage, ReadsItsNamesWithTheLastTwoBytesOfInBAsTheyAre) {
    const std::vector<std::string> names{
        " In A ", std::string(" In \0<", 6), " Out 1", " Out 2", " Out 3", " Out 4", " Out 5", " Out 6"};
    for (std::size_t channel = 0; channel < names.size(); ++channel) {
        const auto first = FactoryImage.begin() + NameOffsets[channel];
        EXPECT_EQ(std::string(first, first + 6), names[channel]) << channel;
    }
}

TEST(FactoryImage, HasNoiseGateCodesOutsideTheirRangeOnBothInputs) {
    for (const std::uint32_t offset : {LimiterOffsets[0], LimiterOffsets[1]}) {
        EXPECT_EQ(FactoryImage[offset], 32);
        EXPECT_EQ(FactoryImage[offset + 1], 73);
        EXPECT_EQ(FactoryImage[offset + 3], 32);
    }
}

TEST(PositionTables, LieWhereEachBlockOfAnInputOrOutputPutsThem) {
    for (std::size_t input = 0; input < 2; ++input) {
        const std::size_t b = 72 * input;
        EXPECT_EQ(GainOffsets[input], b);
        EXPECT_EQ(PhaseOffsets[input], b + 65);
        EXPECT_EQ(DelayOffsets[input], b + 2);
        EXPECT_EQ(ToneOffsets[2 * input], b + 55);
        EXPECT_EQ(ToneOffsets[2 * input + 1], b + 60);
        EXPECT_EQ(LimiterOffsets[input], b + 66);
        EXPECT_EQ(NameOffsets[input], b + 66);
        for (std::size_t section = 0; section < 10; ++section) {
            EXPECT_EQ(PeqOffsets[10 * input + section], b + 5 + 5 * section);
        }
    }
    for (std::size_t output = 0; output < 6; ++output) {
        const std::size_t o = 144 + 48 * output;
        EXPECT_EQ(CrossoverOffsets[2 * output], o);
        EXPECT_EQ(CrossoverOffsets[2 * output + 1], o + 3);
        EXPECT_EQ(ToneOffsets[4 + output], o + 26);
        EXPECT_EQ(DelayOffsets[2 + output], o + 31);
        EXPECT_EQ(LimiterOffsets[2 + output], o + 34);
        EXPECT_EQ(PhaseOffsets[2 + output], o + 38);
        EXPECT_EQ(GainOffsets[2 + output], o + 39);
        EXPECT_EQ(SourceOffsets[output], o + 41);
        EXPECT_EQ(NameOffsets[2 + output], o + 42);
        for (std::size_t section = 0; section < 4; ++section) {
            EXPECT_EQ(PeqOffsets[20 + 4 * output + section], o + 6 + 5 * section);
        }
    }
}

TEST(PositionTables, PeqOffsetsEndWithTheFourOfOut6) {
    EXPECT_EQ(PeqOffsets[0], 5U);
    EXPECT_EQ(PeqOffsets[9], 50U);
    EXPECT_EQ(PeqOffsets[10], 77U);
    EXPECT_EQ(PeqOffsets[19], 122U);
    EXPECT_EQ(PeqOffsets[20], 150U);
    EXPECT_EQ(PeqOffsets[24], 198U);
    EXPECT_EQ(PeqOffsets[40], 390U);
    EXPECT_EQ(PeqOffsets[43], 405U);
}

TEST(PositionTables, DelayOffsetsRepeatTheEightChannels) {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(DelayOffsets[channel + 8], DelayOffsets[channel]);
    }
}

TEST(PositionTables, InputsKeepNameAndNoiseGateInTheSameBytes) {
    EXPECT_EQ(LimiterOffsets[0], NameOffsets[0]);
    EXPECT_EQ(LimiterOffsets[1], NameOffsets[1]);
}

TEST(FrequencyTable, HoldsTheListOf121Frequencies) {
    const std::vector<double> list = FrequencyList();
    ASSERT_EQ(list.size(), FrequencyTable.size());
    EXPECT_TRUE(std::equal(list.begin(), list.end(), FrequencyTable.begin()));
    EXPECT_TRUE(std::is_sorted(list.begin(), list.end(), std::less_equal<>()));
}

TEST(FrequencyTable, CodeZeroIsTwentyHertzAndCode120IsTwentyKilohertz) {
    EXPECT_EQ(FrequencyTable[0], 20.0);
    EXPECT_EQ(FrequencyTable[120], 20000.0);
}

TEST(FrequencyTable, EveryFourthEntryIsTheThirdOctaveSeries) {
    const std::vector<double> series{20,   25,   31,   40,   50,   63,    80,    100,   125,  160,  200,
                                     250,  315,  400,  500,  630,  800,   1000,  1250,  1600, 2000, 2500,
                                     3150, 4000, 5000, 6300, 8000, 10000, 12500, 16000, 20000};
    for (std::size_t step = 0; step < series.size(); ++step) {
        EXPECT_EQ(FrequencyTable[4 * step], series[step]) << step;
    }
}

TEST(FrequencyTable, HasTheEntriesThatFollowNoRule) {
    EXPECT_EQ(FrequencyTable[8], 31.0);
    EXPECT_EQ(FrequencyTable[69], 1062.0);
}

TEST(QTable, HoldsTheKnownValues) {
    EXPECT_NEAR(QTable[0], 28.8567888732164, 1e-13);
    EXPECT_DOUBLE_EQ(QTable[19], 1.5);
    EXPECT_NEAR(QTable[59], 0.642857142857143, 1e-15);
}

TEST(QTable, GivesBackItsBandwidthInOctaves) {
    // The formula solved for the bandwidth.
    for (std::size_t code = 0; code < QTable.size(); ++code) {
        const double octaves = 2.0 / std::log(2.0) * std::atanh(1.0 / (2.0 * QTable[code]));
        EXPECT_NEAR(octaves, static_cast<double>(code + 1) * 0.05, 1e-12) << code;
    }
}

TEST(TextTables, LowLevelTextsRunFromOffToMinusNinety) {
    EXPECT_EQ(LowLevelTexts[0], "OFF");
    for (std::size_t code = 1; code < LowLevelTexts.size(); ++code) {
        std::string text("-");
        text += std::to_string(100 - code);
        text += ".0";
        EXPECT_EQ(LowLevelTexts[code], text);
    }
}

TEST(TextTables, ReleaseTextsRiseByTenthsOfASecond) {
    for (std::size_t code = 0; code < ReleaseTexts.size(); ++code) {
        const std::size_t tenths = code + 2;
        EXPECT_EQ(ReleaseTexts[code], std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "s");
    }
    EXPECT_EQ(ReleaseTexts[10], "1.2s");
}

TEST(TextTables, AttackTextsAreMillisecondsSetToTheRight) {
    const std::vector<int> ms{5,  6,  7,  8,  9,  10, 11, 12, 13, 14,  15,  16,  17,  18,  19,
                              20, 25, 30, 40, 50, 60, 70, 80, 90, 100, 120, 140, 160, 180, 200};
    ASSERT_EQ(ms.size(), AttackTexts.size());
    for (std::size_t code = 0; code < ms.size(); ++code) {
        const std::string number = std::to_string(ms[code]);
        EXPECT_EQ(AttackTexts[code], std::string(3 - number.size(), ' ') + number + "ms");
    }
}

TEST(TextTables, EmptyPresetCharsReadPresetEmptyBetweenTwoBlanksEach) {
    std::string name;
    for (const std::string_view text : EmptyPresetChars) {
        EXPECT_EQ(text.size(), 1U);
        name += text;
    }
    EXPECT_EQ(name, "  Preset Empty  ");
}

TEST(TextTables, SuffixesAndUnitsStandAsTold) {
    EXPECT_EQ(SourceSuffixes, (std::array<std::string_view, 3>{"", "+InA", "+InB"}));
    EXPECT_EQ(DelayUnitTexts, (std::array<std::string_view, 2>{" ms", " m"}));
}

TEST(BitMasks, AreThePowersOfTwo) {
    for (std::size_t bit = 0; bit < BitMasks.size(); ++bit) {
        EXPECT_EQ(BitMasks[bit], 1U << bit);
    }
}

TEST(SlopeStageTable, CountsOneStageForEachSixDecibels) {
    const std::vector<int> decibels{0, 6, 12, 12, 12, 12, 18, 18, 24, 24, 24};
    ASSERT_EQ(decibels.size(), SlopeStageTable.size());
    for (std::size_t code = 0; code < decibels.size(); ++code) {
        EXPECT_EQ(SlopeStageTable[code] * 6, decibels[code]) << code;
    }
}

TEST(ScaleFactors, SpreadThreeDecadesOverTheGraph) {
    EXPECT_NEAR(MarkerUnitsPerDecade, 2885.0, 1e-9);
    EXPECT_NEAR(PixelsPerDecade, 575.0 / 3.0, 1e-10);
}

TEST(PlotX, IsZeroAt20And575At20000) {
    EXPECT_EQ(PlotX(20), 0.0);
    EXPECT_NEAR(PlotX(20000), 575.0, 1e-9);
}

TEST(PlotX, IsMinusOneFrom10To19AndZeroBelow) {
    for (int hz = 0; hz < 20; ++hz) {
        EXPECT_EQ(PlotX(hz), hz < 10 ? 0.0 : -1.0) << hz;
    }
}

TEST(PlotX, FollowsTheLogarithmOfTheFrequency) {
    for (int hz = 20; hz <= 20000; ++hz) {
        ASSERT_NEAR(PlotX(hz), 575.0 / 3.0 * std::log10(hz / 20.0), 1e-9) << hz;
    }
    EXPECT_NEAR(PlotX(200), 191.666666666667, 1e-9);
    EXPECT_NEAR(PlotX(2000), 383.333333333333, 1e-9);
}

TEST(Entry, GivesWhatTheTableHolds) {
    EXPECT_EQ(Entry(AttackTexts, std::uint8_t{5}), " 10ms");
    EXPECT_EQ(Entry(ReleaseTexts, 18), "2.0s");
    EXPECT_EQ(Entry(FrequencyTable, std::size_t{120}), 20000.0);
}

TEST(Entry, RefusesAnIndexThatTheTableDoesNotHave) {
    for (const int index : {-1, 11, 255, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        try {
            Entry(LowLevelTexts, index);
            ADD_FAILURE() << index;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::IndexOutOfRange);
            EXPECT_EQ(error.what(), "The value " + std::to_string(index) + " lies outside 0 to 10.");
        }
    }
}

} // namespace
} // namespace nrv::model
