#pragma once

#include "controls/frm_ctrl.h"

#include <string>
#include <string_view>

// A control window in words, for who does not see it.

namespace nrv::controls {

/// Where a control is and what it is: "Out 2, PEQ 3, gain". Empty for one that its caption or tool tip names.
std::string SpokenName(std::string_view name, int index);

/// What a fader, a pair of arrows or a point stands on: "-1.4 dB". Empty for other controls.
std::string SpokenValue(const FrmCtrl& form, std::string_view name, int index);

} // namespace nrv::controls
