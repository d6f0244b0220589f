#include "model/equaliser_window.h"
#include "response/equaliser_editing.h"

#include <cmath>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MarkerDragging : public EqualiserWindow {};

TEST_F(MarkerDragging, ADraggedMarkerBecomesGainAndFrequency) {
    struct Case {
        double Left;
        double Top;
        const char* Gain; // while dragging
        int Position;     // of the fader
        const char* Hz;
        int Code;
        const char* Dropped; // gain after the drop
        double DroppedTop;
    };
    // Gain from Top: (1507.5 - Top) / 48 - 0.1, down to a tenth; position 75 - 5 * gain, a half to the even.
    // 1000: 10.47 -> 10.4 -> 23. 1700: -4.11 -> -4.2 -> 96. 1341.9: 3.35 -> 3.3 -> 58.5 -> 58 -> 3.4.
    // 1332.3: 3.55 -> 3.5 -> 57.5 -> 58 -> 3.4. 1490: 0.26 -> 0.2 -> 74.
    for (const Case& one : {Case{2825.0, 1000.0, "10.4", 23, "200", 40, "10.4", 1003.5},
                            Case{4841.0, 1700.0, "-4.2", 96, "1000", 68, "-4.2", 1704.3},
                            Case{0.0, 1341.9, "3.3", 58, "21", 1, "3.4", 1339.5},
                            Case{8000.0, 1332.3, "3.5", 58, "12500", 112, "3.4", 1339.5},
                            Case{5710.0, 1490.0, "0.2", 74, "2000", 80, "0.2", 1493.1}}) {
        SCOPED_TRACE(one.Left);
        const auto before = image.PresetBody;
        Forget();
        form.Label5[6].Pressed();
        EXPECT_TRUE(form.MarkerDragging[6]);
        EXPECT_FALSE(form.MarkerMoved[6]);
        Drag(6, 4000.0, 2000.0);
        Drag(6, one.Left, one.Top);
        EXPECT_TRUE(form.MarkerMoved[6]);
        EXPECT_NEAR(form.Label5[6].Left(), one.Left, 1e-9);
        EXPECT_NEAR(form.Label5[6].Top(), one.Top, 1e-9);
        EXPECT_EQ(form.Text3[6].Text(), one.Gain);
        EXPECT_EQ(form.Slider2[6].Position(), one.Position);
        EXPECT_EQ(form.Text4[6].Text(), one.Hz);
        EXPECT_EQ(values.PeqGain[6], std::stod(one.Gain));
        EXPECT_EQ(values.PeqFrequency[6], std::stod(one.Hz));
        EXPECT_EQ(image.PresetBody, before);
        EXPECT_THAT(world.Port.Sent, IsEmpty());

        form.Label5[6].Released();
        EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 6, one.Code, 8, 150 - one.Position)));
        EXPECT_EQ(form.Text3[6].Text(), one.Dropped);
        EXPECT_EQ(values.PeqGain[6], std::stod(one.Dropped));
        EXPECT_EQ(image.PresetBody[39], 150 - one.Position);
        EXPECT_EQ(image.PresetBody[36], one.Code);
        EXPECT_NEAR(form.Label5[6].Top(), one.DroppedTop, 1e-6);
        EXPECT_NEAR(form.Label5[6].Left(), std::log10(std::stod(one.Hz) / 20.0) * 2885.0 - 60.0, 1e-6);
        EXPECT_FALSE(form.MarkerDragging[6]);
        EXPECT_FALSE(form.MarkerMoved[6]);
    }
}

TEST_F(MarkerDragging, MarkerCannotRisePastThePlus15DbLine) {
    for (const double top : {-60.0, -61.0, -5000.0, 0.0, 782.0}) {
        form.Label5[0].Pressed();
        Drag(0, 1000.0, top);
        EXPECT_NEAR(form.Label5[0].Top(), 782.7, 1e-9);
        EXPECT_EQ(form.Text3[0].Text(), "15");
        EXPECT_EQ(form.Slider2[0].Position(), 0);
        EXPECT_EQ(values.PeqGain[0], 15.0);
        form.Label5[0].Released();
        EXPECT_EQ(world.Port.Sent.back()[11], 150);
    }
}

TEST_F(MarkerDragging, MarkerCannotSinkPastTheMinus15DbLine) {
    for (const double top : {2835.0, 2836.0, 9000.0, 2223.0}) {
        form.Label5[0].Pressed();
        Drag(0, 1000.0, top);
        EXPECT_NEAR(form.Label5[0].Top(), 2222.7, 1e-9);
        EXPECT_EQ(form.Text3[0].Text(), "-15");
        EXPECT_EQ(form.Slider2[0].Position(), 150);
        EXPECT_EQ(values.PeqGain[0], -15.0);
        form.Label5[0].Released();
        EXPECT_EQ(world.Port.Sent.back()[11], 0);
    }
}

