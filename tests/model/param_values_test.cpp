#include "model/param_values.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace nrv::model {
namespace {

TEST(ParamRow, StartsWithZeroesAndEmptyTexts) {
    const ParamRow row;
    std::array<double, 289> entries{};
    std::memcpy(entries.data(), static_cast<const void*>(&row), sizeof entries);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i], 0.0) << i;
    }
    for (const std::string& name : row.PresetNames) {
        EXPECT_TRUE(name.empty());
    }
    EXPECT_TRUE(row.CurrentPresetName.empty());
}

TEST(ParamRow, KeepsItsEntriesInTheirNumbering) {
    ParamRow row;
    row.PeqGain[43] = 1;
    row.PeqFrequency[0] = 2;
    row.PeqBandwidth[43] = 3;
    row.ToneType[9] = 4;
    row.ChannelMute[7] = 5;
    row.DelayUnit = 6;
    row.DelayFine[7] = 7;
    row.CrossoverSlope[11] = 8;
    row.LimiterAttack[7] = 9;
    row.OutputSource[5] = 10;
    row.LockFlag = 11;
    row.PresetUsed[8] = 12;
    row.MasterGain = 13;
    row.DevicePassword[5] = 14;
    std::array<double, 289> entries{};
    std::memcpy(entries.data(), static_cast<const void*>(&row), sizeof entries);
    const std::vector<std::size_t> numbers{43, 44, 131, 161, 177, 186, 202, 226, 250, 256, 260, 270, 276, 288};
    double expected = 0;
    for (const std::size_t number : numbers) {
        EXPECT_EQ(entries[number], ++expected) << number;
    }
}

} // namespace
} // namespace nrv::model
