#include "tool/placing.h"

#include "model/encodings.h"
#include "model/number_text.h"
#include "ports/channels.h"
#include "ports/numbering.h"
#include "tool/parameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace nrv::tool {
namespace {

using presets::Parameter;
using presets::ParameterKind;

/// A filter that the device does not have.
struct NoPlace {
    std::string Why;
};

bool IsNear(double value, double wanted, double share) {
    return std::abs(value - wanted) <= share * wanted;
}

bool IsPass(const AskedFilter& filter) {
    return filter.Kind == FilterKind::LowPass || filter.Kind == FilterKind::HighPass;
}

void RequireRange(double value, double lowest, double highest, const std::string& what) {
    if (value < lowest || value > highest) {
        throw NoPlace{what + " of " + model::NumberText(model::ToDecimal(value, 3)) + " is out of range, which is " +
                      model::NumberText(lowest) + " to " + model::NumberText(highest)};
    }
}

/// Up to half a step past the ends, where the end is the nearest.
void RequireBandwidth(double octaves) {
    constexpr double half_step = 0.025;
    const double lowest = model::BandwidthFromCode(0);
    const double highest = model::BandwidthFromCode(model::BandwidthTop);
    RequireRange(std::clamp(octaves, lowest, highest) == octaves      ? octaves
                 : octaves > lowest - half_step && octaves < lowest   ? lowest
                 : octaves > highest && octaves < highest + half_step ? highest
                                                                      : octaves,
                 lowest, highest, "a bandwidth in octaves");
}

/// The slope of a side from the filters that make it one after the other; their Q in order, 0 for a first order.
std::optional<int> SlopeOf(const std::vector<AskedFilter>& filters) {
    struct Slope {
        int Code;
        std::vector<double> Qs;
    };
    static const std::vector<Slope> slopes = {{1, {0.0}},           {2, {0.7071}},   {3, {0.5}},
                                              {3, {0.0, 0.0}},      {6, {0.0, 1.0}}, {8, {0.5412, 1.3066}},
                                              {9, {0.7071, 0.7071}}};
    std::vector<double> asked;
    for (const AskedFilter& filter : filters) {
        asked.push_back(filter.Order == 1 ? 0.0 : filter.Q);
    }
    std::ranges::sort(asked);
    constexpr double share = 0.02;
    for (const Slope& slope : slopes) {
        if (std::ranges::equal(asked, slope.Qs, [](double q, double wanted) { return IsNear(q, wanted, share); })) {
            return slope.Code;
        }
    }
    return std::nullopt;
}

class Placer {
  public:
    Placer(int channel, model::PresetImageRow& image) : channel_(channel), image_(image) {}

    Placing Run(const FilterText& text) {
        result_.Refused = text.Refused;
        for (int n = 0; n < PeqCountOf(channel_); ++n) {
            Put({ParameterKind::Peq, FirstPeqOf(channel_) + n}, 0, GainCode(0.0));
        }
        for (const AskedFilter& filter : text.Filters) {
            if (!IsPass(filter)) {
                Try({filter}, [&] { PlaceOne(filter); });
            }
        }
        PlaceSide(text, FilterKind::HighPass, 0);
        PlaceSide(text, FilterKind::LowPass, 1);
        std::ranges::stable_sort(result_.Refused, {}, &LineNote::Line);
        return std::move(result_);
    }

  private:
    static int GainCode(double gain_db) { return model::PeqGainTop - model::PeqPositionFromGain(gain_db); }

    template <class Work>
    void Try(const std::vector<AskedFilter>& filters, Work work) {
        try {
            for (const AskedFilter& filter : filters) {
                RequireRange(filter.Hz, model::FrequencyFromCode(0), model::FrequencyFromCode(model::FrequencyTop),
                             "a frequency in Hz");
            }
            work();
        } catch (const NoPlace& none) {
            for (const AskedFilter& filter : filters) {
                result_.Refused.push_back({filter.Line, InWords(filter) + ": " + none.Why});
            }
        }
    }

    void Put(Parameter parameter, std::size_t field, int code) {
        presets::PutCode(image_, CodesOf(parameter)[field], code);
    }

    void PlaceOne(const AskedFilter& filter) {
        if (filter.Kind == FilterKind::Peak) {
            PlacePeak(filter);
        } else {
            PlaceShelf(filter);
        }
    }