TEST_F(MarkerDragging, LeftAtMinus60Gives20HzAndAt8595Gives20000) {
    form.Label5[43].Pressed();
    for (const double left : {-60.0, -61.0, -7000.0}) {
        Drag(43, left, 1502.7);
        EXPECT_EQ(form.Label5[43].Left(), -60.0);
        EXPECT_EQ(form.Text4[43].Text(), "20");
        EXPECT_EQ(values.PeqFrequency[43], 20.0);
    }
    for (const double left : {8595.0, 8596.0, 90000.0}) {
        Drag(43, left, 1502.7);
        EXPECT_EQ(form.Label5[43].Left(), 8595.0);
        EXPECT_EQ(form.Text4[43].Text(), "20000");
        EXPECT_EQ(values.PeqFrequency[43], 20000.0);
    }
    form.Label5[43].Released();
    EXPECT_EQ(world.Port.Sent.size(), 1U);
    EXPECT_EQ(world.Port.Sent[0][8], 120);
}

TEST_F(MarkerDragging, EverySectionsMarkerDragsItsOwn) {
    for (int section = 0; section < 44; ++section) {
        SCOPED_TRACE(section);
        const auto s = static_cast<std::size_t>(section);
        Forget();
        form.Label5[s].Pressed();
        Drag(s, 2825.0, 1003.5);
        form.Label5[s].Released();
        const auto [channel, number] = PlaceOfPeq(section);
        EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(channel, number, 40, 8, 127)));
    }
}

TEST_F(MarkerDragging, AFaderSetByADragIsNoUsersMove) {
    int moves = 0;
    form.Slider2[1].Moved = [&] { ++moves; };
    form.Label5[1].Pressed();
    Drag(1, 500.0, 1000.0);
    Drag(1, 600.0, 1900.0);
    form.Label5[1].Released();
    EXPECT_EQ(moves, 0);
    EXPECT_EQ(world.Port.Sent.size(), 1U);
}

TEST_F(MarkerDragging, GainAndFrequencyTextsAreRepaintedAtOnce) {
    std::string repainted;
    form.Text3[1].Observe(
        [&](controls::Aspect aspect) { repainted += aspect == controls::Aspect::Repaint ? "3" : ""; });
    form.Text4[1].Observe(
        [&](controls::Aspect aspect) { repainted += aspect == controls::Aspect::Repaint ? "4" : ""; });
    form.Label5[1].Pressed();
    Drag(1, 500.0, 1000.0);
    EXPECT_EQ(repainted, "34");
}

TEST_F(MarkerDragging, TheCurveMovesWithTheMouse) {
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);                                         // 200 Hz; 10.4 dB, or the tenth below
    EXPECT_NEAR(program.Response.ChannelTotal(0)[190], 10.35, 0.06); // 200 Hz is the 191st of the grid
    Drag(1, 2825.0, -60.0);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[190], 15.0, 1e-6);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, ADragThatIsGivenUpLeavesPointAndCurveAsTheyWere) {
    const auto before = image.PresetBody;
    const double left = form.Label5[1].Left();
    const double top = form.Label5[1].Top();
    const response::Curve curve = program.Response.ChannelTotal(0);
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);
    EXPECT_NE(program.Response.ChannelTotal(0), curve);
    form.Label5[1].GivenUp();
    EXPECT_EQ(program.Response.ChannelTotal(0), curve);
    EXPECT_EQ(form.Label5[1].Left(), left);
    EXPECT_EQ(form.Label5[1].Top(), top);
    EXPECT_EQ(image.PresetBody, before);
    EXPECT_FALSE(form.MarkerDragging[1]);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, WhatWasNotDraggedIsNotGivenUp) {
    form.Text4[1].UserText("77"); // typed, and not entered
    form.Label5[1].Pressed();
    form.Label5[1].GivenUp();
    EXPECT_EQ(form.Text4[1].Text(), "77");
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);
    form.Label5[1].GivenUp();
    form.Label5[1].Pressed();
    form.Label5[1].Released();
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, AKeyTakesAPointToTheNextFrequencyOfTheTable) {
    Drag(6, 0.0, 0.0); // no button is down
    const int code = image.PresetBody[36];
    const int gain = image.PresetBody[39];
    form.Label5[6].Stepped(controls::PointStep::Frequency, 1);
    form.Label5[6].Stepped(controls::PointStep::Frequency, -2);
    EXPECT_THAT(world.Port.Sent, ElementsAre(PeqFrame(0, 6, code + 1, 8, gain), PeqFrame(0, 6, code - 1, 8, gain)));
    EXPECT_EQ(image.PresetBody[36], code - 1);
}

