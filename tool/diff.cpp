#include "ports/numbering.h"
#include "tool/parameters.h"
#include "tool/preset_file.h"
#include "tool/show.h"
#include "tool/text.h"

#include <array>
#include <ostream>

namespace nrv::tool {
namespace {

/// Which bits of an image belong to a parameter.
std::array<std::uint8_t, sizeof(model::PresetImageRow)> BitsOfParameters() {
    std::array<std::uint8_t, sizeof(model::PresetImageRow)> bits{};
    for (const presets::Parameter parameter : presets::Parameters()) {
        for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
            bits[place.Byte] |= place.Bits;
        }
    }
    return bits;
}

std::string BytesInWords(presets::Parameter parameter, const model::PresetImageRow& one,
                         const model::PresetImageRow& other) {
    std::string words = presets::PlaceOf(parameter) + ": the same in words, by other bytes:";
    for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
        const int before = BytesOf(one)[place.Byte];
        const int after = BytesOf(other)[place.Byte];
        if (before != after) {
            words +=
                " byte " + std::to_string(place.Byte) + " " + std::to_string(before) + " to " + std::to_string(after);
        }
    }
    return words;
}

/// Bytes of a stretch that differ and belong to no parameter.
int OthersBetween(std::size_t from, std::size_t end, const model::PresetImageRow& one,
                  const model::PresetImageRow& other) {
    static const auto bits = BitsOfParameters();
    int count = 0;
    for (std::size_t n = from; n < end; ++n) {
        count += ((BytesOf(one)[n] ^ BytesOf(other)[n]) & ~bits[n]) != 0 ? 1 : 0;
    }
    return count;
}

} // namespace

Outcome Diff(const model::PresetImageRow& one, const model::PresetImageRow& other, std::ostream& out) {
    bool differs = false;
    for (const presets::Parameter parameter : presets::Parameters()) {
        if (!presets::Differs(parameter, one, other)) {
            continue;
        }
        const std::string words = ChangeInWords(parameter, one, other);
        const bool told = !words.ends_with(": ") && !words.empty();
        out << (told ? Shown(words) : BytesInWords(parameter, one, other)) << "\n";
        differs = true;
    }
    struct Stretch {
        const char* Name;
        std::size_t From;
        std::size_t End;
    };
    constexpr std::size_t page = offsetof(model::PresetImageRow, SystemPage);
    constexpr std::size_t view = offsetof(model::PresetImageRow, ViewState);
    const std::array<Stretch, 3> stretches{{{"the preset outside its settings", 0, page},
                                            {"the copy of device memory", page, view},
                                            {"the state of the window", view, sizeof one}}};
    for (const Stretch& stretch : stretches) {
        const int count = OthersBetween(stretch.From, stretch.End, one, other);
        if (count != 0) {
            out << "Besides, " << count << (count == 1 ? " byte" : " bytes") << " of " << stretch.Name << "\n";
            differs = true;
        }
    }
    return differs ? Outcome::Differs : Outcome::Well;
}

} // namespace nrv::tool
