#include "model/tables.h"
#include "ports/runtime_error.h"
#include "response/curves.h"
#include "response/prototypes.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace nrv::testing {
namespace {

using namespace nrv::response;

/// 1e-9 dB, and deep in a stop band a relative 1e-12 more.
bool SameLevel(double level, double expected) {
    return std::abs(level - expected) <= 1e-9 + 1e-12 * std::abs(expected);
}

class EachSlope : public ::testing::TestWithParam<Slope> {};

std::string NameOf(const ::testing::TestParamInfo<Slope>& slope) {
    return slope.param.Name;
}

INSTANTIATE_TEST_SUITE_P(Crossover, EachSlope, ::testing::ValuesIn(Slopes()), NameOf);

TEST_P(EachSlope, LowPassIsItsPrototypeAtEveryCornerAndFrequency) {
    for (const double corner : model::FrequencyTable) {
        const Curve curve = CurveOf(Crossover{Side::LowPass, GetParam().Code, corner});
        int wrong = 0;
        for (std::size_t point = 0; point < GridPoints; ++point) {
            wrong += SameLevel(curve[point], LevelOf(GetParam().Filter.LowPass(PlotGrid[point], corner))) ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << "corner " << corner;
    }
}

TEST_P(EachSlope, HighPassIsItsPrototypeAtEveryCornerAndFrequency) {
    for (const double corner : model::FrequencyTable) {
        const Curve curve = CurveOf(Crossover{Side::HighPass, GetParam().Code, corner});
        int wrong = 0;
        for (std::size_t point = 0; point < GridPoints; ++point) {
            wrong += SameLevel(curve[point], LevelOf(GetParam().Filter.HighPass(PlotGrid[point], corner))) ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << "corner " << corner;
    }
}

TEST_P(EachSlope, StandsAtItsCornerLevel) {
    for (const double corner : {20.0, 283.0, 799.0, 1450.0, 19993.0, 20000.0}) { // of the grid
        const std::size_t point = PointOf(corner);
        ASSERT_EQ(PlotGrid[point], corner);
        EXPECT_NEAR(CurveOf(Crossover{Side::LowPass, GetParam().Code, corner})[point], GetParam().CornerLevel, 0.006);
        EXPECT_NEAR(CurveOf(Crossover{Side::HighPass, GetParam().Code, corner})[point], GetParam().CornerLevel, 0.006);
    }
}

TEST_P(EachSlope, FallsBySixDecibelsAnOctaveAndOrderFarFromItsCorner) {
    const double per_octave = 20.0 * std::log10(2.0) * GetParam().Order;
    const Curve high = CurveOf(Crossover{Side::HighPass, GetParam().Code, 20000.0});
    EXPECT_NEAR(high[PointOf(20.0)] - high[PointOf(10.0)], per_octave, 0.001);
    EXPECT_NEAR(high[PointOf(200.0)] - high[PointOf(100.0)], per_octave, 0.02);
    const Curve low = CurveOf(Crossover{Side::LowPass, GetParam().Code, 20.0});
    const double octaves = std::log2(20000.0 / 10018.0);
    EXPECT_NEAR(low[PointOf(10018.0)] - low[PointOf(20000.0)], per_octave * octaves, 0.001);
}

TEST_P(EachSlope, PassesFarInsideItsPassBand) {
    EXPECT_NEAR(CurveOf(Crossover{Side::LowPass, GetParam().Code, 20000.0})[PointOf(10.0)], GetParam().PassLevel,
                0.006);
    EXPECT_NEAR(CurveOf(Crossover{Side::HighPass, GetParam().Code, 20.0})[PointOf(20000.0)], GetParam().PassLevel,
                0.006);
}

TEST_P(EachSlope, HighPassMirrorsTheLowPass) {
    // f and 40000 / f lie equally far from 200 Hz on the scale, and both are of the grid.
    const Curve low = CurveOf(Crossover{Side::LowPass, GetParam().Code, 200.0});
    const Curve high = CurveOf(Crossover{Side::HighPass, GetParam().Code, 200.0});
    for (const double f : {80.0, 100.0, 160.0, 200.0, 250.0, 400.0, 500.0}) {
        EXPECT_TRUE(SameLevel(low[PointOf(f)], high[PointOf(40000.0 / f)])) << f << " Hz";
    }
}

TEST(Crossover, BypassIsZeroAtAllFrequenciesWhateverItsCorner) {
    for (const Side side : {Side::LowPass, Side::HighPass}) {
        for (const double corner : {0.0, 20.0, 1000.0, 20000.0}) { // a corner of 0 would show a logarithm
            const Curve curve = CurveOf(Crossover{side, 0, corner});
            EXPECT_TRUE(IsFlat(curve, 0.0));
        }
    }
}

TEST(Crossover, LinkwitzRileyStandsAtMinusSixAtItsCornerAndButterworthAtMinusThree) {
    const std::size_t point = PointOf(250.0);
    for (const Side side : {Side::LowPass, Side::HighPass}) {
        for (const int code : {3, 9}) {
            EXPECT_NEAR(CurveOf(Crossover{side, code, 250.0})[point], -20.0 * std::log10(2.0), 1e-9);
        }
        for (const int code : {1, 2, 6, 8}) {
            EXPECT_NEAR(CurveOf(Crossover{side, code, 250.0})[point], -10.0 * std::log10(2.0), 1e-9);
        }
    }
}

TEST(Crossover, BesselLowPassOf1000HertzStandsAtMinus286AtItsCorner) {
    // 1000 Hz is not of the grid: its neighbours 988 and 1009 enclose the level.
    const Curve curve = CurveOf(Crossover{Side::LowPass, 4, 1000.0});
    const double before = curve[PointOf(988.0)];
    const double after = curve[PointOf(1009.0)];
    EXPECT_NEAR(before + (after - before) * 12.0 / 21.0, -2.86, 0.006);
    EXPECT_NEAR(CurveOf(Crossover{Side::LowPass, 4, 100.0})[PointOf(100.0)], -2.86, 0.005);
}

TEST(Crossover, EvenChebyshevStandsAtMinusThreeAtItsCornerAndFarInside) {
    for (const int code : {5, 10}) {
        const Curve curve = CurveOf(Crossover{Side::LowPass, code, 20000.0});
        EXPECT_NEAR(curve[PointOf(20000.0)], -3.01, 0.006);
        EXPECT_NEAR(curve[PointOf(10.0)], -10.0 * std::log10(2.0), 1e-4);
    }
}

TEST(Crossover, ChebyshevRippleStaysBetweenZeroAndMinusThreeInThePassBand) {
    for (const int code : {5, 7, 10}) {
        const Curve curve = CurveOf(Crossover{Side::LowPass, code, 20000.0});
        EXPECT_NEAR(*std::ranges::max_element(curve), 0.0, 0.01);
        EXPECT_NEAR(*std::ranges::min_element(curve), -3.01, 0.01);
    }
}

/// The curves' magnitudes with the prototypes' phases, added as the air adds them.
double LevelOfSum(const Slope& slope, double corner, double polarity, std::size_t point, const Curve& low,
                  const Curve& high) {
    const double f = PlotGrid[point];
    const Complex below = std::polar(std::pow(10.0, low[point] / 20.0), std::arg(slope.Filter.LowPass(f, corner)));
    const Complex above = std::polar(std::pow(10.0, high[point] / 20.0), std::arg(slope.Filter.HighPass(f, corner)));
    return LevelOf(below + polarity * above);
}

TEST(Crossover, LinkwitzRileyPairSumsFlat) {
    struct Pair {
        int Code;
        double Polarity; // the 12 dB pair sums flat with one side turned over
    };
    for (const Pair pair : {Pair{3, -1.0}, Pair{9, 1.0}}) {
        const Slope& slope = Slopes()[static_cast<std::size_t>(pair.Code - 1)];
        for (const double corner : {20.0, 100.0, 1000.0, 2500.0, 20000.0}) {
            const Curve low = CurveOf(Crossover{Side::LowPass, pair.Code, corner});
            const Curve high = CurveOf(Crossover{Side::HighPass, pair.Code, corner});
            double worst = 0.0;
            for (std::size_t point = 0; point < GridPoints; ++point) {
                worst = Worse(worst, std::abs(LevelOfSum(slope, corner, pair.Polarity, point, low, high)));
            }
            EXPECT_LT(worst, 1e-9) << slope.Name << " at " << corner;
        }
    }
}

TEST(Crossover, LinkwitzRileyPairOf12DecibelsCancelsAtItsCornerWithBothSidesUpright) {
    const Curve low = CurveOf(Crossover{Side::LowPass, 3, 100.0});
    const Curve high = CurveOf(Crossover{Side::HighPass, 3, 100.0});
    EXPECT_LT(LevelOfSum(Slopes()[2], 100.0, 1.0, PointOf(100.0), low, high), -250.0);
}

TEST(Crossover, RefusesASlopeThatIsNoneAndKeepsTheCurve) {
    for (const int code : {-1, 11, 200}) {
        Curve curve;
        curve.fill(-7.0);
        try {
            Evaluate(Crossover{Side::LowPass, code, 1000.0}, curve);
            FAIL() << "code " << code << " went through";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::IndexOutOfRange);
        }
        EXPECT_TRUE(IsFlat(curve, -7.0));
    }
}

} // namespace
} // namespace nrv::testing
