#include "ports/runtime_error.h"
#include "session/config_files.h"
#include "session/program_fixture.h"

#include <algorithm>
#include <random>

namespace nrv::testing {
namespace {

using session::InitFile;

/// The word at an index of a file of low-byte-first words, 0 behind its end; a lone low byte counts.
int WordOf(const Bytes& bytes, std::size_t index) {
    const int low = 2 * index < bytes.size() ? bytes[2 * index] : 0;
    const int high = 2 * index + 1 < bytes.size() ? bytes[2 * index + 1] : 0;
    const int word = low + 256 * high;
    return word > 32767 ? word - 65536 : word;
}

class ConfigFiles : public ProgramTest {
  protected:
    const std::filesystem::path& Folder() const { return world.Folder.Path(); }
    void MakeFolderInPlaceOf(const std::string& name) { std::filesystem::create_directory(Folder() / name); }
    const std::string& Status() const { return program.Main.StatusLine.Caption(); }
};

TEST_F(ConfigFiles, InitFileIsFourteenBytesWithThePortFirstLowByteFirst) {
    InitFile file;
    file.SetComIndex(0x0112);
    file.Write(Folder());
    EXPECT_EQ(world.Folder.Read("init.cfg"), (Bytes{0x12, 0x01, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ConfigFiles, InitFileIsSigned) {
    world.Folder.Write("init.cfg", {0xFE, 0xFF});
    EXPECT_EQ(InitFile::Read(Folder()).ComIndex(), -2);
}

TEST_F(ConfigFiles, ConfiguredIdsAreThirtyThreeWordsLowByteFirst) {
    std::array<int, 33> ids{};
    ids[0] = 1;
    ids[19] = 32;
    ids[32] = -2;
    session::WriteConfiguredIds(Folder(), ids);
    Bytes expected(66, 0);
    expected[0] = 1;
    expected[38] = 32;
    expected[64] = 0xFE;
    expected[65] = 0xFF;
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), expected);
    EXPECT_EQ(session::ReadConfiguredIds(Folder()), ids);
}

TEST_F(ConfigFiles, SpeakerRecordsAre128BytesOfWhichTheFirst22AreRead) {
    Bytes bytes(4224, 0xEE);
    for (std::size_t record = 0; record < 33; ++record) {
        for (std::size_t byte = 0; byte < 22; ++byte) {
            bytes[128 * record + byte] = 0;
        }
        bytes[128 * record] = static_cast<std::uint8_t>(record + 40);
    }
    bytes[128 * 5 + 20] = 7; // any value but 0 is a flag
    bytes[128 * 6 + 21] = 1;
    world.Folder.Write("Speakers.cfg", bytes);
    const auto records = session::ReadSpeakerRecords(Folder());
    for (std::size_t record = 0; record < 33; ++record) {
        EXPECT_EQ(records[record].DeviceId(), static_cast<int>(record) + 40);
        EXPECT_EQ(records[record].Found(), record == 5 || record == 6) << record;
    }
}

TEST_F(ConfigFiles, ShortSpeakersFileReadsMissingBytesAsZero) {
    Bytes bytes(128 + 21, 0);
    bytes[0] = 4;
    bytes[20] = 1;
    bytes[128] = 9;
    bytes[128 + 20] = 1; // the low byte alone is there
    world.Folder.Write("Speakers.cfg", bytes);
    const auto records = session::ReadSpeakerRecords(Folder());
    EXPECT_EQ(records[0].DeviceId(), 4);
    EXPECT_TRUE(records[0].Found());
    EXPECT_EQ(records[1].DeviceId(), 9);
    EXPECT_TRUE(records[1].Found());
    EXPECT_EQ(records[2].DeviceId(), 0);
    EXPECT_FALSE(records[2].Found());
}

TEST_F(ConfigFiles, MissingFilesReadAsZeroAndAreCreatedEmpty) {
    EXPECT_EQ(InitFile::Read(Folder()).Bytes, (std::array<std::uint8_t, 14>{}));
    EXPECT_EQ(session::ReadConfiguredIds(Folder()), (std::array<int, 33>{}));
    EXPECT_FALSE(session::ReadSpeakerRecords(Folder())[0].Found());
    for (const char* name : {"init.cfg", "TenDev.cfg", "Speakers.cfg"}) {
        EXPECT_TRUE(world.Folder.Has(name)) << name;
        EXPECT_TRUE(world.Folder.Read(name).empty()) << name;
    }
}

TEST_F(ConfigFiles, FolderInPlaceOfAFileIsRefused) {
    for (const char* name : {"init.cfg", "TenDev.cfg", "Speakers.cfg"}) {
        MakeFolderInPlaceOf(name);
    }
    EXPECT_THROW(InitFile::Read(Folder()), RuntimeError);
    EXPECT_THROW(InitFile().Write(Folder()), RuntimeError);
    EXPECT_THROW(session::ReadConfiguredIds(Folder()), RuntimeError);
    EXPECT_THROW(session::WriteConfiguredIds(Folder(), {}), RuntimeError);
    EXPECT_THROW(session::ReadSpeakerRecords(Folder()), RuntimeError);
}

// What the dialog makes of the files.

TEST_F(ConfigFiles, MissingFilesOpenTheDialogOnNoneAndIdsOfOne) {
    program.Connection.Load();
    EXPECT_EQ(program.Select.ComSelect.ShownText(), "NONE");
    for (const controls::List& list : program.Select.DeviceIds) {
        EXPECT_EQ(list.ShownText(), "1");
    }
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(world.Folder.Read("init.cfg"), Bytes(14, 0)); // the choice of the stored port writes it
    EXPECT_TRUE(world.Folder.Read("TenDev.cfg").empty());
}

TEST_F(ConfigFiles, EmptyFilesAreAsMissingOnes) {
    world.Folder.Write("init.cfg", {});
    world.Folder.Write("TenDev.cfg", {});
    program.Connection.Load();
    EXPECT_EQ(program.Select.ComSelect.Index(), 0);
    Proceed();
    std::vector<int> ids(20, 1);
    ids.resize(33, 0);
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), Words(ids));
    EXPECT_EQ(world.Folder.Read("init.cfg"), Bytes(14, 0));
}

TEST_F(ConfigFiles, ShortFilesLeaveTheMissingValuesAtZero) {
    world.Folder.Write("init.cfg", {3});
    world.Folder.Write("TenDev.cfg", {7, 0, 9}); // the second entry's high byte is missing
    program.Connection.Load();
    EXPECT_EQ(program.Select.ComSelect.Index(), 3);
    EXPECT_EQ(program.Select.DeviceIds[0].Index(), 7);
    EXPECT_EQ(program.Select.DeviceIds[1].Index(), 9);
    EXPECT_EQ(program.Select.DeviceIds[2].Index(), 1);
    Bytes init(14, 0);
    init[0] = 3;
    EXPECT_EQ(world.Folder.Read("init.cfg"), init);
}

TEST_F(ConfigFiles, InitFileKeepsItsOtherFieldsAndItsTail) {
    const Bytes rest = {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 90, 91, 92};
    Bytes bytes = {5, 0};
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    world.Folder.Write("init.cfg", bytes);
    program.Connection.Load();
    EXPECT_EQ(world.Folder.Read("init.cfg"), bytes);
    program.Select.ComSelect.UserSelect(32);
    bytes[0] = 32;
    EXPECT_EQ(world.Folder.Read("init.cfg"), bytes);
}

TEST_F(ConfigFiles, ConfiguredIdsKeepEntriesNeverShownAndTheTail) {
    std::vector<int> ids = Range(1, 20);
    Append(ids, {-5, 4000, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32});
    Bytes bytes = Words(ids);
    bytes.insert(bytes.end(), {0xAA, 0xBB, 0xCC});
    world.Folder.Write("TenDev.cfg", bytes);
    program.Connection.Load();
    program.Select.DeviceIds[4].UserSelect(31);
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), bytes); // at ">>" only
    Proceed();
    bytes[8] = 31;
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), bytes);
}

