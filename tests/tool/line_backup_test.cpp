#include "tool/backup_folder.h"
#include "tool/line_world.h"
#include "tool/trouble.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr std::array<int, 3> InUse{0, 3, 7};

void PutThreeForBackup(simulator::Device& device) {
    device.SetLabel("Main left");
    device.SetLiveImage(BodyOf(1));
    device.SetMemory(18, BodyOf(1)[71]);
    device.PutPreset(0, "Hall \xE9\\", BodyOf(2));
    device.PutPreset(3, "Speech", BodyOf(3));
    device.PutPreset(7, "Night", BodyOf(4));
}

/// What a device plays and keeps, byte for byte.
struct Held {
    simulator::PresetBody Live;
    int Mutes;
    int Options;
    std::vector<std::string> Names;
    std::vector<simulator::PresetBody> Bodies;
    bool operator==(const Held&) const = default;
};

Held HeldBy(LineWorld& world) {
    return world.WithDevice([](simulator::Device& device) {
        Held held{device.LiveImage(), device.Memory(18), device.Memory(16), {}, {}};
        for (const int position : InUse) {
            held.Names.push_back(device.PresetName(position));
            held.Bodies.push_back(device.Preset(position));
        }
        return held;
    });
}

/// Other presets in the same positions, another one live.
void Wipe(LineWorld& world) {
    world.WithDevice([](simulator::Device& device) {
        device.SetLiveImage(BodyOf(21));
        device.SetMemory(18, BodyOf(21)[71]);
        for (const int position : InUse) {
            device.PutPreset(position, "Wiped", BodyOf(22));
        }
        return 0;
    });
}

TEST(Backup, ComesBackByteForByte) {
    for (const int options : {0x20, 0x24, 0x64}) {
        LineWorld world(PutThreeForBackup);
        world.WithDevice([&](simulator::Device& device) {
            device.SetMemory(16, static_cast<simulator::Byte>(options));
            return 0;
        });
        const Held before = HeldBy(world);
        const std::string folder = world.Desk.File("kept");
        const ToolRun backup = world.Run("backup", {folder});
        ASSERT_EQ(backup.Outcome, 0) << backup.Errors;
        EXPECT_THAT(backup.Out, HasSubstr("position 1: \"Hall \xC3\xA9\\\\\" kept\nposition 4: \"Speech\" kept\n"));
        EXPECT_EQ(HeldBy(world), before);
        EXPECT_EQ(world.Run("verify", {folder}).Outcome, 0);

        Wipe(world);
        const ToolRun differs = world.Run("verify", {folder});
        EXPECT_EQ(differs.Outcome, 1);
        EXPECT_THAT(differs.Out, HasSubstr("position 4: \"Speech\" to \"Wiped\"\n"));
        EXPECT_THAT(differs.Out, HasSubstr("live: "));
        EXPECT_THAT(differs.Out, Not(HasSubstr("live: Besides")));

        const ToolRun restore = world.Run("restore", {folder});
        ASSERT_EQ(restore.Outcome, 0) << restore.Errors;
        const ToolRun verify = world.Run("verify", {folder});
        EXPECT_EQ(verify.Outcome, 0) << verify.Out;
        Held after = HeldBy(world);
        EXPECT_EQ(after.Bodies, before.Bodies);
        EXPECT_EQ(after.Names, before.Names);
        EXPECT_EQ(after.Live, before.Live);
        EXPECT_EQ(after.Mutes, before.Mutes);
        EXPECT_EQ(after.Options, before.Options);
        EXPECT_FALSE(world.Desk.Folder.Has("kept/restore.json"));
    }
}

TEST(Backup, WritesOnlyWhereTheProgramWrites) {
    LineWorld world(PutThreeForBackup);
    ASSERT_EQ(world.Run("backup", {world.Desk.File("kept")}).Outcome, 0);
    for (const simulator::Frame& frame : world.Line.Frames()) {
        EXPECT_THAT((std::array<int, 4>{0x00, 0x0B, 0x10, 0x12}), ::testing::Contains(frame[3]));
    }
    world.Line.ClearFrames();
    ASSERT_EQ(world.Run("restore", {world.Desk.File("kept")}).Outcome, 0);
    std::size_t writes = 0;
    for (const simulator::Frame& frame : world.Line.Frames()) {
        if (frame[3] != 0x11) {
            continue;
        }
        ++writes;
        const int address = 256 * frame[4] + frame[5];
        const bool mark = address >= 48 && address < 56;
        const bool name = address >= 64 && address < 192;
        const bool preset = address >= 640 && address < 640 + 8 * 432;
        EXPECT_TRUE(address == 16 || address == 18 || mark || name || preset) << address;
    }
    EXPECT_GE(writes, 3U * 450U);
}

