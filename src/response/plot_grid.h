#pragma once

#include <array>
#include <cstddef>

namespace nrv::response {

inline constexpr std::size_t GridPoints = 1705;

/// One curve over the grid, in dB.
using Curve = std::array<double, GridPoints>;

/// The frequencies of every curve in hertz, all whole: each from 10 to 799, then steps of 21 from 820 to 19993, then
/// 20000.
extern const std::array<double, GridPoints> PlotGrid;

// Of each frequency f of the grid, so that no update divides by it anew: f^2, 1/f, 1/f^2.
extern const std::array<double, GridPoints> GridSquare;
extern const std::array<double, GridPoints> GridInverse;
extern const std::array<double, GridPoints> GridInverseSquare;

/// The pixel column of each grid point, 20 Hz on 0 and 20 kHz on 575; -1 below 20 Hz.
extern const std::array<int, GridPoints> PlotColumn;

} // namespace nrv::response
