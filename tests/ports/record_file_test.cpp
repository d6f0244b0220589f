#include "ports/outcome.h"
#include "ports/record_files.h"

namespace nrv::testing {
namespace {

namespace fs = std::filesystem;

TEST_F(RecordFile, ReadingAMissingFileCreatesItEmpty) {
    EXPECT_EQ(ReadFromStart(File(), 4), Bytes());
    ASSERT_TRUE(folder.Has("init.cfg"));
    EXPECT_EQ(fs::file_size(File()), 0U);
}

TEST_F(RecordFile, ReadingInAMissingFolderReadsNothing) {
    EXPECT_EQ(ReadFromStart(folder.Path() / "nowhere" / "init.cfg", 4), Bytes());
    EXPECT_EQ(folder.Entries(), 0U);
}

TEST_F(RecordFile, ReadsAShortFileWhole) {
    folder.Write("init.cfg", {1, 2, 3});
    EXPECT_EQ(ReadFromStart(File(), 4), (Bytes{1, 2, 3}));
}

TEST_F(RecordFile, ReadsTheStartOfALongerFile) {
    folder.Write("init.cfg", {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(ReadFromStart(File(), 4), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(RecordFile, ReadsBinaryBytesAsTheyStand) {
    Bytes all;
    for (int i = 0; i < 9000; ++i) {
        all.push_back(static_cast<std::uint8_t>(i * 31));
    }
    folder.Write("init.cfg", all);
    EXPECT_EQ(ReadFromStart(File(), 9000), all);
}

TEST_F(RecordFile, WritesAMissingFile) {
    WriteAtStart(File(), Bytes{10, 0, 13, 26});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{10, 0, 13, 26}));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, WritesOverAShorterFile) {
    folder.Write("init.cfg", {1});
    WriteAtStart(File(), Bytes{7, 8, 9});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{7, 8, 9}));
}

TEST_F(RecordFile, KeepsTheTailOfALongerFile) {
    folder.Write("init.cfg", {1, 2, 3, 4, 5, 6});
    WriteAtStart(File(), Bytes{7, 8, 9});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{7, 8, 9, 4, 5, 6}));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, WritesOverAndOver) {
    for (std::uint8_t turn = 0; turn < 50; ++turn) {
        WriteAtStart(File(), Bytes{turn, 1});
        ASSERT_EQ(ReadFromStart(File(), 2), (Bytes{turn, 1}));
    }
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, SecondNameOfAFileGoesOnStandingForIt) {
    folder.Write("init.cfg", {1, 2, 3});
    fs::create_hard_link(File(), folder.Path() / "backup.cfg");
    WriteAtStart(File(), Bytes{9, 8});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 8, 3}));
    EXPECT_EQ(folder.Read("backup.cfg"), (Bytes{9, 8, 3}));
}

TEST_F(RecordFile, FolderInPlaceOfTheFileIsRefused) {
    fs::create_directory(File());
    ExpectRefused([this] { ReadFromStart(File(), 1); }, "init.cfg could not be read: it is a folder.");
    ExpectRefused([this] { WriteAtStart(File(), Bytes{1}); }, "init.cfg could not be written: it is a folder.");
    EXPECT_TRUE(fs::is_directory(File()));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, WritingIntoAMissingFolderIsRefused) {
    EXPECT_EQ(OutcomeOf([this] { WriteAtStart(folder.Path() / "nowhere" / "init.cfg", Bytes{1}); }), "FileAccess");
}

TEST_F(RecordFile, AnothersNewFileIsLeftAlone) {
    folder.Write("init.cfg", {1, 2});
    folder.Write("init.cfg.new", {5, 5, 5});
    WriteAtStart(File(), Bytes{3, 4});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{3, 4}));
    EXPECT_EQ(folder.Read("init.cfg.new"), (Bytes{5, 5, 5}));
    EXPECT_EQ(folder.Entries(), 2U);
}

} // namespace
} // namespace nrv::testing

namespace nrv::testing {
namespace {

TEST(FileNameText, IsSingleBytesOfLatin1WithoutTheFolder) {
    EXPECT_EQ(FileNameText("/some/folder/club.n91"), "club.n91");
    EXPECT_EQ(FileNameText(std::filesystem::path(u8"caf\u00e9.n91")), "caf\xE9.n91");
    EXPECT_EQ(FileNameText(std::filesystem::path(u8"\u20ac.n91")), "?.n91");
}

} // namespace
} // namespace nrv::testing
