#pragma once

#include "model/command_context.h"
#include "response/response.h"

namespace nrv::presets {

// A copy sets the destination's controls from the source's and runs the commands that a user's changes would run, so
// every parameter reaches values, image, graph and device by the usual road. Where `ControlEventsOff` is not set a
// control's own event may run beside the command. Names and view boxes are not copied.

/// Between the inputs: 0 In A, 1 In B.
void CopyInput(const model::CommandContext& context, response::Response& response, int source, int destination);

/// Between outputs, 0 to 5.
void CopyOutput(const model::CommandContext& context, response::Response& response, int source, int destination);

} // namespace nrv::presets
