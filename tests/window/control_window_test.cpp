#include "model/tables.h"
#include "session/program_fixture.h"
#include "window/control_window.h"

namespace nrv::testing {
namespace {

class ControlWindowTest : public ProgramTest {
  protected:
    Frame GainFrame(int id, int channel, int code) {
        const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
        return {0xF0, 0xC3, byte(id), 0x01, byte(channel), 0, 0, 0, 0, 0, 0, byte(code), 0xF7};
    }
};

TEST_F(ControlWindowTest, LoadSetsFlagsTabSizeTitleAndTimer) {
    StartOnLine({3, 7});
    DevicesOnLine::PutText(line.Devices.at(7), 192, "Church, main hal");
    EXPECT_FALSE(program.Link.ReportLinkFailure);
    DoubleClick(0);
    program.Link.TransactionDone = false;
    DoubleClick(1);
    EXPECT_TRUE(program.Link.ReportLinkFailure);
    EXPECT_TRUE(program.Link.TransactionDone);
    EXPECT_FALSE(program.Link.TxSuppressed);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
    EXPECT_FALSE(program.Windows.FirstWindowPending);
    EXPECT_EQ(program.Windows.CurrentWindow, 1);
    EXPECT_TRUE(Loaded(1));
    const controls::FrmCtrl& form = Window(1);
    EXPECT_EQ(form.SSTab1.Tab(), 10);
    EXPECT_EQ(form.Window.Width(), 10920);
    EXPECT_EQ(form.Window.Height(), 8220);
    EXPECT_EQ(form.Window.Caption(), "ID:7 NRV-718 - Name Preset loaded from device: Church, main hal");
    EXPECT_TRUE(form.Timer1.Running());
    EXPECT_EQ(form.Timer1.Interval(), 2000);
}

TEST_F(ControlWindowTest, DemoTitleNamesTheFactoryPreset) {
    StartDemo(1);
    DoubleClick(0);
    EXPECT_EQ(Window(0).Window.Caption(), "ID:0 NRV-718 - Name Preset loaded from device: Factory Preset");
}

TEST_F(ControlWindowTest, LoadSendsNothing) {
    StartOnLine({3});
    program.Windows.WindowSlots[2] = {true, 3, 2};
    program.Windows.NewSlot = 2;
    program.Control.Load();
    EXPECT_TRUE(Loaded(2));
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_FALSE(program.Link.TxSuppressed);
}

TEST_F(ControlWindowTest, LoadHidesAndRepaintsTheNotice) {
    StartDemo(1);
    program.List.LoadingNotice.SetVisible(true);
    bool repainted_hidden = false;
    program.List.LoadingNotice.Observe([&](controls::Aspect aspect) {
        repainted_hidden |= aspect == controls::Aspect::Repaint && !program.List.LoadingNotice.Visible();
    });
    DoubleClick(0);
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_TRUE(repainted_hidden);
}

TEST_F(ControlWindowTest, FactoryImageSurvivesItsLoadButForTheMuteCopy) {
    StartDemo(1);
    DoubleClick(0);
    const auto& body = program.Stores.PresetImage[0].PresetBody;
    for (std::size_t n = 0; n < 432; ++n) {
        EXPECT_EQ(body[n], n == 71 ? 0 : model::FactoryImage[n]) << n; // no channel is muted
    }
}

TEST_F(ControlWindowTest, AnyImageSurvivesItsLoadButForTheMuteCopy) {
    StartOnLine({7});
    line.Devices.at(7).Memory[18] = 0x42;
    DoubleClick(0);
    const auto& body = program.Stores.PresetImage[7].PresetBody;
    for (std::size_t n = 0; n < 432; ++n) {
        EXPECT_EQ(body[n], n == 71 ? 0x42 : (7 * n + 7) % 121) << n;
    }
}

TEST_F(ControlWindowTest, EachLoadMakesAFreshRecord) {
    StartDemo(2);
    DoubleClick(0);
    Window(0).Label6.SetCaption("changed");
    Window(0).Check3[1].SetValue(1);
    ASSERT_TRUE(program.Control.QueryUnload(0));
    DoubleClick(1);
    EXPECT_EQ(Window(0).Label6.Caption(), "Select input");
    EXPECT_EQ(Window(0).Check3[1].Value(), 0);
    EXPECT_EQ(program.Windows.WindowSlots[0].DeviceId, 1);
}

TEST_F(ControlWindowTest, StoresOfAClosedDeviceStay) {
    StartDemo(1);
    DoubleClick(0);
    Window(0).Slider1[4].UserMove(100);
    ASSERT_TRUE(program.Control.QueryUnload(0));
    EXPECT_EQ(program.Stores.PresetImage[0].PresetBody[280], 20);
    EXPECT_EQ(program.Stores.ParamValues[0].ChannelGain[4], -8.0);
    DoubleClick(0);
    EXPECT_EQ(Window(0).Slider1[4].Position(), 100);
    EXPECT_EQ(Window(0).Text1[12].Text(), "-8");
}

TEST_F(ControlWindowTest, ActivationMovesAllCommandsToItsDevice) {
    StartOnLine({3, 7});
    line.Devices.at(3).Preset.assign(432, 60);
    line.Devices.at(7).Preset.assign(432, 60);
    program.Devices.ReadDeviceImage(3);
    program.Devices.ReadDeviceImage(7);
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    program.Control.Activate(0);
    EXPECT_EQ(program.Windows.CurrentWindow, 0);
    Window(0).Slider1[2].UserMove(50);
    program.Control.Activate(1);
    EXPECT_EQ(program.Windows.CurrentWindow, 1);
    Window(1).Slider1[2].UserMove(40);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(GainFrame(3, 2, 70), GainFrame(7, 2, 80)));
    EXPECT_EQ(program.Stores.PresetImage[3].PresetBody[184], 70);
    EXPECT_EQ(program.Stores.PresetImage[7].PresetBody[184], 80);
}

TEST_F(ControlWindowTest, ActivationStopsTheListsSecondTimer) {
    StartDemo(1);
    DoubleClick(0);
    program.List.Timer2.Start(10);
    program.Control.Activate(0);
    EXPECT_FALSE(program.List.Timer2.Running());
}

TEST_F(ControlWindowTest, ResizingStopsAtTheSmallestSize) {
    StartDemo(2);
    DoubleClick(0);
    DoubleClick(1);
    const auto expect_size = [this](int width, int height, int width_after, int height_after) {
        program.Control.Resize(0, width, height);
        EXPECT_EQ(Window(0).Window.Width(), width_after);
        EXPECT_EQ(Window(0).Window.Height(), height_after);
    };
    expect_size(10919, 8219, 10920, 8220);
    expect_size(100, 9000, 10920, 9000);
    expect_size(12000, 100, 12000, 8220);
    expect_size(12000, 9000, 12000, 9000);
    expect_size(10920, 8220, 10920, 8220);
    EXPECT_EQ(program.Windows.CurrentWindow, 1); // a resize is not the user turning to a window
}

TEST_F(ControlWindowTest, ClosingAsksAndNoKeepsTheWindow) {
    StartOnLine({3, 7});
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    world.Boxes.Answers = {BoxAnswer::No};
    world.Boxes.WhileItStands = [this] { EXPECT_EQ(program.Windows.OpenWindowTop, 1); };
    EXPECT_FALSE(program.Control.QueryUnload(0));
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "ID:3 - Close window", "               Are you sure ? ", BoxIcon::None,
              BoxButtons::YesNo);
    EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    EXPECT_TRUE(Loaded(0));
    EXPECT_TRUE(program.Windows.WindowSlots[0].InUse);
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
    EXPECT_TRUE(world.Host.Log.empty());
}

