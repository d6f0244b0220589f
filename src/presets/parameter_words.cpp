#include "presets/parameter_words.h"

#include "controls/spoken.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/numbering.h"

#include <array>
#include <span>
#include <string_view>

namespace nrv::presets {
namespace {

using enum ParameterKind;
using model::NumberText;

/// The names of controls end in what they do there; what comes before is where they are.
std::string Before(const std::string& name) {
    return name.substr(0, name.rfind(", "));
}

std::string NoEntry(int code) {
    return "code " + std::to_string(code);
}

template <class ValueOf>
Field Number(const char* name, int code, int top, const char* unit, ValueOf value) {
    return code <= top ? Field{name, NumberText(value(code)), unit} : Field{name, NoEntry(code), ""};
}

Field Word(const char* name, int code, std::span<const std::string> words) {
    if (code >= static_cast<int>(words.size())) {
        return {name, NoEntry(code), ""};
    }
    return {name, model::TrimBlanks(words[At(code)]), ""};
}

/// A time of a limiter, which its table tells with its unit.
Field Time(const char* name, int code, std::span<const std::string_view> texts) {
    if (code >= static_cast<int>(texts.size())) {
        return {name, NoEntry(code), ""};
    }
    const std::string text = model::TrimBlanks(std::string(texts[At(code)]));
    const std::size_t unit = text.find_first_not_of("0123456789.");
    return {name, text.substr(0, unit), text.substr(unit)};
}

Field ThresholdField(int channel, int code) {
    if (!IsInput(channel)) {
        return Number("threshold", code, model::LimiterThresholdTop, "dBu", model::LimiterThresholdFromCode);
    }
    if (code >= static_cast<int>(model::LowLevelTexts.size())) {
        return {"threshold", NoEntry(code), ""};
    }
    return {"threshold", std::string(model::LowLevelTexts[At(code)]), code == 0 ? "" : "dBu"};
}

Field Frequency(int code) {
    return Number("frequency", code, model::FrequencyTop, "Hz", model::FrequencyFromCode);
}

/// On or off, or the words for the two.
Field Switch(const char* name, bool on, const char* when_on = "on", const char* when_off = "off") {
    return {name, on ? when_on : when_off, ""};
}

Field DelayField(const std::array<std::uint8_t, 433>& body, std::size_t field) {
    const int coarse = 256 * body[field] + body[field + 1];
    const int fine = body[field + 2];
    if (coarse > model::DelayCoarseTop || fine > model::DelayFineTop) {
        return {"delay", "codes " + std::to_string(coarse) + " and " + std::to_string(fine), ""};
    }
    return {"delay", NumberText(model::DelayInMs(coarse, fine)), "ms"};
}

} // namespace

std::string PlaceOf(Parameter parameter) {
    const int index = parameter.Index;
    switch (parameter.Kind) {
    case InputType:
    case DelayUnit:
    case MasterGain:
        return {};
    case Crossover:
        return Before(controls::SpokenName("Combo2", index));
    case Peq:
        return Before(controls::SpokenName("Slider2", index));
    case Tone:
        return Before(controls::SpokenName("Slider3", index));
    case Threshold:
    case Release:
    case Attack:
        return Before(controls::SpokenName("Slider4", index));
    case Source:
    case ChannelName:
        return ChannelTitles[At(ChannelOfOutput(index))];
    case Mute:
    case Phase:
    case Delay:
    case Gain:
        return ChannelTitles[At(ChannelOfControl(index))];
    }
    return {};
}

std::vector<Field> FieldsOf(Parameter parameter, const model::PresetImageRow& image, const controls::FrmCtrl& form) {
    const int index = parameter.Index;
    const std::size_t i = At(index);
    const auto& body = image.PresetBody;
    switch (parameter.Kind) {
    case Mute:
        return {Switch("mute", ((image.SystemPage[model::MuteBitsAddress] >> i) & 1) != 0)};
    case InputType:
        return {Word("input", model::HasOption(image, model::InputTypeBit) ? 1 : 0, form.Combo4.Items())};
    case DelayUnit:
        return {Switch("delays shown", model::HasOption(image, model::DelayUnitBit), "in metres", "in milliseconds")};
    case Source:
        return {Word("source", body[model::SourceOffsets[i]], form.Combo3[i].Items())};
    case Threshold:
        return {ThresholdField(index, body[model::LimiterOffsets[i] + 3])};
    case Release:
        return {Time("release", body[model::LimiterOffsets[i] + 1], model::ReleaseTexts)};
    case Attack:
        return {Time("attack", body[model::LimiterOffsets[i]], model::AttackTexts)};
    case Crossover: {
        const std::size_t block = model::CrossoverOffsets[i];
        return {Frequency(body[block + 1]), Word("slope", body[block + 2], form.Combo2[i].Items())};
    }
    case Peq: {
        const std::size_t block = model::PeqOffsets[i];
        return {Number("gain", body[block + 4], model::PeqGainTop, "dB", model::PeqGainFromCode),
                Frequency(body[block + 1]),
                Number("bandwidth", body[block + 2], model::BandwidthTop, "oct", model::BandwidthFromCode)};
    }
    case Tone: {
        const std::size_t block = model::ToneOffsets[i];
        return {Number("gain", body[block + 4], model::ToneGainTop, "dB", model::ToneGainFromCode),
                Frequency(body[block + 1]), Word("type", body[block + 2], form.Combo1[i].Items())};
    }
    case Phase:
        return {Switch("phase", body[model::PhaseOffsets[i]] != 0, "180", "0")};
    case Delay:
        return {DelayField(body, model::DelayOffsets[i])};
    case Gain:
        return {
            Number("gain", body[model::GainOffsets[i] + 1], model::ChannelGainTop, "dB", model::ChannelGainFromCode)};
    case MasterGain:
        return {Number("master gain", body[model::MasterGainCode], model::ChannelGainTop, "dB",
                       model::ChannelGainFromCode)};
    case ChannelName: {
        const auto* const first = &body[model::NameOffsets[ChannelOfOutput(i)]];
        return {{"name", '"' + model::TrimBlanks(std::string(first, first + ChannelNameLength)) + '"', ""}};
    }
    }
    return {};
}

std::string ChangeInWords(Parameter parameter, const model::PresetImageRow& from, const model::PresetImageRow& to,
                          const controls::FrmCtrl& form) {
    const std::vector<Field> before = FieldsOf(parameter, from, form);
    const std::vector<Field> after = FieldsOf(parameter, to, form);
    std::string words;
    for (std::size_t n = 0; n < before.size(); ++n) {
        if (before[n].Value == after[n].Value) {
            continue;
        }
        const auto with_unit = [](const Field& field) {
            return field.Unit.empty() ? field.Value : field.Value + " " + field.Unit;
        };
        words += words.empty() ? "" : ", ";
        words += before[n].Name + " " + (before[n].Unit == after[n].Unit ? before[n].Value : with_unit(before[n])) +
                 " to " + with_unit(after[n]);
    }
    const std::string place = PlaceOf(parameter);
    return place.empty() ? words : place + ": " + words;
}

} // namespace nrv::presets
