#include "model/tables.h"
#include "response/curves.h"
#include "response/prototypes.h"

#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using namespace nrv::response;

constexpr double Tolerance = 1e-9; // dB

TEST(Bell, IsTheSquaredBandPassTimesItsGainAtEveryCentreAndFrequency) {
    for (const double centre : model::FrequencyTable) {
        for (const double gain : {-15.0, -0.2, 7.4, 15.0}) {
            for (const double q : {28.8567888732164, 1.5, 0.642857142857143}) {
                const Curve curve = CurveOf(Bell{gain, centre, q});
                double worst = 0.0;
                for (std::size_t point = 0; point < GridPoints; ++point) {
                    const auto expected = static_cast<double>(BellLevel(gain, centre, q, PlotGrid[point]));
                    worst = Worse(worst, std::abs(curve[point] - expected));
                }
                EXPECT_LT(worst, Tolerance) << gain << " dB at " << centre << " Hz, Q " << q;
            }
        }
    }
}

TEST(Bell, GivesExactlyItsGainAtItsCentre) {
    int on_the_grid = 0;
    for (const double centre : model::FrequencyTable) {
        const std::size_t point = PointOf(centre);
        if (PlotGrid[point] != centre) {
            continue;
        }
        ++on_the_grid;
        for (const double gain : {-15.0, -14.8, -0.2, 0.2, 3.4, 15.0}) {
            EXPECT_EQ(CurveOf(Bell{gain, centre, 28.8567888732164})[point], gain) << centre << " Hz";
        }
    }
    EXPECT_GE(on_the_grid, 64); // those to 757 Hz, and some above
}

TEST(Bell, OfGainZeroIsFlatWhateverItsQ) {
    for (const double q : model::QTable) {
        const Curve curve = CurveOf(Bell{0.0, 1000.0, q});
        EXPECT_TRUE(IsFlat(curve, 0.0)) << "Q " << q;
    }
}

TEST(Bell, KeepsItsWidthAtTheHighestGain) {
    const Curve narrow = CurveOf(Bell{0.2, 400.0, 1.5});
    const Curve high = CurveOf(Bell{15.0, 400.0, 1.5});
    const Curve deep = CurveOf(Bell{-15.0, 400.0, 1.5});
    for (std::size_t point = 0; point < GridPoints; ++point) {
        EXPECT_NEAR(high[point] / 15.0, narrow[point] / 0.2, 1e-12);
        EXPECT_EQ(deep[point], -high[point]);
    }
}

TEST(Bell, IsHalfItsGainAtTheEdgesOfItsBandwidth) {
    // Where |f0/f - f/f0| = 1/Q: for Q = 1.5 and 600 Hz that is 600 (sqrt(10) +- 1) / 3.
    const Bell bell{12.0, 600.0, 1.5};
    const Curve curve = CurveOf(bell);
    for (const double edge : {600.0 * (std::sqrt(10.0) - 1.0) / 3.0, 600.0 * (std::sqrt(10.0) + 1.0) / 3.0}) {
        const std::size_t above = PointOf(edge);
        const double share = (edge - PlotGrid[above - 1]) / (PlotGrid[above] - PlotGrid[above - 1]);
        EXPECT_NEAR(curve[above - 1] + share * (curve[above] - curve[above - 1]), 6.0, 0.01);
    }
}

TEST(BellDivisor, IsOneForEveryGainButExactly15Point5) {
    for (int tenths = 0; tenths <= 300; ++tenths) {
        EXPECT_EQ(BellDivisor(tenths / 10.0), tenths == 155 ? 2.6315 : 1.0) << tenths / 10.0 << " dB";
    }
    EXPECT_EQ(BellDivisor(std::nextafter(15.5, 0.0)), 1.0);
    EXPECT_EQ(BellDivisor(std::nextafter(15.5, 16.0)), 1.0);
}

