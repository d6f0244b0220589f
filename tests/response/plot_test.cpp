#include "ports/numbering.h"
#include "ports/runtime_error.h"
#include "response/prototypes.h"
#include "response/response_desk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace nrv::testing {
namespace {

using namespace nrv::response;
using controls::Colour;
using controls::Picture;
using Points = std::vector<Picture::Point>;

constexpr Colour InARed{255, 0, 0};
constexpr Colour InBBlue{0, 0, 255};
constexpr Colour Out1Magenta{255, 0, 255};
constexpr Colour Out2DarkRed{192, 0, 0};
constexpr Colour Out3Cyan{0, 192, 192};
constexpr Colour Out4Green{0, 255, 0};
constexpr Colour Out5Navy{0, 0, 192};
constexpr Colour Out6Orange{255, 128, 0};
constexpr std::array<Colour, 8> Colours = {InARed,   InBBlue,   Out1Magenta, Out2DarkRed,
                                           Out3Cyan, Out4Green, Out5Navy,    Out6Orange};

/// Worked out by hand and not by a rounding function, for levels whose row lies on no half.
int RowOfLevel(long double level) {
    const long double y = 95.4L - level * 191.0L / 60.0L;
    return static_cast<int>(std::floor(y + 0.5L));
}

int ColumnOfHertz(int hertz) {
    return hertz < 20 ? -1 : static_cast<int>(std::floor(575.0L / 3.0L * std::log10(hertz / 20.0L) + 0.5L));
}

/// A whole curve on a graph: from (-10, 0) through the points from 11 Hz on.
template <class LevelAt>
Points PixelsOf(LevelAt level_at) {
    Points pixels{{-10, 0}};
    for (const int hertz : GridHertz()) {
        if (hertz != 10) {
            pixels.push_back({ColumnOfHertz(hertz), RowOfLevel(level_at(static_cast<long double>(hertz)))});
        }
    }
    return pixels;
}

void ExpectStroke(const Picture::Stroke& stroke, Colour colour, const Points& pixels) {
    EXPECT_EQ(stroke.Pen, colour);
    ASSERT_EQ(stroke.Points.size(), pixels.size());
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        ASSERT_EQ(stroke.Points[i], pixels[i])
            << "point " << i << ": (" << stroke.Points[i].X << ", " << stroke.Points[i].Y << "), not (" << pixels[i].X
            << ", " << pixels[i].Y << ")";
    }
}

/// The row of a channel's graph at its right edge.
int LastRow(ResponseDesk& desk, int channel) {
    desk.Display.RedrawChannel(channel);
    return desk.Graph(channel).Strokes().back().Points.back().Y;
}

TEST(RedrawChannel, DrawsNothingButAStraightLineAt95WhenAllIsAtZero) {
    ResponseDesk desk;
    for (int channel = 0; channel < 8; ++channel) {
        desk.Display.RedrawChannel(channel);
        const auto strokes = desk.Graph(channel).Strokes();
        ASSERT_EQ(strokes.size(), 1U);
        ASSERT_EQ(strokes[0].Points.size(), 1705U);
        EXPECT_EQ(strokes[0].Points[0], (Picture::Point{-10, 0}));
        EXPECT_EQ(strokes[0].Points[1], (Picture::Point{-1, 95})); // 11 Hz
        EXPECT_EQ(strokes[0].Points[9], (Picture::Point{-1, 95})); // 19 Hz
        EXPECT_EQ(strokes[0].Points[10], (Picture::Point{0, 95})); // 20 Hz
        EXPECT_EQ(strokes[0].Points[1704], (Picture::Point{575, 95}));
        int column = -1;
        for (std::size_t i = 1; i < 1705; ++i) {
            EXPECT_EQ(strokes[0].Points[i].Y, 95);
            EXPECT_GE(strokes[0].Points[i].X, column);
            column = strokes[0].Points[i].X;
        }
    }
}