TEST(Backup, GoesOnWhereItWasCutShort) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    ASSERT_EQ(world.Run("backup", {world.Desk.File("whole")}).Outcome, 0);
    // Each of the three is fetched twice; the second fetch of the second one is the last but two.
    world.DieWith(static_cast<long>(world.Line.Frames().size()) - 2);
    const ToolRun cut = world.Run("backup", {folder});
    EXPECT_EQ(cut.Outcome, 3);
    EXPECT_EQ(cut.Errors,
              "nrv718-preset: ID:5 does not answer. The backup stands before position 4; start it again to go "
              "on.\n");
    EXPECT_TRUE(world.Desk.Folder.Has("kept/position-1.n91"));
    EXPECT_FALSE(world.Desk.Folder.Has("kept/position-4.n91"));
    EXPECT_EQ(world.Run("restore", {folder}).Outcome, 2);

    world.With = {};
    world.Line.Revive({});
    const ToolRun early = world.Run("verify", {folder});
    EXPECT_EQ(early.Outcome, 2);
    EXPECT_THAT(early.Errors, HasSubstr("the backup is not complete"));
    const ToolRun again = world.Run("backup", {folder});
    EXPECT_EQ(again.Outcome, 0) << again.Errors;
    EXPECT_THAT(again.Out,
                HasSubstr("position 1: kept already\nposition 4: \"Speech\" kept\nposition 8: \"Night\" kept\n"));
    for (const char* file : {"live.n91", "position-1.n91", "position-4.n91", "position-8.n91", "backup.json"}) {
        EXPECT_EQ(world.Desk.Folder.Read(std::string("kept/") + file),
                  world.Desk.Folder.Read(std::string("whole/") + file))
            << file;
    }
}

TEST(Backup, HoldsNothingOfADisturbedAnswer) {
    LineWorld world(PutThreeForBackup);
    const std::string whole = world.Desk.File("whole");
    ASSERT_EQ(world.Run("backup", {whole}).Outcome, 0);
    const auto frames = static_cast<long>(world.Line.Frames().size());
    int complete = 0;
    // One answer of each kind: label, live, page and positions, of either reading; byte 8 is the one that is wanted.
    for (const long frame : {4L, 19L, 30L, 60L, frames / 2, frames - 5, frames - 4, frames}) {
        world.With = {frame, [&] { world.Line.Order(simulator::Fault::Garble(LineWorld::Id, 1, 8, 0x41)); }};
        const std::string folder = world.Desk.File("kept" + std::to_string(frame));
        const ToolRun run = world.Run("backup", {folder});
        if (run.Outcome != 0) {
            EXPECT_EQ(run.Outcome, 3) << run.Errors;
            continue;
        }
        ++complete;
        for (const auto& file : std::filesystem::directory_iterator(whole)) {
            const std::string name = file.path().filename().string();
            EXPECT_EQ(world.Desk.Folder.Read("kept" + std::to_string(frame) + "/" + name),
                      world.Desk.Folder.Read("whole/" + name))
                << name << " by frame " << frame;
        }
    }
    EXPECT_GE(complete, 6);
}

TEST(Backup, GivesALineUpThatIsAlwaysDisturbed) {
    LineWorld world(PutThreeForBackup);
    int garbled = 0;
    // Each answer to a fetch of a position holds another byte.
    world.EachFrame = [&] {
        const std::vector<simulator::Frame> frames = world.Line.Frames();
        if (!frames.empty() && world.Desk.Folder.Has("kept/live.n91")) {
            world.Line.Order(simulator::Fault::Garble(LineWorld::Id, 1, 8, static_cast<simulator::Byte>(++garbled)));
        }
    };
    const ToolRun run = world.Run("backup", {world.Desk.File("kept")});
    EXPECT_EQ(run.Outcome, 3);
    EXPECT_EQ(run.Errors, "nrv718-preset: No two answers of ID:5 are alike: the line is disturbed, or two devices have "
                          "this ID. The backup stands before position 1; start it again to go on.\n");
}

