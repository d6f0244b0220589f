#pragma once

#include "presets/tool_context.h"

#include <string>

namespace nrv::presets {

inline void TitleAfterSave(const ToolContext& context, const std::string& file_name) {
    context.Commands.Form().Window.SetCaption("ID:" + std::to_string(context.Commands.DeviceId()) +
                                              " NRV-718 - Last preset loaded: come from PC - " + file_name);
}

/// Another model's name than after a save; that is meant.
inline void TitleAfterLoad(const ToolContext& context, const std::string& file_name) {
    context.Commands.Form().Window.SetCaption("ID:" + std::to_string(context.Commands.DeviceId()) +
                                              " NRV 916 - Last preset loaded: come from PC - " + file_name);
}

/// The same after a store and after a read of a memory position.
inline void TitleFromDevice(const ToolContext& context, std::size_t position) {
    context.Commands.Form().Window.SetCaption("ID:" + std::to_string(context.Commands.DeviceId()) +
                                              " NRV-718 - Last preset loaded: come from DEVICE - " +
                                              context.Commands.Values().PresetNames[position]);
}

} // namespace nrv::presets
