#pragma once

#include "model/command_context.h"
#include "presets/parameter_places.h"
#include "response/response.h"

#include <cstddef>
#include <string>

namespace nrv::presets {

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