TEST(Backup, WritesOverNoPresetOfTheUser) {
    LineWorld world(PutThreeForBackup);
    for (const char* name : {"live.n91", "position-8.n91"}) {
        world.Desk.Folder.WriteText(name, "mine");
        const ToolRun run = world.Run("backup", {world.Desk.Folder.Path().string()});
        EXPECT_EQ(run.Outcome, 2);
        EXPECT_EQ(run.Errors,
                  "nrv718-preset: " + world.Desk.File(name) + ": is there and of no backup; give another folder.\n");
        EXPECT_EQ(world.Desk.Folder.ReadText(name), "mine");
        EXPECT_FALSE(world.Desk.Folder.Has("backup.json"));
        std::filesystem::remove(world.Desk.File(name));
    }
}

TEST(Backup, SaysWhereItStandsWhenItIsInterrupted) {
    LineWorld world(PutThreeForBackup);
    ASSERT_EQ(world.Run("backup", {world.Desk.File("whole")}).Outcome, 0);
    const auto frames = static_cast<long>(world.Line.Frames().size());
    world.InterruptWith(frames - 2);
    const ToolRun cut = world.Run("backup", {world.Desk.File("kept")});
    EXPECT_EQ(cut.Outcome, 3);
    EXPECT_EQ(cut.Errors,
              "nrv718-preset: Interrupted. The backup stands before position 4; start it again to go on.\n");
    EXPECT_LE(static_cast<long>(world.Line.Frames().size()), 2 * frames - 2);
    // What it had is lost; the next one has it all the same.
    std::filesystem::remove(world.Desk.File("kept/live.n91"));
    world.With = {};
    EXPECT_EQ(world.Run("backup", {world.Desk.File("kept")}).Outcome, 0);
    EXPECT_EQ(world.Run("verify", {world.Desk.File("kept")}).Outcome, 0);
}

TEST(Backup, MixesNoTwoBackups) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    const ToolRun second = world.Run("backup", {folder});
    EXPECT_EQ(second.Outcome, 2);
    EXPECT_THAT(second.Errors, HasSubstr("holds a complete backup"));
    std::string record = world.Desk.Folder.ReadText("kept/backup.json");
    record.replace(record.find("Speech"), 6, "\xE2\x82\xAC"); // a name of no device
    world.Desk.Folder.WriteText("kept/backup.json", record);
    EXPECT_EQ(world.Run("verify", {folder}).Errors, "nrv718-preset: " + folder +
                                                        "/backup.json: cannot be read as part of a backup; give "
                                                        "another folder.\n");
    world.Desk.Folder.WriteText("kept/backup.json", "{}");
    EXPECT_THAT(world.Run("verify", {folder}).Errors, HasSubstr("cannot be read as part of a backup"));
    EXPECT_THAT(world.Run("verify", {world.Desk.File("none")}).Errors, HasSubstr("holds no backup"));
}

/// Of a record that is sound but for what is given.
bool RecordIsRead(const std::string& device, const std::string& used, const std::string& name) {
    const TestFolder folder;
    std::string positions;
    for (int position = 1; position < MemoryPositions; ++position) {
        positions += R"(, {"used": false, "name": ""})";
    }
    folder.WriteText("backup.json", R"({"device": )" + device + R"(, "label": "x", "complete": true, "positions": [)" +
                                        R"({"used": )" + used + R"(, "name": ")" + name + "\"}" + positions + "]}");
    try {
        return tool::ReadRecord(folder.Path()).has_value();
    } catch (const tool::Trouble&) {
        return false;
    }
}

