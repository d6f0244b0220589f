#pragma once

namespace nrv::link {

/// What a dead line does to the windows; the link only says when.
class FailureHandler {
  public:
    virtual ~FailureHandler() = default;
    /// The device ID that the slot of the current window gives.
    virtual int CurrentDevice() = 0;
    /// Says in the status line what was not done.
    virtual void TellFailure() = 0;
    /// Marks the device that the running operation is about as unconnected and takes its window away; outside an
    /// operation those of the current window.
    virtual void GiveUpDevice() = 0;
    /// Marks a device that did not pass its check in the list. Throws RuntimeError when the mark cannot be written.
    virtual void MarkUnchecked(int id) = 0;
};

} // namespace nrv::link
