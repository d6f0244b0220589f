#include "session/device_list.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

using controls::Pointer;

class OpenDeviceTest : public ProgramTest {
  protected:
    void ExpectNothingOpened() {
        EXPECT_THAT(world.Host.Log, ::testing::Not(::testing::Contains(::testing::StartsWith("show window"))));
        EXPECT_THAT(program.Windows.Loaded, ::testing::Each(false));
        EXPECT_EQ(program.Windows.OpenWindowTop, -1);
        for (const controls::WindowSlot& slot : program.Windows.WindowSlots) {
            EXPECT_FALSE(slot.InUse);
        }
        EXPECT_EQ(program.List.Window.MousePointer(), Pointer::Default);
    }
};

TEST_F(OpenDeviceTest, FirstDoubleClickChecksReadsAndShows) {
    StartOnLine({3, 7});
    DoubleClick(1);
    ASSERT_EQ(world.Port.Sent.size(), 33U); // the check and 32 reads, and no more
    EXPECT_EQ(world.Port.Sent[0], ProbeFrame(7));
    EXPECT_EQ(AddressesRead(world.Port.Sent).size(), 32U);
    EXPECT_TRUE(program.Link.DeviceChecked[7]);
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
    EXPECT_TRUE(program.Windows.WindowSlots[0].InUse);
    EXPECT_EQ(program.Windows.WindowSlots[0].DeviceId, 7);
    EXPECT_EQ(program.Windows.WindowSlots[0].SlotIndex, 0);
    EXPECT_EQ(program.Windows.NewSlot, 0);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("show window 0"));
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_EQ(program.List.Window.MousePointer(), Pointer::Default);
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(OpenDeviceTest, PointerAndNoticeStandWhileTheDeviceIsRead) {
    StartOnLine({3});
    bool notice_repainted = false;
    program.List.LoadingNotice.Observe([&](controls::Aspect aspect) {
        notice_repainted |= aspect == controls::Aspect::Repaint && program.List.LoadingNotice.Visible();
    });
    int reads = 0;
    world.Port.Answer = [&](const Frame& frame) {
        EXPECT_TRUE(program.List.LoadingNotice.Visible());
        EXPECT_TRUE(notice_repainted); // before the first wait already, that of the check
        if (frame[3] == 0x10) {
            ++reads;
            EXPECT_EQ(program.List.Window.MousePointer(), Pointer::ArrowAndHourglass);
        }
        return line.Answer(frame);
    };
    DoubleClick(0);
    EXPECT_EQ(reads, 32);
    EXPECT_TRUE(Loaded(0));
}

TEST_F(OpenDeviceTest, DeviceThatPassedOnceIsOpenedWithoutFurtherQuestion) {
    StartOnLine({3});
    DoubleClick(0);
    ASSERT_TRUE(program.Control.QueryUnload(0));
    Forget();
    DoubleClick(0);
    EXPECT_EQ(world.Port.Sent.size(), 32U);
    EXPECT_EQ(world.Port.CountSent(0), 0);
    EXPECT_TRUE(Loaded(0));
}

TEST_F(OpenDeviceTest, AnswerToTheCheckThatIsNoProbesAnswerOpensAllTheSame) {
    StartOnLine({3});
    world.Port.Answer = [this](const Frame& frame) { return frame[3] == 0 ? Bytes(13, 0) : line.Answer(frame); };
    DoubleClick(0);
    EXPECT_TRUE(Loaded(0)); // only a check that timed out keeps the window shut
}

TEST_F(OpenDeviceTest, SecondDoubleClickAnswersThatTheWindowIsOpen) {
    StartOnLine({3, 7});
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    world.Boxes.WhileItStands = [this] { EXPECT_EQ(program.Windows.OpenWindowTop, 2); };
    DoubleClick(0);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Speakers Edit", "The window is already open", BoxIcon::Exclamation,
              BoxButtons::Ok);
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("focus window 0"));
    EXPECT_EQ(program.Status.Text(), "The window is already open; Ctrl+Tab walks the windows");
    EXPECT_FALSE(program.Windows.WindowSlots[2].InUse);
}

