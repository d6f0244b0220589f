#include "simulator/link_file.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace nrv::simulator {
namespace {

namespace fs = std::filesystem;

TEST(LinkFile, IsMadeAndRemoved) {
    const testing::TestFolder folder;
    {
        const LinkFile link(folder / "com1", "/dev/null");
        EXPECT_EQ(fs::read_symlink(folder / "com1"), "/dev/null");
    }
    EXPECT_EQ(folder.Entries(), 0U);
}

TEST(LinkFile, ReplacesALinkThatLeadsNowhere) {
    const testing::TestFolder folder;
    fs::create_symlink(folder / "gone", folder / "com1");
    const LinkFile link(folder / "com1", "/dev/null");
    EXPECT_EQ(fs::read_symlink(folder / "com1"), "/dev/null");
}

TEST(LinkFile, ReplacesALinkToTheSameDevice) {
    const testing::TestFolder folder;
    fs::create_symlink("/dev/null", folder / "com1");
    const LinkFile link(folder / "com1", "/dev/null");
    EXPECT_EQ(fs::read_symlink(folder / "com1"), "/dev/null");
}

TEST(LinkFile, NeverReplacesARealFile) {
    const testing::TestFolder folder;
    folder.WriteText("com1", "precious");
    EXPECT_THROW(LinkFile(folder / "com1", "/dev/null"), std::runtime_error);
    EXPECT_EQ(folder.ReadText("com1"), "precious");
    fs::create_directory(folder / "com2");
    EXPECT_THROW(LinkFile(folder / "com2", "/dev/null"), std::runtime_error);
    EXPECT_TRUE(fs::is_directory(folder / "com2"));
}

TEST(LinkFile, NeverReplacesALinkToSomethingElse) {
    const testing::TestFolder folder;
    folder.WriteText("other", "precious");
    fs::create_symlink(folder / "other", folder / "com1");
    EXPECT_THROW(LinkFile(folder / "com1", "/dev/null"), std::runtime_error);
    EXPECT_EQ(fs::read_symlink(folder / "com1"), folder / "other");
}

TEST(LinkFile, SaysSoWhenTheFolderIsMissing) {
    const testing::TestFolder folder;
    EXPECT_THROW(LinkFile(folder.Path() / "none" / "com1", "/dev/null"), std::runtime_error);
}

TEST(LinkFile, LeavesWhatTookItsPlace) {
    const testing::TestFolder folder;
    {
        const LinkFile link(folder / "com1", "/dev/null");
        fs::remove(folder / "com1");
        folder.WriteText("com1", "new");
    }
    EXPECT_EQ(folder.ReadText("com1"), "new");
    fs::remove(folder / "com1");
    {
        const LinkFile link(folder / "com1", "/dev/null");
        fs::remove(folder / "com1");
        fs::create_symlink("/dev/zero", folder / "com1");
    }
    EXPECT_EQ(fs::read_symlink(folder / "com1"), "/dev/zero");
}

} // namespace
} // namespace nrv::simulator
