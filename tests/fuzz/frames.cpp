#include "fuzz/frames.h"

#include "model/encodings.h"
#include "model/tables.h"

#include <algorithm>

namespace nrv::fuzz {
namespace {

using link::Command;
using testing::Frame;

// Bytes of a frame.
constexpr std::size_t P1 = 3;
constexpr std::size_t P2 = 4;
constexpr std::size_t P3 = 5;
constexpr std::size_t P4 = 6;
constexpr std::size_t P6 = 8;
constexpr std::size_t P7 = 9;
constexpr std::size_t P8 = 10;
constexpr std::size_t P9 = 11;

constexpr int ChannelsAlone = 1;
constexpr int SlopeTop = 10;
constexpr int SourceTop = 2;
constexpr std::size_t StoredPresets = 640;

/// What a frame of a parameter is about.
struct Place {
    bool Exists = false;
    std::size_t Start = 0; ///< of its bytes in the preset
};

Place PeqPlace(std::size_t channel, std::size_t section) {
    const bool exists = channel < ChannelCount && section < PeqCountOf(channel);
    return {exists, exists ? model::PeqOffsets[FirstPeqOf(channel) + section] : 0};
}

Place TonePlace(std::size_t channel, std::size_t filter) {
    const bool exists = channel < ChannelCount && filter < ToneCountOf(channel);
    return {exists, exists ? model::ToneOffsets[FirstToneOf(channel) + filter] : 0};
}

Place SidePlace(std::size_t channel, std::size_t side) {
    const bool exists = channel >= InputCount && channel < ChannelCount && side < SidesPerOutput;
    return {exists, exists ? model::CrossoverOffsets[FirstSideOf(OutputOf(channel)) + side] : 0};
}

template <std::size_t N>
Place ChannelPlace(const std::array<std::uint32_t, N>& offsets, std::size_t channel, std::size_t section) {
    const bool exists = channel < ChannelCount && section == 0;
    return {exists, exists ? offsets[channel] : 0};
}

Place SourcePlace(std::size_t channel) {
    const bool exists = channel >= InputCount && channel < ChannelCount;
    return {exists, exists ? model::SourceOffsets[OutputOf(channel)] : 0};
}

bool AllZero(const Frame& frame, std::size_t first, std::size_t last) {
    return std::all_of(frame.begin() + static_cast<std::ptrdiff_t>(first),
                       frame.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                       [](std::uint8_t byte) { return byte == 0; });
}

std::string Parameter(const Frame& frame, const Place& place, const std::vector<std::pair<std::size_t, int>>& bytes,
                      const model::PresetImageRow& image) {
    if (!place.Exists) {
        return "it is about nothing that there is";
    }
    std::array<bool, P9 + 1> carries{};
    for (const auto& [byte, offset] : bytes) {
        carries[byte] = true;
        if (frame[byte] != image.PresetBody[place.Start + static_cast<std::size_t>(offset)]) {
            return "byte " + std::to_string(byte) + " is not what the image holds";
        }
    }
    for (std::size_t byte = P4; byte <= P9; ++byte) {
        if (!carries[byte] && frame[byte] != 0) {
            return "byte " + std::to_string(byte) + " carries something";
        }
    }
    return {};
}

std::string Small(const Frame& frame, int top) {
    if (!AllZero(frame, P2, P8)) {
        return "a byte carries something";
    }
    return frame[P9] > top ? "the value is too large" : "";
}

std::string MemoryAccess(const Frame& frame, std::size_t end, bool writes) {
    const std::size_t address = std::size_t{256} * frame[P2] + frame[P3];
    if (address >= end) {
        return "there is no such address";
    }
    const bool only_value = AllZero(frame, P4, P6 - 1) && AllZero(frame, P7, P9) && (writes || frame[P6] == 0);
    return only_value ? "" : "a byte carries something";
}

} // namespace

std::string FaultOf(const Frame& frame, const model::PresetImageRow& image) {
    const std::size_t channel = frame[P2];
    const std::size_t section = frame[P3];
    switch (frame[P1]) {
    case 0:
        return AllZero(frame, P1, P9) ? "" : "a probe carries something";
    case Command::GainCommand:
        return Parameter(frame, ChannelPlace(model::GainOffsets, channel, section), {{P9, 1}}, image);
    case Command::DelayCommand:
        return Parameter(frame, channel < ChannelCount ? Place{section == 0, model::DelayOffsets[channel]} : Place{},
                         {{P7, 0}, {P8, 1}, {P9, 2}}, image);
    case Command::PhaseCommand:
        return Parameter(frame, ChannelPlace(model::PhaseOffsets, channel, section), {{P9, 0}}, image);
    case Command::CrossoverCommand:
        return Parameter(frame, SidePlace(channel, section), {{P8, 1}, {P9, 2}}, image);
    case Command::PeqCommand:
        return Parameter(frame, PeqPlace(channel, section), {{P6, 1}, {P7, 2}, {P9, 4}}, image);
    case Command::ToneCommand:
        return Parameter(frame, TonePlace(channel, section), {{P6, 1}, {P7, 2}, {P9, 4}}, image);
    case Command::LimiterCommand:
        return Parameter(frame, ChannelPlace(model::LimiterOffsets, channel, section), {{P6, 0}, {P7, 1}, {P9, 3}},
                         image);
    case Command::SourceCommand:
        return Parameter(frame, section == 0 ? SourcePlace(channel) : Place{}, {{P9, 0}}, image);
    case Command::MuteCommand:
        return channel < ChannelCount && AllZero(frame, P3, P8) && frame[P9] <= 1 ? "" : "it is no mute";
    case Command::BulkUpdateCommand:
        return channel <= ChannelsAlone && AllZero(frame, P3, P9) ? "" : "it is no bulk update";
    case Command::PresetReadCommand:
        return (channel < MemoryPositions || channel == link::LivePreset) && AllZero(frame, P3, P9)
                   ? ""
                   : "it is no read of a preset";
    case Command::MasterGainCommand:
        return AllZero(frame, P2, P3) ? Parameter(frame, {true, model::MasterGainCode}, {{P9, 0}}, image)
                                      : "a byte carries something";
    case Command::InputTypeCommand:
        return Small(frame, 1);
    case Command::ChannelNameSetCommand:
        return channel >= InputCount ? Parameter(frame, ChannelPlace(model::NameOffsets, channel, section),
                                                 {{P4, 0}, {P4 + 1, 1}, {P6, 2}, {P7, 3}, {P8, 4}, {P9, 5}}, image)
                                     : "an input's name";
    case Command::UnconnectCommand:
    case Command::LevelPollCommand:
    case Command::ExitNoticeCommand:
        return AllZero(frame, P2, P9) ? "" : "a byte carries something";
    case Command::MemoryReadCommand:
        return MemoryAccess(frame, model::CurrentPresetNameAddress + MemoryNameLength, false);
    case Command::MemoryWriteCommand:
        return MemoryAccess(frame, StoredPresets + std::size_t{MemoryPositions} * model::PresetBodyOnDevice, true);
    default:
        return "there is no such command";
    }
}

std::string CodeFaultOf(const Frame& frame) {
    const bool input = frame[P2] < InputCount;
    const auto fit = [&frame](std::initializer_list<std::pair<std::size_t, int>> tops) {
        return std::all_of(tops.begin(), tops.end(), [&](const auto& top) { return frame[top.first] <= top.second; });
    };
    bool fits = true;
    switch (frame[P1]) {
    case Command::GainCommand:
    case Command::MasterGainCommand:
        fits = fit({{P9, model::ChannelGainTop}});
        break;
    case Command::DelayCommand:
        fits = fit({{P9, model::DelayFineTop}}) && 256 * frame[P7] + frame[P8] <= model::DelayCoarseTop;
        break;
    case Command::PhaseCommand:
        fits = fit({{P9, 1}});
        break;
    case Command::CrossoverCommand:
        fits = fit({{P8, model::FrequencyTop}, {P9, SlopeTop}});
        break;
    case Command::PeqCommand:
        fits = fit({{P6, model::FrequencyTop}, {P7, model::BandwidthTop}, {P9, model::PeqGainTop}});
        break;
    case Command::ToneCommand:
        fits = fit({{P6, model::FrequencyTop}, {P7, input ? 2 : 4}, {P9, model::ToneGainTop}});
        break;
    case Command::LimiterCommand:
        fits = fit({{P6, model::AttackTop},
                    {P7, model::ReleaseTop},
                    {P9, input ? model::NoiseGateThresholdTop : model::LimiterThresholdTop}});
        break;
    case Command::SourceCommand:
        fits = fit({{P9, SourceTop}});
        break;
    default:
        break;
    }
    return fits ? "" : "a code is beyond its range";
}

bool CodesFit(const model::PresetImageRow& image) {
    const auto& body = image.PresetBody;
    const auto fit = [&body](std::size_t place, int top) { return body[place] <= top; };
    bool fits = fit(model::MasterGainCode, model::ChannelGainTop);
    for (std::size_t c = 0; c < ChannelCount; ++c) {
        const std::size_t delay = model::DelayOffsets[c];
        const std::size_t limiter = model::LimiterOffsets[c];
        fits = fits && fit(model::GainOffsets[c] + 1, model::ChannelGainTop) && fit(model::PhaseOffsets[c], 1) &&
               256 * body[delay] + body[delay + 1] <= model::DelayCoarseTop && fit(delay + 2, model::DelayFineTop) &&
               fit(limiter, model::AttackTop) && fit(limiter + 1, model::ReleaseTop) &&
               fit(limiter + 3, IsInput(c) ? model::NoiseGateThresholdTop : model::LimiterThresholdTop);
    }
    for (const std::size_t block : model::PeqOffsets) {
        fits = fits && fit(block + 1, model::FrequencyTop) && fit(block + 2, model::BandwidthTop) &&
               fit(block + 4, model::PeqGainTop);
    }
    for (std::size_t h = 0; h < ToneCount; ++h) {
        const std::size_t block = model::ToneOffsets[h];
        fits = fits && fit(block + 1, model::FrequencyTop) && fit(block + 2, IsToneOfInput(h) ? 2 : 4) &&
               fit(block + 4, model::ToneGainTop);
    }
    for (const std::size_t block : model::CrossoverOffsets) {
        fits = fits && fit(block + 1, model::FrequencyTop) && fit(block + 2, SlopeTop);
    }
    return fits &&
           std::ranges::all_of(model::SourceOffsets, [&fit](std::size_t place) { return fit(place, SourceTop); });
}

} // namespace nrv::fuzz
