#include "model/encodings.h"
#include "model/graph_scale.h"
#include "model/tables.h"
#include "ports/numbering.h"
#include "response/filters.h"
#include "response/response.h"
#include "tool/parameters.h"
#include "tool/placing.h"

#include <array>
#include <cmath>

namespace nrv::tool {
namespace {

using presets::Parameter;
using presets::ParameterKind;
using response::Curve;
using response::GridPoints;
using response::PlotGrid;

/// How much of the axis, which is logarithmic, lies around each point; none below 20 Hz.
Curve WalkWeights() {
    Curve weights{};
    double sum = 0.0;
    for (std::size_t point = 0; point + 1 < GridPoints; ++point) {
        if (PlotGrid[point] >= model::LowestHz) {
            const double half = std::log(PlotGrid[point + 1] / PlotGrid[point]) / 2.0;
            weights[point] += half;
            weights[point + 1] += half;
            sum += 2.0 * half;
        }
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return weights;
}

/// A filter's codes and the curve that they make.
struct Part {
    Parameter Which;
    std::array<presets::CodePlace, 3> Places; ///< gain, frequency, bandwidth or kind
    std::array<int, 3> Codes{};
    int Movable; ///< how many of them may change
    Curve Levels{};
};

Curve CurveOf(const Part& part, const std::array<int, 3>& codes) {
    Curve curve{};
    const int index = part.Which.Index;
    if (part.Which.Kind == ParameterKind::Peq) {
        response::Evaluate(response::Bell{model::PeqGainFromCode(codes[0]), model::FrequencyFromCode(codes[1]),
                                          model::QTable[At(codes[2])]},
                           curve);
    } else if (part.Which.Kind == ParameterKind::Tone) {
        response::Evaluate(response::Shelf{response::KindOfShelf(index, codes[2]), model::ToneGainFromCode(codes[0]),
                                           model::FrequencyFromCode(codes[1])},
                           curve);
    } else {
        const auto side = CrossoverInChannel(index) == 0 ? response::Side::HighPass : response::Side::LowPass;
        response::Evaluate(response::Crossover{side, codes[1], model::FrequencyFromCode(codes[0])}, curve);
    }
    return curve;
}

Part PartOf(Parameter parameter, const model::PresetImageRow& image) {
    Part part{parameter, {}, {}, 0, {}};
    const std::vector<presets::CodePlace> places = CodesOf(parameter);
    for (std::size_t n = 0; n < places.size(); ++n) {
        part.Places.at(n) = places[n];
        part.Codes.at(n) = presets::CodeIn(image, places[n]);
    }
    // Of a shelf the kind stays, of a side the slope.
    part.Movable = parameter.Kind == ParameterKind::Peq ? 3 : parameter.Kind == ParameterKind::Tone ? 2 : 1;
    part.Levels = CurveOf(part, part.Codes);
    return part;
}

/// Steps that are tried from where a filter stands: each code alone, and all of them by one.
std::vector<std::array<int, 3>> StepsOf(int movable) {
    std::vector<std::array<int, 3>> steps;
    const auto reach = [movable](int code) { return code < movable ? 1 : 0; };
    for (int a = -reach(0); a <= reach(0); ++a) {
        for (int b = -reach(1); b <= reach(1); ++b) {
            for (int c = -reach(2); c <= reach(2); ++c) {
                steps.push_back({a, b, c});
            }
        }
    }
    for (int code = 0; code < movable; ++code) {
        for (const int step : {-5, -3, -2, 2, 3, 5}) {
            std::array<int, 3> alone{};
            alone.at(At(code)) = step;
            steps.push_back(alone);
        }
    }
    return steps;
}

Curve SumOf(const std::vector<Part>& parts) {
    Curve sum{};
    for (const Part& part : parts) {
        for (std::size_t point = 0; point < GridPoints; ++point) {
            sum[point] += part.Levels[point];
        }
    }
    return sum;
}

/// Moves one filter to its best step; false when none is better.
bool Improve(std::vector<Part>& parts, Part& part, const Curve& asked, double most, double& mean) {
    constexpr double gain = 1e-9;
    Curve others = SumOf(parts);
    for (std::size_t point = 0; point < GridPoints; ++point) {
        others[point] -= part.Levels[point];
    }
    bool better = false;
    const Part from = part;
    for (const std::array<int, 3>& step : StepsOf(part.Movable)) {
        std::array<int, 3> codes = from.Codes;
        bool in_range = true;
        for (std::size_t n = 0; n < codes.size(); ++n) {
            codes.at(n) += step.at(n);
            in_range = in_range && (step.at(n) == 0 || (codes.at(n) >= 0 && codes.at(n) <= part.Places.at(n).Top));
        }
        if (!in_range) {
            continue;
        }
        const Curve levels = CurveOf(part, codes);
        Curve played = others;
        for (std::size_t point = 0; point < GridPoints; ++point) {
            played[point] += levels[point];
        }
        const Difference difference = DifferenceOf(asked, played);
        if (difference.Mean < mean - gain && difference.Largest <= most) {
            mean = difference.Mean;
            part.Codes = codes;
            part.Levels = levels;
            better = true;
        }
    }
    return better;
}

} // namespace

Difference DifferenceOf(const Curve& asked, const Curve& played) {
    static const Curve weights = WalkWeights();
    Difference difference;
    for (std::size_t point = 0; point < GridPoints; ++point) {
        const double apart = std::abs(asked[point] - played[point]);
        difference.Mean += weights[point] * apart;
        if (weights[point] > 0.0 && apart > difference.Largest) {
            difference.Largest = apart;
            difference.AtHz = PlotGrid[point];
        }
    }
    return difference;
}

void Fit(const Placing& placing, model::PresetImageRow& image) {
    std::vector<Part> parts;
    for (const PlacedFilter& placed : placing.Filters) {
        parts.push_back(PartOf(placed.Parameter, image));
    }
    const Curve asked = AskedCurve(placing);
    const Difference start = DifferenceOf(asked, SumOf(parts));
    double mean = start.Mean;
    constexpr int most_rounds = 60;
    bool better = true;
    for (int round = 0; better && round < most_rounds; ++round) {
        better = false;
        for (Part& part : parts) {
            better = Improve(parts, part, asked, start.Largest, mean) || better;
        }
    }
    for (const Part& part : parts) {
        for (std::size_t n = 0; n < At(part.Movable); ++n) {
            presets::PutCode(image, part.Places.at(n), part.Codes.at(n));
        }
    }
}

} // namespace nrv::tool
