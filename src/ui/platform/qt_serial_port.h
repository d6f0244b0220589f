#pragma once

#include "link/serial_port.h"
#include "ui/platform/com_ports.h"

#include <QSerialPort>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace nrv::ui {

/// The serial port on the toolkit's own: real ports, USB adapters and pseudo-terminals alike.
///
/// All errors are RuntimeError: PortUnavailable when it cannot be opened or is not open, PortGone when it was open and
/// went away; a port that is merely silent is no error. One thread; needs an application object.
class QtSerialPort : public link::SerialPort {
  public:
    explicit QtSerialPort(const ComPortNames& names);

    /// Told in a sentence when the open port goes away while nobody uses it; it is closed then.
    std::function<void(const std::string&)> WentAway;

    /// 0 to 32; what it stands for is looked up when the port opens. Refused while the port is open.
    void SetCommPort(int number) override;
    void SetSettings(const link::LineSettings& settings) override;
    bool PortOpen() override { return port_.isOpen(); }
    /// Opening an open port and closing a closed one do nothing. Opening empties the input.
    void SetPortOpen(bool open) override;
    void SetInBufferSize(int bytes) override { in_buffer_size_ = bytes; }
    /// The most that one `Input` delivers; 0 is everything.
    void SetInputLen(int bytes) override { input_len_ = bytes; }
    void Output(std::span<const std::uint8_t> bytes) override;
    int InBufferCount() override;
    void ClearInBuffer() override;
    std::vector<std::uint8_t> Input() override;

  private:
    void Open();
    void RequireOpen() const;
    /// Throws PortGone, and closes, when the device behind the port is no more.
    void RequireThere();
    [[noreturn]] void Lose();
    void RestUntilDue();
    void CloseIfGone();
    std::string Name() const;

    const ComPortNames& names_;
    QSerialPort port_;
    int number_ = 1;
    QString last_device_; ///< what the number stood for when it was last opened
    int in_buffer_size_ = 1024;
    int input_len_ = 0;
    qint64 seen_ = 0; ///< bytes that waited when they were last counted
    std::chrono::nanoseconds byte_time_{0};
    std::chrono::steady_clock::time_point due_; ///< when the answer to the last output can be there as a whole
    bool gone_ = false;
};

} // namespace nrv::ui