TEST(RedrawChannel, MovesTheWholeCurveUpTo86ForThreeDecibelsOfGain) {
    ResponseDesk desk;
    desk.Values().ChannelGain[5] = 3.0;
    desk.Display.RedrawChannel(5);
    for (const Picture::Point& point : std::span(desk.Graph(5).Strokes()[0].Points).subspan(1)) {
        EXPECT_EQ(point.Y, 86); // 95.4 - 9.55 = 85.85
    }
}

TEST(RedrawChannel, DrawsEachChannelInItsColour) {
    ResponseDesk desk;
    for (int channel = 0; channel < 8; ++channel) {
        desk.Display.RedrawChannel(channel);
        EXPECT_EQ(desk.Graph(channel).Strokes()[0].Pen, Colours[At(channel)]) << channel;
        EXPECT_EQ(CurveColour(channel), Colours[At(channel)]) << channel;
    }
}

TEST(RedrawChannel, PutsFiltersAndGainsOfAnOutputOnTheirPixels) {
    ResponseDesk desk;
    desk.Values().MasterGain = -1.4;
    desk.Values().ChannelGain[4] = 2.2;
    desk.SetPeq(29, 11.6, 1250.0, 19);
    desk.SetShelf(6, 3, -5.5, 4000.0);
    desk.SetCrossover(4, 7, 100.0);
    desk.SetCrossover(5, 10, 9000.0);
    desk.Display.UpdatePeqCurve(29);
    desk.Display.UpdateShelfCurve(6);
    desk.Display.UpdateCrossoverCurve(4);
    desk.Display.UpdateCrossoverCurve(5);
    const Points pixels = PixelsOf([](long double f) {
        const auto hertz = static_cast<double>(f);
        return -1.4L + 2.2L + BellLevel(11.6L, 1250.0L, 1.5L, f) + ShelfLevel(3, -5.5L, 4000.0L, f) +
               LevelOf(Slopes()[6].Filter.HighPass(hertz, 100.0)) + LevelOf(Slopes()[9].Filter.LowPass(hertz, 9000.0));
    });
    ASSERT_EQ(desk.Graph(4).Strokes().size(), 1U);
    ExpectStroke(desk.Graph(4).Strokes()[0], Out3Cyan, pixels);
    desk.Display.RedrawChannel(4);
    ASSERT_EQ(desk.Graph(4).Strokes().size(), 1U);
    ExpectStroke(desk.Graph(4).Strokes()[0], Out3Cyan, pixels);
}

TEST(RedrawChannel, IsWhatAWalkOfPlotPointDraws) {
    ResponseDesk desk;
    desk.Display.ViewMode[1] = 2;
    desk.Values().ChannelGain[1] = -2.4;
    desk.SetPeq(25, 9.0, 400.0, 7);
    desk.SetPeq(10, -6.0, 2000.0, 30);
    desk.Display.UpdatePeqCurve(10);
    desk.Display.UpdatePeqCurve(25);
    const Points redrawn = desk.Graph(3).Strokes()[0].Points;
    desk.Form().Picture1[3].Clear();
    for (const int hertz : GridHertz()) {
        desk.Display.PlotPoint(hertz, 3);
    }
    ASSERT_EQ(desk.Graph(3).Strokes().size(), 1U);
    ExpectStroke(desk.Graph(3).Strokes()[0], Out2DarkRed, redrawn);
}

TEST(Update, DrawsTheGraphOfItsOwnChannelAlone) {
    ResponseDesk desk;
    desk.Display.UpdatePeqCurve(19);
    desk.Display.UpdateShelfCurve(0);
    desk.Display.UpdateCrossoverCurve(11);
    for (int channel = 0; channel < 8; ++channel) {
        const bool drawn = channel == 0 || channel == 1 || channel == 7;
        EXPECT_EQ(desk.Graph(channel).Strokes().size(), drawn ? 1U : 0U) << channel;
    }
}

