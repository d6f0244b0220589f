#pragma once

#include "model/command_context.h"
#include "ports/numbering.h"

#include <string>

namespace nrv::presets {

// The titles of a control window: the device, and where its settings come from.

inline void SetTitle(const model::CommandContext& context, const std::string& from) {
    context.Form().Window.SetCaption(IdText(context.DeviceId()) + from);
}
inline void TitleAtOpening(const model::CommandContext& context) {
    SetTitle(context, " NRV-718 - Name Preset loaded from device: " + context.Values().CurrentPresetName);
}
inline void TitleAfterSave(const model::CommandContext& context, const std::string& file_name) {
    SetTitle(context, " NRV-718 - Last preset loaded: come from PC - " + file_name);
}
/// Another model's name than after a save; that is meant.
inline void TitleAfterLoad(const model::CommandContext& context, const std::string& file_name) {
    SetTitle(context, " NRV 916 - Last preset loaded: come from PC - " + file_name);
}
/// The same after a store and after a read of a memory position.
inline void TitleFromDevice(const model::CommandContext& context, std::size_t position) {
    SetTitle(context, " NRV-718 - Last preset loaded: come from DEVICE - " + context.Values().PresetNames[position]);
}

} // namespace nrv::presets
