#include "session/connection_dialog.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

using controls::MoreDevices;
using controls::OneDevice;
using controls::UpToTenDevices;
using controls::UpToTwentyDevices;

class ConnectionDialogTest : public ProgramTest {
  protected:
    ConnectionDialogTest() {
        std::vector<int> ids = Range(1, 20);
        world.Folder.Write("TenDev.cfg", Words(ids));
        program.Connection.Load();
    }
    void ChooseUsb() { form.Link[0].Select(); }
    void ChooseRs485() { form.Link[1].Select(); }
    void ExpectMode(bool ten, bool twenty, bool multi, bool id_frame, int width) {
        EXPECT_EQ(program.State.ListOfTen, ten);
        EXPECT_EQ(program.State.ListOfTwenty, twenty);
        EXPECT_EQ(program.State.MultiDevice, multi);
        EXPECT_EQ(form.IdFrame.Enabled(), id_frame);
        EXPECT_EQ(form.Window.Width(), width);
    }
    bool Refused() {
        form.Proceed.UserClick();
        return !world.Boxes.Shown.empty();
    }

    controls::FrmSelect& form = program.Select;
};

TEST_F(ConnectionDialogTest, OpensOnUsbOneDeviceIdZeroAndTheNarrowWidth) {
    program.Link.ReportLinkFailure = true;
    program.Connection.Load();
    EXPECT_FALSE(program.Link.ReportLinkFailure);
    EXPECT_TRUE(form.Link[0].Selected());
    EXPECT_TRUE(form.Connection[OneDevice].Selected());
    EXPECT_EQ(form.IdSelect.Index(), 0);
    EXPECT_EQ(program.State.SingleId, 0);
    EXPECT_FALSE(form.ConnectionFrame.Enabled());
    ExpectMode(false, false, false, false, 2805);
    EXPECT_TRUE(program.State.SelectExitPending);
    for (std::size_t line_number = 0; line_number < 20; ++line_number) {
        EXPECT_EQ(form.DeviceIds[line_number].Index(), static_cast<int>(line_number) + 1);
    }
}

TEST_F(ConnectionDialogTest, OpensAnewAsAtFirstWhateverWasChosen) {
    ChooseRs485();
    form.IdSelect.UserSelect(7);
    form.Connection[MoreDevices].Select();
    form.DeviceIds[4].UserSelect(30);
    program.State.SelectExitPending = false;
    ASSERT_TRUE(program.State.MultiDevice);
    ASSERT_EQ(program.State.SingleId, 7);
    program.Connection.Load();
    EXPECT_TRUE(form.Link[0].Selected());
    EXPECT_TRUE(form.Connection[OneDevice].Selected());
    EXPECT_EQ(form.IdSelect.Index(), 0);
    EXPECT_EQ(program.State.SingleId, 0);
    EXPECT_FALSE(form.ConnectionFrame.Enabled());
    EXPECT_FALSE(form.IdFrame.Enabled());
    EXPECT_EQ(form.DeviceIds[4].Index(), 5);
    EXPECT_TRUE(program.State.SelectExitPending);
    EXPECT_FALSE(program.State.MultiDevice);
}

TEST_F(ConnectionDialogTest, AChoiceOfPortThatCannotBeReadIsTold) {
    std::filesystem::remove(world.Folder / "init.cfg");
    std::filesystem::create_directory(world.Folder / "init.cfg");
    program.Connection.Load();
    EXPECT_TRUE(program.Status.Text().starts_with("The choice of port was not read. ")) << program.Status.Text();
}

TEST_F(ConnectionDialogTest, ListsHoldTheNumbersAndPortsTold) {
    ASSERT_EQ(form.ComSelect.Items().size(), 33U);
    EXPECT_EQ(form.ComSelect.Items()[0], "NONE");
    EXPECT_EQ(form.ComSelect.Items()[1], "COM 1");
    EXPECT_EQ(form.ComSelect.Items()[32], "COM 32");
    ASSERT_EQ(form.IdSelect.Items().size(), 33U);
    EXPECT_EQ(form.IdSelect.Items()[32], "32");
    EXPECT_EQ(form.DeviceIds[19].Items(), form.IdSelect.Items());
    EXPECT_EQ(form.DeviceLines[0].Caption(), "Device1 with ID:");
    EXPECT_EQ(form.DeviceLines[19].Caption(), "Device20 with ID:");
}

