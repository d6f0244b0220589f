#include "model/preset_image.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace nrv::model {
namespace {

std::array<std::uint8_t, 771> RawBytes(const PresetImageRow& image) {
    std::array<std::uint8_t, 771> raw{};
    std::memcpy(raw.data(), &image, raw.size());
    return raw;
}

TEST(PresetImageRow, StartsWithZeroes) {
    EXPECT_EQ(RawBytes(PresetImageRow{}), (std::array<std::uint8_t, 771>{}));
}

TEST(PresetImageRow, LaysItsThreeArraysOneBehindTheOther) {
    PresetImageRow image;
    image.PresetBody.fill(1);
    image.SystemPage.fill(2);
    image.ViewState.fill(3);
    const auto raw = RawBytes(image);
    for (std::size_t i = 0; i < raw.size(); ++i) {
        EXPECT_EQ(raw[i], i < 433 ? 1 : i < 690 ? 2 : 3) << i;
    }
}

TEST(PresetImageRow, HasItsFieldsAtTheirRawPositions) {
    PresetImageRow image;
    image.PresetBody[MuteBitsCopy] = 1;
    image.PresetBody[MasterGainCode] = 2;
    image.SystemPage[OptionBitsAddress] = 3;
    image.SystemPage[MuteBitsAddress] = 4;
    image.SystemPage[PasswordAddress] = 5;
    image.SystemPage[LabelAddress] = 6;
    image.SystemPage[PresetUsedAddress] = 7;
    image.SystemPage[PresetNamesAddress] = 8;
    image.SystemPage[CurrentPresetNameAddress] = 9;
    image.ViewState[ViewBoxStart + ViewBoxesInRow * (ViewBoxRows - 1) + 5] = 10;
    image.ViewState[ShowCursorStart] = 11;
    image.ViewState[SumButtonStart] = 12;
    const auto raw = RawBytes(image);
    const std::array<std::size_t, 12> positions{71, 143, 449, 451, 459, 465, 481, 497, 625, 719, 720, 730};
    for (std::size_t i = 0; i < positions.size(); ++i) {
        EXPECT_EQ(raw[positions[i]], i + 1) << positions[i];
    }
}

} // namespace
} // namespace nrv::model
