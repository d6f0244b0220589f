#pragma once

#include <stdexcept>
#include <string>

namespace nrv::tool {

/// How the process ends.
enum class Outcome : int {
    Well = 0,
    Differs = 1, ///< two presets differ, or something does not fit
    Refused = 2, ///< wrong use, or trouble with a file
    NoLine = 3,  ///< trouble with the line
};

/// Ends a command: one line that says where, what, and what to do.
class Trouble : public std::runtime_error {
  public:
    explicit Trouble(const std::string& what, Outcome outcome = Outcome::Refused)
        : std::runtime_error(what), outcome_(outcome) {}

    Outcome EndsAs() const noexcept { return outcome_; }

  private:
    Outcome outcome_;
};

} // namespace nrv::tool