TEST(Bell, IsWidenedAtExactly15Point5) {
    for (const double gain : {15.5, -15.5}) {
        const Curve curve = CurveOf(Bell{gain, 400.0, 3.0});
        EXPECT_NEAR(curve[PointOf(500.0)], static_cast<double>(BellLevel(gain, 400.0L, 3.0L / 2.6315L, 500.0L)),
                    Tolerance);
    }
}

TEST(Shelf, IsItsRatioOfSumsAtEveryCornerAndFrequency) {
    for (const int kind : {0, 1, 2, 3, 4}) {
        for (const double gain : {-12.0, 0.5, 6.0}) {
            double worst = 0.0;
            for (const double corner : model::FrequencyTable) {
                const Curve curve = CurveOf(Shelf{ShelfKind(kind), gain, corner});
                const ReferenceShelf expected(kind, gain, corner);
                for (std::size_t point = 0; point < GridPoints; ++point) {
                    worst = Worse(worst, std::abs(curve[point] - expected.At(PlotGrid[point])));
                }
            }
            EXPECT_LT(worst, Tolerance) << "kind " << kind << ", " << gain << " dB";
        }
    }
}

TEST(Shelf, LowKindsTendToTheirGainBelowAndToZeroAbove) {
    for (const ShelfKind kind : {ShelfKind::FirstOrderLow, ShelfKind::SecondOrderLow}) {
        for (const double gain : {-12.0, 6.0}) {
            EXPECT_NEAR(CurveOf(Shelf{kind, gain, 20000.0})[PointOf(10.0)], gain, 0.02);
            EXPECT_NEAR(CurveOf(Shelf{kind, gain, 20.0})[PointOf(20000.0)], 0.0, 0.03);
        }
    }
}

TEST(Shelf, HighKindsTendToZeroBelowAndToTheirGainAbove) {
    for (const ShelfKind kind : {ShelfKind::FirstOrderHigh, ShelfKind::SecondOrderHigh}) {
        for (const double gain : {-12.0, 6.0}) {
            EXPECT_NEAR(CurveOf(Shelf{kind, gain, 20000.0})[PointOf(10.0)], 0.0, 0.03);
            EXPECT_NEAR(CurveOf(Shelf{kind, gain, 20.0})[PointOf(20000.0)], gain, 0.03);
        }
    }
}

TEST(Shelf, FirstOrderLowDoublingBelow1000HertzGives250At1000) {
    const double doubling = 20.0 * std::log10(2.0);
    EXPECT_NEAR(Level(Shelf{ShelfKind::FirstOrderLow, doubling, 1000.0}, 1000.0), 20.0 * std::log10(2000.0 / 1500.0),
                1e-12);
    EXPECT_NEAR(Level(Shelf{ShelfKind::FirstOrderLow, doubling, 1000.0}, 1000.0), 2.50, 0.005);
}

TEST(Shelf, LevelAtAFrequencyIsThatOfItsCurve) {
    for (const int kind : {0, 1, 2, 3, 4}) {
        const Shelf shelf{ShelfKind(kind), -7.5, 630.0};
        const Curve curve = CurveOf(shelf);
        for (const double f : {10.0, 630.0, 799.0, 20000.0}) {
            EXPECT_NEAR(Level(shelf, f), curve[PointOf(f)], 1e-12);
        }
    }
    EXPECT_NEAR(Level(Shelf{ShelfKind::SecondOrderHigh, 6.0, 1000.0}, 1234.5), ShelfLevel(4, 6.0L, 1000.0L, 1234.5L),
                Tolerance); // off the grid too
}

TEST(Shelf, BypassAndKindsWithNoFormAreFlat) {
    for (const int kind : {-1, 0, 5, 202}) {
        const Curve curve = CurveOf(Shelf{ShelfKind(kind), 6.0, 100.0});
        EXPECT_TRUE(IsFlat(curve, 0.0)) << "kind " << kind;
    }
}

} // namespace
} // namespace nrv::testing