TEST_F(OpenDeviceTest, TwelfthWindowIsRefusedWithAMessageThatSays32) {
    StartDemo(12);
    for (int row = 0; row < 11; ++row) {
        DoubleClick(row);
        EXPECT_EQ(program.Windows.OpenWindowTop, row);
    }
    EXPECT_TRUE(world.Boxes.Shown.empty());
    world.Boxes.WhileItStands = [this] { EXPECT_EQ(program.Windows.OpenWindowTop, 10); };
    for (int attempt = 0; attempt < 2; ++attempt) {
        Forget();
        DoubleClick(11);
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Out of memory", "Out of memory: max number of window open is 32",
                  BoxIcon::Exclamation, BoxButtons::Ok);
        EXPECT_EQ(program.Windows.OpenWindowTop, 10);
        EXPECT_TRUE(world.Host.Log.empty());
    }
}

TEST_F(OpenDeviceTest, LimitIsTestedBeforeTheOpenWindow) {
    StartDemo(11);
    for (int row = 0; row < 11; ++row) {
        DoubleClick(row);
    }
    Forget();
    DoubleClick(0);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Out of memory");
    EXPECT_EQ(program.Windows.OpenWindowTop, 10);
}

TEST_F(OpenDeviceTest, FirstFreeSlotIsTaken) {
    StartDemo(12);
    for (int row = 0; row < 11; ++row) {
        DoubleClick(row);
    }
    ASSERT_TRUE(program.Control.QueryUnload(4));
    Forget();
    DoubleClick(11);
    EXPECT_EQ(program.Windows.NewSlot, 4);
    EXPECT_EQ(program.Windows.WindowSlots[4].DeviceId, 11);
    EXPECT_EQ(program.Windows.WindowSlots[4].SlotIndex, 4);
    EXPECT_EQ(program.Windows.OpenWindowTop, 10);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("show window 4"));
}

TEST_F(OpenDeviceTest, CheckThatTimesOutLeavesTheNoticeAndOpensNoWindow) {
    StartOnLine({3, 7});
    line.Devices.at(7).Alive = false;
    for (int attempt = 0; attempt < 2; ++attempt) { // the next double click checks again
        Forget();
        DoubleClick(1);
        EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ProbeFrame(7), ProbeFrame(7)));
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        // Before any window was opened it is slot 0's ID, not the one asked.
        ExpectBox(world.Boxes.Shown[0], "", "Time-Out: Communication problem with device ID:0", BoxIcon::Exclamation,
                  BoxButtons::Ok);
        EXPECT_TRUE(program.List.LoadingNotice.Visible());
        EXPECT_FALSE(program.Link.DeviceChecked[7]);
        EXPECT_FALSE(program.Link.TransactionDone);
        EXPECT_EQ(Row(1), "Label of dev 007  ID:7");
        EXPECT_EQ(program.Main.StatusLine.Caption(),
                  "ID:7 does not answer; its window was not opened. Double-click its row to try again.");
        ExpectNothingOpened();
    }
    line.Devices.at(7).Alive = true;
    DoubleClick(1);
    EXPECT_TRUE(Loaded(0));
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
}

TEST_F(OpenDeviceTest, CheckThatTimesOutInTheFirstRowLeavesTheNoticeToo) {
    StartOnLine({3, 7});
    line.Devices.at(3).Alive = false;
    DoubleClick(0);
    EXPECT_TRUE(program.List.LoadingNotice.Visible());
    ExpectNothingOpened();
}

TEST_F(OpenDeviceTest, CheckThatTimesOutNamesTheDeviceOfTheWindowLastActive) {
    StartOnLine({3, 7});
    DoubleClick(0);
    line.Devices.at(7).Alive = false;
    Forget();
    DoubleClick(1);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Text, "Time-Out: Communication problem with device ID:3");
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
    EXPECT_TRUE(Loaded(0));
}

TEST_F(OpenDeviceTest, CheckOfADeviceThatIsNotListedHidesTheNotice) {
    StartOnLine({3});
    program.State.SpeakerRecords[3].SetDeviceId(9);
    program.State.DeviceUnconnected[9] = false;
    DoubleClick(0);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_EQ(program.Main.StatusLine.Caption(),
              "ID:9 does not answer; its window was not opened. Double-click its row to try again.");
    EXPECT_FALSE(program.Link.DeviceChecked[9]);
    ExpectNothingOpened();
}

TEST_F(OpenDeviceTest, RecordWithABadIdOpensNothingAndSaysSo) {
    StartOnLine({3});
    for (const int bad : {33, -1, 32767, -32768}) {
        SCOPED_TRACE(bad);
        Forget();
        program.State.SpeakerRecords[3].SetDeviceId(bad);
        DoubleClick(0);
        EXPECT_TRUE(world.Boxes.Shown.empty());
        EXPECT_TRUE(world.Port.Sent.empty());
        EXPECT_EQ(program.Main.StatusLine.Caption(), "The device was not opened. Its record gives the ID " +
                                                         std::to_string(bad) + ", and IDs are 0 to 32.");
        ExpectNothingOpened();
    }
}

