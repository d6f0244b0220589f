#pragma once

#include "controls/text_box.h"
#include "model/command_context.h"

#include <string>

namespace nrv::model {

// What becomes of a change that is not to count. Each puts the controls of a filter back to the codes that its device
// has, and runs none of their events; what stands in the frequency box stays.

/// PEQ section 0 to 43: gain and bandwidth, with their texts.
void PutBackPeq(const CommandContext& context, int section);
/// Tone filter 0 to 9: gain and type.
void PutBackTone(const CommandContext& context, int filter);
/// Crossover side 0 to 11: its slope.
void PutBackCrossover(const CommandContext& context, int side);

/// Frequency and gain of a section as its device has them, from the codes: texts, values and point, nothing sent.
void PutBackPoint(const CommandContext& context, int section);

/// What a box takes, in words: "frequency", "20 to 20000".
struct TakenText {
    std::string What;
    std::string Range;
};
inline const TakenText Frequencies{"frequency", "20 to 20000"};

/// Gives a box the keyboard and throws a RuntimeError that says where it is, what stands in it and what it takes.
/// `part` is what of the channel it belongs to, such as "PEQ 3".
[[noreturn]] void RefuseText(controls::TextBox& box, int channel, const std::string& part, const TakenText& taken);

} // namespace nrv::model
