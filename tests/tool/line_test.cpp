#include "program/program.h"
#include "support/scripted_ports.h"
#include "tool/line_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;

/// The program itself on the line, as a user works it.
class UserAtTheProgram {
  public:
    explicit UserAtTheProgram(LineWorld& world)
        : ports_(world.Open("")),
          program_(std::make_unique<program::Program>(
              program::Ports{ports_.Serial, ports_.WallClock, process_, boxes_, files_, host_, events_}, *forms_)) {
        process_.Probe = &program_->Main.SerialTimer;
        program_->State.AppFolder = folder_.Path();
        program_->Link.ComIndex = 1;
        program_->Link.OpenPort();
        program_->Link.ReopenPort(link::FrameLength);
        program_->State.SpeakerRecords[LineWorld::Id].SetDeviceId(LineWorld::Id);
        program_->State.FoundLast = 0;
        program_->State.FoundDevices[0] = LineWorld::Id;
        program_->DeviceList.Load();
        events_.Run({}, [this] { program_->DeviceList.OpenDevice(0); });
    }
    void Load(const std::string& file) {
        files_.File = file;
        Click(controls::LoadPresetTool);
    }
    /// Stores what is live into a position, by the dialog.
    void Store(int position, const std::string& name) {
        host_.WhileToolDialogStands = [this, position, name] {
            events_.Run({controls::EventSource::Kind::Dialog}, [&] {
                forms_->Store.Combo1.Select(position);
                forms_->Store.Text1.SetText(name);
                forms_->Store.Command1[1].Clicked();
            });
        };
        Click(controls::StorePresetTool);
    }

  private:
    void Click(controls::ToolButton button) {
        events_.Run({controls::EventSource::Kind::Device, 0},
                    [&] { program_->Windows.Current().Command2[static_cast<std::size_t>(button)].Clicked(); });
    }

    TestFolder folder_;
    tool::LinePorts ports_;
    tool::LineProcess process_{ports_.Run};
    ScriptedBoxes boxes_;
    ScriptedFileDialogs files_;
    RecordingHost host_;
    std::unique_ptr<program::Forms> forms_ = std::make_unique<program::Forms>();
    controls::EventBoundary events_{forms_->Windows};
    std::unique_ptr<program::Program> program_;
};

void PutThree(simulator::Device& device) {
    device.SetLabel("Main left");
    device.SetLiveImage(BodyOf(1));
    device.PutPreset(0, "Hall", BodyOf(2));
    device.PutPreset(3, "Speech", BodyOf(3));
    device.PutPreset(7, "Night", BodyOf(4));
}

TEST(ToolOnTheLine, ListsADeviceWithItsPositions) {
    LineWorld world(PutThree);
    const ToolRun run = world.RunAll({"line", "list", "--port", "COM 1", "--id", "5"});
    EXPECT_EQ(run.Outcome, 0) << run.Errors;
    EXPECT_EQ(run.Out, "ID:5: \"Main left\", active \"Factory Preset\"\n  1: \"Hall\"\n  2: empty\n  3: empty\n"
                       "  4: \"Speech\"\n  5: empty\n  6: empty\n  7: empty\n  8: \"Night\"\n");
}

TEST(ToolOnTheLine, FindsEveryDevice) {
    LineWorld world(PutThree);
    world.Line.WithRack([](simulator::Rack& rack) { rack.Add(9, "Main right"); });
    const ToolRun run = world.RunAll({"line", "list", "--port", "1"});
    EXPECT_EQ(run.Outcome, 0) << run.Errors;
    EXPECT_THAT(run.Out, HasSubstr("ID:5: \"Main left\""));
    EXPECT_THAT(run.Out, HasSubstr("ID:9: \"Main right\""));
}

TEST(ToolOnTheLine, ReadsWhatIsLive) {
    LineWorld world(PutThree);
    const ToolRun run = world.Run("read", {world.Desk.File("live.n91")});
    EXPECT_EQ(run.Outcome, 0) << run.Errors;
    const std::vector<std::uint8_t> bytes = world.Desk.Folder.Read("live.n91");
    ASSERT_EQ(bytes.size(), 771U);
    const simulator::PresetBody live = world.WithDevice([](simulator::Device& device) { return device.LiveImage(); });
    for (std::size_t n = 0; n < live.size(); ++n) {
        if (n != 71) { // the preset's copy of the mutes, which follows the live ones
            EXPECT_EQ(bytes[n], live[n]) << n;
        }
    }
}

TEST(ToolOnTheLine, WritesFrameForFrameWhatALoadSends) {
    for (unsigned seed = 11; seed <= 13; ++seed) {
        LineWorld tool(PutThree);
        LineWorld user(PutThree);
        model::PresetImageRow image = RandomPreset(seed);
        const std::string file = tool.Desk.Put("a.n91", image);
        const ToolRun run = tool.Run("write", {file});
        ASSERT_EQ(run.Outcome, 0) << run.Errors;
        UserAtTheProgram(user).Load(file);
        EXPECT_GT(tool.Line.Frames().size(), 150U);
        EXPECT_EQ(tool.Line.Frames(), user.Line.Frames());
        const auto live = [](LineWorld& world) {
            return world.WithDevice([](simulator::Device& device) { return device.LiveImage(); });
        };
        EXPECT_EQ(live(tool), live(user));
        EXPECT_EQ(live(tool)[212], image.PresetBody[212]);
    }
}

