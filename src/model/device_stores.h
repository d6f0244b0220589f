#pragma once

#include "model/param_values.h"
#include "model/preset_image.h"
#include "ports/numbering.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace nrv::model {

/// What the program holds of every device, by device ID, for the whole run. Around 120 kB: keep it off the stack.
struct DeviceStores {
    /// Decoded values.
    std::array<ParamRow, DeviceCount> ParamValues{};
    /// Codes.
    std::array<PresetImageRow, DeviceCount> PresetImage{};
    /// The last input type that any window chose or that any device reported; one for all devices.
    double LastInputType = 0.0;
    /// Names of the eight channels.
    std::array<std::array<std::string, ChannelCount>, DeviceCount> ChannelNames{};
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

} // namespace nrv::model
