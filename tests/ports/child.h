#pragma once

#include "ports/runtime_error.h"

#include <array>
#include <functional>
#include <grp.h>
#include <string>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nrv::testing {

/// What a child says when the machine does not let it be what it is asked to be.
inline constexpr const char* CannotTry = "cannot try";

/// Runs a job in a process of its own and returns the short text that it ended with.
inline std::string InChild(const std::function<std::string()>& job) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return CannotTry;
    }
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        return CannotTry;
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

/// Runs a job for whom file permissions count: as the user that runs the tests, or as nobody where that is root.
inline std::string AsOrdinaryUser(const std::function<std::string()>& job) {
    return InChild([&job]() -> std::string {
        constexpr unsigned Nobody = 65534;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(Nobody) != 0 || setuid(Nobody) != 0)) {
            return CannotTry;
        }
        return job();
    });
}

/// "done", or the kind of the error that the job threw.
inline std::string OutcomeOf(const std::function<void()>& job) {
    try {
        job();
        return "done";
    } catch (const RuntimeError& error) {
        switch (error.Kind()) {
        case ErrorKind::FileAccess:
            return "FileAccess";
        case ErrorKind::DiskFull:
            return "DiskFull";
        default:
            return "another kind";
        }
    }
}

} // namespace nrv::testing
