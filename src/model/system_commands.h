#pragma once

#include "model/command_context.h"

namespace nrv::model {

/// Phase of a channel from either copy of its box, control index 0 to 15; one frame. A reported link failure leaves the
/// twin behind.
void SetPhase(const CommandContext& context, int index);

/// What the sockets of the diagram are, as their tool tips: their captions stand crosswise at first.
void TellSockets(controls::FrmCtrl& form, bool digital);

/// Analog or digital input, from its list; one frame. The option bit changes in the image alone.
void SetInputType(const CommandContext& context);

} // namespace nrv::model
