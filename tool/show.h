#pragma once

#include "model/preset_image.h"
#include "tool/trouble.h"

#include <filesystem>
#include <iosfwd>
#include <optional>

namespace nrv::tool {

enum class ShowAs {
    Words, ///< a line for each place, such as "Out 2, PEQ 3"
    Keys,  ///< a line for each value, as it can be set
    Json,
};

/// Every parameter of a preset, or those of one channel.
void Show(const model::PresetImageRow& image, std::optional<int> channel, ShowAs how, std::ostream& out);

/// What differs between two presets, a line each.
Outcome Diff(const model::PresetImageRow& one, const model::PresetImageRow& other, std::ostream& out);

/// What of a file is no preset: bytes that are missing, and codes that stand for nothing, each with its place.
Outcome Check(const std::filesystem::path& file, std::ostream& out);

} // namespace nrv::tool