TEST_F(MarkerDragging, AClickWithoutMovementChangesAndSendsNothing) {
    const auto before = image;
    const double left = form.Label5[1].Left();
    form.Label5[1].Pressed();
    form.Label5[1].Released();
    EXPECT_EQ(image.PresetBody, before.PresetBody);
    EXPECT_EQ(form.Label5[1].Left(), left);
    EXPECT_FALSE(form.MarkerDragging[1]);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, AMouseThatPassesOverAMarkerMovesNothing) {
    const double left = form.Label5[1].Left();
    Drag(1, 5000.0, 1000.0);
    EXPECT_EQ(form.Label5[1].Left(), left);
    EXPECT_FALSE(form.MarkerMoved[1]);
    form.Label5[1].Released();
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, ADragWhoseButtonUpWasLostGoesOn) {
    form.Label5[1].Pressed();
    Drag(1, 500.0, 1000.0);
    EXPECT_TRUE(form.MarkerDragging[1]);
    Drag(1, 2825.0, 1000.0); // the mouse comes back without a button
    EXPECT_EQ(form.Text4[1].Text(), "200");
    Drag(2, 2825.0, 1000.0);
    EXPECT_EQ(form.Text4[2].Text(), "113"); // another marker does not
    form.Label5[1].Pressed();
    form.Label5[1].Released();
    EXPECT_EQ(world.Port.Sent.size(), 1U);
    EXPECT_FALSE(form.MarkerDragging[1]);
}

TEST_F(MarkerDragging, ADragSurvivesAnUnreadableFrequencyOfItsOwnSection) {
    form.Text4[1].SetText("?");
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1000.0);
    EXPECT_EQ(form.Text4[1].Text(), "200");
    form.Label5[1].Released();
    EXPECT_EQ(world.Port.Sent.size(), 1U);
}

TEST_F(MarkerDragging, AFailedFrameAtTheDropLeavesNoFlag) {
    line.Devices.at(Id).Alive = false;
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);
    form.Label5[1].Released();
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_FALSE(form.MarkerDragging[1]);
    EXPECT_FALSE(form.MarkerMoved[1]);
    EXPECT_EQ(image.PresetBody[14], 127);
}

TEST_F(MarkerDragging, AWindowUnloadedDuringADragLeavesNothingToTheNextOfItsSlot) {
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);
    EXPECT_TRUE(program.Control.QueryUnload(0));
    DoubleClick(0);
    ASSERT_TRUE(Loaded(0));
    controls::FrmCtrl& next = Window(0);
    Forget();
    EXPECT_FALSE(next.MarkerDragging[1]);
    EXPECT_FALSE(next.MarkerMoved[1]);
    const double left = next.Label5[1].Left();
    next.Label5[1].Moved(500.0, 500.0);
    next.Label5[1].Released();
    EXPECT_EQ(next.Label5[1].Left(), left);
    // The drag changed values and not the image, from which the new window started.
    EXPECT_EQ(next.Text3[1].Text(), "0");
    EXPECT_EQ(values.PeqGain[1], 0.0);
    EXPECT_THAT(world.Port.Sent, IsEmpty());
}

TEST_F(MarkerDragging, AMarkerOfAnotherWindowDoesNotGoOnWithThisWindowsDrag) {
    line.Add(15, "Label of dev 015").Preset.assign(model::FactoryImage.begin(), model::FactoryImage.end());
    TickList();
    program.State.FoundDevices[1] = 15;
    program.State.FoundLast = 1;
    program.Windows.WindowSlots[1] = {true, 15, 1};
    program.Windows.NewSlot = 1;
    program.Stores.PresetImage[15] = image;
    program.Control.Load();
    controls::FrmCtrl& other = Window(1);
    program.Control.Activate(0);
    Forget();

    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5); // and the button-up is lost
    const double before = form.Label5[1].Left();
    other.Label5[1].Moved(700.0, 60.0); // the mouse passes over the window behind
    EXPECT_EQ(form.Label5[1].Left(), before);
    program.Control.Activate(1);
    form.Label5[1].Moved(700.0, 60.0);
    EXPECT_EQ(form.Label5[1].Left(), before);
    form.Label5[1].Released(); // comes late, while the other device is worked on
    EXPECT_FALSE(form.MarkerDragging[1]);
    EXPECT_FALSE(form.MarkerMoved[1]);
    EXPECT_THAT(world.Port.Sent, IsEmpty());

    program.Control.Activate(0);
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1003.5);
    program.Control.Activate(1);
    other.Text4[1].UserText("77");
    form.Label5[1].GivenUp(); // as late
    EXPECT_EQ(other.Text4[1].Text(), "77");
    EXPECT_FALSE(form.MarkerMoved[1]);
}

TEST_F(MarkerDragging, TheDropLeavesTheCurveOfTheDrag) {
    form.Label5[1].Pressed();
    Drag(1, 2825.0, 1341.9); // 200 Hz and 3.3 dB, which the fader does not have
    form.Picture1[0].Clear();
    form.Label5[1].Released();
    EXPECT_EQ(values.PeqGain[1], 3.4);
    EXPECT_NEAR(program.Response.ChannelTotal(0)[190], 3.3, 1e-9); // 200 Hz is the 191st of the grid
    EXPECT_TRUE(form.Picture1[0].Strokes().empty());
}

} // namespace
} // namespace nrv::testing
