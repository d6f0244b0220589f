#include "model/device_stores.h"
#include "ports/runtime_error.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <utility>

namespace nrv::model {
namespace {

TEST(DeviceStores, HaveAnEmptyRowForEachOfThe33Devices) {
    const auto stores = std::make_unique<DeviceStores>();
    EXPECT_EQ(stores->ParamValues.size(), 33U);
    EXPECT_EQ(stores->PresetImage.size(), 33U);
    EXPECT_EQ(stores->ChannelNames.size(), 33U);
    EXPECT_EQ(stores->LastInputType, 0.0);
    for (std::size_t id = 0; id < 33; ++id) {
        EXPECT_EQ(stores->PresetImage[id].PresetBody, PresetImageRow{}.PresetBody);
        EXPECT_EQ(stores->ParamValues[id].PeqGain, ParamRow{}.PeqGain);
        for (const std::string& name : stores->ChannelNames[id]) {
            EXPECT_TRUE(name.empty());
        }
    }
}

TEST(OptionBits, EachEntryHasItsOwnBit) {
    const auto bits = [](auto set) {
        ParamRow row;
        set(row);
        return RebuildOptionBits(row);
    };
    EXPECT_EQ(bits([](ParamRow&) {}), 0);
    EXPECT_EQ(bits([](ParamRow& row) { row.MuteWithPreset = 1; }), 4);
    EXPECT_EQ(bits([](ParamRow& row) { row.OptionBit3 = 1; }), 8);
    EXPECT_EQ(bits([](ParamRow& row) { row.InputType = 1; }), 16);
    EXPECT_EQ(bits([](ParamRow& row) { row.OptionBit5 = 1; }), 32);
    EXPECT_EQ(bits([](ParamRow& row) { row.DelayUnit = 1; }), 64);
    EXPECT_EQ(bits([](ParamRow& row) { row.LockFlag = 1; }), 128);
}

TEST(OptionBits, EveryByteLosesItsTwoLowestBitsOverDecodingAndRebuilding) {
    for (int byte = 0; byte <= 255; ++byte) {
        ParamRow row;
        DecodeOptionBits(static_cast<std::uint8_t>(byte), row);
        DecodeLockFlag(static_cast<std::uint8_t>(byte), row);
        EXPECT_EQ(RebuildOptionBits(row), byte / 4 * 4) << byte;
    }
}

TEST(OptionBits, DecodingTheFiveEntriesLeavesTheLockAsItIs) {
    ParamRow row;
    DecodeOptionBits(255, row);
    EXPECT_EQ(row.LockFlag, 0.0);
    EXPECT_EQ(RebuildOptionBits(row), 124);
    row.LockFlag = 1.0;
    DecodeOptionBits(0, row);
    EXPECT_EQ(row.LockFlag, 1.0);
    EXPECT_EQ(RebuildOptionBits(row), 128);
    DecodeLockFlag(127, row);
    EXPECT_EQ(row.LockFlag, 0.0);
}

TEST(OptionBits, ARowWhoseSumIsNoByteIsRefused) {
    ParamRow row;
    row.InputType = -1;
    EXPECT_THROW(RebuildOptionBits(row), RuntimeError);
    row.InputType = 16;
    EXPECT_THROW(RebuildOptionBits(row), RuntimeError);
}

TEST(MuteBits, EveryByteComesBackFromTheEightMutes) {
    for (int byte = 0; byte <= 255; ++byte) {
        ParamRow row;
        DecodeMuteBits(static_cast<std::uint8_t>(byte), row);
        EXPECT_EQ(SumOfMutes(row), byte);
    }
}

TEST(MuteBits, BitOfAChannelIsItsNumber) {
    ParamRow row;
    DecodeMuteBits(0x84, row);
    EXPECT_EQ(row.ChannelMute, (std::array<double, 8>{0, 0, 1, 0, 0, 0, 0, 1}));
    row.ChannelMute = {1, 0, 0, 0, 0, 0, 1, 0};
    EXPECT_EQ(SumOfMutes(row), 65);
}

TEST(MuteBits, AreStoredInThePresetAndInTheSystemPageAtOnceAndNowhereElse) {
    PresetImageRow image;
    StoreMuteBits(0xA5, image);
    PresetImageRow expected;
    expected.PresetBody[71] = 0xA5;
    expected.SystemPage[18] = 0xA5;
    EXPECT_EQ(image.PresetBody, expected.PresetBody);
    EXPECT_EQ(image.SystemPage, expected.SystemPage);
    EXPECT_EQ(image.ViewState, expected.ViewState);
    StoreMuteBits(0, image);
    EXPECT_EQ(image.PresetBody[71], 0);
    EXPECT_EQ(image.SystemPage[18], 0);
}

TEST(Numbering, PeqSectionsRunThroughTheChannelsInOrder) {
    int section = 0;
    for (int channel = 0; channel < 8; ++channel) {
        const int count = channel < 2 ? 10 : 4;
        EXPECT_EQ(PeqCountOf(channel), count);
        EXPECT_EQ(FirstPeqOf(channel), section);
        for (int number = 0; number < count; ++number, ++section) {
            EXPECT_EQ(ChannelOfPeq(section), channel) << section;
            EXPECT_EQ(PeqInChannel(section), number) << section;
        }
    }
    EXPECT_EQ(section, 44);
}

TEST(Numbering, ToneFiltersAreTwoOfEachInputAndOneOfEachOutput) {
    const std::array<std::pair<int, int>, 10> expected{
        {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {6, 0}, {7, 0}}};
    for (int filter = 0; filter < 10; ++filter) {
        EXPECT_EQ(std::pair(ChannelOfTone(filter), ToneInChannel(filter)), expected[static_cast<std::size_t>(filter)])
            << filter;
    }
}

TEST(Numbering, CrossoverSidesAlternateHighPassAndLowPass) {
    const std::array<int, 12> channels{2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7};
    for (int side = 0; side < 12; ++side) {
        EXPECT_EQ(ChannelOfCrossover(side), channels[static_cast<std::size_t>(side)]) << side;
        EXPECT_EQ(CrossoverInChannel(side), side & 1) << side;
    }
    EXPECT_EQ(ChannelOfOutput(0), 2);
    EXPECT_EQ(ChannelOfOutput(5), 7);
}

TEST(Numbering, TwinsAreTwoIndicesOfOneChannel) {
    std::set<int> twins;
    for (int index = 0; index < 16; ++index) {
        const int twin = TwinOfControl(index);
        twins.insert(twin);
        EXPECT_NE(twin, index);
        EXPECT_EQ(TwinOfControl(twin), index);
        EXPECT_EQ(ChannelOfControl(index), index % 8);
        EXPECT_EQ(ChannelOfControl(twin), index % 8);
    }
    EXPECT_EQ(twins.size(), 16U);
}

TEST(Numbering, TakesEveryKindOfIndex) {
    EXPECT_EQ(ChannelOfPeq(std::size_t{43}), std::size_t{7});
    EXPECT_EQ(ChannelOfTone(std::uint8_t{9}), std::uint8_t{7});
    EXPECT_EQ(TwinOfControl(std::int16_t{3}), std::int16_t{11});
}

} // namespace
} // namespace nrv::model
