#pragma once

#include "ports/channels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace nrv::model {

/// One device's row of `PresetImage`: every byte a code as it goes on the wire, into device memory and into files.
/// The layout is a wire and file format: nothing may be moved.
struct PresetImageRow {
    /// The preset; bytes 0 to 431 are what the device stores, byte 432 never leaves the PC.
    std::array<std::uint8_t, 433> PresetBody{};
    /// Mirror of device memory addresses 0 to 256.
    std::array<std::uint8_t, 257> SystemPage{};
    /// State of the window that the device never holds.
    std::array<std::uint8_t, 81> ViewState{};
};

static_assert(sizeof(PresetImageRow) == 771);
static_assert(offsetof(PresetImageRow, SystemPage) == 433);
static_assert(offsetof(PresetImageRow, ViewState) == 690);
static_assert(std::is_trivially_copyable_v<PresetImageRow>);
static_assert(std::is_standard_layout_v<PresetImageRow>);

inline constexpr std::size_t ImageSize = sizeof(PresetImageRow);

/// An image byte by byte, as it stands in a file.
inline std::span<std::uint8_t, ImageSize> BytesOf(PresetImageRow& image) {
    return std::span<std::uint8_t, ImageSize>(reinterpret_cast<std::uint8_t*>(&image), ImageSize);
}
inline std::span<const std::uint8_t, ImageSize> BytesOf(const PresetImageRow& image) {
    return std::span<const std::uint8_t, ImageSize>(reinterpret_cast<const std::uint8_t*>(&image), ImageSize);
}

/// How many bytes of `PresetBody` the device stores and returns.
inline constexpr std::size_t PresetBodyOnDevice = 432;

/// The bytes of an image that the device stores and returns.
inline std::span<std::uint8_t, PresetBodyOnDevice> OnDevice(PresetImageRow& image) {
    return std::span(image.PresetBody).first<PresetBodyOnDevice>();
}

// Bytes of `PresetBody` with a second meaning, both in a name of an input.

/// The preset's own copy of the mute bits: the sixth name byte of In A.
inline constexpr std::size_t MuteBitsCopy = 71;
/// The master gain code: the sixth name byte of In B.
inline constexpr std::size_t MasterGainCode = 143;

// Indices of `SystemPage`, which are addresses of device memory.

inline constexpr std::size_t OptionBitsAddress = 16;
/// Bit c is the mute of channel c.
inline constexpr std::size_t MuteBitsAddress = 18;
/// Six character codes.
inline constexpr std::size_t PasswordAddress = 26;
/// Sixteen characters.
inline constexpr std::size_t LabelAddress = 32;
/// Used marks of the memory positions, nine bytes.
inline constexpr std::size_t PresetUsedAddress = 48;
/// Names of memory positions 0 to 7, sixteen characters each.
inline constexpr std::size_t PresetNamesAddress = 64;
/// Sixteen characters.
inline constexpr std::size_t CurrentPresetNameAddress = 192;

/// The used mark of a memory position that holds a preset.
inline constexpr std::uint8_t PresetUsedMark = 0x55;

// Values of the bits of the option byte; bits 0 and 1 have no meaning.

inline constexpr std::uint8_t MuteWithPresetBit = 4;
inline constexpr std::uint8_t OptionBit3Bit = 8;
inline constexpr std::uint8_t InputTypeBit = 16;
inline constexpr std::uint8_t OptionBit5Bit = 32;
inline constexpr std::uint8_t DelayUnitBit = 64;
inline constexpr std::uint8_t LockFlagBit = 128;

/// Whether an image has one of them set.
inline bool HasOption(const PresetImageRow& image, std::uint8_t bit) {
    return (image.SystemPage[OptionBitsAddress] & bit) != 0;
}

// Indices of `ViewState`.

/// View box of row r (0 to 4) on the tab of output x: start + 6r + x.
inline constexpr std::size_t ViewBoxStart = 0;
inline constexpr std::size_t ViewBoxRows = ViewsPerOutput;
inline constexpr std::size_t ViewBoxesInRow = OutputCount;
/// "Show cursor" box of each channel.
inline constexpr std::size_t ShowCursorStart = 30;
/// Sum button of each output: 0 alone, 1 with In A, 2 with In B.
inline constexpr std::size_t SumButtonStart = 40;

} // namespace nrv::model
