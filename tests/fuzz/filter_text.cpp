#include "fuzz/input.h"
#include "fuzz/watch.h"
#include "model/tables.h"
#include "ports/channels.h"
#include "tool/parameters.h"
#include "tool/placing.h"

#include <algorithm>
#include <cmath>

// A text of filters of any bytes, read and put into a channel.

namespace nrv::fuzz {
namespace {

using tool::AskedFilter;

/// How many of the filters that play are placed or refused after the reading.
void LookAtPlacing(const tool::FilterText& text, const tool::Placing& placing) {
    std::size_t placed = 0;
    for (const tool::PlacedFilter& filter : placing.Filters) {
        placed += filter.Asked.size();
    }
    Require(placed + placing.Refused.size() == text.Filters.size() + text.Refused.size(), "a filter is left out");
}

void Read(Input& input) {
    const std::uint8_t options = input.Byte();
    const auto format = (options & 1) != 0 ? tool::FilterFormat::Rew : tool::FilterFormat::EqApo;
    const int channel = (options >> 1) % ChannelCount;
    const std::vector<std::uint8_t> bytes = input.Rest();
    const tool::FilterText text =
        tool::ReadFilters(format, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    for (const AskedFilter& filter : text.Filters) {
        Require(filter.Hz > 0.0 && filter.Q > 0.0 && std::isfinite(filter.GainDb), "a filter that is none was read");
    }
    model::PresetImageRow image{};
    std::ranges::copy(model::FactoryImage, image.PresetBody.begin());
    const tool::Placing placing = tool::Place(text, channel, image);
    LookAtPlacing(text, placing);
    for (const tool::PlacedFilter& filter : placing.Filters) {
        for (const presets::CodePlace& place : tool::CodesOf(filter.Parameter)) {
            Require(presets::CodeIn(image, place) <= place.Top, "a filter stands on a code that there is not");
        }
    }
    const tool::Difference difference = tool::DifferenceOf(tool::AskedCurve(placing), response::Curve{});
    Require(std::isfinite(difference.Mean) && difference.Mean <= difference.Largest + 1e-9, "the curve is no curve");
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Read(input);
    return 0;
}
