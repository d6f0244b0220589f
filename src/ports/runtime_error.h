#pragma once

#include <stdexcept>
#include <string>

namespace nrv {

/// What the platform or a table refused at run time.
enum class ErrorKind {
    TypeMismatch,
    Overflow,
    IndexOutOfRange,
    FileNotFound,
    FileAccess,
    PortUnavailable,
    PortGone,
    DiskFull
};

/// The one exception of the program: caught where an operation has an error path of its own, and at the event boundary.
class RuntimeError : public std::runtime_error {
  public:
    /// `what` is one sentence for the user that says what was refused.
    RuntimeError(ErrorKind kind, const std::string& what) : std::runtime_error(what), kind_(kind) {}

    ErrorKind Kind() const noexcept { return kind_; }

  private:
    ErrorKind kind_;
};

} // namespace nrv
