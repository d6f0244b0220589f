#include "fuzz/input.h"
#include "fuzz/watch.h"
#include "tool/command_line.h"
#include "tool/desk.h"
#include "tool/exchange.h"
#include "tool/keys.h"
#include "tool/preset_file.h"
#include "tool/set.h"
#include "tool/show.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

// A preset file of any bytes and any length under what the commands of the preset tool do with one. The first byte
// chooses: what costs more than all the rest, the curves and the command line above all, is done in one run of 8 or
// 256.

namespace nrv::fuzz {
namespace {

constexpr std::size_t WholeSize = 771;

std::string KeysOf(const model::PresetImageRow& image) {
    std::ostringstream keys;
    tool::Show(image, std::nullopt, tool::ShowAs::Keys, keys);
    return keys.str();
}

bool Same(const model::PresetImageRow& one, const model::PresetImageRow& other) {
    return std::ranges::equal(BytesOf(one), BytesOf(other));
}

/// One of the values, set as it is shown, changes nothing that is shown.
void SetOneValue(const model::PresetImageRow& image, const std::string& keys, std::uint8_t chosen) {
    std::istringstream lines(keys);
    std::string line;
    for (int n = 0; n <= chosen; ++n) {
        std::getline(lines, line);
    }
    if (line.empty()) {
        return;
    }
    model::PresetImageRow changed = image;
    std::ostringstream told;
    tool::Set(changed, {line}, told);
    Require(told.str().empty(), "what is shown is not what is set");
    // What is shown depends on the bytes alone.
    Require(Same(changed, image) || KeysOf(changed) == keys, "what is shown changes when it is set");
    if (chosen % 8 == 2) {
        const std::string into = (MemoryFolder() / "other.n91").string();
        MemoryFolder().Write("other.n91", {});
        tool::WritePreset(into, changed);
        Require(Same(tool::ReadPreset(into), changed), "a preset is written otherwise than it is");
    }
}

/// Every curve of a desk that has shown the presets of other runs before.
void LookAtCurves(const model::PresetImageRow& image, bool sound, bool with_fresh_desk) {
    static const auto desk = std::make_unique<tool::CurveDesk>(model::PresetImageRow{});
    try {
        desk->Show(image);
    } catch (const tool::Trouble&) {
        Require(!sound, "a sound preset has no curve");
        return;
    }
    const auto fresh = with_fresh_desk ? std::make_unique<tool::CurveDesk>(image) : nullptr;
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const response::Curve levels = desk->Levels(channel, tool::AddedInput::InB);
        for (const double level : levels) {
            Require(std::isfinite(level), "a level is no number");
        }
        Require(!fresh || fresh->Levels(channel, tool::AddedInput::InB) == levels, "a curve depends on the run before");
    }
}

/// The same by the command line.
void RunWhole(const std::string& file, const std::string& keys, int check_outcome) {
    const auto run = [](const std::vector<std::string>& arguments) {
        std::ostringstream out;
        std::ostringstream errors;
        const int outcome = tool::Run(arguments, {out, errors}, nullptr);
        Require(outcome != 2 || errors.str().ends_with('\n'), "a refusal says nothing");
        return std::pair(outcome, out.str());
    };
    Require(run({"check", file}).first == check_outcome, "a file is checked another way");
    const auto shown = run({"show", file, "--keys"});
    Require(shown.first == (keys.empty() ? 2 : 0) && shown.second == keys, "a preset is shown another way");
    Require(check_outcome != 0 || run({"curve", file, "--csv", "-"}).first == 0, "a sound preset has no table");
}

void ReadFile(Input& input) {
    const std::uint8_t chosen = input.Byte();
    const std::vector<std::uint8_t> bytes = input.Rest();
    MemoryFolder().Write("any.n91", bytes);
    const std::string file = (MemoryFolder() / "any.n91").string();
    const bool whole = bytes.size() >= WholeSize;

    std::ostringstream told;
    const auto check = static_cast<int>(tool::Check(file, told));
    Require(check == 0 || check == 1, "a file is neither sound nor unsound");
    Require(whole || check == 1, "a short file is sound");
    std::optional<model::PresetImageRow> image;
    try {
        image = tool::ReadPreset(file);
    } catch (const tool::Trouble&) {
    }
    Require(image.has_value() == whole, "a whole preset is not read, or half a one is");
    const std::string keys = image ? KeysOf(*image) : "";
    const bool by_command_line = chosen == 0;
    if (by_command_line) {
        RunWhole(file, keys, check);
    }
    if (!image) {
        return;
    }
    if (chosen % 8 == 1) {
        tool::Show(*image, std::nullopt, tool::ShowAs::Json, told);
    }
    Require(tool::Diff(*image, *image, told) == tool::Outcome::Well, "a preset differs from itself");
    tool::ExportFilters((chosen & 8) != 0 ? tool::FilterFormat::Rew : tool::FilterFormat::EqApo, chosen % ChannelCount,
                        *image, told, told);
    if (chosen % 8 == 0) {
        LookAtCurves(*image, check == 0, by_command_line);
    }
    SetOneValue(*image, keys, chosen);
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::ReadFile(input);
    return 0;
}