TEST(Update, DrawsTheOverlaysUnderTheNewCurve) {
    ResponseDesk desk;
    desk.Display.OverlayMatrix[3][6] = true;
    desk.SetPeq(24, 3.0, 1000.0, 19);
    desk.SetCrossover(3, 0, 1000.0);
    for (const auto& update : {std::function<void()>([&] { desk.Display.UpdatePeqCurve(24); }),
                               std::function<void()>([&] { desk.Display.UpdateShelfCurve(5); }),
                               std::function<void()>([&] { desk.Display.UpdateCrossoverCurve(3); })}) {
        desk.Form().Picture1[3].Clear();
        update();
        ASSERT_EQ(desk.Graph(3).Strokes().size(), 2U);
        EXPECT_EQ(desk.Graph(3).Strokes()[0].Pen, Out5Navy);
        EXPECT_EQ(desk.Graph(3).Strokes()[1].Pen, Out2DarkRed);
    }
}

TEST(RedrawChannel, LaysOverlaysInRisingOrderUnderTheChannelsOwnCurve) {
    ResponseDesk desk;
    for (const std::size_t other : {7U, 2U, 5U}) {
        desk.Display.OverlayMatrix[4][other] = true;
        desk.Values().ChannelGain[other] = static_cast<double>(other);
    }
    desk.Display.RedrawChannel(4);
    const auto strokes = desk.Graph(4).Strokes();
    ASSERT_EQ(strokes.size(), 4U);
    ExpectStroke(strokes[0], Out1Magenta, PixelsOf([](long double) { return 2.0L; }));
    ExpectStroke(strokes[1], Out4Green, PixelsOf([](long double) { return 5.0L; }));
    ExpectStroke(strokes[2], Out6Orange, PixelsOf([](long double) { return 7.0L; }));
    ExpectStroke(strokes[3], Out3Cyan, PixelsOf([](long double) { return 0.0L; }));
}

TEST(RedrawChannel, GivesInputsNoOverlaysAndNoOutputItself) {
    ResponseDesk desk;
    for (auto& row : desk.Display.OverlayMatrix) {
        row.fill(true);
    }
    EXPECT_EQ((desk.Display.RedrawChannel(0), desk.Graph(0).Strokes().size()), 1U);
    EXPECT_EQ((desk.Display.RedrawChannel(1), desk.Graph(1).Strokes().size()), 1U);
    // Five others and its own: no input, and not itself twice.
    EXPECT_EQ((desk.Display.RedrawChannel(2), desk.Graph(2).Strokes().size()), 6U);
    EXPECT_EQ((desk.Display.RedrawChannel(7), desk.Graph(7).Strokes().size()), 6U);
}

TEST(RedrawChannel, DrawsAnOverlaidOutputInItsOwnViewMode) {
    ResponseDesk desk;
    desk.Values().ChannelGain[0] = 4.0; // In A
    desk.Values().ChannelGain[1] = 8.0; // In B
    desk.Display.ViewMode[0] = 1;       // Out 1 with In A
    desk.Display.ViewMode[1] = 2;       // Out 2 with In B
    desk.Display.OverlayMatrix[3][2] = true;
    desk.Display.OverlayMatrix[3][4] = true; // Out 3 by itself
    desk.Display.RedrawChannel(3);
    const auto strokes = desk.Graph(3).Strokes();
    ASSERT_EQ(strokes.size(), 3U);
    ExpectStroke(strokes[0], Out1Magenta, PixelsOf([](long double) { return 4.0L; }));
    ExpectStroke(strokes[1], Out3Cyan, PixelsOf([](long double) { return 0.0L; }));
    ExpectStroke(strokes[2], Out2DarkRed, PixelsOf([](long double) { return 8.0L; }));
}

TEST(DrawOverlay, DrawsAChannelOnTheGraphOfAnother) {
    ResponseDesk desk;
    desk.SetLevel(6, -10.0);
    desk.Display.DrawOverlay(6, 2);
    desk.Display.PlotOverlayPoint(10.0, 7, 2);
    desk.Display.PlotOverlayPoint(20000.0, 7, 2);
    const auto strokes = desk.Graph(2).Strokes();
    ASSERT_EQ(strokes.size(), 2U);
    ExpectStroke(strokes[0], Out5Navy, PixelsOf([](long double) { return -10.0L; }));
    ExpectStroke(strokes[1], Out6Orange, {{-10, 0}, {575, 95}});
    EXPECT_TRUE(desk.Graph(6).Strokes().empty());
}