TEST(Backup, TakesNoRecordThatNoBackupWrites) {
    const std::string sixteen = "Hall            ";
    EXPECT_TRUE(RecordIsRead("5", "true", sixteen));
    EXPECT_TRUE(RecordIsRead("32", "false", ""));
    EXPECT_TRUE(RecordIsRead("0", "false", ""));
    for (const char* device :
         {"33", "-1", "5.5", "5.0", "1e300", "4294967301", "18446744073709551615", "true", "\"5\""}) {
        EXPECT_FALSE(RecordIsRead(device, "true", sixteen)) << device;
    }
    EXPECT_FALSE(RecordIsRead("5", "true", "Hall"));
    EXPECT_FALSE(RecordIsRead("5", "true", sixteen + " "));
    EXPECT_FALSE(RecordIsRead("5", "false", sixteen));
    EXPECT_FALSE(RecordIsRead("5", "1", sixteen));
}

TEST(Restore, TakesNoRecordOfItsOwnThatNoRestoreWrites) {
    const TestFolder folder;
    const std::string stored = R"([true, false, false, false, false, false, false, true])";
    folder.WriteText("restore.json", R"({"device": 5, "stored": )" + stored + "}");
    EXPECT_EQ(tool::ReadRestored(folder.Path(), 5),
              (std::array<bool, 8>{true, false, false, false, false, false, false, true}));
    EXPECT_EQ(tool::ReadRestored(folder.Path(), 6), (std::array<bool, 8>{}));
    for (const std::string& text : {R"({"device": 5.5, "stored": )" + stored + "}", std::string(R"({"device": 6})"),
                                    std::string(R"({"device": 5, "stored": [true]})")}) {
        folder.WriteText("restore.json", text);
        EXPECT_THROW(tool::ReadRestored(folder.Path(), 5), tool::Trouble) << text;
    }
}

TEST(Restore, GoesOnWhereItWasCutShort) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    const Held before = HeldBy(world);
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    Wipe(world);
    world.DieWith(850); // the opening, 450 for the first position, a part of the second
    const ToolRun cut = world.Run("restore", {folder});
    EXPECT_EQ(cut.Outcome, 3);
    EXPECT_THAT(cut.Errors, HasSubstr("The restore stands before position 4; start it again to go on.\n"));
    EXPECT_TRUE(world.Desk.Folder.Has("kept/restore.json"));

    world.With = {};
    world.Line.Revive({});
    world.Line.ClearFrames();
    const ToolRun again = world.Run("restore", {folder});
    EXPECT_EQ(again.Outcome, 0) << again.Errors;
    EXPECT_THAT(again.Out, HasSubstr("position 1: stored already\nposition 4: \"Speech\" stored\n"));
    EXPECT_EQ(HeldBy(world), before);
    EXPECT_EQ(world.Run("verify", {folder}).Outcome, 0);
}

TEST(Restore, SaysWhereItStandsWhenItIsInterrupted) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    const Held before = HeldBy(world);
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    Wipe(world);
    world.Line.ClearFrames();
    world.InterruptWith(850);
    const ToolRun cut = world.Run("restore", {folder});
    EXPECT_EQ(cut.Outcome, 3);
    EXPECT_TRUE(cut.Errors.starts_with("nrv718-preset: Interrupted; the store stopped after ")) << cut.Errors;
    EXPECT_TRUE(
        cut.Errors.ends_with(" of 450 frames. The restore stands before position 4; start it again to go on.\n"))
        << cut.Errors;
    EXPECT_EQ(std::ranges::count(cut.Errors, '\n'), 1);
    EXPECT_LE(world.Line.Frames().size(), 850U);
    world.With = {};
    EXPECT_THAT(world.Run("restore", {folder}).Out, HasSubstr("position 1: stored already\n"));
    EXPECT_EQ(HeldBy(world), before);
}

TEST(Restore, StoresAgainWhatWasChangedSinceItWasCutShort) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    const Held before = HeldBy(world);
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    world.InterruptWith(850);
    ASSERT_EQ(world.Run("restore", {folder}).Outcome, 3);
    for (const char* name : {"Later", "Hall \xE9\\"}) { // under another name, and under the same
        world.WithDevice([&](simulator::Device& device) {
            device.PutPreset(0, name, BodyOf(9));
            return 0;
        });
        world.With = {};
        EXPECT_THAT(world.Run("restore", {folder}).Out, HasSubstr("position 1: \"Hall \xC3\xA9\\\\\" stored\n"));
        EXPECT_EQ(HeldBy(world), before);
        world.InterruptWith(850);
        ASSERT_EQ(world.Run("restore", {folder}).Outcome, 3);
    }
    world.Desk.Folder.WriteText("kept/restore.json", "[]");
    EXPECT_EQ(world.Run("restore", {folder}).Errors, "nrv718-preset: " + folder +
                                                         "/restore.json: cannot be read as part of a backup; remove "
                                                         "it, and the restore begins anew.\n");
}

