#include "model/graph_scale.h"
#include "response/curves.h"
#include "response/prototypes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using response::GridPoints;
using response::PlotColumn;
using response::PlotGrid;

TEST(PlotGrid, IsEveryHertzTo799ThenStepsOf21ThenTheEnd) {
    const std::vector<int> expected = GridHertz();
    ASSERT_EQ(expected.size(), 1705U);
    ASSERT_EQ(PlotGrid.size(), expected.size());
    for (std::size_t point = 0; point < expected.size(); ++point) {
        EXPECT_EQ(PlotGrid[point], expected[point]) << "point " << point;
    }
}

TEST(PlotGrid, Holds799And820NextToEachOtherAndNever800) {
    EXPECT_EQ(PlotGrid[789], 799.0);
    EXPECT_EQ(PlotGrid[790], 820.0);
    EXPECT_EQ(std::count(PlotGrid.begin(), PlotGrid.end(), 800.0), 0);
}

TEST(PlotGrid, EndsWith19993And20000) {
    EXPECT_EQ(PlotGrid[GridPoints - 2], 19993.0);
    EXPECT_EQ(PlotGrid[GridPoints - 1], 20000.0);
}

TEST(PlotGrid, HasItsSquaresAndInversesBesideIt) {
    for (std::size_t point = 0; point < GridPoints; ++point) {
        const long double f = PlotGrid[point];
        EXPECT_EQ(response::GridSquare[point], PlotGrid[point] * PlotGrid[point]);
        EXPECT_DOUBLE_EQ(response::GridInverse[point], static_cast<double>(1.0L / f));
        EXPECT_DOUBLE_EQ(response::GridInverseSquare[point], static_cast<double>(1.0L / (f * f)));
    }
}

TEST(PlotColumn, PutsThreeDecadesOn575Pixels) {
    for (std::size_t point = 0; point < GridPoints; ++point) {
        const double f = PlotGrid[point];
        if (f >= 20.0) {
            EXPECT_NEAR(PlotColumn[point], 575.0 / 3.0 * std::log10(f / 20.0), 0.5 + 1e-9) << f << " Hz";
        } else {
            EXPECT_EQ(PlotColumn[point], -1) << f << " Hz";
        }
    }
    EXPECT_EQ(PlotColumn[PointOf(20.0)], 0);
    EXPECT_EQ(PlotColumn[PointOf(200.0)], 192);   // 191.67
    EXPECT_EQ(PlotColumn[PointOf(10018.0)], 517); // 517.43
    EXPECT_EQ(PlotColumn[PointOf(20000.0)], 575);
}

TEST(PlotColumn, IsTheRoundedEntryOfTheTableOfEveryHertz) {
    for (std::size_t point = 0; point < GridPoints; ++point) {
        EXPECT_EQ(PlotColumn[point], std::nearbyint(model::PlotX(static_cast<int>(PlotGrid[point]))));
    }
}

} // namespace
} // namespace nrv::testing
