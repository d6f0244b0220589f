#pragma once

#include "model/command_context.h"
#include "response/response.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace nrv::presets {

/// What a preset is made of, in the order in which a load brings it to life.
enum class ParameterKind {
    Mute,        ///< of each channel
    InputType,   ///< one
    Source,      ///< of each output
    Threshold,   ///< of each channel's noise gate or limiter, as the two that follow
    Release,     //
    Attack,      //
    Crossover,   ///< of each crossover side
    Peq,         ///< each section
    Tone,        ///< each tone filter
    Phase,       ///< of each channel
    Delay,       ///< of each channel; an index from `ChannelCount` on is its second copy of controls
    DelayUnit,   ///< one
    Gain,        ///< of each channel
    ChannelName, ///< of each output
    MasterGain,  ///< one
};

struct Parameter {
    ParameterKind Kind = ParameterKind::Mute;
    int Index = 0;
    friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// Every parameter once, in the order of a load.
const std::vector<Parameter>& Parameters();

/// Bits of one byte of an image.
struct ImageBits {
    std::size_t Byte; ///< of the whole row of `PresetImage`, 0 to 770
    std::uint8_t Bits;
};
/// Where a parameter is kept.
std::vector<ImageBits> PlacesOf(Parameter parameter);
/// Whether two images have it differently.
bool Differs(Parameter parameter, const model::PresetImageRow& one, const model::PresetImageRow& other);

/// Sets its controls in the current window as the image has it and runs none of their events. A mute, which is kept in
/// two places, is taken from `ParamValues`. Throws RuntimeError of kind IndexOutOfRange for a frequency code without an
/// entry. Not for names, which are texts and no codes.
void ShowParameter(const model::CommandContext& context, Parameter parameter);
/// Runs the command that a user's change of it runs, and brings its curve up to date. Not for names either.
void RunParameter(const model::CommandContext& context, response::Response& response, Parameter parameter);

/// A byte of a channel, by its place in the whole image, has no entry; `what` tells its value and where those end.
[[noreturn]] void RefuseByte(int channel, std::size_t place, const std::string& what);

/// How many frames its command sends.
int FramesOf(Parameter parameter);

} // namespace nrv::presets