TEST_F(ConfigFiles, BytesOfOnesShowTheNearestEntries) {
    world.Folder.Write("init.cfg", Bytes(16, 0xFF));
    world.Folder.Write("TenDev.cfg", Bytes(70, 0xFF));
    program.Connection.Load();
    EXPECT_EQ(program.Select.ComSelect.ShownText(), "NONE");
    EXPECT_EQ(program.Link.ComIndex, 0);
    EXPECT_EQ(program.Select.DeviceIds[0].ShownText(), "1");
    Proceed();
    Bytes init(16, 0xFF);
    init[0] = init[1] = 0;
    EXPECT_EQ(world.Folder.Read("init.cfg"), init);
    Bytes ids(70, 0xFF);
    for (std::size_t entry = 0; entry < 20; ++entry) {
        ids[2 * entry] = 1;
        ids[2 * entry + 1] = 0;
    }
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), ids);
}

TEST_F(ConfigFiles, ValuesPastAListShowItsLastEntry) {
    world.Folder.Write("init.cfg", {33, 0});
    world.Folder.Write("TenDev.cfg", Words({33, 32, 32767, -1, 256}));
    program.Connection.Load();
    EXPECT_EQ(program.Select.ComSelect.ShownText(), "COM 32");
    EXPECT_EQ(program.Select.DeviceIds[0].ShownText(), "32");
    EXPECT_EQ(program.Select.DeviceIds[1].ShownText(), "32");
    EXPECT_EQ(program.Select.DeviceIds[2].ShownText(), "32");
    EXPECT_EQ(program.Select.DeviceIds[3].ShownText(), "1");
    EXPECT_EQ(program.Select.DeviceIds[4].ShownText(), "32");
}

