#pragma once

#include "link/system_clock.h"
#include "tool/command_line.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <QCoreApplication>

#include <memory>

namespace nrv::tool {

/// The line on the toolkit's serial port. What it needs of the toolkit is made when a line is asked for; from then on
/// a signal ends the work as a line that fails does, and a second one the process.
class QtLine final : public LineSource {
  public:
    QtLine(int& count, char** arguments) : count_(count), arguments_(arguments) {}

    LinePorts Open(const std::string& device) override;

  private:
    int& count_;
    char** arguments_;
    std::unique_ptr<QCoreApplication> application_;
    std::unique_ptr<ui::ComPortNames> names_;
    std::unique_ptr<ui::QtSerialPort> port_;
    std::unique_ptr<ui::QtProcess> process_;
    link::SystemClock clock_;
};

} // namespace nrv::tool
