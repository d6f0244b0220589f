#pragma once

#include "model/command_context.h"

namespace nrv::response {
class Response;
}

namespace nrv::model {

// The setters of the equaliser: each reads its filter's controls, brings their texts to canonical form, stores values
// and codes, and sends one frame. Throws RuntimeError of kind TypeMismatch when a frequency text is no number; nothing
// of the filter is stored then.

/// PEQ section 0 to 43; moves its marker too.
void SetPeq(const CommandContext& context, int section);

/// Tone filter 0 to 9.
void SetTone(const CommandContext& context, int filter);

/// Every PEQ section of a channel, 0 to 7, to 0 dB at its stored frequency and bandwidth: one frame for each section.
void FlatEqualiser(const CommandContext& context, response::Response& response, int channel);

} // namespace nrv::model
