#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace nrv::link {

/// Of a line without parity, with 8 data bits and 1 stop bit.
struct LineSettings {
    int Baud;
    bool operator==(const LineSettings&) const = default;
};

/// The serial port as the logic sees it. A setter or an exchange of bytes that fails throws RuntimeError:
/// PortUnavailable when the port cannot be opened or is not open, PortGone when it was open and went away.
class SerialPort {
  public:
    virtual ~SerialPort() = default;

    /// 0 is no port, 1 to 32 the ports of those numbers.
    virtual void SetCommPort(int number) = 0;
    virtual void SetSettings(const LineSettings& settings) = 0;
    virtual bool PortOpen() = 0;
    virtual void SetPortOpen(bool open) = 0;
    /// The most bytes that are counted as waiting.
    virtual void SetInBufferSize(int bytes) = 0;
    /// The most bytes that one Input delivers.
    virtual void SetInputLen(int bytes) = 0;
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;
    /// Bytes waiting. May let the processor rest, for as long as the line needs to bring what is missing.
    virtual int InBufferCount() = 0;
    /// Throws away what waits.
    virtual void ClearInBuffer() = 0;
    virtual std::vector<std::uint8_t> Input() = 0;
};

} // namespace nrv::link
