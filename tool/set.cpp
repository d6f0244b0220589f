#include "tool/set.h"

#include "model/device_stores.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/numbering.h"
#include "presets/channel_names.h"
#include "tool/keys.h"
#include "tool/parameters.h"
#include "tool/quantity.h"
#include "tool/text.h"
#include "tool/trouble.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

namespace nrv::tool {
namespace {

using presets::Field;
using presets::ParameterKind;

std::string WithUnit(const std::string& number, const std::string& unit) {
    return unit.empty() ? number : number + " " + unit;
}

/// What is left of a word when what may be typed otherwise is taken out: "-12dB/oct Lz" is "12lz".
std::string Kernel(std::string_view words) {
    std::string kernel = Small(words);
    for (const std::string_view left_out : {"db/oct", " ", "'", "-", "\""}) {
        for (std::size_t at = kernel.find(left_out); at != std::string::npos; at = kernel.find(left_out)) {
            kernel.erase(at, left_out.size());
        }
    }
    return kernel;
}

/// The way of one assignment into the image.
class Setter {
  public:
    Setter(model::PresetImageRow& image, KeyedField field, std::string value, std::ostream& out)
        : image_(image), field_(std::move(field)), value_(std::move(value)), out_(out) {}

    void Run() {
        if (value_.starts_with("code") && value_ == ValueIn(image_).Value) {
            return; // it stands for nothing, and stays
        }
        switch (field_.Parameter.Kind) {
        case ParameterKind::ChannelName:
            SetName();
            break;
        case ParameterKind::Delay:
            SetDelay();
            break;
        default:
            SetCode();
            break;
        }
        if (field_.Parameter.Kind == ParameterKind::Mute) {
            model::StoreMuteBits(image_.SystemPage[model::MuteBitsAddress], image_);
        }
    }

  private:
    [[noreturn]] void Refuse(const std::string& why) const {
        throw Trouble(field_.Key + "=" + value_ + ": " + why + ".");
    }

    Field ValueIn(const model::PresetImageRow& image) const { return FieldsOf(field_.Parameter, image)[field_.Index]; }

    /// Tells a value that is not the one that was asked for.
    void Tell(double asked, const std::string& unit) const {
        const Field got = ValueIn(image_);
        if (model::ParseNumber(got.Value) != model::ToDecimal(asked, 6)) {
            out_ << field_.Key << ": " << WithUnit(model::NumberText(model::ToDecimal(asked, 6)), unit)
                 << " asked for, " << WithUnit(got.Value, got.Unit) << " set\n";
        }
    }

    void SetName() {
        std::string name = value_;
        if (name.size() >= 2 && name.starts_with('"') && name.ends_with('"')) {
            name = name.substr(1, name.size() - 2);
        }
        try {
            name = Typed(name);
        } catch (const Trouble& trouble) {
            throw Trouble(field_.Key + "=" + trouble.what());
        }
        if (name.size() > ChannelNameLength) {
            Refuse("a name has " + std::to_string(ChannelNameLength) + " characters at most");
        }
        std::ranges::copy(presets::PaddedName(name),
                          image_.PresetBody.begin() + model::NameOffsets[At(ChannelOfOutput(field_.Parameter.Index))]);
    }

    /// In ms; no number for what is none.
    double DelayTyped() const {
        const std::optional<Quantity> typed = QuantityFrom(value_);
        if (typed && typed->Unit == "m") {
            return typed->Number / model::MetresPerMs;
        }
        return typed ? In("ms", *typed).value_or(std::nan("")) : std::nan("");
    }

    void SetDelay() {
        constexpr double last = model::DelayCoarseTop;
        const double longest = model::DelayInMs(model::DelayCoarseTop, model::DelayFineTop);
        const double asked = DelayTyped();
        const std::string allowed = "0 to " + model::NumberText(longest) + " ms, or metres as \"0.85m\"";
        if (std::isnan(asked)) {
            Refuse("no delay; allowed are " + allowed);
        }
        if (asked < 0.0 || asked > longest + 0.0005) {
            Refuse("out of range; allowed are " + allowed);
        }
        model::DelayPositions nearest = model::DelayFromMs(asked);
        // Past the last fine step the next whole millisecond may be nearer.
        const model::DelayPositions next = model::DelayFromMs(std::min(std::ceil(asked), last));
        const auto away = [&](const model::DelayPositions& at) {
            return std::abs(model::DelayInMs(at.Coarse, at.Fine) - asked);
        };
        if (away(next) < away(nearest)) {
            nearest = next;
        }
        const std::vector<presets::CodePlace> places = CodesOf(field_.Parameter);
        presets::PutCode(image_, places[0], nearest.Coarse);
        presets::PutCode(image_, places[1], nearest.Fine);
        Tell(model::ToDecimal(asked, 3), "ms");
    }

