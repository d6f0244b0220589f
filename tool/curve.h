#pragma once

#include "response/plot_grid.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace nrv::tool {

/// A curve of a graph and whose it is.
struct NamedCurve {
    int Channel;
    std::string Name;
    response::Curve Levels;
};

/// A line for each point of the grid: hertz, then the level of each curve in dB.
void WriteCsv(const std::vector<NamedCurve>& curves, std::ostream& out);

/// The graph of the program: 20 Hz to 20 kHz, 30 dB either way.
void WriteSvg(const std::vector<NamedCurve>& curves, std::ostream& out);

} // namespace nrv::tool
