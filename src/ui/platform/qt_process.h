#pragma once

#include "link/serial_port.h"
#include "ports/process.h"

namespace nrv::ui {

/// The process on the toolkit's event loop.
class QtProcess : public Process {
  public:
    explicit QtProcess(link::SerialPort& port) : port_(port) {}

    /// Rests for 2 ms at most when nothing waits; what comes meanwhile ends the rest.
    void RunPendingEvents() override;
    void Sleep(int milliseconds) override;
    /// Closes the serial port and leaves with exit code 0.
    [[noreturn]] void End() override;

  private:
    link::SerialPort& port_;
};

} // namespace nrv::ui
