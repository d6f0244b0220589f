#pragma once

#include "model/encodings.h"
#include "model/tables.h"

#include <cmath>

// Where the marker of a PEQ section stands on the graph: its top left corner in position units, 15 to a pixel. The
// vertical scale, 48 units to the dB, is not the curves', and the 0.1 is part of it: a marker does not lie exactly on
// the curve.

namespace nrv::response {

inline constexpr double MarkerHalf = 60.0;
inline constexpr double MarkerUnitsPerDb = 48.0;
inline constexpr double MarkerZeroTop = 1447.5;
inline constexpr double MarkerGainShift = 0.1;

inline double MarkerLeft(double hz) {
    return model::Log10(hz / 20.0) * model::MarkerUnitsPerDecade - MarkerHalf;
}

inline double MarkerFrequency(double left) {
    return 20.0 * std::pow(10.0, (left + MarkerHalf) / model::MarkerUnitsPerDecade);
}

inline double MarkerTop(double gain_db) {
    return MarkerZeroTop - (gain_db + MarkerGainShift) * MarkerUnitsPerDb + MarkerHalf;
}

inline double MarkerGain(double top) {
    return (MarkerZeroTop - (top - MarkerHalf)) / MarkerUnitsPerDb - MarkerGainShift;
}

} // namespace nrv::response
