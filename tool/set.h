#pragma once

#include "model/preset_image.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace nrv::tool {

/// Sets values by their keys, such as "out2.peq3.gain=-3 dB". A value that the device does not have is put on the
/// nearest one, and told. Throws Trouble for a key or a value that there is not; the image is then half set.
void Set(model::PresetImageRow& image, const std::vector<std::string>& assignments, std::ostream& out);

} // namespace nrv::tool