    void SetCode() {
        presets::CodePlace place = CodesOf(field_.Parameter)[field_.Index];
        std::vector<Field> entries;
        model::PresetImageRow scratch = image_;
        for (int code = 0; code <= place.Top; ++code) {
            presets::PutCode(scratch, place, code);
            entries.push_back(ValueIn(scratch));
        }
        const auto word = std::ranges::find_if(entries, [this](const Field& entry) {
            return entry.Unit.empty() && Kernel(entry.Value) == Kernel(value_);
        });
        if (word != entries.end()) {
            presets::PutCode(image_, place, static_cast<int>(word - entries.begin()));
            return;
        }
        SetNumber(place, entries);
    }

    void SetNumber(const presets::CodePlace& place, const std::vector<Field>& entries) {
        const std::string& unit = entries.back().Unit;
        const std::optional<Quantity> typed = QuantityFrom(value_);
        const std::optional<double> number = typed && !unit.empty() ? In(unit, *typed) : std::nullopt;
        if (!number) {
            Refuse("no such value; allowed are " + Allowed(entries));
        }
        int nearest = -1;
        double lowest = *number;
        double highest = *number;
        double away = 0.0;
        for (int code = 0; code <= place.Top; ++code) {
            if (entries[At(code)].Unit.empty()) {
                continue;
            }
            const double value = model::ParseNumber(entries[At(code)].Value);
            const double distance = std::abs(value - *number);
            if (nearest == -1) {
                lowest = highest = value;
            }
            if (nearest == -1 || distance < away) {
                nearest = code;
                away = distance;
            }
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
        }
        if (*number < lowest || *number > highest) {
            Refuse("out of range; allowed are " + Allowed(entries));
        }
        presets::PutCode(image_, place, CodeOf(*number, nearest));
        Tell(*number, unit);
    }

    /// Half-way between two codes, or on a frequency, the one that the program takes for what is typed.
    int CodeOf(double number, int nearest) const {
        const bool of_filter = field_.Parameter.Kind == ParameterKind::Peq;
        const std::string name = ValueIn(image_).Name;
        if (name == "frequency") {
            return model::NearestFrequencyCode(number);
        }
        if (of_filter && name == "bandwidth") {
            return model::BandwidthCode(number);
        }
        if (of_filter) {
            return model::PeqGainTop - model::PeqPositionFromGain(number);
        }
        return nearest;
    }

    /// Words one by one, numbers as a range.
    static std::string Allowed(const std::vector<Field>& entries) {
        std::vector<std::string> words;
        std::vector<Field> numbers;
        for (const Field& entry : entries) {
            if (entry.Unit.empty()) {
                words.push_back(entry.Value);
            } else {
                numbers.push_back(entry);
            }
        }
        if (!numbers.empty()) {
            words.push_back(WithUnit(numbers.front().Value, numbers.front().Unit == numbers.back().Unit
                                                                ? std::string()
                                                                : numbers.front().Unit) +
                            " to " + WithUnit(numbers.back().Value, numbers.back().Unit));
        }
        return Joined(words, ", ");
    }

    model::PresetImageRow& image_;
    KeyedField field_;
    std::string value_;
    std::ostream& out_;
};

/// Names what there is where a key leaves the ones that there are.
[[noreturn]] void RefuseKey(const std::string& key, const std::vector<KeyedField>& fields) {
    const std::vector<std::string> parts = Split(key, ".");
    std::string known;
    for (const std::string& part : parts) {
        const std::string longer = known + part + ".";
        if (std::ranges::none_of(fields, [&](const KeyedField& field) { return field.Key.starts_with(longer); })) {
            break;
        }
        known = longer;
    }
    std::vector<std::string> next;
    for (const KeyedField& field : fields) {
        const std::string part = Split(field.Key.substr(std::min(known.size(), field.Key.size())), ".").front();
        if (field.Key.starts_with(known) && std::ranges::find(next, part) == next.end()) {
            next.push_back(part);
        }
    }
    throw Trouble(key + ": no such key; " +
                  (known.empty() ? "keys begin with " : "behind \"" + known + "\" may stand ") + Joined(next, ", ") +
                  ".");
}

} // namespace

void Set(model::PresetImageRow& image, const std::vector<std::string>& assignments, std::ostream& out) {
    const std::vector<KeyedField>& fields = AllFields();
    for (const std::string& assignment : assignments) {
        const std::size_t equals = assignment.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw Trouble("\"" + assignment + "\": a value is set as KEY=VALUE, such as out2.peq3.gain=-3.");
        }
        const std::string key = KeyFromTyped(model::TrimBlanks(assignment.substr(0, equals)));
        const auto field = std::ranges::find(fields, key, &KeyedField::Key);
        if (field == fields.end()) {
            RefuseKey(key, fields);
        }
        Setter(image, *field, model::TrimBlanks(assignment.substr(equals + 1)), out).Run();
    }
}

} // namespace nrv::tool
