#include "tool/qt/qt_line.h"

#include <filesystem>
#include <vector>

namespace nrv::tool {

LinePorts QtLine::Open(const std::string& device) {
    application_ = std::make_unique<QCoreApplication>(count_, arguments_);
    if (device.empty()) {
        names_ = std::make_unique<ui::ComPortNames>(QString::fromStdString(std::filesystem::current_path().string()));
    } else {
        // The first port is the one of that name, and no file of a folder stands for it.
        ui::PortInfo port{QStringLiteral("COM1"),
                          QString::fromLocal8Bit(device.data(), static_cast<qsizetype>(device.size())), QString(),
                          QString()};
        names_ = std::make_unique<ui::ComPortNames>(QStringLiteral("/dev/null"),
                                                    [port = std::move(port)] { return std::vector{port}; });
    }
    port_ = std::make_unique<ui::QtSerialPort>(*names_);
    process_ = std::make_unique<ui::QtProcess>(*port_);
    return {*port_, clock_, *process_};
}

} // namespace nrv::tool
