#include "presets/apply_image.h"
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

/// Two windows, of devices 0 and 1, the second one active: overlays and view modes are the same tables for both.
class SharedViews : public ProgramTest {
  protected:
    controls::FrmCtrl& FirstOfTwo() {
        StartDemo(2);
        DoubleClick(0);
        DoubleClick(1);
        Forget();
        return Window(0);
    }
    /// From here on the first window's views only count what runs.
    void CountEvents() {
        const auto count = [this] { ++events; };
        for (auto* boxes : {&first.Check4, &first.Check5, &first.Check6, &first.Check7, &first.Check8}) {
            for (controls::CheckBox& box : *boxes) {
                box.Clicked = count;
            }
        }
        for (controls::Option& option : first.Option2) {
            option.Clicked = count;
        }
    }
    void ClearFirst() {
        for (controls::Picture& graph : first.Picture1) {
            graph.Clear();
        }
    }
    std::vector<std::size_t> DrawnInFirst() const {
        std::vector<std::size_t> drawn;
        for (std::size_t c = 0; c < 8; ++c) {
            if (!first.Picture1[c].Strokes().empty()) {
                drawn.push_back(c);
            }
        }
        return drawn;
    }

    controls::FrmCtrl& first = FirstOfTwo();
    controls::FrmCtrl& second = Window(1);
    int events = 0;
};

TEST_F(SharedViews, WhatIsChosenInOneWindowShowsInTheOtherWithoutAnEvent) {
    second.Check4[0].UserToggle();      // Out 2 over Out 1
    second.Check8[5].UserToggle();      // Out 5 over Out 6
    second.Option2[3 * 2 + 1].Select(); // Out 3 with In A
    CountEvents();
    const auto image = program.Stores.PresetImage[0].ViewState;
    const auto overlays = program.Response.OverlayMatrix;
    const auto modes = program.Response.ViewMode;
    EXPECT_FALSE(first.Check4[0].Checked());
    program.Control.Activate(0);
    for (int output = 0; output < 6; ++output) {
        for (int row = 0; row < 5; ++row) {
            const bool set = (row == 0 && output == 0) || (row == 4 && output == 5);
            EXPECT_EQ(first.ViewBox(row, output).Value(), set ? 1 : 0) << row << ' ' << output;
            // The boxes of Out 3: third output, so row 2 below its own tab and row 1 above.
            const bool of_out3 = (output < 2 && row == 1) || (output > 2 && row == 2);
            EXPECT_EQ(first.ViewBox(row, output).Caption().ends_with("+InA"), of_out3) << row << ' ' << output;
        }
        for (int choice = 0; choice < 3; ++choice) {
            EXPECT_EQ(first.Option2[static_cast<std::size_t>(3 * output + choice)].Selected(),
                      choice == (output == 2 ? 1 : 0))
                << output << ' ' << choice;
        }
    }
    EXPECT_EQ(first.Check5[0].Caption(), " Out 3+InA");
    EXPECT_EQ(events, 0);
    EXPECT_EQ(program.Stores.PresetImage[0].ViewState, image);
    EXPECT_EQ(program.Response.OverlayMatrix, overlays);
    EXPECT_EQ(program.Response.ViewMode, modes);
    EXPECT_EQ(program.Stores.PresetImage[1].ViewState[0], 1);
    EXPECT_EQ(program.Stores.PresetImage[1].ViewState[29], 1);
    EXPECT_EQ(program.Stores.PresetImage[1].ViewState[42], 1);
}

TEST_F(SharedViews, WhatIsTickedIsDrawnFromTheWindowsOwnCurves) {
    program.Control.Activate(0);
    first.Slider1[3].UserMove(0); // 12 dB on Out 2 of the first device
    program.Control.Activate(1);
    second.Check4[0].UserToggle();
    program.Control.Activate(0);
    const auto strokes = first.Picture1[2].Strokes();
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0].Pen, (controls::Colour{192, 0, 0})); // Out 2, below
    EXPECT_EQ(strokes[0].Points, first.Picture1[3].Strokes().back().Points);
    EXPECT_NE(strokes[0].Points, second.Picture1[2].Strokes()[0].Points);
    EXPECT_EQ(strokes[1].Pen, (controls::Colour{255, 0, 255}));
    program.Control.Activate(1);
    second.Check4[0].UserToggle();
    program.Control.Activate(0);
    EXPECT_EQ(first.Picture1[2].Strokes().size(), 1U);
    EXPECT_FALSE(first.Check4[0].Checked());
}

TEST_F(SharedViews, OutputsAreDrawnAnewOnlyWhenSomethingShownDiffered) {
    const std::vector<std::size_t> outputs = {2, 3, 4, 5, 6, 7};
    ClearFirst();
    program.Control.Activate(0);
    EXPECT_TRUE(DrawnInFirst().empty());
    for (const int change : {0, 1}) {
        program.Control.Activate(1);
        if (change == 0) {
            second.Check6[3].UserToggle();
        } else {
            second.Option2[17].Select();
        }
        ClearFirst();
        program.Control.Activate(0);
        EXPECT_EQ(DrawnInFirst(), outputs);
        ClearFirst();
        program.Control.Activate(0);
        EXPECT_TRUE(DrawnInFirst().empty());
    }
}

TEST_F(SharedViews, ACaptionAloneThatDifferedIsPutRightAndDrawn) {
    second.Option2[4].Select(); // Out 2 with In A
    first.Option2[4].ShowSelected();
    ClearFirst();
    program.Control.Activate(0);
    EXPECT_EQ(first.Check4[0].Caption(), " Out 2+InA");
    EXPECT_EQ(DrawnInFirst().size(), 6U);
}

TEST_F(SharedViews, ABoxThatIsSetKeepsItsValueAndTheImageItsByte) {
    program.Stores.PresetImage[1].ViewState[0] = 7;
    presets::ApplyImage(Context(), program.Response);
    program.Control.Activate(0);
    EXPECT_EQ(first.Check4[0].Value(), 1);
    program.Control.Activate(1);
    EXPECT_EQ(second.Check4[0].Value(), 7);
    program.Control.Activate(0);
    first.Check4[0].UserToggle();
    program.Control.Activate(1);
    EXPECT_EQ(second.Check4[0].Value(), 0);
    EXPECT_EQ(program.Stores.PresetImage[1].ViewState[0], 7);
}

} // namespace
} // namespace nrv::testing
