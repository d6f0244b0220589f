#include "history/rack_world.h"
#include "model/tables.h"

// What brings the user's own settings back while the last preset plays: a tool, a window that closes, the end.

namespace nrv::testing {
namespace {

class EndOfComparison : public RackWorld {
  protected:
    void MoveAGain(int slot) {
        controls::Fader& fader = Window(slot).Slider1[3];
        By(slot, [&fader] { fader.UserMove(fader.Position() == 7 ? 9 : 7); });
    }
    const std::string& Status() { return program.Main.StatusLine.Caption(); }
    controls::FrmCtrl& form = Window(1);
};

TEST_F(EndOfComparison, ToolsAndTheEndWorkOnTheUsersOwnSettings) {
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    const int own = form.Slider2[20].Position();
    Compare(1);
    ASSERT_NE(form.Slider2[20].Position(), own);
    world.Files.File = world.Folder.Path() / "Saved.n91";
    By(1, [&] { form.Command2[controls::SavePresetTool].UserClick(); });
    EXPECT_EQ(form.Slider2[20].Position(), own);
    EXPECT_EQ(world.Folder.Read("Saved.n91")[model::PeqOffsets[20] + 4], 150 - own);
    EXPECT_EQ(form.Window.Mark(), "");

    Compare(1);
    program.Events.Run(UserIn(1), [&] { EXPECT_TRUE(program.Control.QueryUnload(1)); });
    EXPECT_EQ(rack.At(5).LiveImage()[model::PeqOffsets[20] + 4], 150 - own);
}

TEST_F(EndOfComparison, AnUnconnectedDeviceIsLeftWithTheUsersOwnSettings) {
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    const int own = form.Slider2[20].Position();
    Compare(1);
    By(1, [&] { form.Command2[controls::UnconnectTool].UserClick(); });
    EXPECT_FALSE(Loaded(1));
    EXPECT_EQ(rack.At(5).LiveImage()[model::PeqOffsets[20] + 4], 150 - own);
}

TEST_F(EndOfComparison, LeavingTheProgramEndsEveryComparison) {
    for (const int slot : {0, 2}) {
        MoveAGain(slot);
    }
    const int own_0 = Window(0).Slider1[3].Position();
    const int own_2 = Window(2).Slider1[3].Position();
    Compare(0);
    Compare(2);
    try {
        program.Events.Run(UserOutside(), [&] { program.StartUp.MainQueryUnload(); });
    } catch (const EndOfProcess&) {
    }
    EXPECT_EQ(rack.At(2).LiveImage()[model::GainOffsets[3] + 1], 120 - own_0);
    EXPECT_EQ(rack.At(9).LiveImage()[model::GainOffsets[3] + 1], 120 - own_2);
}

TEST_F(EndOfComparison, LeavingKeepsTheUsersOwnSettingsAndNotThoseThatAreCompared) {
    MoveAGain(1);
    const Bytes own(All(Look(1)).Image);
    Compare(1);
    program.Windows.CurrentWindow = 2;
    EXPECT_THROW(program.StartUp.MainQueryUnload(), EndOfProcess);
    EXPECT_EQ(world.Folder.Read("preset/autosave-ID5-1.n91"), own);
}

TEST_F(EndOfComparison, ADeviceThatDiesAtTheEndIsToldAndTheProgramStaysForTheOthers) {
    for (const int slot : {1, 2}) {
        MoveAGain(slot);
        Compare(slot);
    }
    const int compared = Window(2).Slider1[3].Position();
    program.Windows.CurrentWindow = 2;
    answers_left = 0;
    FramesSent();
    bool closes = true;
    program.Events.Run(UserOutside(), [&] { closes = program.StartUp.MainQueryUnload(); });
    EXPECT_FALSE(closes);
    EXPECT_FALSE(world.Process.Ended);
    EXPECT_EQ(FramesSent(), 5U); // of one exchange
    EXPECT_THAT(Status(), ::testing::StartsWith("ID:5 does not answer; the comparison stopped. Double-click its row to "
                                                "connect it again."));
    EXPECT_FALSE(Loaded(1));
    EXPECT_TRUE(Loaded(2));
    answers_left = -1;
    EXPECT_THROW(program.StartUp.MainQueryUnload(), EndOfProcess);
    EXPECT_NE(Window(2).Slider1[3].Position(), compared);
    EXPECT_EQ(rack.At(9).LiveImage()[model::GainOffsets[3] + 1], 120 - Window(2).Slider1[3].Position());
}

TEST_F(EndOfComparison, AFailedNoticeAtTheEndIsNotToldOfAsTheComparisonBeforeIt) {
    MoveAGain(1);
    Compare(1);
    FramesSent();
    world.Port.OnOutput = [this] {
        if (!world.Port.Sent.empty()) { // the gain is back
            world.Port.GoAway();
        }
    };
    program.Events.Run(UserOutside(), [&] { program.StartUp.MainQueryUnload(); });
    EXPECT_EQ(FramesSent(), 1U);
    EXPECT_FALSE(world.Process.Ended);
    EXPECT_THAT(Status(), ::testing::StartsWith("The port went away"));
    EXPECT_THAT(Status(), ::testing::Not(::testing::HasSubstr("comparison")));
}

} // namespace
} // namespace nrv::testing
