#pragma once

#include "ports/runtime_error.h"

#include <functional>
#include <string>

namespace nrv::testing {

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
