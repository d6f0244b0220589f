#pragma once

#include "model/encodings.h"

// The scale of a channel's graph: 20 Hz on column 0, 20 kHz on column 575, 0 dB at row 95.4, 30 dB either way.

namespace nrv::model {

inline constexpr double LowestHz = 20.0;
inline constexpr double HighestHz = 20000.0;
inline constexpr int GraphWidth = 576;  ///< pixels
inline constexpr int GraphHeight = 192; ///< pixels
inline constexpr double PixelsPerDb = 3.183333333333333;
inline constexpr double ZeroDbRow = 95.4;

/// Markers are placed in position units. Their vertical scale is not the curves', and the 0.1 dB is part of it: a
/// marker does not lie exactly on its curve.
inline constexpr double UnitsPerPixel = 15.0;
inline constexpr double MarkerHalf = 60.0; ///< from a marker's corner to its centre
inline constexpr double MarkerUnitsPerDb = 48.0;
inline constexpr double MarkerZeroTop = 1447.5;
inline constexpr double MarkerGainShift = 0.1;

inline const double PixelsPerDecade = (GraphWidth - 1) / (Log10(HighestHz) - Log10(LowestHz));
inline const double MarkerUnitsPerDecade = 8655.0 / (Log10(HighestHz) - Log10(LowestHz));

/// The column of a frequency in whole hertz, 0 to 20000: -1 from 10 to 19 Hz, 0 below. The grid's columns are made of
/// it.
inline double PlotX(int hz) {
    if (hz < 10) {
        return 0.0;
    }
    return hz < LowestHz ? -1.0 : PixelsPerDecade * Log10(hz / LowestHz);
}

} // namespace nrv::model
