#include "tool/show.h"

#include "tool/keys.h"
#include "tool/parameters.h"
#include "tool/text.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace nrv::tool {
namespace {

using presets::Field;

struct Line {
    const KeyedField* Keyed;
    Field Value;
};

std::vector<Line> LinesOf(const model::PresetImageRow& image, std::optional<int> channel) {
    std::vector<Line> lines;
    for (const KeyedField& field : AllFields()) {
        if (!channel || field.Channel == channel) {
            lines.push_back({&field, FieldsOf(field.Parameter, image)[field.Index]});
        }
    }
    return lines;
}

std::string WithUnit(const Field& field, const char* between) {
    return Shown(field.Value) + (field.Unit.empty() ? "" : between + field.Unit);
}

void ShowWords(const std::vector<Line>& lines, std::ostream& out) {
    // What is of one place comes together, though a load does it in turns.
    std::vector<std::pair<std::string, std::string>> places;
    for (const Line& line : lines) {
        auto place = std::find_if(places.begin(), places.end(),
                                  [&](const auto& known) { return known.first == line.Keyed->Place; });
        if (place == places.end()) {
            place = places.insert(places.end(), {line.Keyed->Place, ""});
        }
        place->second += (place->second.empty() ? "" : ", ") + line.Value.Name + " " + WithUnit(line.Value, " ");
    }
    for (const auto& [place, words] : places) {
        out << (place.empty() ? "Device" : place) << ": " << words << "\n";
    }
}

void ShowJson(const std::vector<Line>& lines, std::ostream& out) {
    nlohmann::ordered_json all = nlohmann::ordered_json::object();
    for (const Line& line : lines) {
        nlohmann::ordered_json value;
        if (line.Value.Unit.empty()) {
            const std::string words = Shown(line.Value.Value);
            value["value"] = words.starts_with('"') ? words.substr(1, words.size() - 2) : words;
        } else {
            value["value"] = std::stod(line.Value.Value);
            value["unit"] = line.Value.Unit;
        }
        all[line.Keyed->Key] = value;
    }
    out << all.dump(2) << "\n";
}

} // namespace

void Show(const model::PresetImageRow& image, std::optional<int> channel, ShowAs how, std::ostream& out) {
    const std::vector<Line> lines = LinesOf(image, channel);
    if (how == ShowAs::Words) {
        ShowWords(lines, out);
    } else if (how == ShowAs::Json) {
        ShowJson(lines, out);
    } else {
        for (const Line& line : lines) {
            out << line.Keyed->Key << '=' << WithUnit(line.Value, "") << "\n";
        }
    }
}

} // namespace nrv::tool
