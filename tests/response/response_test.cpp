#include "ports/runtime_error.h"
#include "response/curves.h"
#include "response/prototypes.h"
#include "response/response.h"
#include "response/response_desk.h"

#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using namespace nrv::response;

constexpr double ResponseTolerance = 1e-9; // dB

template <class Expected>
void ExpectCurve(const Curve& curve, Expected expected, const char* what) {
    double worst = 0.0;
    for (std::size_t point = 0; point < GridPoints; ++point) {
        worst = Worse(worst, std::abs(curve[point] - static_cast<double>(expected(PlotGrid[point]))));
    }
    EXPECT_LT(worst, ResponseTolerance) << what;
}

const Prototype& FilterOf(int slope) {
    return Slopes()[static_cast<std::size_t>(slope - 1)].Filter;
}

TEST(Response, PeqCurveTakesQFromThePositionOfTheBandwidthControl) {
    ResponseDesk desk;
    struct Case {
        int Code;
        double Q;
    };
    for (const Case& at : {Case{0, 28.8567888732164}, Case{19, 1.5}, Case{59, 0.642857142857143}}) {
        desk.SetPeq(24, 6.4, 1000.0, at.Code);
        desk.Values().PeqBandwidth[24] = 2.0; // says something else and is not asked
        desk.Display.UpdatePeqCurve(24);
        ExpectCurve(
            desk.Display.Curves().PeqCurve(24), [&](double f) { return BellLevel(6.4L, 1000.0L, at.Q, f); }, "bell");
    }
}

TEST(Response, PeqCurveTakesTheNearestPositionOfABandwidthOutsideTheScale) {
    ResponseDesk desk;
    desk.SetPeq(0, -9.0, 250.0, 255);
    desk.Display.UpdatePeqCurve(0);
    ExpectCurve(
        desk.Display.Curves().PeqCurve(0), [](double f) { return BellLevel(-9.0L, 250.0L, 0.642857142857143L, f); },
        "bell");
}

TEST(Response, SectionOfGainZeroIsFlatWhateverItsQ) {
    ResponseDesk desk;
    for (const int code : {0, 8, 59}) {
        desk.SetPeq(43, 6.0, 500.0, code);
        desk.Display.UpdatePeqCurve(43);
        ASSERT_FALSE(IsFlat(desk.Display.Curves().PeqCurve(43), 0.0));
        desk.SetPeq(43, 0.0, 500.0, code);
        desk.Display.UpdatePeqCurve(43);
        EXPECT_TRUE(IsFlat(desk.Display.Curves().PeqCurve(43), 0.0));
    }
}

TEST(Response, SectionGivesExactlyItsGainAtItsFrequencyAndTheHighestIsNotNarrowed) {
    ResponseDesk desk;
    for (const double gain : {15.0, -15.0}) {
        desk.SetPeq(12, gain, 630.0, 19);
        desk.Display.UpdatePeqCurve(12);
        const Curve& curve = desk.Display.Curves().PeqCurve(12);
        EXPECT_EQ(curve[620], gain); // 630 Hz
        // Two thirds of an octave up: 630 to 780 Hz, Q 1.5 as it stands.
        const double detuning = 630.0 / 780.0 - 780.0 / 630.0;
        EXPECT_NEAR(curve[770], gain / (1.0 + 2.25 * detuning * detuning), ResponseTolerance);
    }
}

TEST(Response, HighShelvingOfAnInputAtEntry2IsSecondOrderHigh) {
    ResponseDesk desk;
    for (const int filter : {1, 3}) {
        const Curve& curve = desk.Display.Curves().ShelfCurve(filter);
        desk.SetShelf(filter, 2, -7.5, 2500.0);
        desk.Display.UpdateShelfCurve(filter);
        ExpectCurve(
            curve, [](double f) { return ShelfLevel(4, -7.5L, 2500.0L, f); }, "entry 2");
        desk.SetShelf(filter, 1, 4.0, 2500.0);
        desk.Display.UpdateShelfCurve(filter);
        ExpectCurve(
            curve, [](double f) { return ShelfLevel(3, 4.0L, 2500.0L, f); }, "entry 1");
        desk.SetShelf(filter, 0, 4.0, 2500.0);
        desk.Display.UpdateShelfCurve(filter);
        EXPECT_TRUE(IsFlat(curve, 0.0));
    }
}

