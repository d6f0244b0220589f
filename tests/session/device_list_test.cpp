#include "session/device_list.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

class DeviceListTest : public ProgramTest {
  protected:
    /// The list as its load leaves it, a second before its first tick.
    void StartWithoutTick(const std::vector<int>& ids) {
        for (const int id : ids) {
            line.Add(id, "Label of dev " + std::to_string(100 + id));
        }
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        Forget();
    }
    bool HasImageOf(int id) {
        const Bytes& preset = line.Devices.at(id).Preset;
        return std::equal(preset.begin(), preset.end(),
                          program.Stores.PresetImage[static_cast<std::size_t>(id)].PresetBody.begin());
    }
};

TEST_F(DeviceListTest, LoadMakesTheGridAndStartsTheTimer) {
    program.Windows.OpenWindowTop = 5;
    StartWithoutTick({3, 7, 12});
    EXPECT_EQ(program.Windows.OpenWindowTop, -1);
    EXPECT_EQ(program.List.Devices.Rows(), 3);
    EXPECT_EQ(program.List.Devices.Columns(), 1);
    EXPECT_EQ(program.List.Devices.ColumnWidth(), 1935);
    EXPECT_EQ(Row(0), "");
    EXPECT_FALSE(program.List.LoadingNotice.Visible());
    EXPECT_TRUE(program.List.SearchingNotice.Visible());
    EXPECT_TRUE(program.List.Timer1.Running());
    EXPECT_EQ(program.List.Timer1.Interval(), 1000);
    EXPECT_TRUE(program.State.DeviceUnconnected[7]);
    EXPECT_EQ(program.List.SearchingNotice.Caption(), "Please wait, searcing device......");
    EXPECT_EQ(program.List.LoadingNotice.Caption(), "Please wait, Loading controls ......");
    EXPECT_EQ(program.List.Window.Caption(), " List ID");
    EXPECT_EQ(program.List.Devices.ToolTip(), "Double Click to edit parameters");
    EXPECT_EQ(program.List.ListCaption.Caption(), "Name && ID Device");
}

