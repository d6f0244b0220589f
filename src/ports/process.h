#pragma once

namespace nrv {

/// What a process throws that ends in thought alone, as a test's does; the event that ended it goes no further.
struct EndOfProcess {};

/// The event loop and the process that the program runs in.
class Process {
  public:
    virtual ~Process() = default;
    /// Lets the events that are waiting run: timers, repaints, input.
    virtual void RunPendingEvents() = 0;
    /// Stands still for a number of milliseconds; no events run.
    virtual void Sleep(int milliseconds) = 0;
    /// Ends the process at once; does not return.
    [[noreturn]] virtual void End() = 0;
};

} // namespace nrv
