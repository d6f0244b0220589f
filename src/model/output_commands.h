#pragma once

#include "model/command_context.h"

namespace nrv::model {

// The setters of what an output has and an input lacks, or has in another form. No result of a frame is looked at.

/// Crossover side 0 to 11; one frame. Throws RuntimeError of kind TypeMismatch when the frequency text is no number.
void SetCrossover(const CommandContext& context, int side);

/// The tool tip of an output's "X-over" block, from both of its sides.
void ShowCrossoverHint(const CommandContext& context, int side);

// Limiter of an output, noise gate of an input, by channel 0 to 7; each sends one frame with all three codes.
void SetThreshold(const CommandContext& context, int channel);
void SetRelease(const CommandContext& context, int channel);
void SetAttack(const CommandContext& context, int channel);

/// Source of output 0 to 5, with the routing on the block diagrams; one frame.
void SetSource(const CommandContext& context, int output);

} // namespace nrv::model