TEST_F(ControlWindowTest, ClosingFreesTheSlotAndBringsTheListForward) {
    StartOnLine({3, 7});
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    bool repainted = false;
    program.List.Devices.Observe([&](controls::Aspect aspect) { repainted |= aspect == controls::Aspect::Repaint; });
    EXPECT_TRUE(program.Control.QueryUnload(0));
    EXPECT_FALSE(Loaded(0));
    EXPECT_FALSE(program.Windows.WindowSlots[0].InUse);
    EXPECT_TRUE(program.Windows.WindowSlots[1].InUse);
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
    EXPECT_FALSE(Window(0).Timer1.Running());
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("remove window 0", "focus list"));
    EXPECT_TRUE(repainted);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_FALSE(program.State.DeviceUnconnected[3]);
    EXPECT_EQ(Row(0), "Label of dev 003  ID:3");
}

TEST_F(ControlWindowTest, ClosingAWindowThatIsGoneAsksNothing) {
    StartDemo(1);
    DoubleClick(0);
    ASSERT_TRUE(program.Control.QueryUnload(0));
    Forget();
    EXPECT_TRUE(program.Control.QueryUnload(0));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Host.Log.empty());
    EXPECT_EQ(program.Windows.OpenWindowTop, -1);
}

TEST_F(ControlWindowTest, ClosingAnUnconnectedDeviceAsksNothing) {
    StartDemo(1);
    DoubleClick(0);
    program.State.DeviceUnconnected[0] = true;
    EXPECT_TRUE(program.Control.QueryUnload(0));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_FALSE(Loaded(0));
}