TEST(Restore, TellsThatTheBackupIsOfAnotherDevice) {
    LineWorld world(PutThreeForBackup);
    ASSERT_EQ(world.Run("backup", {world.Desk.File("kept")}).Outcome, 0);
    world.Line.WithRack([](simulator::Rack& rack) { rack.Add(6, "Main right"); });
    const ToolRun other = world.RunAll({"line", "restore", "--port", "1", "--id", "6", world.Desk.File("kept")});
    EXPECT_EQ(other.Outcome, 0) << other.Errors;
    EXPECT_TRUE(other.Out.starts_with("The backup is of ID:5 \"Main left\".\n")) << other.Out;
    EXPECT_THAT(world.Run("restore", {world.Desk.File("kept")}).Out, Not(HasSubstr("The backup is of")));
}

TEST(Restore, KeepsItsCountOnOneLineOfANarrowTerminal) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    for (const int width : {20, 9, 2}) {
        world.TerminalWidth = width;
        const std::string errors = world.Run("write", {folder + "/live.n91"}).Errors;
        EXPECT_GE(std::ranges::count(errors, '\r'), 150);
        std::istringstream pieces(errors);
        std::string left; // on the line when all is over
        for (std::string piece; std::getline(pieces, piece, '\r');) {
            EXPECT_LT(piece.size(), static_cast<std::size_t>(width));
            left.replace(0, piece.size(), piece);
        }
        EXPECT_EQ(left.find_first_not_of(' '), std::string::npos) << left;
    }
}

TEST(Restore, CountsItsFramesOnATerminal) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    world.TerminalWidth = 80;
    const ToolRun restore = world.Run("restore", {folder});
    EXPECT_EQ(restore.Outcome, 0);
    EXPECT_THAT(restore.Errors, HasSubstr("\rposition 4: frame 450\r"));
    EXPECT_THAT(restore.Errors, HasSubstr("\rlive: frame 1\r"));
    EXPECT_THAT(restore.Out, Not(HasSubstr("frame")));
    EXPECT_THAT(world.Run("write", {folder + "/live.n91"}).Errors, HasSubstr("\rload: frame 150\r"));
}

TEST(Restore, TellsAPositionThatItCannotEmpty) {
    LineWorld world(PutThreeForBackup);
    const std::string folder = world.Desk.File("kept");
    ASSERT_EQ(world.Run("backup", {folder}).Outcome, 0);
    world.WithDevice([](simulator::Device& device) {
        device.PutPreset(1, "Later", BodyOf(9));
        return 0;
    });
    const ToolRun restore = world.Run("restore", {folder});
    EXPECT_EQ(restore.Outcome, 1);
    EXPECT_THAT(restore.Out, HasSubstr("position 2: was empty, and keeps \"Later\", for the device empties none\n"));
    const ToolRun verify = world.Run("verify", {folder});
    EXPECT_EQ(verify.Outcome, 1);
    EXPECT_THAT(verify.Out, HasSubstr("position 2: empty to \"Later\"\n"));
    EXPECT_THAT(verify.Out, Not(HasSubstr("live:")));
}

TEST(Restore, LeavesALockedDeviceAlone) {
    LineWorld world(PutThreeForBackup);
    ASSERT_EQ(world.Run("backup", {world.Desk.File("kept")}).Outcome, 0);
    world.WithDevice([](simulator::Device& device) {
        device.SetPassword("abc");
        device.SetLocked(true);
        return 0;
    });
    const Held before = HeldBy(world);
    EXPECT_EQ(world.Run("restore", {world.Desk.File("kept")}).Outcome, 2);
    EXPECT_EQ(HeldBy(world), before);
    EXPECT_EQ(world.Run("restore", {world.Desk.File("kept"), "--password", "abc"}).Outcome, 0);
}

} // namespace
} // namespace nrv::testing
