#include "controls/control.h"
#include "controls/event_boundary.h"
#include "controls/observed.h"
#include "support/scripted_ports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace nrv::testing {
namespace {

using namespace nrv::controls;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Control, IsShownAndEnabledWithoutTextsAtFirst) {
    const Label label;
    EXPECT_TRUE(label.Visible());
    EXPECT_TRUE(label.Enabled());
    EXPECT_EQ(label.Caption(), "");
    EXPECT_EQ(label.ToolTip(), "");
}

TEST(Control, TellsItsObserverWhatChanged) {
    Label label;
    const Observed view(label);
    label.SetCaption("In A");
    label.SetToolTip("Mute");
    label.SetVisible(false);
    label.SetEnabled(false);
    label.Refresh();
    EXPECT_THAT(view.Aspects,
                ElementsAre(Aspect::Caption, Aspect::ToolTip, Aspect::Visible, Aspect::Enabled, Aspect::Repaint));
}

TEST(Control, TellsItsObserverOnlyOfAChange) {
    Label label;
    label.SetCaption("In A");
    const Observed view(label);
    label.SetCaption("In A");
    label.SetToolTip("");
    label.SetVisible(true);
    label.SetEnabled(true);
    EXPECT_THAT(view.Aspects, IsEmpty());
}

TEST(Control, HoldsTheNewValueWhenItsObserverIsTold) {
    Label label;
    std::string seen;
    label.Observe([&](Aspect) { seen = label.Caption(); });
    label.SetCaption("Out 1");
    EXPECT_EQ(seen, "Out 1");
}

TEST(Control, LastObserverTakesThePlaceOfTheOneBefore) {
    Label label;
    const Observed first(label);
    const Observed second(label);
    label.SetCaption("x");
    EXPECT_THAT(first.Aspects, IsEmpty());
    EXPECT_THAT(second.Aspects, ElementsAre(Aspect::Caption));
}

TEST(Shape, LightsInAColourAndGoesOut) {
    Shape lamp;
    EXPECT_FALSE(lamp.Lit());
    const Observed view(lamp);
    lamp.Light({255, 0, 0});
    EXPECT_TRUE(lamp.Lit());
    EXPECT_EQ(lamp.Fill(), (Colour{255, 0, 0}));
    lamp.Light({0, 255, 0});
    EXPECT_EQ(lamp.Fill(), (Colour{0, 255, 0}));
    lamp.Extinguish();
    EXPECT_FALSE(lamp.Lit());
    lamp.Extinguish();
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Colour, Aspect::Colour, Aspect::Colour));
}

TEST(Button, ClickRunsItsEventAndNothingWithoutOne) {
    Button button;
    button.UserClick();
    int clicks = 0;
    button.Clicked = [&clicks] { ++clicks; };
    button.UserClick();
    EXPECT_EQ(clicks, 1);
}

TEST(Label, ClickRunsItsEvent) {
    Label label;
    int clicks = 0;
    label.Clicked = [&clicks] { ++clicks; };
    label.UserClick();
    EXPECT_EQ(clicks, 1);
}

TEST(Marker, IsPlacedByItsCorner) {
    Marker marker;
    const Observed view(marker);
    marker.MoveTo(1234.5, -7.25);
    EXPECT_EQ(marker.Left(), 1234.5);
    EXPECT_EQ(marker.Top(), -7.25);
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Place));
}

} // namespace
} // namespace nrv::testing
