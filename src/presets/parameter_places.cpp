#include "presets/parameter_places.h"

#include "model/tables.h"
#include "ports/numbering.h"

#include <algorithm>
#include <iterator>

namespace nrv::presets {
namespace {

using enum ParameterKind;

std::vector<Parameter> EveryParameter() {
    std::vector<Parameter> all;
    const auto add = [&all](ParameterKind kind, int count) {
        for (int index = 0; index < count; ++index) {
            all.push_back({kind, index});
        }
    };
    add(Mute, ChannelCount);
    add(InputType, 1);
    add(Source, OutputCount);
    for (int channel = 0; channel < ChannelCount; ++channel) {
        for (const ParameterKind kind : {Threshold, Release, Attack}) {
            all.push_back({kind, channel});
        }
    }
    add(Crossover, CrossoverCount);
    add(Peq, PeqCount);
    add(Tone, ToneCount);
    add(Phase, ChannelCount);
    add(Delay, ChannelCount);
    add(DelayUnit, 1);
    add(Gain, ChannelCount);
    add(ChannelName, OutputCount);
    add(MasterGain, 1);
    return all;
}

/// Whole bytes of the preset, the first one and how far the others stand from it.
ImagePlaces Bytes(std::size_t first, std::initializer_list<std::size_t> others) {
    ImagePlaces places;
    for (const std::size_t other : others) {
        places.Add({first + other, 0xFF});
    }
    return places;
}

ImagePlaces SystemBits(std::size_t address, std::uint8_t bits) {
    ImagePlaces places;
    places.Add({offsetof(model::PresetImageRow, SystemPage) + address, bits});
    return places;
}

} // namespace

const std::vector<Parameter>& Parameters() {
    static const std::vector<Parameter> parameters = EveryParameter();
    return parameters;
}

ImagePlaces PlacesOf(Parameter parameter) {
    const std::size_t i = At(parameter.Index);
    switch (parameter.Kind) {
    case Mute:
        return SystemBits(model::MuteBitsAddress, static_cast<std::uint8_t>(1U << i));
    case InputType:
        return SystemBits(model::OptionBitsAddress, model::InputTypeBit);
    case DelayUnit:
        return SystemBits(model::OptionBitsAddress, model::DelayUnitBit);
    case Source:
        return Bytes(model::SourceOffsets[i], {0});
    case Threshold:
        return Bytes(model::LimiterOffsets[i], {3});
    case Release:
        return Bytes(model::LimiterOffsets[i], {1});
    case Attack:
        return Bytes(model::LimiterOffsets[i], {0});
    case Crossover:
        return Bytes(model::CrossoverOffsets[i], {1, 2});
    case Peq: // of its five bytes the first and the fourth mean nothing, as of a tone filter's
        return Bytes(model::PeqOffsets[i], {1, 2, 4});
    case Tone:
        return Bytes(model::ToneOffsets[i], {1, 2, 4});
    case Phase:
        return Bytes(model::PhaseOffsets[i], {0});
    case Delay:
        return Bytes(model::DelayOffsets[i], {0, 1, 2});
    case Gain:
        return Bytes(model::GainOffsets[i], {1});
    case ChannelName:
        return Bytes(model::NameOffsets[ChannelOfOutput(i)], {0, 1, 2, 3, 4, 5});
    case MasterGain:
        return Bytes(model::MasterGainCode, {0});
    }
    return {};
}

bool Differs(Parameter parameter, const model::PresetImageRow& one, const model::PresetImageRow& other) {
    const ImagePlaces places = PlacesOf(parameter);
    return std::ranges::any_of(places, [&](const ImageBits& place) {
        return ((BytesOf(one)[place.Byte] ^ BytesOf(other)[place.Byte]) & place.Bits) != 0;
    });
}

std::vector<Parameter> Differing(const model::PresetImageRow& one, const model::PresetImageRow& other) {
    std::vector<Parameter> parameters;
    if (std::ranges::equal(BytesOf(one), BytesOf(other))) {
        return parameters; // as after most events
    }
    std::ranges::copy_if(Parameters(), std::back_inserter(parameters),
                         [&](Parameter parameter) { return Differs(parameter, one, other); });
    return parameters;
}

} // namespace nrv::presets