TEST(Response, LowShelvingOfAnInputKeepsItsEntry) {
    ResponseDesk desk;
    for (const int filter : {0, 2}) {
        for (const int type : {0, 1, 2}) {
            desk.SetShelf(filter, type, 5.5, 160.0);
            desk.Display.UpdateShelfCurve(filter);
            ExpectCurve(
                desk.Display.Curves().ShelfCurve(filter),
                [type](double f) { return ShelfLevel(type, 5.5L, 160.0L, f); }, "low");
        }
    }
}

TEST(Response, ToneFilterOfAnOutputKeepsItsEntryTwoBeingLowAndFourHigh) {
    ResponseDesk desk;
    for (int filter = 4; filter < 10; ++filter) {
        for (const int type : {0, 1, 2, 3, 4}) {
            desk.SetShelf(filter, type, -3.5, 1062.0);
            desk.Display.UpdateShelfCurve(filter);
            ExpectCurve(
                desk.Display.Curves().ShelfCurve(filter),
                [type](double f) { return ShelfLevel(type, -3.5L, 1062.0L, f); }, "output");
        }
    }
}

TEST(Response, ShelfResponseIsTheLevelOfAToneFilterAtAnyFrequency) {
    ResponseDesk desk;
    desk.SetShelf(4, 1, 20.0 * std::log10(2.0), 1000.0);
    EXPECT_NEAR(desk.Display.ShelfResponse(4, 1000.0), 2.50, 0.005);
    desk.SetShelf(1, 2, 6.0, 500.0);
    EXPECT_NEAR(desk.Display.ShelfResponse(1, 1234.5), ShelfLevel(4, 6.0L, 500.0L, 1234.5L), ResponseTolerance);
    desk.SetShelf(1, 0, 6.0, 500.0);
    EXPECT_EQ(desk.Display.ShelfResponse(1, 1234.5), 0.0);
}

TEST(Response, EvenSidesAreHighPassesAndOddOnesLowPasses) {
    ResponseDesk desk;
    for (int side = 0; side < 12; ++side) {
        const int slope = 1 + side % 10;
        desk.SetCrossover(side, slope, 475.0);
        desk.Display.UpdateCrossoverCurve(side);
        ExpectCurve(
            desk.Display.Curves().CrossoverCurve(side),
            [&](double f) {
                return LevelOf(side % 2 == 0 ? FilterOf(slope).HighPass(f, 475.0) : FilterOf(slope).LowPass(f, 475.0));
            },
            "side");
    }
}

TEST(Response, SideInBypassIsFlat) {
    ResponseDesk desk;
    desk.SetCrossover(7, 8, 475.0);
    desk.Display.UpdateCrossoverCurve(7);
    EXPECT_FALSE(IsFlat(desk.Display.Curves().CrossoverCurve(7), 0.0));
    desk.SetCrossover(7, 0, 475.0);
    desk.Display.UpdateCrossoverCurve(7);
    EXPECT_TRUE(IsFlat(desk.Display.Curves().CrossoverCurve(7), 0.0));
}

