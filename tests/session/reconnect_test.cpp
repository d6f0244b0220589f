#include "session/device_list.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

class ReconnectTest : public ProgramTest {
  protected:
    /// Four devices, the one in row 3 opened and unconnected again by its tool button.
    ReconnectTest() {
        StartOnLine({3, 7, 12, 20});
        DoubleClick(3);
        Window(0).Command2[controls::UnconnectTool].UserClick();
        EXPECT_EQ(Row(3), " Unconnected      ID:20");
        Forget();
    }
    void ExpectQuestion() {
        ASSERT_FALSE(world.Boxes.Shown.empty());
        ExpectBox(world.Boxes.Shown[0], "Connect device", "Do you want connect this device, are you sure ? ",
                  BoxIcon::None, BoxButtons::YesNo);
    }
    void ExpectStillUnconnected() {
        EXPECT_TRUE(program.State.DeviceUnconnected[20]);
        EXPECT_EQ(Row(3), " Unconnected      ID:20");
        EXPECT_THAT(program.Windows.Loaded, ::testing::Each(false));
        EXPECT_EQ(program.Windows.OpenWindowTop, -1);
        EXPECT_EQ(program.List.Window.MousePointer(), controls::Pointer::Default);
    }
};

TEST_F(ReconnectTest, NoEndsIt) {
    world.Boxes.Answers = {BoxAnswer::No};
    DoubleClick(3);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectQuestion();
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Port.Log.empty());
    ExpectStillUnconnected();
}

TEST_F(ReconnectTest, YesOpensThePortAnewAndReadsAndShowsInOneOperation) {
    DevicesOnLine::PutText(line.Devices.at(20), 32, "Renamed meanwhil");
    line.Devices.at(20).Preset.assign(432, 9);
    DoubleClick(3);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectQuestion();
    EXPECT_THAT(world.Port.Log, ::testing::ElementsAre("close", "port 1", "19200,N,8,1", "open", "close", "buffer 13",
                                                       "input 13", "open", "close", "buffer 432", "input 432", "open",
                                                       "close", "buffer 13", "input 13", "open"));
    // The probe, the label, the image and the state; no check, for it passed once.
    ASSERT_EQ(world.Port.Sent.size(), 50U);
    EXPECT_EQ(world.Port.Sent[0], ProbeFrame(20));
    EXPECT_EQ(world.Port.CountSent(0), 1);
    EXPECT_EQ(world.Port.Sent[17], (Frame{0xF0, 0xC3, 20, 0x0B, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    std::vector<int> label(AddressesRead(world.Port.Sent));
    label.resize(16);
    EXPECT_EQ(label, Range(32, 47));
    EXPECT_EQ(Row(3), "Renamed meanwhil  ID:20");
    EXPECT_FALSE(program.State.DeviceUnconnected[20]);
    EXPECT_EQ(program.Stores.PresetImage[20].PresetBody[100], 9);
    EXPECT_TRUE(program.State.SpeakerRecords[20].Found());
    EXPECT_EQ(world.Process.Slept, 50);
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(program.Windows.OpenWindowTop, 0);
}

TEST_F(ReconnectTest, LaterMarkGoesToRowZero) {
    DoubleClick(3);
    EXPECT_EQ(program.State.DeviceRow[20], 0);
    line.Devices.at(20).Alive = false;
    Window(0).Slider1[0].UserMove(10);
    EXPECT_EQ(Row(0), " Unconnected      ID:20");
    EXPECT_EQ(Row(3), "Label of dev 020  ID:20");
    EXPECT_TRUE(program.State.DeviceUnconnected[20]);
    EXPECT_FALSE(program.State.DeviceUnconnected[3]);
}

TEST_F(ReconnectTest, DeviceThatDoesNotAnswerStaysUnconnected) {
    line.Devices.at(20).Alive = false;
    DoubleClick(3);
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    ExpectBox(world.Boxes.Shown[1], "Communication problem", "Device unconnected", BoxIcon::Exclamation,
              BoxButtons::Ok);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ProbeFrame(20)));
    EXPECT_FALSE(program.State.SpeakerRecords[20].Found());
    EXPECT_EQ(program.State.DeviceRow[20], 3);
    ExpectStillUnconnected();
}

TEST_F(ReconnectTest, AnswerThatIsNoProbesAnswerCountsAsNone) {
    world.Port.Answer = [](const Frame&) { return Bytes(13, 1); };
    DoubleClick(3);
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(world.Boxes.Shown[1].Text, "Device unconnected");
    ExpectStillUnconnected();
}

TEST_F(ReconnectTest, PortThatIsMissingEndsItWithoutABox) {
    world.Port.Present = false;
    DoubleClick(3);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_THAT(program.Main.StatusLine.Caption(), ::testing::StartsWith("The device was not opened. "));
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectStillUnconnected();
}

TEST_F(ReconnectTest, FailureInTheLabelEndsItHere) {
    ASSERT_TRUE(program.Link.ReportLinkFailure); // a window was open before
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 40 ? Bytes{} : line.Answer(frame); };
    DoubleClick(3);
    ASSERT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(world.Boxes.Shown[1].Title, "Communication problem");
    EXPECT_EQ(world.Port.Sent.size(), 1U + 8U + 5U);
    EXPECT_EQ(world.Port.CountSent(0x0B), 0);
    EXPECT_EQ(program.State.DeviceRow[20], 0);
    EXPECT_EQ(Row(0), " Unconnected      ID:20"); // meant: the row is 0 from before the label on
    ExpectStillUnconnected();
}

