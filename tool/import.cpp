#include "model/encodings.h"
#include "model/number_text.h"
#include "ports/channels.h"
#include "tool/desk.h"
#include "tool/exchange.h"
#include "tool/parameters.h"
#include "tool/placing.h"
#include "tool/text_file.h"

#include <ostream>

namespace nrv::tool {
namespace {

std::string Decibels(double value) {
    constexpr int places = 3;
    return model::NumberText(model::ToDecimal(value, places)) + " dB";
}

void TellLines(const std::vector<LineNote>& notes, const std::string& file, const char* what, std::ostream& out) {
    for (const LineNote& note : notes) {
        out << file << ":" << note.Line << ": " << what << note.What << "\n";
    }
}

/// What a filter became: "PEQ 1: gain -5.2 dB, frequency 63 Hz, bandwidth 0.35 oct".
std::string Became(presets::Parameter parameter, const model::PresetImageRow& image) {
    std::string words = presets::PlaceOf(parameter);
    words = words.substr(words.find(", ") + 2) + ":";
    bool first = true;
    for (const presets::Field& field : FieldsOf(parameter, image)) {
        words += (first ? " " : ", ") + field.Name + " " + field.Value + (field.Unit.empty() ? "" : " " + field.Unit);
        first = false;
    }
    return words;
}

void TellFilters(const Placing& placing, const std::string& file, const model::PresetImageRow& image,
                 std::ostream& out) {
    for (const PlacedFilter& placed : placing.Filters) {
        for (const AskedFilter& filter : placed.Asked) {
            out << file << ":" << filter.Line << ": " << InWords(filter);
            if (filter.Kind == FilterKind::Peak) {
                out << " (" << model::NumberText(model::ToDecimal(OctavesOfQ(filter.Q), 3)) << " oct)";
            }
            out << " -> " << Became(placed.Parameter, image) << "\n";
        }
    }
}

std::string InWords(const Difference& difference) {
    return "largest " + Decibels(difference.Largest) + " at " + model::NumberText(difference.AtHz) + " Hz, mean " +
           Decibels(difference.Mean);
}

} // namespace

Outcome ImportFilters(const Import& import, model::PresetImageRow& image, std::ostream& out, std::ostream& errors) {
    const FilterText text = ReadFilters(import.Format, ReadText(import.Text));
    model::PresetImageRow changed = image;
    const Placing placing = Place(text, import.Channel, changed);
    TellLines(placing.Refused, import.Text, "refused: ", errors);
    if (placing.Filters.empty()) {
        if (placing.Refused.empty()) {
            throw Trouble(import.Text +
                          ": holds no filter that plays, which is a line such as \"Filter 1: ON PK Fc 100 Hz "
                          "Gain 3 dB Q 1\"; the preset is not written.");
        }
        throw Trouble(import.Text + ": holds no filter that the device can play; the preset is not written.",
                      Outcome::Differs);
    }
    const response::Curve asked = AskedCurve(placing);
    const auto difference = [&] {
        CurveDesk desk(OnlyFilters(placing, import.Channel, changed));
        return DifferenceOf(asked, desk.Filters(import.Channel));
    };
    const Difference nearest = difference();
    if (import.WithFit) {
        Fit(placing, changed);
    }
    TellLines(text.Told, import.Text, "", out);
    TellFilters(placing, import.Text, changed, out);
    out << "Difference from what was asked for, " << (placing.Refused.empty() ? "" : "the refused left out, ")
        << "20 Hz to 20 kHz: " << InWords(difference()) << "\n";
    if (import.WithFit) {
        out << "Before the fit: " << InWords(nearest) << "\n";
    }
    image = changed;
    return placing.Refused.empty() ? Outcome::Well : Outcome::Differs;
}

} // namespace nrv::tool
