#pragma once

namespace nrv {

/// The wall clock.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Now as a number of days, whole and fractional, advancing in whole seconds.
    virtual double Now() = 0;
};

} // namespace nrv