TEST_F(ConfigFiles, RandomBytesLoseNothing) {
    std::mt19937 random(718);
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        Bytes init(random() % 20);
        Bytes ids(random() % 90);
        for (Bytes* bytes : {&init, &ids}) {
            // Small numbers now and then, so that valid entries come up too.
            std::ranges::generate(*bytes,
                                  [&] { return static_cast<std::uint8_t>(random() % (round % 2 != 0 ? 256 : 3)); });
        }
        TestProgram fresh;
        fresh.Folder.Write("init.cfg", init);
        fresh.Folder.Write("TenDev.cfg", ids);
        fresh.Program.Connection.Load();
        fresh.Program.Select.Proceed.UserClick();

        const int port = std::clamp(WordOf(init, 0), 0, 32);
        EXPECT_EQ(fresh.Program.Link.ComIndex, port);
        Bytes init_after = init;
        init_after.resize(std::max<std::size_t>(init.size(), 14), 0);
        init_after[0] = static_cast<std::uint8_t>(port);
        init_after[1] = 0;
        EXPECT_EQ(fresh.Folder.Read("init.cfg"), init_after);

        Bytes ids_after = ids;
        ids_after.resize(std::max<std::size_t>(ids.size(), 66), 0);
        for (std::size_t entry = 0; entry < 20; ++entry) {
            const int id = std::clamp(WordOf(ids, entry), 1, 32);
            EXPECT_EQ(fresh.Program.Select.DeviceIds[entry].Index(), id);
            EXPECT_EQ(fresh.Program.State.ConfiguredIds[entry], id);
            ids_after[2 * entry] = static_cast<std::uint8_t>(id);
            ids_after[2 * entry + 1] = 0;
        }
        EXPECT_EQ(fresh.Folder.Read("TenDev.cfg"), ids_after);
        EXPECT_TRUE(fresh.Boxes.Shown.empty());
    }
}

TEST_F(ConfigFiles, InitFileIsWrittenAtEachChoiceOfAPort) {
    program.Connection.Load();
    for (const int port : {4, 17, 0}) {
        program.Select.ComSelect.UserSelect(port);
        EXPECT_EQ(program.Link.ComIndex, port);
        EXPECT_EQ(world.Folder.Read("init.cfg")[0], port);
    }
    EXPECT_TRUE(world.Folder.Read("TenDev.cfg").empty());
}

class ConfiguredIdsFile : public ConfigFiles, public ::testing::WithParamInterface<controls::ConnectionMode> {};

TEST_P(ConfiguredIdsFile, IsWrittenInEveryMode) {
    std::vector<int> ids = Range(1, 20);
    ids.resize(33, 0);
    Bytes bytes = Words(ids);
    bytes.resize(40); // so that the write shows in the length
    world.Folder.Write("TenDev.cfg", bytes);
    program.Connection.Load();
    program.Select.Link[1].Select();
    program.Select.Connection[GetParam()].Select();
    EXPECT_EQ(world.Folder.Read("TenDev.cfg").size(), 40U);
    Proceed();
    EXPECT_EQ(world.Folder.Read("TenDev.cfg"), Words(ids));
}
INSTANTIATE_TEST_SUITE_P(AllModes, ConfiguredIdsFile,
                         ::testing::Values(controls::OneDevice, controls::UpToTwentyDevices, controls::UpToTenDevices,
                                           controls::MoreDevices));

TEST_F(ConfigFiles, DialogWorksOnWhereFoldersStandInPlaceOfTheFiles) {
    MakeFolderInPlaceOf("init.cfg");
    MakeFolderInPlaceOf("TenDev.cfg");
    program.Connection.Load();
    EXPECT_THAT(Status(), ::testing::HasSubstr("init.cfg"));
    program.Select.ComSelect.UserSelect(9);
    EXPECT_EQ(program.Link.ComIndex, 9);
    EXPECT_THAT(Status(), ::testing::StartsWith("The choice was not kept. init.cfg"));
    Proceed();
    EXPECT_THAT(Status(), ::testing::StartsWith("The choice was not kept. TenDev.cfg"));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("close dialog"));
}

TEST_F(ConfigFiles, AListThatCannotBeReadIsTold) {
    MakeFolderInPlaceOf("TenDev.cfg");
    program.Connection.Load();
    EXPECT_EQ(Status(), "The list of IDs was not read. TenDev.cfg could not be read: it is a folder.");
}

TEST_F(ConfigFiles, DialogWorksOnWhereTheFolderIsNone) {
    world.Folder.Write("file", {1});
    program.State.AppFolder = Folder() / "file" / "below";
    program.Connection.Load();
    EXPECT_THAT(Status(), ::testing::StartsWith("The choice was not kept. init.cfg"));
    EXPECT_EQ(program.Select.ComSelect.Index(), 0);
    EXPECT_EQ(program.Select.DeviceIds[19].Index(), 1);
    Proceed();
    EXPECT_THAT(Status(), ::testing::StartsWith("The choice was not kept. TenDev.cfg"));
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(world.Folder.Read("file"), Bytes{1});
}

} // namespace
} // namespace nrv::testing
