#pragma once

#include "controls/dialog_forms.h"
#include "model/command_context.h"
#include "model/encodings.h"

#include <string>
#include <vector>

namespace nrv::presets {

/// Whether a memory position of a device, 0 to 7, is in use.
inline bool HoldsPreset(const model::ParamRow& values, std::size_t position) {
    return values.PresetUsed[position] == model::PresetUsedMark;
}

/// Lists the names of the memory positions: each line's tool tip tells its number over the list's own hint, and an
/// empty one is dim.
inline void ListPositions(const model::CommandContext& context, controls::LineList& list) {
    const auto& names = context.Values().PresetNames;
    std::vector<std::string> tips;
    std::vector<bool> empty;
    for (std::size_t position = 0; position < MemoryPositions; ++position) {
        empty.push_back(!HoldsPreset(context.Values(), position));
        tips.push_back("Position " + std::to_string(position + 1) + (empty.back() ? ", empty" : "") + "\n" +
                       list.ToolTip());
    }
    list.SetItems({names.begin(), names.begin() + MemoryPositions});
    list.SetItemToolTips(tips);
    list.SetDimItems(empty);
}

} // namespace nrv::presets
