#pragma once

#include "ports/operation.h"

#include <string>

namespace nrv::session {

/// What an operation that reported a failure did not do and what to do next: "ID:5 does not answer; the copy stopped
/// after 5 of 28 frames. Double-click its row to connect it again."
std::string FailureText(const Operation& operation);
/// What a device that lets its first wait go by is told of as.
std::string WaitingText(const Operation& operation, int id);

} // namespace nrv::session
