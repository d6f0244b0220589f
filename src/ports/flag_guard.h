#pragma once

namespace nrv {

/// Holds a flag at a value for the length of a scope; an error on the way cannot leave it there.
class FlagGuard {
  public:
    explicit FlagGuard(bool& flag, bool during = true) : flag_(flag), after_(!during) { flag_ = during; }
    ~FlagGuard() { flag_ = after_; }
    FlagGuard(const FlagGuard&) = delete;
    FlagGuard& operator=(const FlagGuard&) = delete;

  private:
    bool& flag_;
    bool after_;
};

} // namespace nrv
