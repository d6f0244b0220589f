#pragma once

#include "model/command_context.h"

namespace nrv::model {

// The setters of the equaliser: each reads its filter's controls, brings their texts to canonical form, stores values
// and codes, and sends one frame. Throws RuntimeError of kind TypeMismatch when a frequency text is no number; nothing
// of the filter is stored then.

/// PEQ section 0 to 43; moves its marker too.
void SetPeq(const CommandContext& context, int section);

/// Tone filter 0 to 9.
void SetTone(const CommandContext& context, int filter);

} // namespace nrv::model
