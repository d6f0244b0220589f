#include "simulator/factory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace nrv::simulator {
namespace {

std::vector<int> Slice(const PresetBody& body, std::size_t start, std::size_t size) {
    return {body.begin() + static_cast<std::ptrdiff_t>(start),
            body.begin() + static_cast<std::ptrdiff_t>(start + size)};
}

using ::testing::ElementsAre;

TEST(FactoryPreset, InputABeginsWithGainAndTwentyMillisecondsOfDelay) {
    EXPECT_THAT(Slice(FactoryPreset(), 0, 10), ElementsAre(0, 60, 0, 20, 0, 0, 10, 8, 0, 75));
}

TEST(FactoryPreset, InputAEndsWithItsShelvesPhaseAndName) {
    EXPECT_THAT(Slice(FactoryPreset(), 50, 22),
                ElementsAre(0, 100, 8, 0, 75, 0, 25, 0, 0, 24, 0, 60, 0, 0, 24, 0, 0x20, 0x49, 0x6E, 0x20, 0x41, 0x20));
}

TEST(FactoryPreset, InputBHasNoDelayAndTheMasterGainInItsLastByte) {
    EXPECT_THAT(Slice(FactoryPreset(), 72, 5), ElementsAre(0, 60, 0, 0, 0));
    EXPECT_THAT(Slice(FactoryPreset(), 138, 6), ElementsAre(0x20, 0x49, 0x6E, 0x20, 0x00, 0x3C));
}

TEST(FactoryPreset, OutputOneIsLaidOutByteByByte) {
    EXPECT_THAT(Slice(FactoryPreset(), 144, 48),
                ElementsAre(0, 10, 0, 0, 20, 2, 0, 5, 8, 0, 75, 0, 10, 8, 0, 75, 0, 15, 8, 0, 75, 0, 20, 8, 0, 75, 0,
                            10, 0, 0, 24, 0, 0, 0, 5, 10, 0, 58, 0, 0, 60, 1, 0x20, 0x4F, 0x75, 0x74, 0x20, 0x31));
}

TEST(FactoryPreset, OutputSixHasItsOwnCrossoverAndNumber) {
    EXPECT_THAT(Slice(FactoryPreset(), 384, 6), ElementsAre(0, 100, 2, 0, 120, 2));
    EXPECT_THAT(Slice(FactoryPreset(), 426, 6), ElementsAre(0x20, 0x4F, 0x75, 0x74, 0x20, 0x36));
}

TEST(FactoryPreset, EveryGainPlaceHoldsZeroAndSixty) {
    for (std::size_t at : {0U, 72U, 183U, 231U, 279U, 327U, 375U, 423U}) {
        EXPECT_THAT(Slice(FactoryPreset(), at, 2), ElementsAre(0, 60)) << at;
    }
}

TEST(FactoryPreset, SumOfAllBytesIsTheOneWorkedOutByHand) {
    // Field by field: gain, delay, ten sections, two shelves, name; then what the outputs have.
    const int input_a = 60 + 20 + (550 + 80 + 750) + (25 + 24) + (60 + 24) + (0x20 + 0x49 + 0x6E + 0x20 + 0x41 + 0x20);
    const int input_b = 60 + (550 + 80 + 750) + (25 + 24) + (60 + 24) + (0x20 + 0x49 + 0x6E + 0x20 + 0x3C);
    const int output_rest = (50 + 32 + 300) + 34 + 73 + 60 + 1 + (0x20 + 0x4F + 0x75 + 0x74 + 0x20);
    const int crossovers = (10 + 20 + 40 + 60 + 80 + 100) + 5 * 2 + 20 * 21 + 6 * 2;
    const int digits = 6 * '0' + 21;
    const PresetBody body = FactoryPreset();
    EXPECT_EQ(std::accumulate(body.begin(), body.end(), 0), input_a + input_b + 6 * output_rest + crossovers + digits);
}

TEST(FactoryMemory, HoldsOptionsPasswordLabelAndNoPreset) {
    const DeviceMemory memory = FactoryMemory("Stage left");
    EXPECT_EQ(memory.size(), 640U + 9 * 432U);
    EXPECT_EQ(memory[16], 32);
    EXPECT_EQ(memory[18], 0);
    const auto text = [&memory](std::size_t at, std::size_t size) {
        return std::string(memory.begin() + static_cast<std::ptrdiff_t>(at),
                           memory.begin() + static_cast<std::ptrdiff_t>(at + size));
    };
    EXPECT_EQ(text(26, 6), "000000");
    EXPECT_EQ(text(32, 16), "Stage left      ");
    EXPECT_EQ(text(48, 9), std::string(9, '\0'));
    EXPECT_EQ(text(64, 128), std::string(128, ' '));
    EXPECT_EQ(text(192, 16), "Factory Preset  ");
}

TEST(FactoryLabel, IsSixteenCharactersForEveryId) {
    EXPECT_EQ(FactoryLabel(5), " NRV-718  ID 05 ");
    for (int id = 0; id <= 32; ++id) {
        EXPECT_EQ(FactoryLabel(id).size(), 16U);
    }
}

} // namespace
} // namespace nrv::simulator
