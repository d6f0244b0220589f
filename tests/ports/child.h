#pragma once

#include <array>
#include <exception>
#include <functional>
#include <grp.h>
#include <linux/capability.h>
#include <string>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nrv::testing {

/// Runs a job in a process of its own and returns the short text that it ended with.
inline std::string InChild(const std::function<std::string()>& job) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return "there is no pipe";
    }
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        return "there is no child";
    }
    if (child == 0) {
        close(ends[0]);
        std::string said;
        try {
            said = job();
        } catch (const std::exception& error) {
            said = error.what();
        }
        const bool written = write(ends[1], said.data(), said.size()) == static_cast<ssize_t>(said.size());
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    std::string said;
    std::array<char, 512> part{};
    for (ssize_t count = 0; (count = read(ends[0], part.data(), part.size())) > 0;) {
        said.append(part.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? said : "the child died";
}

inline bool BecomeNobody() {
    constexpr unsigned Nobody = 65534;
    return setgroups(0, nullptr) == 0 && setgid(Nobody) == 0 && setuid(Nobody) == 0;
}

/// Gives up all that root may and others may not.
inline bool DropCapabilities() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
    return syscall(SYS_capset, &header, none.data()) == 0;
}

/// Runs a job for whom file permissions count: as the user that runs the tests, or where that is root as nobody, or as
/// a root of no power where there is nobody else.
inline std::string AsOrdinaryUser(const std::function<std::string()>& job) {
    return InChild([&job]() -> std::string {
        if (geteuid() == 0 && !BecomeNobody() && !DropCapabilities()) {
            return "permissions do not count for this user";
        }
        return job();
    });
}

} // namespace nrv::testing
