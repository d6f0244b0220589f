#pragma once

#include "model/preset_image.h"
#include "presets/parameter_codes.h"
#include "presets/parameter_words.h"

#include <string>
#include <vector>

// The parameters in words and codes, as the lists of a control window that nothing shows name their entries.

namespace nrv::tool {

std::vector<presets::Field> FieldsOf(presets::Parameter parameter, const model::PresetImageRow& image);
std::vector<presets::CodePlace> CodesOf(presets::Parameter parameter);
std::string ChangeInWords(presets::Parameter parameter, const model::PresetImageRow& from,
                          const model::PresetImageRow& to);

} // namespace nrv::tool