TEST_F(ConnectionDialogTest, Rs485EnablesBothFramesAndTurnsIdZeroToOne) {
    ChooseRs485();
    EXPECT_TRUE(form.IdFrame.Enabled());
    EXPECT_TRUE(form.ConnectionFrame.Enabled());
    EXPECT_EQ(form.IdSelect.Index(), 1);
    EXPECT_EQ(program.State.SingleId, 1);
}

TEST_F(ConnectionDialogTest, UsbGoesBackToOneDeviceWithIdZero) {
    ChooseRs485();
    form.IdSelect.UserSelect(25);
    ChooseUsb();
    EXPECT_EQ(form.IdSelect.Index(), 0);
    EXPECT_EQ(program.State.SingleId, 0);
    EXPECT_FALSE(form.ConnectionFrame.Enabled());
    ExpectMode(false, false, false, false, 2805);
}

TEST_F(ConnectionDialogTest, UsbFromAListModeLeavesNoIdToChoose) {
    for (const controls::ConnectionMode mode : {UpToTwentyDevices, UpToTenDevices, MoreDevices}) {
        SCOPED_TRACE(mode);
        ChooseRs485();
        form.Connection[mode].Select();
        ChooseUsb();
        EXPECT_TRUE(form.Connection[OneDevice].Selected());
        EXPECT_EQ(program.State.SingleId, 0);
        EXPECT_FALSE(form.ConnectionFrame.Enabled());
        ExpectMode(false, false, false, false, 2805);
    }
}

TEST_F(ConnectionDialogTest, ModesSetFlagsFrameAndWidth) {
    ChooseRs485();
    form.Connection[UpToTwentyDevices].Select();
    ExpectMode(false, true, true, false, 7600);
    form.Connection[UpToTenDevices].Select();
    ExpectMode(true, false, true, false, 5190);
    form.Connection[MoreDevices].Select();
    ExpectMode(false, false, true, false, 2805);
    form.Connection[OneDevice].Select();
    ExpectMode(false, false, false, true, 2805);
}

TEST_F(ConnectionDialogTest, IdZeroOfOneDeviceOnRs485TurnsToOne) {
    ChooseRs485();
    form.IdSelect.UserSelect(12);
    EXPECT_EQ(program.State.SingleId, 12);
    form.IdSelect.UserSelect(0);
    EXPECT_EQ(form.IdSelect.Index(), 1);
    EXPECT_EQ(program.State.SingleId, 1);
    form.Connection[UpToTenDevices].Select();
    form.Connection[OneDevice].Select();
    EXPECT_EQ(program.State.SingleId, 1);
}

TEST_F(ConnectionDialogTest, IdZeroOfAListLineTurnsToOne) {
    for (const std::size_t line_number : {0U, 6U, 19U}) {
        form.DeviceIds[line_number].UserSelect(30);
        EXPECT_EQ(program.State.ConfiguredIds[line_number], 30);
        form.DeviceIds[line_number].UserSelect(0);
        EXPECT_EQ(form.DeviceIds[line_number].Index(), 1);
        EXPECT_EQ(program.State.ConfiguredIds[line_number], 1);
    }
}

TEST_F(ConnectionDialogTest, IdZeroInTheFileComesUpAsOneAndGoesBackAsOne) {
    TestProgram fresh;
    fresh.Folder.Write("TenDev.cfg", Words({2, 0, 4}));
    fresh.Program.Connection.Load();
    EXPECT_EQ(fresh.Program.Select.DeviceIds[1].Index(), 1);
    EXPECT_EQ(fresh.Folder.Read("TenDev.cfg"), Words({2, 0, 4}));
    fresh.Program.Select.Proceed.UserClick();
    EXPECT_EQ(fresh.Folder.Read("TenDev.cfg")[2], 1);
}

