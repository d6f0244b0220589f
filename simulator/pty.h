#pragma once

#include "simulator/descriptor.h"
#include "simulator/protocol.h"

#include <span>
#include <string>
#include <vector>

namespace nrv::simulator {

/// The pseudo-terminal that stands for the serial line.
///
/// Keeps the far end open itself, so that the remote control can close and open the line as often as it likes, and
/// behaves like a serial port in that what arrives while nobody has the line open is lost.
class Pty {
  public:
    /// Throws std::system_error when the system gives no pseudo-terminal.
    Pty();
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    const std::string& DevicePath() const { return device_path_; }

    /// Descriptors to wait on: requests, and changes of who has the line open (-1 where the system does not tell).
    int RequestFd() const { return master_.Get(); }
    int WatchFd() const { return watch_.Get(); }

    /// Takes note of who opened or closed the line. To be called before Read and Write in each pass. True when nobody
    /// had it open for a moment since the last call, even if somebody has by now.
    bool UpdateOpenCount();
    /// True while some program has the line open, and always where the system does not tell.
    bool OpenElsewhere() const { return watch_.Get() < 0 || open_count_ > 0; }

    /// What has come, up to ReadSize bytes; empty when nothing has. The rest stays with the system, which lets the far
    /// end wait, as a serial port does whose line is slower than its program. `hung_up` is set when the far end is
    /// gone, so that the caller can pause.
    static constexpr std::size_t ReadSize = 64;
    std::vector<Byte> Read(bool& hung_up);
    /// Throws away what has come.
    void DiscardRead();

    /// Puts bytes on the line. What does not fit because nobody reads is lost, as in a serial port's overrun.
    void Write(std::span<const Byte> bytes);

  private:
    void Watch();

    Descriptor master_;
    Descriptor slave_;
    Descriptor watch_;
    std::string device_path_;
    long open_count_ = 0;
};

} // namespace nrv::simulator
