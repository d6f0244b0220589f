#pragma once

#include "controls/frm_ctrl.h"
#include "model/preset_image.h"
#include "presets/parameter_places.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nrv::presets {

/// Where one code of a parameter is kept in an image, and the highest one that stands for something.
struct CodePlace {
    std::size_t Field; ///< which of the parameter's `FieldsOf` it belongs to
    std::size_t Byte;  ///< of the whole image, 0 to 770
    std::size_t Bytes; ///< how many, the high one first
    std::uint8_t Bits; ///< of that byte
    int Top;           ///< codes go from 0 to here
};

/// The codes that a parameter is made of, in the order of `FieldsOf`. A name has none. What the entries of lists are,
/// `form` says, which may be one that no window shows.
std::vector<CodePlace> CodesOf(Parameter parameter, const controls::FrmCtrl& form);

int CodeIn(const model::PresetImageRow& image, const CodePlace& place);
/// Sets that code alone: of the mutes, which are kept in two places, the live marks.
void PutCode(model::PresetImageRow& image, const CodePlace& place, int code);

} // namespace nrv::presets