class WithInput : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(ViewMode, WithInput, ::testing::Values(1, 2), [](const auto& mode) {
    return mode.param == 1 ? std::string("OutAndInputA") : std::string("OutAndInputB");
});

TEST_P(WithInput, AddsTheInputsFiltersAndGainAndTheMasterGainOnce) {
    ResponseDesk desk;
    desk.Values().MasterGain = 5.0;
    desk.Values().ChannelGain = {1.2, -2.4, 0.0, 0.0, 0.0, 0.0, 0.0, -3.8};
    desk.SetPeq(3, 7.0, 500.0, 19);    // In A
    desk.SetPeq(13, -7.0, 3150.0, 19); // In B
    desk.SetPeq(41, 4.0, 100.0, 19);   // Out 6
    desk.Display.UpdatePeqCurve(3);
    desk.Display.UpdatePeqCurve(13);
    desk.Display.UpdatePeqCurve(41);
    desk.Display.ViewMode[5] = GetParam();
    desk.Display.RedrawChannel(7);
    const bool in_a = GetParam() == 1;
    ExpectStroke(desk.Graph(7).Strokes()[0], Out6Orange, PixelsOf([in_a](long double f) {
                     const long double input =
                         in_a ? 1.2L + BellLevel(7.0L, 500.0L, 1.5L, f) : -2.4L + BellLevel(-7.0L, 3150.0L, 1.5L, f);
                     return 5.0L - 3.8L + BellLevel(4.0L, 100.0L, 1.5L, f) + input;
                 }));
    // The inputs' own graphs know no view mode.
    desk.Display.ViewMode.fill(GetParam());
    desk.Display.RedrawChannel(0);
    ExpectStroke(desk.Graph(0).Strokes()[0], InARed,
                 PixelsOf([](long double f) { return 5.0L + 1.2L + BellLevel(7.0L, 500.0L, 1.5L, f); }));
}

TEST(PlotPoint, IsForFrequenciesOfTheGrid) {
    ResponseDesk desk;
    try {
        desk.Display.PlotPoint(20001, 2);
        ADD_FAILURE() << "was drawn";
    } catch (const RuntimeError& error) {
        EXPECT_STREQ(error.what(), "The curves have no point at this frequency.");
    }
}

TEST(PlotPoint, RoundsAHalfToTheEvenRow) {
    struct Case {
        double Level;
        double Exactly; // 95.4 - Level * 3.183333333333333 as a double
        int Row;
    };
    const auto cases = std::to_array<Case>({
        {-0.03141361256544324, 95.5, 96},
        {0.28272251308900703, 94.5, 94},
        {0.5968586387434573, 93.5, 94},
        {29.811518324607334, 0.5, 0},
        {30.125654450261784, -0.5, 0},
        {30.439790575916234, -1.5, -2},
        {-30.18848167539267, 191.5, 192},
    });
    ResponseDesk desk;
    for (const Case& at : cases) {
        ASSERT_EQ(95.4 - at.Level * 3.183333333333333, at.Exactly);
        desk.SetLevel(2, at.Level);
        EXPECT_EQ(LastRow(desk, 2), at.Row) << at.Exactly;
        desk.SetLevel(0, at.Level);
        EXPECT_EQ(LastRow(desk, 0), at.Row) << at.Exactly;
    }
}

