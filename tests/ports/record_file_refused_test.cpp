#include "ports/child.h"
#include "ports/record_file.h"
#include "support/test_folder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

// What the file system refuses: permissions, a full disk, a limit. Each job runs in a child that the refusal concerns.

namespace nrv::testing {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

class RefusedFile : public ::testing::Test {
  protected:
    RefusedFile() { Allow(folder.Path(), 0777); }

    fs::path File() const { return folder.Path() / "init.cfg"; }
    static void Allow(const fs::path& path, unsigned permissions) { fs::permissions(path, fs::perms(permissions)); }
    void HaveFile(const Bytes& bytes, unsigned permissions) const {
        folder.Write("init.cfg", bytes);
        Allow(File(), permissions);
    }

    TestFolder folder;
};

TEST_F(RefusedFile, FolderThatAllowsNoSecondFileIsWrittenInPlace) {
    HaveFile({1, 2, 3, 4}, 0666);
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] {
        return OutcomeOf([this] { WriteAtStart(File(), Bytes{9, 8}); });
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 8, 3, 4}));
}

TEST_F(RefusedFile, FolderThatAllowsNoSecondFileTakesALongerRecordInPlace) {
    HaveFile({1, 2}, 0666);
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] {
        return OutcomeOf([this] { WriteAtStart(File(), Bytes{9, 8, 7, 6}); });
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 8, 7, 6}));
}

TEST_F(RefusedFile, FileThatMayNotBeWrittenIsRefusedAndUnharmedThoughTheFolderMay) {
    HaveFile({1, 2, 3}, 0444);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Bytes{9}); }); });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "FileAccess");
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{1, 2, 3}));
    EXPECT_FALSE(folder.Has("init.cfg.new"));
    EXPECT_EQ(fs::status(File()).permissions(), fs::perms(0444));
}

TEST_F(RefusedFile, NewFileInAFolderThatAllowsNoneIsRefused) {
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Bytes{9}); }); });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "FileAccess");
    EXPECT_FALSE(folder.Has("init.cfg"));
}

TEST_F(RefusedFile, MissingFileInAFolderThatAllowsNoneReadsAsNothing) {
    Allow(folder.Path(), 0555);
    const std::string said =
        AsOrdinaryUser([this] { return std::to_string(ReadFromStart(File(), 4).size()) + " bytes"; });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "0 bytes");
    EXPECT_FALSE(folder.Has("init.cfg"));
}

TEST_F(RefusedFile, FileThatMayNotBeReadIsRefused) {
    HaveFile({1, 2, 3}, 0000);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { ReadFromStart(File(), 3); }); });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "FileAccess");
}

TEST_F(RefusedFile, FileOfSomeoneElseKeepsItsOwner) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make a file that is someone else's";
    }
    HaveFile({1, 2, 3}, 0666); // root's, written by nobody
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Bytes{9}); }); });
    if (said == CannotTry) {
        GTEST_SKIP() << "permissions do not count for this user";
    }
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 2, 3}));
    struct stat now = {};
    ASSERT_EQ(stat(File().c_str(), &now), 0);
    EXPECT_EQ(now.st_uid, 0U);
    EXPECT_FALSE(folder.Has("init.cfg.new"));
}

/// Runs a job in a folder on a disk of two blocks, one of them taken by a filler and none free after `init.cfg`.
std::string OnAFullDisk(const TestFolder& folder, bool with_file, const std::function<std::string()>& job) {
    return InChild([&]() -> std::string {
        const bool own_mounts = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
        const std::string size = "size=" + std::to_string((with_file ? 2 : 1) * sysconf(_SC_PAGESIZE));
        if (!own_mounts || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", folder.Path().c_str(), "tmpfs", 0, size.c_str()) != 0) {
            return CannotTry;
        }
        folder.Write("filler", {1});
        if (with_file) {
            folder.Write("init.cfg", {1, 2, 3, 4});
        }
        return job();
    });
}

TEST_F(RefusedFile, FullDiskTakesARecordInPlaceOfTheOldOne) {
    const std::string said = OnAFullDisk(folder, true, [this]() -> std::string {
        const std::string outcome = OutcomeOf([this] { WriteAtStart(File(), Bytes{9, 8}); });
        return outcome + (folder.Read("init.cfg") == Bytes{9, 8, 3, 4} ? ", written" : ", harmed") +
               (folder.Has("init.cfg.new") ? ", litter" : "");
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "no disk can be mounted here";
    }
    EXPECT_EQ(said, "done, written");
}

TEST_F(RefusedFile, FullDiskThatCannotTakeALongerRecordKeepsTheOldFile) {
    const std::string said = OnAFullDisk(folder, true, [this]() -> std::string {
        const Bytes record(static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + 1, 9);
        const std::string outcome = OutcomeOf([&] { WriteAtStart(File(), record); });
        return outcome + (folder.Read("init.cfg") == Bytes{1, 2, 3, 4} ? ", kept" : ", harmed") +
               (folder.Has("init.cfg.new") ? ", litter" : "");
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "no disk can be mounted here";
    }
    EXPECT_EQ(said, "DiskFull, kept");
}

TEST_F(RefusedFile, FullDiskTakesNoNewFileAndNoneIsLeftBehind) {
    const std::string said = OnAFullDisk(folder, false, [this]() -> std::string {
        const std::string outcome = OutcomeOf([this] { WriteAtStart(File(), Bytes{9, 8}); });
        return outcome + (folder.Has("init.cfg") || folder.Has("init.cfg.new") ? ", litter" : ", clean");
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "no disk can be mounted here";
    }
    EXPECT_EQ(said, "DiskFull, clean");
}

TEST_F(RefusedFile, WriteThatFailsHalfwayInPlaceIsTakenBack) {
    Bytes old(100);
    for (std::size_t i = 0; i < old.size(); ++i) {
        old[i] = static_cast<std::uint8_t>(i);
    }
    HaveFile(old, 0666);
    // No file may be written past its 20th byte: neither the new one nor the old one beyond that.
    const std::string said = InChild([this]() -> std::string {
        const rlimit limit = {20, 20};
        std::signal(SIGXFSZ, SIG_IGN);
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return CannotTry;
        }
        return OutcomeOf([this] { WriteAtStart(File(), Bytes(40, 0xEE)); });
    });
    if (said == CannotTry) {
        GTEST_SKIP() << "no limit can be set here";
    }
    EXPECT_EQ(said, "FileAccess");
    EXPECT_EQ(folder.Read("init.cfg"), old);
    EXPECT_FALSE(folder.Has("init.cfg.new"));
}

} // namespace
} // namespace nrv::testing
