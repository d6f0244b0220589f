#include "tool/qt/qt_line.h"

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <vector>

namespace nrv::tool {
namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal sets it");

void WatchSignals() {
    for (const int signal : std::array{SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        action.sa_handler = [](int) { interrupted = true; };
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        // What ignores a signal, such as "nohup", goes on ignoring it.
        struct sigaction before = {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
    // A reader who goes away ends no write to a device half-way.
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

LinePorts QtLine::Open(const std::string& device) {
    WatchSignals();
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
    return {*port_, clock_, *process_, interrupted};
}

} // namespace nrv::tool
