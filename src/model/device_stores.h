#pragma once

#include "model/param_values.h"
#include "model/preset_image.h"
#include "ports/numbering.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>

namespace nrv::model {

inline constexpr std::size_t DeviceIdCount = DeviceCount;

/// What the program holds of every device, by device ID, for the whole run. Around 120 kB: keep it off the stack.
struct DeviceStores {
    /// Decoded values.
    std::array<ParamRow, DeviceIdCount> ParamValues{};
    /// Codes.
    std::array<PresetImageRow, DeviceIdCount> PresetImage{};
    /// The last input type that any window chose or that any device reported; one for all devices.
    double LastInputType = 0.0;
    /// Names of the eight channels.
    std::array<std::array<std::string, 8>, DeviceIdCount> ChannelNames{};
};

/// The option byte as the sum of its six entries, bits 0 and 1 being lost.
/// Throws `RuntimeError` of kind Overflow when the sum is no byte.
std::uint8_t RebuildOptionBits(const ParamRow& row);

/// Sets `MuteWithPreset`, `OptionBit3`, `InputType`, `OptionBit5` and `DelayUnit`, each as 0 or 1. `LockFlag` stays: an
/// image that is applied neither locks nor unlocks.
void DecodeOptionBits(std::uint8_t option_bits, ParamRow& row);

/// Sets `LockFlag` from bit 7 of the same byte.
void DecodeLockFlag(std::uint8_t option_bits, ParamRow& row);

/// Sets `ChannelMute` of channel c from bit c.
void DecodeMuteBits(std::uint8_t mute_bits, ParamRow& row);

/// The mutes of the eight channels as a byte, bit c channel c.
/// Throws `RuntimeError` of kind Overflow when the sum is no byte.
std::uint8_t SumOfMutes(const ParamRow& row);

/// Writes the mute bits to both of their places, which always change together.
void StoreMuteBits(std::uint8_t mute_bits, PresetImageRow& image);

// Numbering. Arguments lie in the range told; the result has the argument's type.

/// Channel of PEQ section 0 to 43.
template <std::integral I>
constexpr I ChannelOfPeq(I section) {
    return static_cast<I>(section < 20 ? section / 10 : 2 + (section - 20) / 4);
}

/// Number of PEQ section 0 to 43 within its channel.
template <std::integral I>
constexpr I PeqInChannel(I section) {
    return static_cast<I>(section < 20 ? section % 10 : (section - 20) % 4);
}

/// First PEQ section of channel 0 to 7.
template <std::integral I>
constexpr I FirstPeqOf(I channel) {
    return static_cast<I>(channel < 2 ? 10 * channel : 20 + 4 * (channel - 2));
}

/// Number of PEQ sections of channel 0 to 7.
template <std::integral I>
constexpr I PeqCountOf(I channel) {
    return static_cast<I>(channel < 2 ? 10 : 4);
}

/// Channel of tone filter 0 to 9.
template <std::integral I>
constexpr I ChannelOfTone(I filter) {
    return static_cast<I>(filter < 4 ? filter / 2 : filter - 2);
}

/// Number of tone filter 0 to 9 within its channel.
template <std::integral I>
constexpr I ToneInChannel(I filter) {
    return static_cast<I>(filter < 4 ? filter % 2 : 0);
}

/// Channel of crossover side 0 to 11.
template <std::integral I>
constexpr I ChannelOfCrossover(I side) {
    return static_cast<I>(side / 2 + 2);
}

/// Crossover side 0 to 11 within its output: 0 high-pass, 1 low-pass.
template <std::integral I>
constexpr I CrossoverInChannel(I side) {
    return static_cast<I>(side % 2);
}

/// Channel of output 0 to 5.
template <std::integral I>
constexpr I ChannelOfOutput(I output) {
    return static_cast<I>(output + 2);
}

/// Channel of control index 0 to 15, the controls of gain, mute, phase and delay being there twice.
template <std::integral I>
constexpr I ChannelOfControl(I index) {
    return static_cast<I>(index < 8 ? index : index - 8);
}

/// The other control index of the same channel.
template <std::integral I>
constexpr I TwinOfControl(I index) {
    return static_cast<I>(index < 8 ? index + 8 : index - 8);
}

} // namespace nrv::model
