#pragma once

#include "controls/frm_ctrl.h"
#include "model/preset_image.h"
#include "presets/parameter_places.h"

#include <string>
#include <vector>

namespace nrv::presets {

/// Where a parameter is, such as "Out 2, PEQ 3"; empty for the few that are the whole device's.
std::string PlaceOf(Parameter parameter);

/// One of the values that a parameter is made of, in words.
struct Field {
    std::string Name;  ///< such as "gain"
    std::string Value; ///< such as "-1.4"; "code 130" for a code that stands for nothing
    std::string Unit;  ///< such as "dB"; empty where the value is a word
};

/// The values of a parameter as an image has them. The entries of lists are called as in `form`, which may be one that
/// no window shows. A delay is in milliseconds whatever the unit shown.
std::vector<Field> FieldsOf(Parameter parameter, const model::PresetImageRow& image, const controls::FrmCtrl& form);

/// What of a parameter differs between two images, such as "Out 2, PEQ 3: gain 0 to -1.4 dB".
std::string ChangeInWords(Parameter parameter, const model::PresetImageRow& from, const model::PresetImageRow& to,
                          const controls::FrmCtrl& form);

} // namespace nrv::presets