/// The frames that write device memory or a setting, those that only ask left out.
std::vector<simulator::Frame> Writing(const std::vector<simulator::Frame>& frames) {
    std::vector<simulator::Frame> writing;
    std::ranges::copy_if(frames, std::back_inserter(writing), [](const simulator::Frame& frame) {
        return frame[3] != 0 && frame[3] != link::MemoryReadCommand && frame[3] != link::PresetReadCommand &&
               frame[3] != link::LevelPollCommand;
    });
    return writing;
}

TEST(ToolOnTheLine, RestoresByTheFramesOfTheProgramsStore) {
    LineWorld tool([](simulator::Device& device) {
        device.SetLiveImage(BodyOf(2));
        device.PutPreset(3, "Speech", BodyOf(2));
    });
    ASSERT_EQ(tool.Run("backup", {tool.Desk.File("kept")}).Outcome, 0);
    tool.Line.ClearFrames();
    const ToolRun run = tool.Run("restore", {tool.Desk.File("kept")});
    ASSERT_EQ(run.Outcome, 0) << run.Errors;
    LineWorld user([](simulator::Device& device) { device.SetLiveImage(BodyOf(2)); });
    const auto mutes = BodyOf(2)[71];
    user.WithDevice([&](simulator::Device& device) { device.SetMemory(18, mutes); });
    UserAtTheProgram(user).Store(3, "Speech");
    const std::vector<simulator::Frame> stored = Writing(user.Line.Frames());
    std::vector<simulator::Frame> restored = Writing(tool.Line.Frames());
    ASSERT_EQ(stored.size(), 450U);
    ASSERT_GT(restored.size(), 450U);
    restored.resize(450);
    EXPECT_EQ(restored, stored);
}

TEST(ToolOnTheLine, LeavesALockedDeviceAloneWithoutItsPassword) {
    LineWorld world([](simulator::Device& device) {
        PutThree(device);
        device.SetPassword("hall");
        device.SetLocked(true);
    });
    const std::string file = world.Desk.Put("a.n91", RandomPreset(5));
    const ToolRun without = world.Run("write", {file});
    EXPECT_EQ(without.Outcome, 2);
    EXPECT_EQ(without.Errors, "nrv718-preset: ID:5 is locked and is not written; give --password.\n");
    EXPECT_EQ(world.Run("write", {file, "--password", "wall"}).Outcome, 2);
    EXPECT_EQ(Writing(world.Line.Frames()).size(), 0U);
    const ToolRun with = world.Run("write", {file, "--password", "hall"});
    EXPECT_EQ(with.Outcome, 0) << with.Errors;
    EXPECT_GT(Writing(world.Line.Frames()).size(), 100U);
    EXPECT_TRUE(world.WithDevice([](simulator::Device& device) { return device.Locked(); }));
}

TEST(ToolOnTheLine, WritesNothingOfAPresetThatALoadWouldNotEnd) {
    LineWorld world;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[6] = 121;
    EXPECT_EQ(world.Run("write", {world.Desk.Put("a.n91", image)}).Outcome, 2);
    EXPECT_EQ(world.Run("write", {world.Desk.File("none.n91")}).Outcome, 2);
    EXPECT_EQ(world.Run("restore", {world.Desk.File("none")}).Outcome, 2);
    EXPECT_EQ(world.Run("verify", {world.Desk.File("none")}).Outcome, 2);
    EXPECT_TRUE(world.Line.Frames().empty()); // the device is not even asked
    EXPECT_EQ(Writing(world.Line.Frames()).size(), 0U);
}

TEST(ToolOnTheLine, ShowsTheMeters) {
    LineWorld world([](simulator::Device& device) {
        device.SetLevels(simulator::Levels{6, 1, 0, 0, 0, 0, 0, 3});
        device.SetMemory(18, 0);
    });
    const ToolRun numbers = world.Run("watch", {"--count", "2", "--interval", "1"});
    EXPECT_EQ(numbers.Outcome, 0) << numbers.Errors;
    const std::string line = "6       1       0       0       0       0       0       3\n";
    EXPECT_EQ(numbers.Out, "In A    In B    Out 1   Out 2   Out 3   Out 4   Out 5   Out 6\n" + line + line);
    EXPECT_THAT(world.Run("watch", {"--count", "1", "--bars"}).Out, HasSubstr("######  #.....  ......  "));
}

