#pragma once

#include "ports/channels.h"

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>

namespace nrv::model {

/// One device's row of `ParamValues`: what its window and the response calculation work with.
/// The numeric members are entries 0 to 288 in their numbering. The texts stand behind them, and the room that the
/// numbering keeps for the texts is left empty, so that every number holds.
struct ParamRow {
    /// dB of each PEQ section, -15 to 15.
    std::array<double, PeqCount> PeqGain{};
    /// Hz.
    std::array<double, PeqCount> PeqFrequency{};
    /// Octaves, 0.05 to 3.
    std::array<double, PeqCount> PeqBandwidth{};
    /// dB of each tone filter, -12 to 6.
    std::array<double, ToneCount> ToneGain{};
    /// Hz.
    std::array<double, ToneCount> ToneFrequency{};
    /// List position: 0 to 2 on inputs, 0 to 4 on outputs.
    std::array<double, ToneCount> ToneType{};
    /// dB of each channel, -12 to 12.
    std::array<double, ChannelCount> ChannelGain{};
    /// 1 muted, 0 sounding.
    std::array<double, ChannelCount> ChannelMute{};
    /// 1 inverted, 0 normal.
    std::array<double, ChannelCount> ChannelPhase{};
    /// 0 time, 1 distance.
    double DelayUnit = 0.0;
    /// Whole milliseconds of each channel, 0 to 2500.
    std::array<double, ChannelCount> DelayCoarse{};
    /// Steps of 0.021 ms, 0 to 47.
    std::array<double, ChannelCount> DelayFine{};
    /// Hz of each crossover side.
    std::array<double, CrossoverCount> CrossoverFrequency{};
    /// Slope code, 0 to 10.
    std::array<double, CrossoverCount> CrossoverSlope{};
    /// Code, not dBu: 0 to 10 on inputs, 0 to 60 on outputs.
    std::array<double, ChannelCount> LimiterThreshold{};
    /// Code, 0 to 18.
    std::array<double, ChannelCount> LimiterRelease{};
    /// Code, 0 to 29.
    std::array<double, ChannelCount> LimiterAttack{};
    /// List position of each output: 0 In A, 1 In B, 2 both.
    std::array<double, OutputCount> OutputSource{};
    /// Bit 2 of the option bits, 0 or 1, as the bits below.
    double MuteWithPreset = 0.0;
    double OptionBit3 = 0.0;
    /// 0 analog, 1 digital.
    double InputType = 0.0;
    /// 1 locked.
    double LockFlag = 0.0;
    double OptionBit5 = 0.0;
    /// 85 where the memory position holds a preset; positions 0 to 7 are in use.
    std::array<double, 9> PresetUsed{};
    /// Entries 271 to 275: the texts' room in the numbering.
    std::array<double, 5> RoomOfTexts{};
    /// dB, -12 to 12.
    double MasterGain = 0.0;
    /// Entries 277 to 282.
    std::array<double, 6> NeverUsed{};
    /// Character codes of the password.
    std::array<double, PasswordLength> DevicePassword{};

    /// Names of the memory positions; position 8 is not used.
    std::array<std::string, 9> PresetNames{};
    /// Name of the preset last active in the device.
    std::string CurrentPresetName{};
};

static_assert(std::is_standard_layout_v<ParamRow>);
static_assert(offsetof(ParamRow, PeqGain) / sizeof(double) == 0);
static_assert(offsetof(ParamRow, PeqFrequency) / sizeof(double) == 44);
static_assert(offsetof(ParamRow, PeqBandwidth) / sizeof(double) == 88);
static_assert(offsetof(ParamRow, ToneGain) / sizeof(double) == 132);
static_assert(offsetof(ParamRow, ToneFrequency) / sizeof(double) == 142);
static_assert(offsetof(ParamRow, ToneType) / sizeof(double) == 152);
static_assert(offsetof(ParamRow, ChannelGain) / sizeof(double) == 162);
static_assert(offsetof(ParamRow, ChannelMute) / sizeof(double) == 170);
static_assert(offsetof(ParamRow, ChannelPhase) / sizeof(double) == 178);
static_assert(offsetof(ParamRow, DelayUnit) / sizeof(double) == 186);
static_assert(offsetof(ParamRow, DelayCoarse) / sizeof(double) == 187);
static_assert(offsetof(ParamRow, DelayFine) / sizeof(double) == 195);
static_assert(offsetof(ParamRow, CrossoverFrequency) / sizeof(double) == 203);
static_assert(offsetof(ParamRow, CrossoverSlope) / sizeof(double) == 215);
static_assert(offsetof(ParamRow, LimiterThreshold) / sizeof(double) == 227);
static_assert(offsetof(ParamRow, LimiterRelease) / sizeof(double) == 235);
static_assert(offsetof(ParamRow, LimiterAttack) / sizeof(double) == 243);
static_assert(offsetof(ParamRow, OutputSource) / sizeof(double) == 251);
static_assert(offsetof(ParamRow, MuteWithPreset) / sizeof(double) == 257);
static_assert(offsetof(ParamRow, OptionBit3) / sizeof(double) == 258);
static_assert(offsetof(ParamRow, InputType) / sizeof(double) == 259);
static_assert(offsetof(ParamRow, LockFlag) / sizeof(double) == 260);
static_assert(offsetof(ParamRow, OptionBit5) / sizeof(double) == 261);
static_assert(offsetof(ParamRow, PresetUsed) / sizeof(double) == 262);
static_assert(offsetof(ParamRow, RoomOfTexts) / sizeof(double) == 271);
static_assert(offsetof(ParamRow, MasterGain) / sizeof(double) == 276);
static_assert(offsetof(ParamRow, DevicePassword) / sizeof(double) == 283);
static_assert(offsetof(ParamRow, PresetNames) / sizeof(double) == 289);

} // namespace nrv::model