TEST(Response, ListPositionPastItsEndStandsForTheNearestEntry) {
    ResponseDesk desk;
    desk.SetCrossover(0, 10, 475.0);
    desk.Display.UpdateCrossoverCurve(0);
    const Curve last_slope = desk.Display.Curves().CrossoverCurve(0);
    desk.SetCrossover(0, 0, 475.0);
    desk.Display.UpdateCrossoverCurve(0);
    ASSERT_NE(desk.Display.Curves().CrossoverCurve(0), last_slope);
    desk.SetCrossover(0, 200, 475.0);
    desk.Display.UpdateCrossoverCurve(0);
    EXPECT_EQ(desk.Display.Curves().CrossoverCurve(0), last_slope);

    desk.SetShelf(0, 2, 4.5, 3150.0); // an input's list ends at 2
    desk.Display.UpdateShelfCurve(0);
    const Curve last_kind = desk.Display.Curves().ShelfCurve(0);
    desk.SetShelf(0, 0, 4.5, 3150.0);
    desk.Display.UpdateShelfCurve(0);
    ASSERT_NE(desk.Display.Curves().ShelfCurve(0), last_kind);
    desk.SetShelf(0, 99, 4.5, 3150.0);
    desk.Display.UpdateShelfCurve(0);
    EXPECT_EQ(desk.Display.Curves().ShelfCurve(0), last_kind);
}

TEST(Response, TotalOfAnOutputIsTheSumOfItsSectionsItsToneFilterAndItsSides) {
    ResponseDesk desk;
    for (int section = 28; section < 32; ++section) {
        desk.SetPeq(section, section - 30.4, 100.0 * (section - 27), 19);
        desk.Display.UpdatePeqCurve(section);
    }
    desk.SetShelf(6, 3, 4.5, 3150.0);
    desk.Display.UpdateShelfCurve(6);
    desk.SetCrossover(4, 9, 80.0);
    desk.Display.UpdateCrossoverCurve(4);
    desk.SetCrossover(5, 4, 8000.0);
    desk.Display.UpdateCrossoverCurve(5);
    ExpectCurve(
        desk.Display.ChannelTotal(4),
        [](long double f) {
            long double sum = ShelfLevel(3, 4.5L, 3150.0L, f);
            for (int section = 28; section < 32; ++section) {
                sum += BellLevel(section - 30.4L, 100.0L * (section - 27), 1.5L, f);
            }
            const auto hertz = static_cast<double>(f);
            return sum + LevelOf(FilterOf(9).HighPass(hertz, 80.0)) + LevelOf(FilterOf(4).LowPass(hertz, 8000.0));
        },
        "Out 3");
}

TEST(Response, TotalOfAnInputIsTheSumOfItsTenSectionsAndTwoShelves) {
    ResponseDesk desk;
    for (int section = 10; section < 20; ++section) {
        desk.SetPeq(section, 0.4 * (section - 14), 50.0 * (section - 9), 19);
        desk.Display.UpdatePeqCurve(section);
    }
    desk.SetShelf(2, 2, -6.0, 100.0);
    desk.Display.UpdateShelfCurve(2);
    desk.SetShelf(3, 1, 3.0, 5000.0);
    desk.Display.UpdateShelfCurve(3);
    ExpectCurve(
        desk.Display.ChannelTotal(1),
        [](long double f) {
            long double sum = ShelfLevel(2, -6.0L, 100.0L, f) + ShelfLevel(3, 3.0L, 5000.0L, f);
            for (int section = 10; section < 20; ++section) {
                sum += BellLevel(0.4L * (section - 14), 50.0L * (section - 9), 1.5L, f);
            }
            return sum;
        },
        "In B");
}

TEST(Response, GainsAreNotInTheTotal) {
    ResponseDesk desk;
    desk.Values().MasterGain = 6.0;
    desk.Values().ChannelGain.fill(-3.0);
    desk.SetPeq(20, 2.0, 1000.0, 19);
    desk.Display.UpdatePeqCurve(20);
    ExpectCurve(
        desk.Display.ChannelTotal(2), [](double f) { return BellLevel(2.0L, 1000.0L, 1.5L, f); }, "Out 1");
}

