#include "ports/child.h"
#include "ports/outcome.h"
#include "ports/record_files.h"

#include <fstream>
#include <sys/stat.h>

// Permissions, links, devices and file numbers as POSIX has them.

namespace nrv::testing {
namespace {

namespace fs = std::filesystem;

/// What tells one file from another under the same name.
ino_t NumberOf(const fs::path& file) {
    struct stat status = {};
    EXPECT_EQ(stat(file.c_str(), &status), 0);
    return status.st_ino;
}

TEST_F(RecordFile, ReplacesTheFileByANewOne) {
    folder.Write("init.cfg", {1, 2, 3, 4});
    std::ifstream before(File(), std::ios::binary); // whoever reads the old file goes on reading it
    WriteAtStart(File(), Bytes{5, 6, 7, 8});
    EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(before), std::istreambuf_iterator<char>()), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{5, 6, 7, 8}));
}

TEST_F(RecordFile, KeepsThePermissions) {
    folder.Write("init.cfg", {1, 2});
    fs::permissions(File(), fs::perms(0640));
    WriteAtStart(File(), Bytes{3, 4});
    EXPECT_EQ(fs::status(File()).permissions(), fs::perms(0640));
    fs::permissions(File(), fs::perms(0666));
    WriteAtStart(File(), Bytes{5, 6});
    EXPECT_EQ(fs::status(File()).permissions(), fs::perms(0666));
}

TEST_F(RecordFile, KeepsTheOwner) {
    folder.Write("init.cfg", {1, 2});
    if (chown(File().c_str(), 1234, 2345) != 0) {
        GTEST_SKIP() << "this user can give no file away";
    }
    WriteAtStart(File(), Bytes{3, 4});
    struct stat now = {};
    ASSERT_EQ(stat(File().c_str(), &now), 0);
    EXPECT_EQ(now.st_uid, 1234U);
    EXPECT_EQ(now.st_gid, 2345U);
}

TEST_F(RecordFile, LinkStaysALinkAndItsFileIsWritten) {
    fs::create_directory(folder.Path() / "kept");
    folder.Write("kept/real.cfg", {1, 2, 3});
    fs::create_symlink("kept/real.cfg", File());
    WriteAtStart(File(), Bytes{9});
    EXPECT_TRUE(fs::is_symlink(File()));
    EXPECT_EQ(folder.Read("kept/real.cfg"), (Bytes{9, 2, 3}));
}

TEST_F(RecordFile, LinkToALinkStaysOne) {
    folder.Write("real.cfg", {1, 2, 3});
    fs::create_symlink(folder.Path() / "real.cfg", folder.Path() / "middle.cfg");
    fs::create_symlink("middle.cfg", File());
    WriteAtStart(File(), Bytes{9});
    EXPECT_TRUE(fs::is_symlink(File()));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "middle.cfg"));
    EXPECT_EQ(folder.Read("real.cfg"), (Bytes{9, 2, 3}));
}

TEST_F(RecordFile, LinkToAMissingFileStaysALinkAndTheFileComes) {
    fs::create_symlink("real.cfg", File());
    WriteAtStart(File(), Bytes{9, 8});
    EXPECT_TRUE(fs::is_symlink(File()));
    EXPECT_EQ(folder.Read("real.cfg"), (Bytes{9, 8}));
}

TEST_F(RecordFile, LinkInACircleIsRefused) {
    fs::create_symlink("other.cfg", File());
    fs::create_symlink("init.cfg", folder.Path() / "other.cfg");
    EXPECT_EQ(OutcomeOf([this] { ReadFromStart(File(), 1); }), "FileAccess");
    ExpectRefused([this] { WriteAtStart(File(), Bytes{1}); },
                  "init.cfg could not be written: Too many levels of symbolic links.");
}

