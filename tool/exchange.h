#pragma once

#include "model/preset_image.h"
#include "tool/filter_text.h"
#include "tool/trouble.h"

#include <iosfwd>
#include <string>

namespace nrv::tool {

struct Import {
    FilterFormat Format = FilterFormat::Rew;
    std::string Text; ///< the file
    int Channel = 0;
    bool WithFit = false;
};

/// Puts the filters of a text into a channel, and tells of each what it was and what it became. Differs when one of
/// them has no place; throws Trouble when none has.
Outcome ImportFilters(const Import& import, model::PresetImageRow& image, std::ostream& out, std::ostream& errors);

/// Writes the filters of a channel as a text that the import reads. Differs when one has no words there.
Outcome ExportFilters(FilterFormat format, int channel, const model::PresetImageRow& image, std::ostream& out,
                      std::ostream& errors);

} // namespace nrv::tool