TEST_F(ReconnectTest, OtherWindowsStayOpen) {
    DoubleClick(0);
    DoubleClick(3);
    EXPECT_TRUE(Loaded(0));
    EXPECT_TRUE(Loaded(1));
    EXPECT_EQ(program.Windows.OpenWindowTop, 1);
    EXPECT_EQ(program.Windows.WindowSlots[1].DeviceId, 20);
}

TEST_F(ReconnectTest, DeviceIsConnectedBeforeItsImageIsAskedForAndTheGridRepaintedAfterIt) {
    bool image_asked_for = false;
    int repaints = 0;
    program.List.Devices.Observe([&](controls::Aspect aspect) {
        if (aspect == controls::Aspect::Repaint) {
            ++repaints;
            EXPECT_TRUE(image_asked_for);
        }
    });
    world.Port.Answer = [&](const Frame& frame) {
        if (frame[3] == 0x0B) {
            image_asked_for = true;
            EXPECT_FALSE(program.State.DeviceUnconnected[20]);
            EXPECT_EQ(Row(3), "Label of dev 020  ID:20");
        }
        return line.Answer(frame);
    };
    DoubleClick(3);
    EXPECT_TRUE(Loaded(0));
    EXPECT_EQ(repaints, 1);
}

TEST_F(ReconnectTest, PortThatIsMissingLeavesTheLinksFlagsAsTheyWere) {
    DoubleClick(0);
    Forget();
    world.Port.GoAway();
    DoubleClick(3);
    EXPECT_TRUE(program.Link.PortOpened);
    EXPECT_TRUE(program.Link.LinkReady);
    Forget();
    // So the next change says that it was not sent.
    program.Events.Run(UserIn(0), [this] { Window(0).Slider1[0].UserMove(10); });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Communication problem");
    EXPECT_FALSE(Loaded(0));
}

TEST_F(ProgramTest, DeviceNotYetListedAsksToBeConnected) {
    line.Add(5, "Label of dev 005");
    Start([this] { ProceedWith(controls::MoreDevices, 1); });
    Forget();
    world.Boxes.Answers = {BoxAnswer::No};
    DoubleClick(0); // before the list's timer
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Connect device");
}

TEST_F(ProgramTest, UnconnectedDemoDeviceCannotBeConnectedAgain) {
    StartDemo(2);
    DoubleClick(1);
    Window(0).Command2[controls::UnconnectTool].UserClick();
    EXPECT_EQ(Row(1), " Unconnected      ID:1");
    DoubleClick(1);
    EXPECT_FALSE(Loaded(0));
    EXPECT_TRUE(program.State.DeviceUnconnected[1]);
    EXPECT_EQ(program.Windows.OpenWindowTop, -1);
    EXPECT_TRUE(world.Port.Sent.empty());
}

} // namespace
} // namespace nrv::testing
