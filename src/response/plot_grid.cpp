#include "response/plot_grid.h"

#include "model/graph_scale.h"

namespace nrv::response {
namespace {

constexpr std::array<double, GridPoints> WalkGrid() {
    std::array<double, GridPoints> grid{};
    std::size_t point = 0;
    double f = 10.0;
    while (f <= 20000.0) {
        if (f > 799.0 && f < 20000.0) {
            f += 20.0;
            if (f > 20000.0) {
                f = 20000.0;
            }
        }
        grid[point++] = f;
        f += 1.0;
    }
    return grid;
}

constexpr std::array<double, GridPoints> Grid = WalkGrid();

template <class Value>
constexpr std::array<double, GridPoints> OfEachFrequency(Value value) {
    std::array<double, GridPoints> values{};
    for (std::size_t point = 0; point < GridPoints; ++point) {
        values[point] = value(Grid[point]);
    }
    return values;
}

std::array<int, GridPoints> WalkColumns() {
    std::array<int, GridPoints> columns{};
    for (std::size_t point = 0; point < GridPoints; ++point) {
        columns[point] = static_cast<int>(model::RoundHalfEven(model::PlotX(static_cast<int>(Grid[point]))));
    }
    return columns;
}

} // namespace

constinit const std::array<double, GridPoints> PlotGrid = Grid;
constinit const std::array<double, GridPoints> GridSquare = OfEachFrequency([](double f) { return f * f; });
constinit const std::array<double, GridPoints> GridInverse = OfEachFrequency([](double f) { return 1.0 / f; });
constinit const std::array<double, GridPoints> GridInverseSquare =
    OfEachFrequency([](double f) { return 1.0 / (f * f); });
const std::array<int, GridPoints> PlotColumn = WalkColumns();

} // namespace nrv::response
