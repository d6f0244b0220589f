#include "ports/child.h"
#include "ports/outcome.h"
#include "ports/record_file.h"
#include "support/test_folder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// What the file system refuses: permissions, a full disk, a limit. Each job runs in a child that the refusal concerns.

namespace nrv::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;
using Content = std::vector<std::uint8_t>;

class RefusedFile : public ::testing::Test {
  protected:
    RefusedFile() { Allow(folder.Path(), 0777); }

    fs::path File() const { return folder.Path() / "init.cfg"; }
    static void Allow(const fs::path& path, unsigned permissions) { fs::permissions(path, fs::perms(permissions)); }
    void HaveFile(const Content& bytes, unsigned permissions) const {
        folder.Write("init.cfg", bytes);
        Allow(File(), permissions);
    }

    TestFolder folder;
};

TEST_F(RefusedFile, FolderThatAllowsNoSecondFileIsWrittenInPlace) {
    HaveFile({1, 2, 3, 4}, 0666);
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] {
        return OutcomeOf([this] { WriteAtStart(File(), Content{9, 8}); });
    });
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Content{9, 8, 3, 4}));
}

TEST_F(RefusedFile, FolderThatAllowsNoSecondFileTakesALongerRecordInPlace) {
    HaveFile({1, 2}, 0666);
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] {
        return OutcomeOf([this] { WriteAtStart(File(), Content{9, 8, 7, 6}); });
    });
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Content{9, 8, 7, 6}));
}

TEST_F(RefusedFile, FileThatMayNotBeWrittenIsRefusedAndUnharmedThoughTheFolderMay) {
    HaveFile({1, 2, 3}, 0444);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Content{9}); }); });
    EXPECT_EQ(said, "FileAccess");
    EXPECT_EQ(folder.Read("init.cfg"), (Content{1, 2, 3}));
    EXPECT_FALSE(folder.Has("init.cfg.new"));
    EXPECT_EQ(fs::status(File()).permissions(), fs::perms(0444));
    const auto write = [this] {
        WriteAtStart(File(), Content{9});
        return std::string("done");
    };
    EXPECT_EQ(AsOrdinaryUser(write), "init.cfg could not be written: Permission denied.");
}

TEST_F(RefusedFile, AFileOfTheUsersOwnThatMayNotBeWrittenIsNotReplaced) {
    const std::string said = AsOrdinaryUser([this] {
        std::ofstream(File()) << "own";
        Allow(File(), 0444);
        return OutcomeOf([this] { WriteAtStart(File(), Content{9}); });
    });
    EXPECT_EQ(said, "FileAccess");
    EXPECT_EQ(folder.Read("init.cfg"), (Content{'o', 'w', 'n'}));
}

TEST_F(RefusedFile, NewFileInAFolderThatAllowsNoneIsRefused) {
    Allow(folder.Path(), 0555);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Content{9}); }); });
    EXPECT_EQ(said, "FileAccess");
    EXPECT_FALSE(folder.Has("init.cfg"));
}

TEST_F(RefusedFile, MissingFileInAFolderThatAllowsNoneReadsAsNothing) {
    Allow(folder.Path(), 0555);
    const std::string said =
        AsOrdinaryUser([this] { return std::to_string(ReadFromStart(File(), 4).size()) + " bytes"; });
    EXPECT_EQ(said, "0 bytes");
    EXPECT_FALSE(folder.Has("init.cfg"));
}

TEST_F(RefusedFile, FileThatMayNotBeReadIsRefused) {
    HaveFile({1, 2, 3}, 0000);
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { ReadFromStart(File(), 3); }); });
    EXPECT_EQ(said, "FileAccess");
}

TEST_F(RefusedFile, FileOfSomeoneElseKeepsItsOwner) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make a file that is someone else's";
    }
    HaveFile({1, 2, 3}, 0666); // root's, written by nobody
    const std::string said = AsOrdinaryUser([this] { return OutcomeOf([this] { WriteAtStart(File(), Content{9}); }); });
    EXPECT_EQ(said, "done");
    EXPECT_EQ(folder.Read("init.cfg"), (Content{9, 2, 3}));
    struct stat now = {};
    ASSERT_EQ(stat(File().c_str(), &now), 0);
    EXPECT_EQ(now.st_uid, 0U);
    EXPECT_FALSE(folder.Has("init.cfg.new"));
}

