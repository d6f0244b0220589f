#pragma once

namespace nrv::link {

/// What a dead line does to the windows; the link only says when.
class FailureHandler {
  public:
    virtual ~FailureHandler() = default;
    /// The device ID that the slot of the current window gives.
    virtual int CurrentDevice() = 0;
    /// Marks the device of the current window as unconnected and takes that window away.
    virtual void GiveUpCurrentDevice() = 0;
    /// Marks a device that did not pass its check in the list. Throws RuntimeError when the mark cannot be written.
    virtual void MarkUnchecked(int id) = 0;
};

} // namespace nrv::link