TEST_F(OpenDeviceTest, IdComesFromTheRecordAtTheFoundId) {
    StartOnLine({3, 7});
    program.State.SpeakerRecords[3].SetDeviceId(7);
    DoubleClick(0);
    EXPECT_EQ(program.Windows.WindowSlots[0].DeviceId, 7);
}

TEST_F(OpenDeviceTest, RowThatIsNotThereOpensNothing) {
    StartOnLine({3});
    DoubleClick(1);
    EXPECT_EQ(program.Main.StatusLine.Caption(), "The device was not opened. There is no device in this row.");
    DoubleClick(-1);
    ExpectNothingOpened();
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(OpenDeviceTest, DemoDeviceOpensWithoutAnyFrame) {
    StartDemo(3);
    DoubleClick(2);
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(program.Windows.WindowSlots[0].DeviceId, 2);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(OpenDeviceTest, OpeningThatFailsInItsLoadGivesSlotAndCountBack) {
    StartOnLine({3, 7});
    DoubleClick(0);
    // The load's last step but one is to hide the notice; here that is refused.
    bool refuse = true;
    program.List.LoadingNotice.Observe([&](controls::Aspect aspect) {
        if (refuse && aspect == controls::Aspect::Visible && !program.List.LoadingNotice.Visible()) {
            throw RuntimeError(ErrorKind::IndexOutOfRange, "Refused.");
        }
    });
    Forget();
    DoubleClick(1);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(program.Main.StatusLine.Caption(), "The device was not opened. Refused.");
    EXPECT_TRUE(world.Host.Log.empty());
    EXPECT_FALSE(Loaded(1));
    EXPECT_FALSE(program.Windows.WindowSlots[1].InUse);
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
    EXPECT_EQ(program.Windows.CurrentWindow, 0);
    EXPECT_EQ(program.Windows.CurrentDevice(), 3);
    EXPECT_FALSE(program.Link.TxSuppressed);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_EQ(program.List.Window.MousePointer(), Pointer::Default);
    refuse = false;
    DoubleClick(1);
    EXPECT_TRUE(Loaded(1));
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
}

TEST_F(OpenDeviceTest, NoticeStandsAtASecondOpeningTooAndGoesWhenItFails) {
    StartOnLine({3, 7});
    DoubleClick(0);
    program.Windows.Loaded[0] = false; // as an unconnected device leaves it
    program.Windows.WindowSlots[0].InUse = false;
    program.Windows.OpenWindowTop = -1;
    Forget();
    bool seen = false;
    world.Port.Answer = [&](const Frame& frame) {
        seen = true;
        EXPECT_TRUE(program.List.LoadingNotice.Visible());
        Bytes answer = line.Answer(frame);
        if (frame[3] == 0x10) {
            world.Port.GoAway();
        }
        return answer;
    };
    DoubleClick(0);
    EXPECT_TRUE(seen);
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
}

TEST_F(OpenDeviceTest, AnImageThatCannotBeShownTakesTheNoticeAlong) {
    StartOnLine({3});
    program.Stores.PresetImage[3].PresetBody[model::PeqOffsets[0] + 1] = 250; // no frequency has this code
    DoubleClick(0);
    EXPECT_FALSE(Loaded(0));
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_TRUE(program.Main.StatusLine.Caption().starts_with("The device was not opened. "))
        << program.Main.StatusLine.Caption();
}

TEST_F(OpenDeviceTest, SaysHowFarTheReadingOfItsMemoryIs) {
    StartOnLine({3, 7});
    DoubleClick(0);
    std::string waiting;
    int asked = 0;
    world.Port.OnOutput = [&] {
        if (asked > 4 && waiting.empty()) { // the check, and the third byte is asked for again
            waiting = program.Status.Text();
        }
    };
    world.Port.Answer = [&](const Frame& frame) {
        asked += frame[2] == 7 ? 1 : 0;
        return asked < 4 ? line.Answer(frame) : Bytes{};
    };
    DoubleClick(1);
    EXPECT_EQ(waiting, "ID:7 does not answer, byte 3 of its memory.");
}

TEST_F(OpenDeviceTest, AWindowThatIsRenewedIsNotThatOfItsOperationAnyMore) {
    StartOnLine({3});
    DoubleClick(0);
    world.Port.SetPortOpen(false);
    std::vector<int> slots;
    world.Port.Answer = [&](const Frame& frame) {
        if (frame[3] == 0x10 && frame[5] == 16) { // the option bits, the first of its memory
            slots.push_back(program.Events.Current().Of()->Slot);
        }
        return line.Answer(frame);
    };
    DoubleClick(0);
    EXPECT_THAT(slots, ::testing::ElementsAre(Operation::NoSlot));
    EXPECT_TRUE(Loaded(0));
}

TEST_F(OpenDeviceTest, NoFreeSlotGivesTheCountBack) {
    StartOnLine({3});
    for (std::size_t slot = 0; slot < program.Windows.WindowSlots.size(); ++slot) {
        program.Windows.WindowSlots[slot] = {true, 20, static_cast<int>(slot)};
    }
    program.Windows.OpenWindowTop = 4;
    DoubleClick(0);
    EXPECT_EQ(program.Main.StatusLine.Caption(), "The device was not opened. No window is free.");
    EXPECT_EQ(program.Windows.OpenWindowTop, 4);
}

TEST_F(OpenDeviceTest, InDemoModeNoPortIsOpenedAnew) {
    StartOnLine({3});
    world.Port.SetPortOpen(false);
    program.Link.DemoMode = true;
    Forget();
    DoubleClick(0);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Port.Log.empty());
    EXPECT_TRUE(Loaded(0));
}

TEST_F(OpenDeviceTest, ALinkThatWasNeverReadyIsNotConnectedAnew) {
    StartOnLine({3});
    world.Port.SetPortOpen(false);
    program.Link.LinkReady = false;
    Forget();
    DoubleClick(0);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Port.Log.empty());
}

