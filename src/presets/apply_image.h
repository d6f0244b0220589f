#pragma once

#include "model/command_context.h"

namespace nrv::presets {

/// Brings the image of the current window's device to life: sets each control and runs the command that a user's change
/// of it would run, so that `ParamValues` and, unless frames are suppressed, the device follow.
void ApplyImage(const model::CommandContext& context);

} // namespace nrv::presets
