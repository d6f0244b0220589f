#include "tool/keys.h"

#include "ports/channels.h"
#include "ports/numbering.h"
#include "tool/parameters.h"
#include "tool/text.h"
#include "tool/trouble.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace nrv::tool {
namespace {

/// What is called otherwise in a key than in words.
constexpr std::array<std::pair<std::string_view, std::string_view>, 10> ShortWords{{{"high pass", "hp"},
                                                                                    {"low pass", "lp"},
                                                                                    {"noise gate", "gate"},
                                                                                    {"low shelving", "low-shelf"},
                                                                                    {"high shelving", "high-shelf"},
                                                                                    {"shelving", "shelf"},
                                                                                    {"master gain", "master.gain"},
                                                                                    {"delays shown", "delay-unit"},
                                                                                    {"freq", "frequency"},
                                                                                    {"bw", "bandwidth"}}};

/// One part of a key from words such as "PEQ 3".
std::string PartOfKey(std::string_view words) {
    const std::string small = Small(words);
    const auto* const known =
        std::ranges::find(ShortWords, std::string_view(small), &std::pair<std::string_view, std::string_view>::first);
    if (known != ShortWords.end()) {
        return std::string(known->second);
    }
    std::string part;
    for (std::size_t n = 0; n < small.size(); ++n) {
        if (small[n] != ' ') {
            part += small[n];
        } else if (n + 1 < small.size() && std::isdigit(static_cast<unsigned char>(small[n + 1])) == 0) {
            part += '-';
        }
    }
    return part;
}

std::string KeyOf(const std::string& place, const std::string& name) {
    std::string key;
    if (!place.empty()) {
        for (const std::string& part : Split(place, ", ")) {
            key += PartOfKey(part) + '.';
        }
    }
    return key + PartOfKey(name);
}

std::optional<int> ChannelOf(const std::string& place) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        if (place.starts_with(ChannelTitles[At(channel)])) {
            return channel;
        }
    }
    return std::nullopt;
}

std::vector<KeyedField> FieldsInOrder() {
    const model::PresetImageRow any{};
    std::vector<KeyedField> fields;
    for (const presets::Parameter parameter : presets::Parameters()) {
        const std::string place = presets::PlaceOf(parameter);
        const std::vector<presets::Field> of_parameter = FieldsOf(parameter, any);
        for (std::size_t n = 0; n < of_parameter.size(); ++n) {
            fields.push_back({KeyOf(place, of_parameter[n].Name), place, ChannelOf(place), parameter, n});
        }
    }
    std::ranges::stable_sort(fields, {}, [](const KeyedField& field) { return field.Channel.value_or(-1); });
    return fields;
}

} // namespace

const std::vector<KeyedField>& AllFields() {
    static const std::vector<KeyedField> fields = FieldsInOrder();
    return fields;
}

std::string KeyFromTyped(std::string_view typed) {
    std::vector<std::string> parts = Split(typed, ".");
    std::ranges::transform(parts, parts.begin(), PartOfKey);
    return Joined(parts, ".");
}

int ChannelFromTyped(const std::string& typed) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        if (PartOfKey(typed) == PartOfKey(ChannelTitles[At(channel)])) {
            return channel;
        }
    }
    throw Trouble("\"" + typed + "\" is no channel; the channels are " +
                  Joined({ChannelTitles.begin(), ChannelTitles.end()}, ", ") + ".");
}

} // namespace nrv::tool
