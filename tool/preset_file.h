#pragma once

#include "model/preset_image.h"
#include "ports/runtime_error.h"
#include "tool/trouble.h"

#include <filesystem>
#include <span>
#include <vector>

namespace nrv::tool {

/// What was refused of a file, which is named once and as the user named it.
Trouble TroubleWith(const std::filesystem::path& file, const RuntimeError& refused);

/// What a file holds of a preset, and how long it is altogether. Creates none. Throws Trouble.
struct PresetBytes {
    std::vector<std::uint8_t> Bytes; ///< of the preset at most
    std::uintmax_t FileSize;
};
PresetBytes ReadPresetBytes(const std::filesystem::path& file);

/// A whole preset; throws Trouble for a file that does not hold one.
model::PresetImageRow ReadPreset(const std::filesystem::path& file);
model::PresetImageRow PresetOf(std::span<const std::uint8_t> bytes);

/// Throws Trouble.
void WritePreset(const std::filesystem::path& file, const model::PresetImageRow& image);

} // namespace nrv::tool
