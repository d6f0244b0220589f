#pragma once

#include "model/command_context.h"

namespace nrv::model {

// The commands of what every channel has. An index is a control's, 0 to 15: either copy of a channel's controls, the
// other being brought into line.

/// Gain of a channel from its fader: text, twin, stores, tool tip of the block diagram, one frame.
void SetGain(const CommandContext& context, int index);

/// Master gain from its fader; one frame.
void SetMasterGain(const CommandContext& context);

/// Mute of a channel from its box: the mute frame and the write of the mute bits to the device's memory. A reported
/// link failure ends it where it stands.
void SetMute(const CommandContext& context, int index);

} // namespace nrv::model