TEST_F(ControlWindowTest, UnconnectSendsItsFrameMarksTheRowAndClosesWithoutAQuestion) {
    StartOnLine({3, 7});
    DoubleClick(1);
    Forget();
    Window(0).Command2[5].UserClick();
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Unconnect device", "Do you want unconnect this device, are you sure ? ",
              BoxIcon::None, BoxButtons::YesNo);
    EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(Frame{0xF0, 0xC3, 7, 0x0F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(Row(1), " Unconnected      ID:7");
    EXPECT_EQ(Row(0), "Label of dev 003  ID:3");
    EXPECT_EQ(program.Main.StatusLine.Caption(), "ID:7 is unconnected. Double-click its row to connect it again.");
    EXPECT_TRUE(program.State.DeviceUnconnected[7]);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(program.Windows.OpenWindowTop, -1);
    EXPECT_FALSE(program.Windows.WindowSlots[0].InUse);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("remove window 0", "focus list"));
}

TEST_F(ControlWindowTest, UnconnectAnsweredNoDoesNothing) {
    StartOnLine({7});
    DoubleClick(0);
    Forget();
    world.Boxes.Answers = {BoxAnswer::No};
    Window(0).Command2[5].UserClick();
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(Row(0), "Label of dev 007  ID:7");
}

TEST_F(ControlWindowTest, UnconnectOnADeadPortIsAFailureToldOnce) {
    StartOnLine({7});
    DoubleClick(0);
    Forget();
    world.Port.Gone = true;
    Window(0).Command2[5].UserClick();
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(world.Boxes.Shown[1].Title, "Communication problem");
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(program.Windows.OpenWindowTop, -1); // counted down once
}

TEST_F(ControlWindowTest, FailureGivesUpTheDeviceOfTheCurrentWindow) {
    StartOnLine({3, 7});
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    program.Control.Activate(0);
    program.Control.GiveUpDevice();
    EXPECT_EQ(Row(0), " Unconnected      ID:3");
    EXPECT_EQ(Row(1), "Label of dev 007  ID:7");
    EXPECT_TRUE(program.State.DeviceUnconnected[3]);
    EXPECT_FALSE(program.State.DeviceUnconnected[7]);
    EXPECT_FALSE(Loaded(0));
    EXPECT_TRUE(Loaded(1));
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(ControlWindowTest, FailureOfAnotherDevicesFrameClosesTheCurrentWindow) {
    StartOnLine({3, 7});
    DoubleClick(0);
    DoubleClick(1);
    Forget();
    line.Devices.at(3).Alive = false;
    EXPECT_TRUE(program.Link.SendFrame(3, {link::GainCommand}));
    EXPECT_EQ(Row(1), " Unconnected      ID:7");
    EXPECT_EQ(Row(0), "Label of dev 003  ID:3");
    EXPECT_FALSE(Loaded(1));
    EXPECT_TRUE(Loaded(0));
}

TEST_F(ControlWindowTest, SecondFailureWithNoWindowLeftCountsNothingDown) {
    StartOnLine({3});
    DoubleClick(0);
    line.Devices.at(3).Alive = false;
    EXPECT_TRUE(program.Link.SendFrame(3, {link::GainCommand}));
    EXPECT_TRUE(program.Link.SendFrame(3, {link::GainCommand}));
    EXPECT_EQ(program.Windows.OpenWindowTop, -1);
}

TEST_F(ControlWindowTest, RecordOutlivesBeingUnloadedInsideItsOwnEvent) {
    StartOnLine({3});
    DoubleClick(0);
    const controls::FrmCtrl* record = &Window(0);
    line.Devices.at(3).Alive = false;
    Forget();
    program.Events.Run(UserIn(0), [this] { Window(0).Slider1[0].UserMove(10); });
    EXPECT_EQ(&Window(0), record);
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(Window(0).Text1[0].Text(), "10"); // 110 / 5 - 12
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("remove window 0", "focus list"));
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(ControlWindowTest, CheckMarkCannotBeWrittenInAListOfOneColumn) {
    StartOnLine({3});
    EXPECT_THROW(program.Control.MarkUnchecked(3), RuntimeError);
    EXPECT_NO_THROW(program.Control.MarkUnchecked(4)); // not listed
}

TEST_F(ControlWindowTest, LoadDrawsEveryGraphOnce) {
    StartDemo(1);
    DoubleClick(0);
    for (const controls::Picture& graph : Window(0).Picture1) {
        ASSERT_EQ(graph.Strokes().size(), 1U);
        EXPECT_EQ(graph.Strokes()[0].Points.size(), 1705U);
    }
}

} // namespace
} // namespace nrv::testing
