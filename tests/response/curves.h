#pragma once

#include "response/filters.h"
#include "response/plot_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace nrv::testing {

/// The first point of the grid at or above a frequency.
inline std::size_t PointOf(double hertz) {
    using response::PlotGrid;
    return static_cast<std::size_t>(std::lower_bound(PlotGrid.begin(), PlotGrid.end(), hertz) - PlotGrid.begin());
}

template <class Filter>
response::Curve CurveOf(const Filter& filter) {
    response::Curve curve;
    curve.fill(-1.0);
    Evaluate(filter, curve);
    return curve;
}

inline bool IsFlat(const response::Curve& curve, double level) {
    return std::ranges::all_of(curve, [level](double value) { return value == level; });
}

/// The larger of two distances; one that is no number is larger than any.
inline double Worse(double worst, double distance) {
    return std::isnan(distance) ? std::numeric_limits<double>::infinity() : std::max(worst, distance);
}

} // namespace nrv::testing