TEST(ToolOnTheLine, ShowsTheMetersInPlaceWhereTheyFit) {
    LineWorld world([](simulator::Device& device) { device.SetLevels(simulator::Levels{6, 1, 0, 0, 0, 0, 0, 3}); });
    // Eight columns of eight, of which the last takes six, and one that stays free.
    for (const int width : {62, 63}) {
        world.TerminalWidth = width;
        const std::string out = world.Run("watch", {"--count", "3", "--interval", "1", "--bars"}).Out;
        EXPECT_EQ(std::ranges::count(out, '\r'), width == 62 ? 0 : 2);
        EXPECT_EQ(std::ranges::count(out, '\n'), width == 62 ? 4 : 2);
        EXPECT_TRUE(out.ends_with('\n'));
    }
}

TEST(ToolOnTheLine, EndsWhenItIsInterrupted) {
    LineWorld world(PutThree);
    world.InterruptWith(3);
    const ToolRun list = world.RunAll({"line", "list", "--port", "1"});
    EXPECT_EQ(list.Outcome, 3);
    EXPECT_EQ(list.Errors, "nrv718-preset: Interrupted.\n");
    EXPECT_LE(world.Line.Frames().size(), 3U);

    world.InterruptWith(250);
    const ToolRun write = world.Run("write", {world.Desk.Put("a.n91", RandomPreset(5))});
    EXPECT_EQ(write.Outcome, 3);
    EXPECT_THAT(write.Errors, ::testing::MatchesRegex("nrv718-preset: Interrupted; the load stopped after [0-9]+ of "
                                                      "[0-9]+ frames\\.\n"));
    EXPECT_LE(world.Line.Frames().size(), 253U);

    world.Line.ClearFrames();
    world.InterruptWith(400);
    world.TerminalWidth = 80;
    const ToolRun watch = world.Run("watch", {"--interval", "1"});
    EXPECT_EQ(watch.Outcome, 0);
    EXPECT_EQ(watch.Errors, "");
    EXPECT_TRUE(watch.Out.ends_with('\n'));
    EXPECT_LE(world.Line.Frames().size(), 400U);
}

TEST(ToolOnTheLine, TellsALineThatIsPulled) {
    LineWorld world(PutThree);
    world.With = {250, [&] { world.Line.Unplug(); }};
    const ToolRun run = world.Run("write", {world.Desk.Put("a.n91", RandomPreset(5))});
    EXPECT_EQ(run.Outcome, 3);
    EXPECT_THAT(run.Errors, HasSubstr("went away; the load stopped after "));
    EXPECT_EQ(std::ranges::count(run.Errors, '\n'), 1);
}

TEST(ToolOnTheLine, LeavesNoFolderBehind) {
    LineWorld world(PutThree);
    setenv("TMPDIR", world.Desk.Folder.Path().c_str(), 1);
    const std::size_t before = world.Desk.Folder.Entries();
    world.Run("write", {world.Desk.File("none.n91")});
    world.RunAll({"line", "list", "--port", "2"});
    world.InterruptWith(100);
    world.Run("watch");
    unsetenv("TMPDIR");
    EXPECT_EQ(world.Desk.Folder.Entries(), before);
}

TEST(ToolOnTheLine, TellsALineOrADeviceThatIsNotThere) {
    LineWorld world;
    const ToolRun no_device = world.RunAll({"line", "read", "--port", "1", "--id", "6", world.Desk.File("a.n91")});
    EXPECT_EQ(no_device.Outcome, 3);
    EXPECT_THAT(no_device.Errors, HasSubstr("ID:6 does not answer"));
    EXPECT_FALSE(world.Desk.Folder.Has("a.n91"));
    const ToolRun no_port = world.RunAll({"line", "list", "--port", "COM 2"});
    EXPECT_EQ(no_port.Outcome, 3);
    EXPECT_THAT(no_port.Errors, HasSubstr("COM 2"));
    for (const char* id : {"40", "33", "-1", "5x", ""}) {
        EXPECT_EQ(world.RunAll({"line", "list", "--port", "1", "--id", id}).Outcome, 2) << id;
    }
    EXPECT_EQ(world.RunAll({"line", "list", "--port", ""}).Errors, "nrv718-preset: No serial port is chosen.\n");
    EXPECT_EQ(world.RunAll({"line", "list", "--port", "COM 0"}).Errors, "nrv718-preset: No serial port is chosen.\n");
    EXPECT_EQ(world.RunAll({"line", "list", "--port", "100"}).Errors, "nrv718-preset: There is no COM 100.\n");
    EXPECT_EQ(ToolDesk::Run({"line", "list", "--port", "1"}).Outcome, 2);
}

TEST(ToolOnTheLine, TellsADeviceThatDiesUnderAWrite) {
    LineWorld world(PutThree);
    world.DieWith(250);
    const ToolRun run = world.Run("write", {world.Desk.Put("a.n91", RandomPreset(5))});
    EXPECT_EQ(run.Outcome, 3);
    EXPECT_THAT(run.Errors, HasSubstr("nrv718-preset: ID:5 does not answer; the load stopped after "));
    EXPECT_EQ(std::ranges::count(run.Errors, '\n'), 1);
}

} // namespace
} // namespace nrv::testing
