#include "model/equaliser_window.h"
#include "response/view_options.h"

namespace nrv::testing {
namespace {

using controls::Colour;
using ::testing::IsEmpty;

class ViewOptions : public EqualiserWindow {
  protected:
    std::vector<Colour> PensOn(int channel) const {
        std::vector<Colour> pens;
        for (const auto& stroke : form.Picture1[static_cast<std::size_t>(channel)].Strokes()) {
            pens.push_back(stroke.Pen);
        }
        return pens;
    }
    void ClearGraphs() {
        for (controls::Picture& graph : form.Picture1) {
            graph.Clear();
        }
    }
};

TEST_F(ViewOptions, ShowCursorShowsTheMarkersOfItsChannelAlone) {
    for (int channel = 0; channel < 8; ++channel) {
        SCOPED_TRACE(channel);
        const auto c = static_cast<std::size_t>(channel);
        form.Check3[c].UserToggle();
        for (int section = 0; section < 44; ++section) {
            EXPECT_EQ(form.Label5[static_cast<std::size_t>(section)].Visible(), PlaceOfPeq(section).first == channel)
                << section;
        }
        for (std::size_t n = 30; n < 38; ++n) {
            EXPECT_EQ(image.ViewState[n], n == 30 + c ? 1 : 0) << n;
        }
        form.Check3[c].UserToggle();
        for (const controls::Marker& marker : form.Label5) {
            EXPECT_FALSE(marker.Visible());
        }
        EXPECT_EQ(image.ViewState[30 + c], 0);
    }
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(ViewOptions, ShowCursorIsNotGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Check3[4].UserToggle();
    program.Windows.ControlEventsOff = false;
    EXPECT_TRUE(form.Label5[28].Visible());
}

TEST_F(ViewOptions, AHiddenMarkerStillFollowsItsSection) {
    form.Slider2[20].UserMove(0);
    EXPECT_FALSE(form.Label5[20].Visible());
    EXPECT_NEAR(form.Label5[20].Top(), 782.7, 1e-6);
}

TEST_F(ViewOptions, EveryViewBoxLaysTheCurveItNamesOverItsTabsGraph) {
    const std::array<Colour, 8> colours = {
        {{255, 0, 0}, {0, 0, 255}, {255, 0, 255}, {192, 0, 0}, {0, 192, 192}, {0, 255, 0}, {0, 0, 192}, {255, 128, 0}}};
    const std::array<std::array<int, 5>, 6> named = {
        {{1, 2, 3, 4, 5}, {0, 2, 3, 4, 5}, {0, 1, 3, 4, 5}, {0, 1, 2, 4, 5}, {0, 1, 2, 3, 5}, {0, 1, 2, 3, 4}}};
    const auto boxes = [this](int row) -> std::array<controls::CheckBox, 6>& {
        switch (row) {
        case 0:
            return form.Check4;
        case 1:
            return form.Check5;
        case 2:
            return form.Check6;
        case 3:
            return form.Check7;
        default:
            return form.Check8;
        }
    };
    for (int row = 0; row < 5; ++row) {
        for (int output = 0; output < 6; ++output) {
            SCOPED_TRACE(::testing::Message() << "row " << row << ", tab of output " << output);
            const std::size_t channel = static_cast<std::size_t>(output) + 2;
            const int seen_output = named[static_cast<std::size_t>(output)][static_cast<std::size_t>(row)];
            const std::size_t seen = static_cast<std::size_t>(seen_output) + 2;
            controls::CheckBox& box = boxes(row)[static_cast<std::size_t>(output)];
            ClearGraphs();
            box.UserToggle();
            for (std::size_t c = 0; c < 8; ++c) {
                for (std::size_t j = 0; j < 8; ++j) {
                    EXPECT_EQ(program.Response.OverlayMatrix[c][j], c == channel && j == seen) << c << ' ' << j;
                }
            }
            for (std::size_t n = 0; n < 30; ++n) {
                EXPECT_EQ(image.ViewState[n], n == static_cast<std::size_t>(6 * row + output) ? 1 : 0) << n;
            }
            // The overlay lies under the channel's own curve; no other graph was drawn anew.
            for (int c = 0; c < 8; ++c) {
                const std::vector<Colour> pens = c == static_cast<int>(channel)
                                                     ? std::vector<Colour>{colours[seen], colours[channel]}
                                                     : std::vector<Colour>{};
                EXPECT_EQ(PensOn(c), pens) << c;
            }
            box.UserToggle();
            EXPECT_EQ(PensOn(static_cast<int>(channel)), std::vector<Colour>{colours[channel]});
            EXPECT_FALSE(program.Response.OverlayMatrix[channel][seen]);
            EXPECT_EQ(image.ViewState[static_cast<std::size_t>(6 * row + output)], 0);
        }
    }
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(ViewOptions, ViewBoxesAreNotGuarded) {
    program.Windows.ControlEventsOff = true;
    form.Check8[5].UserToggle();
    program.Windows.ControlEventsOff = false;
    EXPECT_TRUE(program.Response.OverlayMatrix[7][6]);
    EXPECT_EQ(image.ViewState[29], 1);
}

TEST_F(ViewOptions, AChosenSumIsKeptInTheByteOfItsOutput) {
    std::array<int, 6> kept{};
    for (const int option : {1, 2, 0, 4, 3, 5, 8, 6, 7, 10, 11, 9, 13, 14, 16, 17}) {
        SCOPED_TRACE(option);
        const std::size_t output = static_cast<std::size_t>(option) / 3;
        ClearGraphs();
        form.Option2[static_cast<std::size_t>(option)].Select();
        kept[output] = option % 3;
        for (std::size_t n = 0; n < image.ViewState.size(); ++n) {
            EXPECT_EQ(image.ViewState[n], n >= 40 && n <= 45 ? kept[n - 40] : 0) << n;
        }
        EXPECT_EQ(program.Response.ViewMode[output], option % 3);
        for (std::size_t c = 0; c < 8; ++c) {
            EXPECT_EQ(form.Picture1[c].Strokes().empty(), c != output + 2) << c;
        }
    }
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(ViewOptions, AChosenSumIsDrawnAtOnce) {
    form.Slider1[0].UserMove(form.Slider1[0].Position() - 10); // In A, louder than its output
    const auto row = [this] { return form.Picture1[2].Strokes()[0].Points[300].Y; };
    program.Response.RedrawChannel(2);
    const int alone = row();
    form.Option2[1].Select(); // Out 1 + In A
    EXPECT_LT(row(), alone);
    form.Option2[0].Select();
    EXPECT_EQ(row(), alone);
}

TEST_F(ViewOptions, AHigherOutputLiesOverALowerOne) {
    form.Check8[0].UserToggle(); // Out 6 on the tab of Out 1
    form.Check4[0].UserToggle(); // Out 2
    EXPECT_EQ(PensOn(2), (std::vector<Colour>{{192, 0, 0}, {255, 128, 0}, {255, 0, 255}}));
}

} // namespace
} // namespace nrv::testing