TEST_F(RecordFile, ReadingThatFailsOnTheWayIsRefused) {
    // The process's own memory, of which the first page can never be read.
    ExpectRefused([] { ReadFromStart("/proc/self/mem", 1); }, "mem could not be read: Input/output error.");
}

TEST_F(RecordFile, PipeInPlaceOfTheFileDoesNotHang) {
    ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
    ExpectRefused([this] { ReadFromStart(File(), 1); }, "init.cfg could not be read: it is not a file.");
    ExpectRefused([this] { WriteAtStart(File(), Bytes{1}); }, "init.cfg could not be written: it is not a file.");
}

TEST_F(RecordFile, DeviceBehindALinkIsNeitherReadWithoutEndNorReplaced) {
    fs::create_symlink("/dev/full", File());
    EXPECT_EQ(OutcomeOf([this] { ReadFromStart(File(), 4); }), "FileAccess");
    EXPECT_EQ(OutcomeOf([this] { WriteAtStart(File(), Bytes{1}); }), "FileAccess");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(RecordFile, LinkUnderTheNewNameIsNotFollowed) {
    folder.Write("init.cfg", {1, 2});
    folder.Write("precious", {7, 7, 7});
    fs::create_symlink("precious", folder.Path() / "init.cfg.new");
    WriteAtStart(File(), Bytes{3, 4});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{3, 4}));
    EXPECT_EQ(folder.Read("precious"), (Bytes{7, 7, 7}));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "init.cfg.new"));
}

TEST_F(RecordFile, NewFilesThatWereLeftBehindDoNotUseUpTheNames) {
    folder.Write("init.cfg", {1, 2, 3});
    folder.Write("init.cfg.new", {});
    for (int name = 2; name <= 10; ++name) {
        folder.Write("init.cfg.new" + std::to_string(name), {});
    }
    const auto before = NumberOf(File());
    WriteAtStart(File(), Bytes{9, 8});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 8, 3}));
    EXPECT_EQ(folder.Entries(), 11U);
    EXPECT_NE(NumberOf(File()), before);
}

TEST_F(RecordFile, HugeFileIsWrittenInPlaceAndNotReadThrough) {
    constexpr std::uintmax_t size = std::uintmax_t{64} * 1024 * 1024 * 1024; // a hole, but for its ends
    folder.Write("init.cfg", {1, 2, 3});
    fs::resize_file(File(), size);
    const auto before = NumberOf(File());
    WriteAtStart(File(), Bytes{9, 8});
    EXPECT_EQ(ReadFromStart(File(), 4), (Bytes{9, 8, 3, 0}));
    EXPECT_EQ(fs::file_size(File()), size);
    EXPECT_EQ(NumberOf(File()), before);
}

TEST_F(RecordFile, RefusalNamesTheLinkThatTheUserKnows) {
    fs::create_directory(folder.Path() / "elsewhere");
    fs::create_symlink("elsewhere", File());
    ExpectRefused([this] { WriteAtStart(File(), Bytes{9}); }, "init.cfg could not be written: it is a folder.");
}

TEST_F(RecordFile, NameTooLongForANewOneBesideItIsWrittenAllTheSame) {
    const std::string name(254, 'n');
    WriteAtStart(folder.Path() / name, Bytes{1, 2, 3});
    EXPECT_EQ(folder.Read(name), (Bytes{1, 2, 3}));
    WriteAtStart(folder.Path() / name, Bytes{9});
    EXPECT_EQ(folder.Read(name), (Bytes{9, 2, 3}));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST(FileNameText, HasAMarkForEachCharacterBeyondLatin1) {
    EXPECT_EQ(FileNameText("\xC3\xBF\xC4\x80\xC4\x81.n91"), "\xFF??.n91"); // 255, 256 and 257
}

TEST(FileNameText, OfANameThatIsNoTextIsTheBytesOfIt) {
    EXPECT_EQ(FileNameText("bad\xFFname"), "bad\xFFname");
}

} // namespace
} // namespace nrv::testing
