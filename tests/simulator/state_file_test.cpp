#include "simulator/state_file.h"
#include "support/test_folder.h"
#include "terminal.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace nrv::simulator {
namespace {

Rack SampleRack() {
    Rack rack;
    rack.Add(0, "Zero");
    Device& device = rack.Add(32, "Last");
    device.PutPreset(7, "Club", FactoryPreset());
    device.SetPassword("secret");
    device.SetMemory(MemorySize - 1, 0xA5);
    device.SetBulkUpdating(true);
    rack.Handle(Request(32, {1, 7, 0, 0, 0, 0, 0, 0, 99}));
    return rack;
}

/// What went wrong with a state, or "" when nothing did.
std::string Problem(const Bytes& bytes) {
    try {
        DecodeState(bytes);
    } catch (const StateError& error) {
        return error.what();
    }
    return {};
}

TEST(StateFile, BringsBackTheWholeRack) {
    const testing::TestFolder folder;
    SaveState(SampleRack(), folder / "rack");
    Rack rack;
    rack.Add(3);
    RestoreState(rack, folder / "rack");
    EXPECT_EQ(rack.Ids(), (std::vector<int>{0, 32}));
    EXPECT_EQ(rack.At(0).Label(), "Zero            ");
    EXPECT_FALSE(rack.At(0).BulkUpdating());
    EXPECT_EQ(rack.At(0).LiveImage(), FactoryPreset());
    const Device& device = rack.At(32);
    EXPECT_TRUE(device.BulkUpdating());
    EXPECT_EQ(device.LiveImage()[424], 99);
    EXPECT_EQ(device.Password(), "secret");
    EXPECT_EQ(device.PresetName(7), "Club            ");
    EXPECT_EQ(device.Preset(7), FactoryPreset());
    EXPECT_EQ(device.Memory(MemorySize - 1), 0xA5);
    EXPECT_EQ(EncodeState(rack), EncodeState(SampleRack()));
}

TEST(StateFile, IsLaidOutAsDocumented) {
    const Bytes bytes = EncodeState(SampleRack());
    EXPECT_EQ(bytes.size(), 20U + 2 * 4962 + 4);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 16), "NRV718-RACK 0001");
    EXPECT_EQ(Bytes(bytes.begin() + 16, bytes.begin() + 22), (Bytes{2, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Bytes(bytes.begin() + 20 + 4962, bytes.begin() + 20 + 4962 + 4), (Bytes{32, 1, 0, 60}));
    EXPECT_EQ(bytes[20 + 4962 + 434 + 32], 'L');
}

TEST(StateFile, EmptyRackEndsWithItsChecksum) {
    Rack rack;
    // CRC-32 of the twenty bytes before it, computed with another tool.
    EXPECT_EQ(EncodeState(rack), (Bytes{'N', 'R', 'V', '7', '1', '8', '-', 'R', 'A',  'C',  'K',  ' ',
                                        '0', '0', '0', '1', 0,   0,   0,   0,   0xB2, 0x4F, 0x5D, 0x70}));
    EXPECT_EQ(Problem(EncodeState(rack)), "");
}

TEST(StateFile, RefusesEveryTruncation) {
    const Bytes whole = EncodeState(SampleRack());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        ASSERT_NE(Problem({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}), "") << size;
    }
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_NE(Problem(longer), "");
}

TEST(StateFile, RefusesEveryFlippedByteOfHeaderAndChecksumAndSamplesBetween) {
    const Bytes whole = EncodeState(SampleRack());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if (at >= 24 && at + 4 < whole.size() && at % 97 != 0) {
            continue;
        }
        Bytes bad = whole;
        bad[at] ^= 0x10;
        ASSERT_NE(Problem(bad), "") << at;
    }
}

TEST(StateFile, SaysWhatIsWrong) {
    Bytes bytes = EncodeState(SampleRack());
    EXPECT_EQ(Problem({}), "it is too short to be a rack's state");
    bytes[0] = 'X';
    EXPECT_EQ(Problem(bytes), "it is not a rack's state");
    bytes[0] = 'N';
    bytes[15] = '2';
    EXPECT_EQ(Problem(bytes), "it is of a version that this program does not know");
    bytes[15] = '1';
    bytes[16] = 255;
    EXPECT_EQ(Problem(bytes), "its length does not fit its number of devices");
    bytes[16] = 2;
    bytes[100] ^= 1;
    EXPECT_EQ(Problem(bytes), "it is damaged");
}

