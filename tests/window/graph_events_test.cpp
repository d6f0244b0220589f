#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

using Points = std::vector<controls::Picture::Point>;

class GraphEvents : public ProgramTest {
  protected:
    controls::FrmCtrl& Opened() {
        StartDemo(1);
        DoubleClick(0);
        return Window(0);
    }
    /// The row of a channel's own curve at 1 kHz , the last stroke drawn.
    int RowAt1kHz(int channel) {
        const auto strokes = form.Picture1[static_cast<std::size_t>(channel)].Strokes();
        if (strokes.empty()) {
            return -1;
        }
        // log10(988 / 20) * 575 / 3 = 324.7: the column of a grid point next to 1 kHz.
        const Points& points = strokes.back().Points;
        const auto found = std::ranges::find_if(points, [](const auto& point) { return point.X == 325; });
        return found == points.end() ? -1 : found->Y;
    }
    void ClearAll() {
        for (controls::Picture& graph : form.Picture1) {
            graph.Clear();
        }
    }
    controls::FrmCtrl& form = Opened();
};

TEST_F(GraphEvents, AChannelsTabDrawsItsGraphAndNoOther) {
    for (int tab = 0; tab < 8; ++tab) {
        form.SSTab1.SetTab(10);
        ClearAll();
        form.SSTab1.SetTab(tab);
        for (int channel = 0; channel < 8; ++channel) {
            EXPECT_EQ(form.Picture1[static_cast<std::size_t>(channel)].Strokes().empty(), channel != tab)
                << tab << " " << channel;
        }
    }
}

TEST_F(GraphEvents, GainsDelaysAndOverviewDrawNoGraph) {
    ClearAll();
    for (const int tab : {8, 9, 10}) {
        form.SSTab1.SetTab(tab);
        for (const controls::Picture& graph : form.Picture1) {
            EXPECT_TRUE(graph.Strokes().empty()) << tab;
        }
    }
}

TEST_F(GraphEvents, AMasterLevelShowsWhenATabIsSelected) {
    form.SSTab1.SetTab(0);
    ASSERT_EQ(RowAt1kHz(0), 95);
    form.Slider100.UserMove(60 - 15); // 3 dB
    EXPECT_EQ(RowAt1kHz(0), 95);
    form.SSTab1.SetTab(8);
    form.SSTab1.SetTab(0);
    EXPECT_EQ(RowAt1kHz(0), 86);
}

TEST_F(GraphEvents, EitherCopyOfAGainFaderRedrawsItsChannel) {
    form.Slider1[1].UserMove(60 - 15);
    EXPECT_EQ(RowAt1kHz(1), 86);
    form.Slider1[9].UserMove(60);
    EXPECT_EQ(RowAt1kHz(1), 95);
    ClearAll();
    form.Slider1[8 + 5].UserMove(10);
    for (int channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(form.Picture1[static_cast<std::size_t>(channel)].Strokes().empty(), channel != 5) << channel;
    }
}

TEST_F(GraphEvents, AViewOptionRedrawsItsOutputAlone) {
    ClearAll();
    form.Option2[3 * 2 + 1].Select(); // Out 3 with In A
    for (int channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(form.Picture1[static_cast<std::size_t>(channel)].Strokes().empty(), channel != 4) << channel;
    }
    EXPECT_EQ(program.Response.ViewMode[2], 1);
}

} // namespace
} // namespace nrv::testing
