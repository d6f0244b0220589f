#pragma once

#include "model/graph_scale.h"

#include <cmath>

// Where the marker of a PEQ section stands on the graph: its top left corner in position units.

namespace nrv::model {

inline double MarkerLeft(double hz) {
    return Log10(hz / LowestHz) * MarkerUnitsPerDecade - MarkerHalf;
}
inline double MarkerFrequency(double left) {
    return LowestHz * std::pow(10.0, (left + MarkerHalf) / MarkerUnitsPerDecade);
}

inline double MarkerTop(double gain_db) {
    return MarkerZeroTop - (gain_db + MarkerGainShift) * MarkerUnitsPerDb + MarkerHalf;
}
inline double MarkerGain(double top) {
    return (MarkerZeroTop - (top - MarkerHalf)) / MarkerUnitsPerDb - MarkerGainShift;
}

} // namespace nrv::model