TEST(PlotPoint, SubtractsMasterThenChannelGainThenCurve) {
    struct Case {
        double Master;
        double Gain;
        double Level;
        int Row; // any other order, or the sum at once, falls to the row beside it
    };
    const auto cases = std::to_array<Case>({{9.8, -5.0, 5.84921465968587, 62},
                                            {6.8, 0.4, 14.75811518324608, 26},
                                            {-10.4, 0.2, 31.21570680628272, 28},
                                            {9.8, -1.8, 12.073298429319378, 32},
                                            {-8.4, 11.4, -5.8586387434555, 104},
                                            {-10.0, 9.8, 21.21570680628272, 28}});
    ResponseDesk desk;
    for (const Case& at : cases) {
        desk.Values().MasterGain = at.Master;
        desk.Values().ChannelGain[1] = at.Gain;
        desk.SetLevel(1, at.Level);
        EXPECT_EQ(LastRow(desk, 1), at.Row) << at.Master << ", " << at.Gain << ", " << at.Level;
    }
}

TEST(PlotPoint, SubtractsTheInputsGainAndThenItsCurveBehindTheOutputs) {
    struct Case {
        double Master;
        double Gain;
        double Level;
        double InputGain;
        double InputLevel;
        int Row;
    };
    const auto cases = std::to_array<Case>({{-4.2, -9.2, -0.42857142857142855, -10.0, 30.7081525804039, 74},
                                            {5.6, -0.2, 3.7142857142857144, -2.0, 15.78623784592371, 22},
                                            {9.2, -7.4, 0.0, -5.0, 15.734031413612573, 56},
                                            {-10.8, 5.6, -2.4285714285714284, 6.6, 15.761555721765143, 48},
                                            {7.0, 11.4, -2.142857142857143, -7.0, 4.8475691847419595, 50},
                                            {11.0, -9.2, -6.428571428571429, -9.4, 20.594016454749433, 74}});
    ResponseDesk desk;
    for (const std::size_t input : {0U, 1U}) {
        desk.Display.ViewMode[3] = static_cast<int>(input) + 1;
        desk.Values().ChannelGain = {};
        for (const Case& at : cases) {
            desk.Values().MasterGain = at.Master;
            desk.Values().ChannelGain[5] = at.Gain;
            desk.Values().ChannelGain[input] = at.InputGain;
            desk.SetLevel(5, at.Level);
            desk.SetLevel(static_cast<int>(input), at.InputLevel);
            EXPECT_EQ(LastRow(desk, 5), at.Row) << at.Master << ", " << at.Gain << ", " << at.Level;
        }
    }
}

TEST(PlotPoint, AtTenHertzMovesThePenAndChangesNoColour) {
    ResponseDesk desk;
    Picture& graph = desk.Form().Picture1[2];
    graph.SetPen({1, 2, 3});
    desk.Display.PlotPoint(10.0, 2);
    EXPECT_TRUE(graph.Strokes().empty());
    graph.LineTo(7, 7);
    ASSERT_EQ(graph.Strokes().size(), 1U);
    ExpectStroke(graph.Strokes()[0], {1, 2, 3}, {{-10, 0}, {7, 7}});
}

TEST(PlotPoint, WhileSuspendedNeitherMovesThePenNorChangesTheColourAndTablesGoOnFilling) {
    ResponseDesk desk;
    Picture& graph = desk.Form().Picture1[2];
    graph.SetPen({1, 2, 3});
    graph.MoveTo(40, 50);
    desk.Display.PlotSuspended = true;
    for (const int hertz : GridHertz()) {
        desk.Display.PlotPoint(hertz, 2);
        desk.Display.PlotOverlayPoint(hertz, 5, 2);
    }
    desk.Display.OverlayMatrix[2][3] = true;
    desk.Display.DrawOverlay(4, 2);
    desk.Display.RedrawChannel(2);
    desk.SetPeq(20, 6.0, 100.0, 19);
    desk.Display.UpdatePeqCurve(20);
    desk.SetShelf(4, 1, 6.0, 100.0);
    desk.Display.UpdateShelfCurve(4);
    desk.SetCrossover(1, 1, 100.0);
    desk.Display.UpdateCrossoverCurve(1);
    EXPECT_TRUE(graph.Strokes().empty());
    graph.LineTo(41, 51);
    ExpectStroke(graph.Strokes()[0], {1, 2, 3}, {{40, 50}, {41, 51}});
    EXPECT_EQ(desk.Display.Curves().PeqCurve(20)[90], 6.0); // 100 Hz
    EXPECT_NEAR(desk.Display.ChannelTotal(2)[90], 6.0 + ShelfLevel(1, 6.0L, 100.0L, 100.0L) - 10.0 * std::log10(2.0),
                1e-9);
    desk.Display.PlotSuspended = false;
    desk.Display.OverlayMatrix[2][3] = false;
    desk.Display.RedrawChannel(2);
    ExpectStroke(desk.Graph(2).Strokes()[0], Out1Magenta, PixelsOf([](long double f) {
                     return BellLevel(6.0L, 100.0L, 1.5L, f) + ShelfLevel(1, 6.0L, 100.0L, f) +
                            LevelOf(Butterworth(1).LowPass(static_cast<double>(f), 100.0));
                 }));
}

