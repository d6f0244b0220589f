#include "ports/record_file.h"
#include "ports/runtime_error.h"
#include "support/test_folder.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

// Each call by which a file is written fails in turn, or is where the process is killed.

namespace nrv::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes Old{1, 2, 3, 4};
const Bytes Record{9, 8};
const Bytes New{9, 8, 3, 4};

constexpr __u32 AnyFlags = 0;

struct Call {
    const char* Name;
    int Number;
    __u32 Flags; ///< of an opening: only with one of these
};

constexpr std::array Calls{Call{"look", SYS_newfstatat, AnyFlags},
                           Call{"any opening", SYS_openat, AnyFlags},
                           Call{"open to write", SYS_openat, O_RDWR | O_WRONLY},
                           Call{"open a new file", SYS_openat, O_CREAT},
                           Call{"read", SYS_read, AnyFlags},
                           Call{"write", SYS_write, AnyFlags},
                           Call{"flush", SYS_fsync, AnyFlags},
                           Call{"owner", SYS_fchown, AnyFlags},
                           Call{"permissions", SYS_fchmodat, AnyFlags},
                           Call{"rename", SYS_rename, AnyFlags},
                           Call{"remove", SYS_unlink, AnyFlags},
                           Call{"close", SYS_close, AnyFlags}};

/// From now on the call ends with an error of the system's or, for 0, ends the process.
bool Break(const Call& call, int error) {
    constexpr auto third_argument = offsetof(seccomp_data, args) + 2 * sizeof(__u64);
    const __u32 end = error != 0 ? SECCOMP_RET_ERRNO | static_cast<__u32>(error) : SECCOMP_RET_KILL_PROCESS;
    std::array<sock_filter, 6> program{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<__u32>(call.Number), 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third_argument),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, call.Flags == AnyFlags ? ~__u32{0} : call.Flags, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, end),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    if (call.Flags == AnyFlags) {
        program[1] = BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<__u32>(call.Number), 2, 3);
    }
    const sock_fprog filter{program.size(), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

enum class End { Done, Told, NoFilter, Other, Killed };

/// How a write ends in a process of its own in which a call is broken.
End WriteWith(const Call& call, int error, const std::filesystem::path& file) {
    const pid_t child = fork();
    if (child == 0) {
        if (!Break(call, error)) {
            _exit(static_cast<int>(End::NoFilter));
        }
        try {
            WriteAtStart(file, Record);
            _exit(static_cast<int>(End::Done));
        } catch (const RuntimeError&) {
            _exit(static_cast<int>(End::Told));
        } catch (...) {
            _exit(static_cast<int>(End::Other));
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<End>(WEXITSTATUS(status)) : End::Killed;
}

TEST(RecordFileUnderFault, AFailedCallLeavesTheOldFileToldOrTheWholeNewOne) {
    int told = 0;
    for (const Call& call : Calls) {
        for (const int error : {EIO, ENOSPC, EACCES, EROFS, EINTR}) {
            SCOPED_TRACE(std::string(call.Name) + " " + std::to_string(error));
            const TestFolder folder;
            folder.Write("a.n91", Old);
            const End end = WriteWith(call, error, folder.Path() / "a.n91");
            ASSERT_TRUE(end == End::Done || end == End::Told) << static_cast<int>(end);
            EXPECT_EQ(folder.Read("a.n91"), end == End::Done ? New : Old);
            told += end == End::Told ? 1 : 0;
        }
    }
    EXPECT_GT(told, 0);
}

TEST(RecordFileUnderFault, AFailedCallLeavesNoNewFileOrTheWholeOne) {
    int told = 0;
    for (const Call& call : Calls) {
        for (const int error : {EIO, ENOSPC, EACCES}) {
            SCOPED_TRACE(std::string(call.Name) + " " + std::to_string(error));
            const TestFolder folder;
            const End end = WriteWith(call, error, folder.Path() / "a.n91");
            ASSERT_TRUE(end == End::Done || end == End::Told) << static_cast<int>(end);
            if (end == End::Done) {
                EXPECT_EQ(folder.Read("a.n91"), Record);
            } else {
                EXPECT_TRUE(!folder.Has("a.n91") || folder.Read("a.n91").empty());
                ++told;
            }
        }
    }
    EXPECT_GT(told, 0);
}

TEST(RecordFileUnderFault, AProcessKilledAtACallLeavesTheOldFileOrTheWholeNewOne) {
    int killed = 0;
    for (const Call& call : Calls) {
        SCOPED_TRACE(call.Name);
        const TestFolder folder;
        folder.Write("a.n91", Old);
        const End end = WriteWith(call, 0, folder.Path() / "a.n91");
        ASSERT_TRUE(end == End::Done || end == End::Killed) << static_cast<int>(end);
        killed += end == End::Killed ? 1 : 0;
        const Bytes left = folder.Read("a.n91");
        EXPECT_TRUE(left == (end == End::Done ? New : Old) || left == New);
        EXPECT_EQ(folder.Entries(), folder.Has("a.n91.new") ? 2U : 1U);
        // What was left behind stands in nobody's way.
        WriteAtStart(folder.Path() / "a.n91", Record);
        EXPECT_EQ(folder.Read("a.n91"), New);
    }
    EXPECT_GE(killed, 9);
}

TEST(RecordFileUnderFault, AProcessKilledAtACallLeavesNoPartOfANewFile) {
    int left_beside = 0;
    for (const Call& call : Calls) {
        SCOPED_TRACE(call.Name);
        const TestFolder folder;
        const End end = WriteWith(call, 0, folder.Path() / "a.n91");
        ASSERT_TRUE(end == End::Done || end == End::Killed) << static_cast<int>(end);
        EXPECT_TRUE(!folder.Has("a.n91") || folder.Read("a.n91") == Record);
        EXPECT_TRUE(end == End::Killed || folder.Has("a.n91"));
        left_beside += folder.Has("a.n91.new") ? 1 : 0;
        EXPECT_EQ(folder.Entries(), (folder.Has("a.n91") ? 1U : 0U) + (folder.Has("a.n91.new") ? 1U : 0U));
    }
    EXPECT_GE(left_beside, 3); // killed at a write, a flush or the rename
}

TEST(RecordFileUnderFault, WhatIsLeftBesideAFileHasItsNameAndANumber) {
    const TestFolder folder;
    const Call rename{"rename", SYS_rename, AnyFlags};
    for (const char* const left : {"a.n91.new", "a.n91.new2", "a.n91.new3"}) {
        EXPECT_EQ(WriteWith(rename, 0, folder.Path() / "a.n91"), End::Killed);
        EXPECT_TRUE(folder.Has(left)) << left;
    }
    EXPECT_EQ(folder.Entries(), 3U);
}

} // namespace
} // namespace nrv::testing