TEST_F(OpenDeviceTest, FailureWhileTheDeviceIsReadGivesUpThatDeviceAndNoOther) {
    StartOnLine({3, 7});
    DoubleClick(0);
    Forget();
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 192 ? Bytes{} : line.Answer(frame); };
    world.Boxes.WhileItStands = [this] {
        EXPECT_EQ(program.Main.StatusLine.Caption(),
                  "ID:7 does not answer; its opening stopped. Double-click its row to connect it again.");
    };
    DoubleClick(1);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Communication problem",
              " The system will be close the communication with this device", BoxIcon::Exclamation, BoxButtons::Ok);
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(Row(0), "Label of dev 003  ID:3");
    EXPECT_FALSE(program.State.DeviceUnconnected[3]);
    EXPECT_EQ(Row(1), " Unconnected      ID:7");
    EXPECT_TRUE(program.State.DeviceUnconnected[7]);
    EXPECT_TRUE(Loaded(1)); // the opening itself goes on with what was read
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
    EXPECT_EQ(program.Main.StatusLine.Caption(),
              "Device ID:7 could not be read; what its window shows is not what it holds.");
}

TEST_F(OpenDeviceTest, WindowOfADeviceThatCouldNotBeReadIsRenewedWhenItIsConnectedAgain) {
    StartOnLine({3, 7});
    DoubleClick(0);
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 192 ? Bytes{} : line.Answer(frame); };
    DoubleClick(1);
    world.Port.Answer = [this](const Frame& frame) { return line.Answer(frame); };
    line.Devices.at(7).Preset[model::GainOffsets[0] + 1] = 77;
    Forget();
    DoubleClick(1);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U); // no word of a window that is open already
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Connect device");
    EXPECT_TRUE(Loaded(0));
    EXPECT_TRUE(Loaded(1));
    EXPECT_EQ(Window(1).Slider1[0].Position(), 120 - 77);
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
    EXPECT_FALSE(program.State.DeviceUnconnected[7]);
}

TEST_F(OpenDeviceTest, SilentReadsOpenTheWindowAndSaySo) {
    StartOnLine({3});
    world.Port.Answer = [this](const Frame& frame) {
        return frame[3] == 0x10 && frame[5] == 50 ? Bytes{} : line.Answer(frame);
    };
    DoubleClick(0); // the first window: failures are not reported yet
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(program.Main.StatusLine.Caption(),
              "Device ID:3 could not be read; what its window shows is not what it holds.");
}

TEST_F(OpenDeviceTest, PortThatWentAwayIsConnectedAnewOnTheWay) {
    StartOnLine({3});
    world.Port.SetPortOpen(false); // as a port does that goes away at rest
    Forget();
    DoubleClick(0);
    ASSERT_FALSE(world.Boxes.Shown.empty());
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Connect device");
    EXPECT_TRUE(Loaded(0));
}

} // namespace
} // namespace nrv::testing