TEST(RedrawChannel, ShowsANewMasterGainOnlyAtTheNextRedraw) {
    ResponseDesk desk;
    desk.Display.RedrawChannel(6);
    desk.Values().MasterGain = -6.0;
    EXPECT_EQ(desk.Graph(6).Strokes()[0].Points.back().Y, 95);
    EXPECT_EQ(LastRow(desk, 6), 114); // 95.4 + 19.1 = 114.5, the even neighbour
}

TEST(RedrawChannel, DrawsOnTheCurrentWindowAlone) {
    ResponseDesk desk;
    desk.Windows.CurrentWindow = ResponseDesk::OtherSlot;
    desk.Stores->ParamValues[ResponseDesk::OtherDevice].ChannelGain[0] = 3.0;
    EXPECT_EQ(LastRow(desk, 0), 86);
    desk.Windows.CurrentWindow = 0;
    EXPECT_TRUE(desk.Graph(0).Strokes().empty());
    EXPECT_EQ(LastRow(desk, 0), 95);
}

TEST(RedrawChannel, LeavesPointsOutsideTheSurfaceToItAndHoldsWhatIsNoPixel) {
    ResponseDesk desk;
    desk.SetLevel(2, -264.0);
    EXPECT_EQ(LastRow(desk, 2), 936); // 95.4 + 840.4 = 935.8
    desk.SetLevel(2, 400.0);
    EXPECT_EQ(LastRow(desk, 2), -1178); // 95.4 - 1273.33
    constexpr double Infinite = std::numeric_limits<double>::infinity();
    for (const double below : {-Infinite, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        desk.SetLevel(2, below);
        EXPECT_EQ(LastRow(desk, 2), 16000);
    }
    for (const double above : {Infinite, 1e300}) {
        desk.SetLevel(2, above);
        EXPECT_EQ(LastRow(desk, 2), -16000);
    }
}

TEST(PlotPoint, RefusesAFrequencyThatIsNotOfTheGrid) {
    ResponseDesk desk;
    for (const double f : {0.0, 9.0, 10.5, 800.0, 20001.0}) {
        EXPECT_THROW(desk.Display.PlotPoint(f, 2), RuntimeError) << f;
    }
    EXPECT_TRUE(desk.Graph(2).Strokes().empty());
}

TEST(Update, ClearsItsGraphEvenWhileDrawingIsSuspended) {
    ResponseDesk desk;
    for (const auto& update : {std::function<void()>([&] { desk.Display.UpdatePeqCurve(20); }),
                               std::function<void()>([&] { desk.Display.UpdateShelfCurve(4); }),
                               std::function<void()>([&] { desk.Display.UpdateCrossoverCurve(1); }),
                               std::function<void()>([&] { desk.Display.RedrawChannel(2); })}) {
        desk.Display.PlotSuspended = false;
        desk.Display.RedrawChannel(2);
        desk.Display.RedrawChannel(3);
        desk.Display.PlotSuspended = true;
        update();
        EXPECT_TRUE(desk.Graph(2).Strokes().empty());
        EXPECT_EQ(desk.Graph(3).Strokes().size(), 1U);
    }
}

} // namespace
} // namespace nrv::testing
