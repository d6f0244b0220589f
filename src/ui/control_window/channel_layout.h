#pragma once

#include "controls/frm_ctrl.h"

#include <array>

namespace nrv::ui {

// Where things stand on a tab. Pixels. Panels stand 4 apart; a page begins below the tabs.
inline constexpr int PageTop = 56;
inline constexpr int PageWidth = 728;
inline constexpr int PageHeight = 466;
inline constexpr int Gap = 4;
inline constexpr int PanelsTop = 2;
inline constexpr int PanelsBottom = PageHeight - Gap;
inline constexpr int PanelsLeft = Gap;
inline constexpr int PanelsRight = PageWidth - Gap;

inline constexpr int FieldHeight = 20;
inline constexpr int CheckHeight = 16;

/// Where an input stands in a picture of rows, each output having one: in the middle of three outputs.
inline constexpr std::array<int, InputCount> InputRows = {1, 4};

/// The lower edge of the graph's panel: an output has one row of view boxes more.
constexpr int GraphPanelBottom(int channel) {
    return IsInput(channel) ? 238 : 254;
}

} // namespace nrv::ui