/// Mounts of this process alone, as root or as one who is root in a world of its own. False where that is not allowed.
bool HaveOwnMounts() {
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << user;
        std::ofstream("/proc/self/gid_map") << group;
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// A disk under a folder, as large as so many blocks, of which the first is taken. False where none can be mounted.
bool MountDisk(const TestFolder& folder, int blocks) {
    const std::string size = "size=" + std::to_string(blocks * sysconf(_SC_PAGESIZE));
    if (!HaveOwnMounts() || mount("none", folder.Path().c_str(), "tmpfs", 0, size.c_str()) != 0) {
        return false;
    }
    folder.Write("filler", {1});
    return folder.Read("filler").size() == 1;
}

/// From now on there is no room for a new file, nor for a write of more than a block.
bool RefuseRoom() {
    constexpr auto third_argument = offsetof(seccomp_data, args) + 2 * sizeof(__u64);
    std::array<sock_filter, 9> program{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 2),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third_argument),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_CREAT, 4, 3),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_write, 0, 2),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third_argument),
        BPF_JUMP(BPF_JMP | BPF_JGT | BPF_K, static_cast<__u32>(sysconf(_SC_PAGESIZE)), 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSPC),
    }};
    const sock_fprog filter{program.size(), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

constexpr const char* NoDisk = "no disk can be mounted here";

/// Runs a job twice in a folder that has no room: on a full disk of its own, where one can be mounted, and under a
/// kernel that says there is none. Gives what the two said.
std::vector<std::string> WithoutRoom(const TestFolder& folder, bool with_file,
                                     const std::function<std::string()>& job) {
    const auto have_file = [&] {
        if (with_file) {
            folder.Write("init.cfg", {1, 2, 3, 4});
        }
    };
    std::vector<std::string> said{InChild([&]() -> std::string {
        if (!MountDisk(folder, with_file ? 2 : 1)) {
            return NoDisk;
        }
        have_file();
        return job();
    })};
    if (said[0] == NoDisk) {
        said.clear();
    }
    said.push_back(InChild([&]() -> std::string {
        have_file();
        return RefuseRoom() ? job() : "the kernel filters nothing";
    }));
    return said;
}

TEST_F(RefusedFile, FullDiskTakesARecordInPlaceOfTheOldOne) {
    const auto said = WithoutRoom(folder, true, [this]() -> std::string {
        const std::string outcome = OutcomeOf([this] { WriteAtStart(File(), Content{9, 8}); });
        return outcome + (folder.Read("init.cfg") == Content{9, 8, 3, 4} ? ", written" : ", harmed") +
               (folder.Has("init.cfg.new") ? ", litter" : "");
    });
    EXPECT_THAT(said, Each("done, written"));
}

TEST_F(RefusedFile, FullDiskThatCannotTakeALongerRecordKeepsTheOldFile) {
    const auto said = WithoutRoom(folder, true, [this]() -> std::string {
        const Content record(static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + 1, 9);
        const std::string outcome = OutcomeOf([&] { WriteAtStart(File(), record); });
        return outcome + (folder.Read("init.cfg") == Content{1, 2, 3, 4} ? ", kept" : ", harmed") +
               (folder.Has("init.cfg.new") ? ", litter" : "");
    });
    EXPECT_THAT(said, Each("DiskFull, kept"));
}

TEST_F(RefusedFile, FullDiskTakesNoNewFileAndNoneIsLeftBehind) {
    const auto said = WithoutRoom(folder, false, [this]() -> std::string {
        const std::string outcome = OutcomeOf([this] { WriteAtStart(File(), Content{9, 8}); });
        return outcome + (folder.Has("init.cfg") || folder.Has("init.cfg.new") ? ", litter" : ", clean");
    });
    EXPECT_THAT(said, Each("DiskFull, clean"));
}

TEST_F(RefusedFile, WriteThatFailsHalfwayInPlaceIsTakenBack) {
    Content old(100);
    for (std::size_t i = 0; i < old.size(); ++i) {
        old[i] = static_cast<std::uint8_t>(i);
    }
    HaveFile(old, 0666);
    // No file may be written past its 20th byte: neither the new one nor the old one beyond that.
    const std::string said = InChild([this]() -> std::string {
        const rlimit limit = {20, 20};
        std::signal(SIGXFSZ, SIG_IGN);
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            return "no limit can be set";
        }
        return OutcomeOf([this] { WriteAtStart(File(), Content(40, 0xEE)); });
    });
    EXPECT_EQ(said, "FileAccess");
    EXPECT_EQ(folder.Read("init.cfg"), old);
    EXPECT_FALSE(folder.Has("init.cfg.new"));
}

} // namespace
} // namespace nrv::testing