TEST_F(DeviceListTest, PassReadsLabelAndImageOfEachDevice) {
    StartWithoutTick({3, 7, 12});
    TickList();
    EXPECT_EQ(Row(0), "Label of dev 103  ID:3");
    EXPECT_EQ(Row(1), "Label of dev 107  ID:7");
    EXPECT_EQ(Row(2), "Label of dev 112  ID:12");
    EXPECT_EQ(program.State.DeviceNames[7], "Label of dev 107");
    EXPECT_EQ(program.State.DeviceRow[3], 0);
    EXPECT_EQ(program.State.DeviceRow[7], 1);
    EXPECT_EQ(program.State.DeviceRow[12], 2);
    for (const std::size_t id : {3U, 7U, 12U}) {
        EXPECT_FALSE(program.State.DeviceUnconnected[id]);
        EXPECT_TRUE(HasImageOf(static_cast<int>(id)));
    }
    EXPECT_TRUE(program.State.DeviceUnconnected[4]);
    EXPECT_FALSE(program.List.Timer1.Running());
    EXPECT_FALSE(program.List.SearchingNotice.Visible());
    EXPECT_EQ(world.Process.Slept, 150);
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(DeviceListTest, PassAsksEachDeviceForItsLabelThenItsImage) {
    StartWithoutTick({3, 7});
    TickList();
    ASSERT_EQ(world.Port.Sent.size(), 34U);
    std::vector<int> addresses = Range(32, 47);
    Append(addresses, Range(32, 47));
    EXPECT_EQ(AddressesRead(world.Port.Sent), addresses);
    EXPECT_EQ(world.Port.Sent[0], (Frame{0xF0, 0xC3, 3, 0x10, 0, 32, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(world.Port.Sent[16], (Frame{0xF0, 0xC3, 3, 0x0B, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(world.Port.Sent[17], (Frame{0xF0, 0xC3, 7, 0x10, 0, 32, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(world.Port.Sent[33], (Frame{0xF0, 0xC3, 7, 0x0B, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
}

TEST_F(DeviceListTest, GridIsRepaintedAfterEachRow) {
    StartWithoutTick({3, 7});
    int repaints = 0;
    program.List.Devices.Observe(
        [&](controls::Aspect aspect) { repaints += aspect == controls::Aspect::Repaint ? 1 : 0; });
    TickList();
    EXPECT_EQ(repaints, 2);
}

TEST_F(DeviceListTest, DemoDevicesHaveTheDemoLabelAndSendNothing) {
    world.Folder.Write("Speakers.cfg", SpeakersFile({{0, 0}, {5, 5}}));
    Start([this] { ProceedWith(controls::MoreDevices, 0); });
    Forget();
    TickList();
    EXPECT_EQ(Row(0), "  Device Demo     ID:0");
    EXPECT_EQ(Row(1), "  Device Demo     ID:5");
    EXPECT_EQ(program.State.DeviceNames[5], "  Device Demo   ");
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_TRUE(world.Port.Log.empty());
    EXPECT_FALSE(program.List.Timer1.Running());
    EXPECT_FALSE(program.State.DeviceUnconnected[5]);
    EXPECT_EQ(program.Stores.PresetImage[5].PresetBody[1], 60);
}

TEST_F(DeviceListTest, ReportedFailureLeavesTheTimerOnAndTheWorkStartsOver) {
    StartWithoutTick({3, 7});
    program.Link.ReportLinkFailure = true;
    program.Windows.WindowSlots[0].DeviceId = 7; // the window last active was this device's
    line.Devices.at(7).Alive = false;
    TickList();
    EXPECT_TRUE(program.List.Timer1.Running());
    EXPECT_TRUE(program.List.SearchingNotice.Visible());
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(Row(0), "Label of dev 103  ID:3");
    EXPECT_EQ(Row(1), " Unconnected      ID:7");
    EXPECT_TRUE(program.State.DeviceUnconnected[7]);
    line.Devices.at(7).Alive = true;
    Forget();
    TickList();
    EXPECT_EQ(world.Port.Sent.size(), 34U); // the first device anew too
    EXPECT_EQ(Row(0), "Label of dev 103  ID:3");
    EXPECT_EQ(Row(1), "Label of dev 107  ID:7");
    EXPECT_EQ(program.State.DeviceNames[7], "Label of dev 107");
    EXPECT_FALSE(program.List.Timer1.Running());
}

TEST_F(DeviceListTest, PassBelongsToTheDeviceThatItReadsAndSaysHowFarItIs) {
    StartWithoutTick({3, 7});
    program.Link.ReportLinkFailure = true;
    std::vector<int> about;
    std::string waiting;
    int of_seven = 0;
    world.Port.OnOutput = [&] {
        if (of_seven > 3 && waiting.empty()) { // the third byte is asked for again
            waiting = program.Status.Text();
        }
    };
    world.Port.Answer = [&](const Frame& frame) {
        const int device = program.Events.Current().Of()->Device;
        if (about.empty() || about.back() != device) {
            about.push_back(device);
        }
        of_seven += frame[2] == 7 ? 1 : 0;
        return of_seven < 3 ? line.Answer(frame) : Bytes{};
    };
    int starts = 0;
    program.List.Timer1.Observe([&](controls::Aspect) { starts += program.List.Timer1.Running() ? 1 : 0; });
    TickList();
    EXPECT_THAT(about, ::testing::ElementsAre(3, 7));
    EXPECT_EQ(waiting, "ID:7 does not answer, byte 3 of 16.");
    EXPECT_EQ(program.Status.Text(),
              "ID:7 does not answer; the reading of its label stopped. Double-click its row to connect it again.");
    EXPECT_EQ(starts, 1); // a whole second more from here
}

TEST_F(DeviceListTest, UnreportedFailureGivesAGarbageLabelAndNothingStopsThePass) {
    StartWithoutTick({3});
    program.Link.RxFrame[8] = '?';
    world.Port.Answer = [this](const Frame& frame) { return frame[3] == 0x0B ? line.Answer(frame) : Bytes{}; };
    TickList();
    EXPECT_EQ(world.Port.CountSent(0x10), 80); // 16 characters, five transmissions each
    EXPECT_EQ(Row(0), "????????????????  ID:3");
    EXPECT_FALSE(program.List.Timer1.Running());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(DeviceListTest, ImageThatNeverComesEndsTheProcess) {
    StartWithoutTick({3});
    world.Port.Answer = [this](const Frame& frame) { return frame[3] == 0x0B ? Bytes{} : line.Answer(frame); };
    EXPECT_THROW(program.List.Timer1.Tick(), ProcessEnded);
    EXPECT_EQ(world.Boxes.Shown.back().Text, "Time out");
}

TEST_F(DeviceListTest, PortThatGoesAwayDuringThePassIsToldOnce) {
    StartWithoutTick({3, 7});
    world.Port.Present = false; // gone at the next opening, which is that for the first image
    TickList();
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Icon, BoxIcon::Critical);
    EXPECT_FALSE(world.Boxes.Shown[0].Text.empty());
    EXPECT_FALSE(program.List.Timer1.Running());
    EXPECT_FALSE(program.List.SearchingNotice.Visible());
    EXPECT_EQ(Row(0), "Label of dev 103  ID:3");
    EXPECT_EQ(Row(1), "");
}

TEST_F(DeviceListTest, ClosingMinimisesAndBringsBack) {
    StartWithoutTick({3});
    program.DeviceList.QueryUnload();
    EXPECT_TRUE(world.Host.ListMinimised);
    program.DeviceList.QueryUnload();
    EXPECT_FALSE(world.Host.ListMinimised);
}

TEST_F(DeviceListTest, GridIsRepaintedAtItsLoad) {
    int repaints = 0;
    program.List.Devices.Observe([&](controls::Aspect aspect) {
        if (aspect == controls::Aspect::Repaint) {
            ++repaints;
            EXPECT_EQ(program.List.Devices.Rows(), 2);
        }
    });
    StartWithoutTick({3, 7});
    EXPECT_EQ(repaints, 1);
}

TEST_F(DeviceListTest, DeviceIsListedBeforeItsImageIsAskedFor) {
    StartWithoutTick({3, 7});
    int images = 0;
    world.Port.Answer = [&](const Frame& frame) {
        if (frame[3] == 0x0B) {
            ++images;
            EXPECT_FALSE(program.State.DeviceUnconnected[frame[2]]);
            EXPECT_EQ(Row(images - 1),
                      "Label of dev " + std::to_string(100 + frame[2]) + "  ID:" + std::to_string(frame[2]));
        } else {
            EXPECT_TRUE(program.State.DeviceUnconnected[frame[2]]);
        }
        return line.Answer(frame);
    };
    TickList();
    EXPECT_EQ(images, 2);
}

TEST_F(DeviceListTest, LabelsAreRenewedAndNotAppended) {
    StartWithoutTick({3});
    TickList();
    TickList();
    EXPECT_EQ(Row(0), "Label of dev 103  ID:3");
}

} // namespace
} // namespace nrv::testing
