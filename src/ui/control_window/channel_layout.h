#pragma once

#include "controls/frm_ctrl.h"

namespace nrv::ui {

// Which filters and sides belong to a channel, and where things stand on a channel's tab.

constexpr bool IsInput(int channel) {
    return channel < 2;
}
constexpr int OutputOf(int channel) {
    return channel - 2;
}
constexpr int SectionCount(int channel) {
    return IsInput(channel) ? 10 : 4;
}
constexpr int FirstSection(int channel) {
    return IsInput(channel) ? 10 * channel : 20 + 4 * OutputOf(channel);
}
/// The channel of an equaliser section, 0 to 43.
constexpr int ChannelOfSection(int section) {
    return section < 20 ? section / 10 : 2 + (section - 20) / 4;
}
constexpr int ToneFilterCount(int channel) {
    return IsInput(channel) ? 2 : 1;
}
constexpr int FirstToneFilter(int channel) {
    return IsInput(channel) ? 2 * channel : 4 + OutputOf(channel);
}

// Pixels. Panels stand 4 apart; a page begins below the tabs.
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

/// The lower edge of the graph's panel: an output has one row of view boxes more.
constexpr int GraphPanelBottom(int channel) {
    return IsInput(channel) ? 238 : 254;
}

} // namespace nrv::ui