TEST_F(ConnectionDialogTest, EqualIdsAmongTheFirstTenAreRefusedInTheModeOfTen) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    form.DeviceIds[9].UserSelect(1); // as line 1
    const Bytes before = world.Folder.Read("TenDev.cfg");
    EXPECT_TRUE(Refused());
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "", "All ID must be different!", BoxIcon::Critical, BoxButtons::Ok);
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), before);
    EXPECT_TRUE(world.Host.Log.empty());
    EXPECT_TRUE(program.State.SelectExitPending);
    EXPECT_EQ(form.EqualIds.Caption(), "Device1 and Device10 both have ID 1.");
    form.DeviceIds[9].UserSelect(30);
    EXPECT_EQ(form.EqualIds.Caption(), "");
    form.DeviceIds[9].UserSelect(1);
    EXPECT_TRUE(Refused());
    form.Connection[UpToTwentyDevices].Select();
    EXPECT_EQ(form.EqualIds.Caption(), "");
}

TEST_F(ConnectionDialogTest, NeighboursAtTheEndOfEachListAreCompared) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    form.DeviceIds[8].UserSelect(10);
    EXPECT_TRUE(Refused());
    world.Boxes.Shown.clear();
    form.DeviceIds[8].UserSelect(9);
    form.Connection[UpToTwentyDevices].Select();
    form.DeviceIds[18].UserSelect(20);
    EXPECT_TRUE(Refused());
}

TEST_F(ConnectionDialogTest, TenEqualIdsInTheSecondListPassInTheModeOfTen) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    for (std::size_t second = 10; second < 20; ++second) {
        form.DeviceIds[second].UserSelect(5);
    }
    EXPECT_FALSE(Refused());
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("close dialog"));
    EXPECT_EQ(world.Folder.Read("TenDev.cfg")[20], 5);
}

TEST_F(ConnectionDialogTest, TheSameAreRefusedInTheModeOfTwenty) {
    ChooseRs485();
    form.Connection[UpToTwentyDevices].Select();
    form.DeviceIds[19].UserSelect(5);
    EXPECT_TRUE(Refused());
}

TEST_F(ConnectionDialogTest, ListsAreNotComparedWithMoreDevicesOrOne) {
    for (controls::List& list : form.DeviceIds) {
        list.Select(7);
    }
    ChooseRs485();
    form.Connection[MoreDevices].Select();
    EXPECT_FALSE(Refused());
    form.Connection[OneDevice].Select();
    EXPECT_FALSE(Refused());
    EXPECT_EQ(world.Folder.Read("TenDev.cfg")[38], 7);
}

TEST_F(ConnectionDialogTest, EqualIdsMadeDifferentPass) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    form.DeviceIds[0].UserSelect(2);
    EXPECT_TRUE(Refused());
    world.Boxes.Shown.clear();
    form.DeviceIds[0].UserSelect(32);
    EXPECT_FALSE(Refused());
}

TEST_F(ConnectionDialogTest, ProceedingClosesWithoutAQuestionAndLeavesTheFlagSetAgain) {
    form.Proceed.UserClick();
    EXPECT_FALSE(program.State.SelectExitPending);
    EXPECT_TRUE(program.Connection.QueryUnload());
    EXPECT_TRUE(program.State.SelectExitPending);
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(ConnectionDialogTest, ExitAsksAndNoStays) {
    form.Exit.UserClick();
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("close dialog"));
    world.Boxes.Answers = {BoxAnswer::No};
    EXPECT_FALSE(program.Connection.QueryUnload());
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Exit", "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
    EXPECT_TRUE(program.State.SelectExitPending);
    EXPECT_FALSE(world.Process.Ended);
}

TEST_F(ConnectionDialogTest, CloseBoxAsksAndYesEndsTheProcess) {
    EXPECT_THROW(program.Connection.QueryUnload(), ProcessEnded);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(world.Process.Ended);
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(ConnectionDialogTest, ExitAfterARefusedProceedStillAsks) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    form.DeviceIds[0].UserSelect(2);
    ASSERT_TRUE(Refused());
    form.Exit.UserClick();
    world.Boxes.Answers = {BoxAnswer::No};
    EXPECT_FALSE(program.Connection.QueryUnload());
    EXPECT_EQ(world.Boxes.Shown.back().Title, "Exit");
}

TEST_F(ConnectionDialogTest, SeveralEqualPairsAreOneBox) {
    ChooseRs485();
    form.Connection[UpToTenDevices].Select();
    for (const std::size_t equal : {3U, 5U, 6U, 9U}) {
        form.DeviceIds[equal].UserSelect(1);
    }
    EXPECT_TRUE(Refused());
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
}

} // namespace
} // namespace nrv::testing