TEST(StateFile, DamagedFileLeavesTheRackAsItWas) {
    const testing::TestFolder folder;
    folder.WriteText("bad", "NRV718-RACK 0001 and then nonsense");
    Rack rack = SampleRack();
    const Bytes before = EncodeState(rack);
    for (const char* name : {"bad", "missing", "."}) {
        try {
            RestoreState(rack, folder / name);
            ADD_FAILURE() << name << " was taken";
        } catch (const StateError& error) {
            EXPECT_NE(std::string(error.what()).find((folder / name).string()), std::string::npos) << error.what();
        }
    }
    EXPECT_EQ(EncodeState(rack), before);
}

TEST(StateFile, SavingReplacesTheOldFileAndLeavesNothingBeside) {
    const testing::TestFolder folder;
    folder.WriteText("rack", "old");
    SaveState(SampleRack(), folder / "rack");
    EXPECT_EQ(folder.Entries(), 1U);
    EXPECT_EQ(folder.ReadText("rack").substr(0, 11), "NRV718-RACK");
}

TEST(StateFile, SavingGoesThroughALinkAndKeepsTheRights) {
    using std::filesystem::perms;
    const testing::TestFolder folder;
    folder.WriteText("real", "old");
    std::filesystem::permissions(folder / "real", perms::owner_read | perms::owner_write);
    std::filesystem::create_symlink("real", folder / "second");
    std::filesystem::create_symlink(folder / "second", folder / "first");
    SaveState(SampleRack(), folder / "first");
    EXPECT_EQ(folder.ReadText("real").substr(0, 11), "NRV718-RACK");
    EXPECT_EQ(std::filesystem::status(folder / "real").permissions(), perms::owner_read | perms::owner_write);
    EXPECT_EQ(std::filesystem::read_symlink(folder / "first"), folder / "second");
    EXPECT_EQ(folder.Entries(), 3U);

    std::filesystem::create_symlink("later", folder / "dangling");
    SaveState(SampleRack(), folder / "dangling");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "dangling"));
    EXPECT_EQ(folder.ReadText("later").substr(0, 11), "NRV718-RACK");
}

TEST(StateFile, NewFileHasTheRightsOfTheUsersMask) {
    const testing::TestFolder folder;
    const mode_t before = ::umask(0077);
    SaveState(SampleRack(), folder / "rack");
    ::umask(before);
    EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(folder / "rack").permissions()), 0600U);
}

TEST(StateFile, OnlyAPlainFileIsOpened) {
    const testing::TestFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    Rack rack;
    EXPECT_THROW(RestoreState(rack, folder / "pipe"), StateError);
    EXPECT_THROW(RestoreState(rack, "/dev/zero"), StateError);
    EXPECT_THROW(CheckStateCanBeSaved(folder / "pipe"), StateError);
    EXPECT_THROW(CheckStateCanBeSaved(folder.Path()), StateError);
}

TEST(StateFile, APlaceThatCannotBeWrittenIsFoundBeforehand) {
    const testing::TestFolder folder;
    folder.WriteText("file", "kept");
    CheckStateCanBeSaved(folder / "file");
    CheckStateCanBeSaved(folder / "new");
    EXPECT_THROW(CheckStateCanBeSaved(folder.Path() / "none" / "rack"), StateError);
    EXPECT_THROW(CheckStateCanBeSaved(folder.Path() / "file" / "rack"), StateError);
    std::filesystem::create_symlink("loop", folder / "loop");
    EXPECT_THROW(CheckStateCanBeSaved(folder / "loop"), StateError);
    EXPECT_EQ(folder.ReadText("file"), "kept");
    EXPECT_EQ(folder.Entries(), 2U);
}

TEST(StateFile, FailedSaveLeavesWhatIsThere) {
    const testing::TestFolder folder;
    EXPECT_THROW(SaveState(SampleRack(), folder.Path() / "none" / "rack"), StateError);
    std::filesystem::create_directory(folder / "rack");
    folder.WriteText("rack/inside", "kept");
    EXPECT_THROW(SaveState(SampleRack(), folder / "rack"), StateError);
    EXPECT_EQ(folder.ReadText("rack/inside"), "kept");
    EXPECT_EQ(folder.Entries(), 1U);
}

} // namespace
} // namespace nrv::simulator