    void PlacePeak(const AskedFilter& filter) {
        const double top = model::PeqGainFromCode(model::PeqGainTop);
        RequireRange(filter.GainDb, -top, top, "a gain in dB");
        const double octaves = OctavesOfQ(filter.Q);
        RequireBandwidth(octaves);
        if (sections_ == PeqCountOf(channel_)) {
            throw NoPlace{"all " + std::to_string(sections_) + " sections of " + ChannelTitles[At(channel_)] +
                          " are in use"};
        }
        const Parameter section{ParameterKind::Peq, FirstPeqOf(channel_) + sections_++};
        Put(section, 0, GainCode(filter.GainDb));
        Put(section, 1, model::NearestFrequencyCode(filter.Hz));
        Put(section, 2, model::BandwidthCode(octaves));
        result_.Filters.push_back({section, {filter}});
    }

    void PlaceShelf(const AskedFilter& filter) {
        constexpr double share = 0.1;
        const bool low = filter.Kind == FilterKind::LowShelf;
        RequireRange(filter.GainDb, model::ToneGainFromCode(0), model::ToneGainFromCode(model::ToneGainTop),
                     "a shelf's gain in dB");
        if (filter.Order == 2 && !IsNear(filter.Q, 0.7071, share)) {
            throw NoPlace{"the device's shelves are of Q 0.707"};
        }
        // An input has one of each, an output one that is either.
        const int number = IsInput(channel_) && !low ? 1 : 0;
        if (shelves_.at(At(number))) {
            throw NoPlace{std::string(ChannelTitles[At(channel_)]) + " has no such shelf left"};
        }
        shelves_.at(At(number)) = true;
        const Parameter tone{ParameterKind::Tone, FirstToneOf(channel_) + number};
        const int type_of_high = IsInput(channel_) ? filter.Order : filter.Order + 2;
        Put(tone, 0,
            static_cast<int>(model::RoundHalfEven((filter.GainDb - model::ToneGainFromCode(0)) /
                                                  (model::ToneGainFromCode(1) - model::ToneGainFromCode(0)))));
        Put(tone, 1, model::NearestFrequencyCode(filter.Hz));
        Put(tone, 2, low ? filter.Order : type_of_high);
        result_.Filters.push_back({tone, {filter}});
    }

    void PlaceSide(const FilterText& text, FilterKind kind, int side) {
        std::vector<AskedFilter> filters;
        std::ranges::copy_if(text.Filters, std::back_inserter(filters),
                             [kind](const AskedFilter& filter) { return filter.Kind == kind; });
        if (filters.empty()) {
            return;
        }
        Try(filters, [&] {
            if (IsInput(channel_)) {
                throw NoPlace{"inputs have no crossover"};
            }
            const int code = model::NearestFrequencyCode(filters.front().Hz);
            if (std::ranges::any_of(filters, [code](const AskedFilter& filter) {
                    return model::NearestFrequencyCode(filter.Hz) != code;
                })) {
                throw NoPlace{"a side of the crossover has one frequency"};
            }
            const std::optional<int> slope = SlopeOf(filters);
            if (!slope) {
                throw NoPlace{"the crossover has no slope of this Q"};
            }
            const Parameter parameter{ParameterKind::Crossover, FirstSideOf(OutputOf(channel_)) + side};
            Put(parameter, 0, code);
            Put(parameter, 1, *slope);
            result_.Filters.push_back({parameter, filters});
        });
    }

    int channel_;
    model::PresetImageRow& image_;
    Placing result_;
    int sections_ = 0;
    std::array<bool, TonePerInput> shelves_{};
};

} // namespace

Placing Place(const FilterText& text, int channel, model::PresetImageRow& image) {
    return Placer(channel, image).Run(text);
}

model::PresetImageRow OnlyFilters(const Placing& placing, int channel, const model::PresetImageRow& image) {
    model::PresetImageRow only = image;
    const auto is_asked = [&placing](Parameter parameter) {
        return std::ranges::find(placing.Filters, parameter, &PlacedFilter::Parameter) != placing.Filters.end();
    };
    for (int tone = FirstToneOf(channel); tone < FirstToneOf(channel) + ToneCountOf(channel); ++tone) {
        const Parameter parameter{ParameterKind::Tone, tone};
        if (!is_asked(parameter)) {
            presets::PutCode(only, CodesOf(parameter)[2], 0);
        }
    }
    for (int side = 0; side < SidesPerOutput && !IsInput(channel); ++side) {
        const Parameter parameter{ParameterKind::Crossover, FirstSideOf(OutputOf(channel)) + side};
        if (!is_asked(parameter)) {
            presets::PutCode(only, CodesOf(parameter)[1], 0);
        }
    }
    return only;
}

response::Curve AskedCurve(const Placing& placing) {
    response::Curve curve{};
    for (const PlacedFilter& placed : placing.Filters) {
        for (const AskedFilter& filter : placed.Asked) {
            for (std::size_t point = 0; point < response::GridPoints; ++point) {
                curve[point] += LevelOf(filter, response::PlotGrid[point]);
            }
        }
    }
    return curve;
}

} // namespace nrv::tool