TEST(Response, ChangingOneSectionLeavesTheOthersAndChangesTheTotalByItsDifference) {
    ResponseDesk desk;
    for (int section = 0; section < 10; ++section) {
        desk.SetPeq(section, 3.0, 40.0 * (section + 1), 10);
        desk.Display.UpdatePeqCurve(section);
    }
    const auto before = std::make_unique<WindowCurves>(desk.Display.Curves());
    const Curve total_before = desk.Display.ChannelTotal(0);
    desk.SetPeq(4, -8.2, 630.0, 30);
    desk.Display.UpdatePeqCurve(4);
    WindowCurves& after = desk.Display.Curves();
    for (int section = 0; section < 44; ++section) {
        EXPECT_EQ(after.PeqCurve(section) == before->PeqCurve(section), section != 4) << section;
    }
    for (int filter = 0; filter < 10; ++filter) {
        EXPECT_EQ(after.ShelfCurve(filter), before->ShelfCurve(filter)) << filter;
    }
    for (int side = 0; side < 12; ++side) {
        EXPECT_EQ(after.CrossoverCurve(side), before->CrossoverCurve(side)) << side;
    }
    for (std::size_t point = 0; point < GridPoints; ++point) {
        EXPECT_NEAR(desk.Display.ChannelTotal(0)[point] - total_before[point],
                    after.PeqCurve(4)[point] - before->PeqCurve(4)[point], 1e-12);
    }
    for (int channel = 1; channel < 8; ++channel) {
        EXPECT_TRUE(IsFlat(desk.Display.ChannelTotal(channel), 0.0));
    }
}

TEST(Response, PartNotUpdatedCountsByItsLastComputedValues) {
    ResponseDesk desk;
    desk.SetPeq(20, 5.0, 100.0, 19);
    desk.Display.UpdatePeqCurve(20);
    desk.SetPeq(20, -5.0, 100.0, 19); // stored, and not computed
    desk.SetPeq(21, 0.0, 100.0, 19);
    desk.Display.UpdatePeqCurve(21);
    EXPECT_EQ(desk.Display.ChannelTotal(2)[90], 5.0);
}

TEST(Response, WindowsKeepTheirOwnCurvesFromTheirOwnDevices) {
    ResponseDesk desk;
    desk.SetPeq(0, 6.0, 100.0, 19);
    desk.Display.UpdatePeqCurve(0);
    desk.Windows.CurrentWindow = ResponseDesk::OtherSlot;
    EXPECT_TRUE(IsFlat(desk.Display.ChannelTotal(0), 0.0));
    desk.SetPeq(0, -4.0, 200.0, 30);
    desk.Display.UpdatePeqCurve(0);
    EXPECT_EQ(desk.Display.ChannelTotal(0)[190], -4.0);
    desk.Windows.CurrentWindow = 0;
    EXPECT_EQ(desk.Display.ChannelTotal(0)[90], 6.0);
    EXPECT_NE(desk.Display.ChannelTotal(0)[190], -4.0);
}

TEST(Response, ListPositionBeforeTheFirstStandsForTheFirst) {
    ResponseDesk desk;
    desk.SetCrossover(0, 10, 475.0);
    desk.Display.UpdateCrossoverCurve(0);
    desk.SetCrossover(0, controls::List::None, 475.0);
    desk.Display.UpdateCrossoverCurve(0);
    EXPECT_TRUE(IsFlat(desk.Display.Curves().CrossoverCurve(0), 0.0));

    for (const int filter : {0, 1, 4}) {
        desk.SetShelf(filter, 2, 4.5, 3150.0);
        desk.Display.UpdateShelfCurve(filter);
        desk.SetShelf(filter, controls::List::None, 4.5, 3150.0);
        desk.Display.UpdateShelfCurve(filter);
        EXPECT_TRUE(IsFlat(desk.Display.Curves().ShelfCurve(filter), 0.0));
    }
}

} // namespace
} // namespace nrv::testing
