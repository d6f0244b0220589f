#pragma once

#include "model/preset_image.h"
#include "model/tables.h"
#include "presets/parameter_codes.h"
#include "presets/parameter_words.h"
#include "support/test_folder.h"
#include "tool/command_line.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace nrv::testing {

/// What a run of the tool left behind.
struct ToolRun {
    int Outcome;
    std::string Out;
    std::string Errors;
};

/// A folder with presets, in which the tool runs.
struct ToolDesk {
    TestFolder Folder;

    std::string File(const std::string& name) const { return (Folder / name).string(); }

    static ToolRun Run(std::vector<std::string> arguments) {
        std::ostringstream out;
        std::ostringstream errors;
        const int outcome = tool::Run(std::move(arguments), {out, errors}, nullptr);
        return {outcome, out.str(), errors.str()};
    }

    std::string Put(const std::string& name, const model::PresetImageRow& image) const {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&image);
        Folder.Write(name, {bytes, bytes + sizeof image});
        return File(name);
    }
    model::PresetImageRow Get(const std::string& name) const {
        const std::vector<std::uint8_t> bytes = Folder.Read(name);
        model::PresetImageRow image;
        std::memcpy(&image, bytes.data(), std::min(bytes.size(), sizeof image));
        return image;
    }
};

/// The preset that a device leaves the factory with, its mutes in both of their places: Out 4 is muted. The names of
/// the inputs, which stand where the codes of their gates are, are taken out.
inline model::PresetImageRow FactoryPreset() {
    model::PresetImageRow image;
    std::ranges::copy(model::FactoryImage, image.PresetBody.begin());
    for (const std::size_t byte : {66U, 67U, 69U, 138U, 139U, 141U}) {
        image.PresetBody[byte] = 0;
    }
    image.SystemPage[18] = 0x20;
    return image;
}

/// A preset of codes in range, drawn by chance.
inline model::PresetImageRow RandomPreset(unsigned seed) {
    std::mt19937 chance(seed);
    const auto below = [&chance](int end) { return static_cast<int>(chance() % static_cast<unsigned>(end)); };
    model::PresetImageRow image = FactoryPreset();
    const auto form = std::make_unique<controls::FrmCtrl>();
    for (const presets::Parameter parameter : presets::Parameters()) {
        for (const presets::CodePlace& place : presets::CodesOf(parameter, *form)) {
            presets::PutCode(image, place, below(place.Top + 1));
        }
        if (parameter.Kind == presets::ParameterKind::ChannelName) {
            for (std::size_t n = 0; n < 6; ++n) {
                constexpr std::string_view characters = " abcXYZ019\"\\=,.-\xE9\xFC";
                image.PresetBody[model::NameOffsets[static_cast<std::size_t>(parameter.Index) + 2] + n] =
                    static_cast<std::uint8_t>(characters[static_cast<std::size_t>(below(18))]);
            }
        }
    }
    image.PresetBody[71] = image.SystemPage[18];
    return image;
}

} // namespace nrv::testing
