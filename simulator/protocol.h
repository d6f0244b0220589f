#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The line's protocol as the devices understand it: frames, command codes and the map of device memory.
namespace nrv::simulator {

using Byte = std::uint8_t;

inline constexpr int HighestId = 32;
inline constexpr int ChannelCount = 8; ///< 0 In A, 1 In B, 2 to 7 Out 1 to Out 6
inline constexpr int InputCount = 2;
inline constexpr int PositionCount = 9; ///< memory positions 0 to 8; the remote control offers the first eight

inline constexpr std::size_t FrameSize = 13;
inline constexpr std::size_t PresetSize = 432;

inline constexpr Byte Head0 = 0xF0;
inline constexpr Byte Head1 = 0xC3;
inline constexpr Byte Tail = 0xF7;
inline constexpr Byte PresenceMark = 0xC3; ///< byte 4 of the answer to "are you there"

/// A request: F0 C3, the device ID, P1 to P9, F7.
using Frame = std::array<Byte, FrameSize>;
/// An answer of 13 bytes, or the 432 bytes of a preset.
using Reply = std::vector<Byte>;
using PresetBody = std::array<Byte, PresetSize>;
using Levels = std::array<Byte, ChannelCount>;

/// Payload byte `n`, 1 to 9, of a request.
constexpr Byte P(const Frame& frame, std::size_t n) {
    return frame[n + 2];
}

/// What P1 asks for. Zero with eight more zeros behind it asks whether the device is there.
enum class Command : Byte {
    Presence = 0x00,
    Gain = 0x01,
    Delay = 0x02,
    Phase = 0x03,
    Crossover = 0x04,
    Peq = 0x05,
    Tone = 0x06,
    Limiter = 0x07,
    Source = 0x08,
    Mute = 0x09,
    BulkUpdate = 0x0A,
    PresetRead = 0x0B,
    MasterGain = 0x0C,
    InputType = 0x0D,
    ChannelName = 0x0E,
    Unconnect = 0x0F,
    MemoryRead = 0x10,
    MemoryWrite = 0x11,
    LevelPoll = 0x12,
    ExitNotice = 0x8F,
};

inline constexpr Byte LivePreset = 0xFF; ///< P2 of PresetRead: the settings that are live, not a memory position

/// Device memory, by address.
inline constexpr std::size_t OptionBitsAddress = 16;
inline constexpr std::size_t MuteBitsAddress = 18;
inline constexpr std::size_t PasswordAddress = 26;
inline constexpr std::size_t PasswordSize = 6;
inline constexpr std::size_t LabelAddress = 32;
inline constexpr std::size_t UsedMarksAddress = 48;
inline constexpr std::size_t PresetNamesAddress = 64;
inline constexpr std::size_t ActiveNameAddress = 192;
inline constexpr std::size_t NameSize = 16; ///< label, preset names and the active preset's name alike
inline constexpr std::size_t PresetsAddress = 640;
inline constexpr std::size_t MemorySize = PresetsAddress + PresetSize * PositionCount;

inline constexpr Byte UsedMark = 0x55;
inline constexpr Byte InputTypeBit = 0x10; ///< of the option bits
inline constexpr Byte LockBit = 0x80;      ///< of the option bits

/// Bytes of the preset that have a second meaning beside the names of the inputs.
inline constexpr std::size_t PresetMutesOffset = 71;
inline constexpr std::size_t MasterGainOffset = 143;

} // namespace nrv::simulator
