/// The line's protocol as the devices understand it: frames, command codes and the map of device memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nrv::simulator {

using Byte = std::uint8_t;

inline constexpr int kHighestId = 32;
inline constexpr int kChannels = 8; ///< 0 In A, 1 In B, 2 to 7 Out 1 to Out 6
inline constexpr int kInputs = 2;
inline constexpr int kPositions = 9; ///< memory positions 0 to 8; the remote control offers the first eight

inline constexpr std::size_t kFrameSize = 13;
inline constexpr std::size_t kPresetSize = 432;

inline constexpr Byte kHead0 = 0xF0;
inline constexpr Byte kHead1 = 0xC3;
inline constexpr Byte kTail = 0xF7;
inline constexpr Byte kPresenceMark = 0xC3; ///< byte 4 of the answer to "are you there"

/// A request: F0 C3, the device ID, P1 to P9, F7.
using Frame = std::array<Byte, kFrameSize>;
/// An answer of 13 bytes, or the 432 bytes of a preset.
using Reply = std::vector<Byte>;
using PresetBody = std::array<Byte, kPresetSize>;
using Levels = std::array<Byte, kChannels>;

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

inline constexpr Byte kLiveImage = 0xFF; ///< P2 of PresetRead: the settings that are live, not a memory position

/// Device memory, by address.
inline constexpr std::size_t kOptionBitsAt = 16;
inline constexpr std::size_t kMuteBitsAt = 18;
inline constexpr std::size_t kPasswordAt = 26;
inline constexpr std::size_t kPasswordSize = 6;
inline constexpr std::size_t kLabelAt = 32;
inline constexpr std::size_t kUsedMarksAt = 48;
inline constexpr std::size_t kNamesAt = 64;
inline constexpr std::size_t kActiveNameAt = 192;
inline constexpr std::size_t kNameSize = 16; ///< label, preset names and the active preset's name alike
inline constexpr std::size_t kPresetsAt = 640;
inline constexpr std::size_t kMemorySize = kPresetsAt + kPresetSize * kPositions;

inline constexpr Byte kUsedMark = 0x55;
inline constexpr Byte kInputTypeBit = 0x10; ///< of the option bits
inline constexpr Byte kLockBit = 0x80;      ///< of the option bits

/// Bytes of the preset that have a second meaning beside the names of the inputs.
inline constexpr std::size_t kPresetMutesAt = 71;
inline constexpr std::size_t kMasterGainAt = 143;

} // namespace nrv::simulator
