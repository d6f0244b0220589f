#include "model/graph_scale.h"
#include "model/tables.h"
#include "ports/numbering.h"
#include "response/response.h"

#include <algorithm>
#include <limits>
#include <span>

// The drawing of the response display: levels to pixels.

namespace nrv::response {
namespace {

using model::PixelsPerDb;
using model::ZeroDbRow;

/// Far outside every surface and inside what a toolkit can draw.
constexpr double FarRow = 16000.0;

/// The grid point of a frequency of the grid.
std::size_t GridPointOf(double f) {
    const auto found = std::ranges::lower_bound(PlotGrid, f);
    if (found == PlotGrid.end() || *found != f) {
        throw RuntimeError(ErrorKind::IndexOutOfRange, "The curves have no point at this frequency.");
    }
    return static_cast<std::size_t>(found - PlotGrid.begin());
}

/// To the nearest row, a half going to the even neighbour. What is no number at all lies far below the surface.
int NearestRow(double y) {
    // Beside this number a double has no room for a fraction. Unlike a rounding function it works on vectors.
    constexpr double NoFractions = 6755399441055744.0;
    static_assert(std::numeric_limits<double>::digits == 53);
    return static_cast<int>(std::min(FarRow, std::max(y, -FarRow)) + NoFractions - NoFractions);
}

/// The row of a level: what is subtracted, and in this order, decides the last bit.
class RowOf {
  public:
    RowOf(const model::ParamRow& values, WindowCurves& curves, int channel, int view_mode)
        : own_(curves.ChannelCurve(channel).data()),
          start_(ZeroDbRow - values.MasterGain * PixelsPerDb - values.ChannelGain[At(channel)] * PixelsPerDb) {
        if (!IsInput(channel) && (view_mode == 1 || view_mode == 2)) {
            const int input = view_mode - 1;
            input_ = curves.ChannelCurve(input).data();
            input_gain_ = values.ChannelGain[At(input)] * PixelsPerDb;
        }
    }

    int operator()(std::size_t point) const { return NearestRow(Row(point)); }
    /// The level that the row stands for, in dB.
    double Level(std::size_t point) const { return (ZeroDbRow - Row(point)) / PixelsPerDb; }

  private:
    double Row(std::size_t point) const {
        double y = start_ - own_[point] * PixelsPerDb;
        if (input_ != nullptr) {
            y = y - input_gain_ - input_[point] * PixelsPerDb;
        }
        return y;
    }

    const double* own_;
    const double* input_ = nullptr;
    double start_;
    double input_gain_ = 0.0;
};

void StartWalk(controls::Picture& graph) {
    graph.MoveTo(20010, 600);
    graph.MoveTo(0, 600);
    graph.MoveTo(-10, 0);
}

} // namespace

controls::Colour CurveColour(int channel) {
    static constexpr std::array<controls::Colour, 8> Colours = {
        {{255, 0, 0}, {0, 0, 255}, {255, 0, 255}, {192, 0, 0}, {0, 192, 192}, {0, 255, 0}, {0, 0, 192}, {255, 128, 0}}};
    return Colours[At(channel)];
}

void Response::PlotOverlayPoint(double f, int drawn, int onto) {
    if (PlotSuspended) {
        return;
    }
    const std::size_t point = GridPointOf(f);
    Walk(drawn, onto, point, point + 1);
}

void Response::DrawOverlay(int drawn, int onto) {
    if (!PlotSuspended) {
        Walk(drawn, onto, 0, GridPoints);
    }
}

/// Draws a curve from one point of the grid to before another, with what does not change on the way taken out of it.
void Response::Walk(int drawn, int onto, std::size_t point, std::size_t end) {
    controls::Picture& graph = windows_.Current().Picture1[At(onto)];
    if (point == 0) {
        StartWalk(graph);
        ++point;
    }
    if (point == end) {
        return;
    }
    graph.SetPen(CurveColour(drawn));
    const int mode = IsInput(drawn) ? 0 : ViewMode[At(OutputOf(drawn))];
    const RowOf row_of(Values(), Curves(), drawn, mode);
    std::array<controls::Picture::Point, GridPoints> points;
    const std::span line(points.data(), end - point);
    for (controls::Picture::Point& next : line) {
        next = {PlotColumn[point], row_of(point)};
        ++point;
    }
    graph.LinesTo(line);
}

Curve Response::DrawnLevels(int channel, int view_mode) {
    const RowOf row_of(Values(), Curves(), channel, view_mode);
    Curve levels{};
    for (std::size_t point = 0; point < GridPoints; ++point) {
        levels[point] = row_of.Level(point);
    }
    return levels;
}

/// Clears a channel's graph and lays the chosen overlays on it.
void Response::DrawBackground(int channel) {
    windows_.Current().Picture1[At(channel)].Clear();
    if (IsInput(channel)) {
        return;
    }
    for (int other = InputCount; other < ChannelCount; ++other) {
        if (other != channel && OverlayMatrix[At(channel)][At(other)]) {
            DrawOverlay(other, channel);
        }
    }
}

void Response::RedrawChannel(int channel) {
    DrawBackground(channel);
    DrawOverlay(channel, channel);
}

std::string Response::ViewCaption(int output) const {
    const std::string& name = stores_.ChannelNames[At(windows_.CurrentDevice())][At(ChannelOfOutput(output))];
    return name + std::string(model::SourceSuffixes[At(ViewMode[At(output)])]);
}

void Response::SetViewMode(int option) {
    const int output = option / SumsPerOutput;
    model::Entry(ViewMode, output); // refuses what the table has no place for
    ViewMode[At(output)] = option % SumsPerOutput;
    if (output >= OutputCount) {
        return; // no box views it
    }
    const std::string caption = ViewCaption(output);
    for (int tab = 0; tab < OutputCount; ++tab) {
        for (int row = 0; row < ViewsPerOutput; ++row) {
            if (ViewedOutput(tab, row) == output) {
                windows_.Current().ViewBox(row, tab).SetCaption(caption);
            }
        }
    }
}

} // namespace nrv::response
