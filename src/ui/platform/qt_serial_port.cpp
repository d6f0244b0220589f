#include "ui/platform/qt_serial_port.h"

#include "ports/runtime_error.h"
#include "ui/binding/text.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#ifdef Q_OS_UNIX
#include <poll.h>
#include <termios.h>
#endif

namespace nrv::ui {
namespace {

constexpr int RestMilliseconds = 1;
constexpr int WriteLimitMilliseconds = 1000; ///< a request of 13 bytes takes 7 at 19200 baud

struct LineSettings {
    qint32 Baud = 0;
    QSerialPort::Parity Parity = QSerialPort::NoParity;
    QSerialPort::DataBits DataBits = QSerialPort::Data8;
    QSerialPort::StopBits StopBits = QSerialPort::OneStop;
};

/// "19200,N,8,1" and its like: baud, parity (N, E, O), data bits, stop bits.
LineSettings Parse(const std::string& text) {
    LineSettings line;
    char parity = 0;
    int data_bits = 0;
    int stop_bits = 0;
    std::istringstream parts(text);
    char comma = 0;
    parts >> line.Baud >> comma >> parity >> comma >> data_bits >> comma >> stop_bits;
    const std::size_t which = std::string_view("NEO").find(parity);
    if (!parts || !parts.eof() || line.Baud <= 0 || which == std::string_view::npos || data_bits < 5 || data_bits > 8 ||
        (stop_bits != 1 && stop_bits != 2)) {
        throw RuntimeError(ErrorKind::PortUnavailable, "\"" + text + "\" are no settings of a serial port.");
    }
    constexpr std::array parities = {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity};
    line.Parity = parities[which];
    line.DataBits = static_cast<QSerialPort::DataBits>(data_bits);
    line.StopBits = stop_bits == 1 ? QSerialPort::OneStop : QSerialPort::TwoStop;
    return line;
}

/// The system's word on whether the device behind an open port is still there; the toolkit's errors tell a port that
/// went away apart from one that had nothing to read only now and then.
bool HungUp(QSerialPort& port) {
#ifdef Q_OS_UNIX
    pollfd state{port.handle(), 0, 0};
    return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
#else
    return port.error() == QSerialPort::ResourceError;
#endif
}

/// Closing puts the line's old settings back, and a frame still on its way out would end at the wrong speed.
void WaitUntilSent(QSerialPort& port) {
#ifdef Q_OS_UNIX
    if (!HungUp(port)) {
        ::tcdrain(port.handle());
    }
#else
    Q_UNUSED(port)
#endif
}

} // namespace

QtSerialPort::QtSerialPort(const ComPortNames& names) : names_(names) {
    QtSerialPort::SetSettings("9600,N,8,1");
    // Later, for the port is inside its own handler. It would go on telling of the error for ever, with a core of its
    // own.
    QObject::connect(
        &port_, &QSerialPort::errorOccurred, &port_,
        [this](QSerialPort::SerialPortError error) {
            if (error != QSerialPort::NoError) {
                CloseIfGone();
            }
        },
        Qt::QueuedConnection);
}

void QtSerialPort::SetCommPort(int number) {
    if (port_.isOpen()) {
        throw RuntimeError(ErrorKind::PortUnavailable,
                           "Another serial port can be chosen only while " + Name() + " is closed.");
    }
    if (number != number_) {
        last_device_.clear();
    }
    number_ = number;
}

void QtSerialPort::SetSettings(const std::string& settings) {
    const LineSettings line = Parse(settings);
    if (!port_.setBaudRate(line.Baud) || !port_.setParity(line.Parity) || !port_.setDataBits(line.DataBits) ||
        !port_.setStopBits(line.StopBits)) {
        throw RuntimeError(ErrorKind::PortUnavailable, Name() + " does not take the settings \"" + settings + "\".");
    }
}

void QtSerialPort::SetPortOpen(bool open) {
    if (open == port_.isOpen()) {
        return;
    }
    if (open) {
        Open();
    } else {
        WaitUntilSent(port_);
        port_.close();
    }
}

void QtSerialPort::Open() {
    const ComPort found = names_.Find(number_, last_device_);
    if (!found.Refusal.isEmpty()) {
        throw RuntimeError(ErrorKind::PortUnavailable, ToBytes(found.Refusal));
    }
    last_device_ = found.Device;
    port_.setPortName(found.Device);
    port_.clearError();
    if (!port_.open(QIODevice::ReadWrite)) {
        throw RuntimeError(ErrorKind::PortUnavailable,
                           Name() + (port_.error() == QSerialPort::PermissionError
                                         ? std::string(" is in use by another program.")
                                         : " cannot be opened: " + ToBytes(port_.errorString()) + "."));
    }
    gone_ = false;
    seen_ = 0;
    port_.clear();
}

void QtSerialPort::Output(std::span<const std::uint8_t> bytes) {
    RequireOpen();
    RequireThere();
    const auto size = static_cast<qint64>(bytes.size());
    if (port_.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
        Lose();
    }
    port_.flush();
    QDeadlineTimer limit(WriteLimitMilliseconds);
    while (port_.bytesToWrite() > 0) {
        if (limit.hasExpired() || HungUp(port_)) {
            Lose();
        }
        port_.waitForBytesWritten(RestMilliseconds);
    }
}

int QtSerialPort::InBufferCount() {
    RequireOpen();
    // What came while events were served needs no rest.
    if (port_.bytesAvailable() < in_buffer_size_ && port_.bytesAvailable() == seen_) {
        // False on a time-out too, which is no error.
        if (!port_.waitForReadyRead(RestMilliseconds)) {
            RequireThere();
        }
    }
    seen_ = port_.bytesAvailable();
    return static_cast<int>(std::clamp<qint64>(seen_, 0, std::max(in_buffer_size_, 0)));
}

void QtSerialPort::ClearInBuffer() {
    RequireOpen();
    port_.clear(QSerialPort::Input);
    seen_ = 0;
    RequireThere();
}

std::vector<std::uint8_t> QtSerialPort::Input() {
    RequireOpen();
    const qint64 waiting = port_.bytesAvailable();
    const QByteArray bytes = port_.read(input_len_ > 0 ? std::min<qint64>(input_len_, waiting) : waiting);
    seen_ = port_.bytesAvailable();
    return {bytes.begin(), bytes.end()};
}

void QtSerialPort::RequireOpen() const {
    if (gone_) {
        throw RuntimeError(ErrorKind::PortGone, Name() + " went away.");
    }
    if (!port_.isOpen()) {
        throw RuntimeError(ErrorKind::PortUnavailable, Name() + " is not open.");
    }
}

void QtSerialPort::RequireThere() {
    if (HungUp(port_)) {
        Lose();
    }
}

void QtSerialPort::Lose() {
    gone_ = true;
    port_.close();
    throw RuntimeError(ErrorKind::PortGone, Name() + " went away.");
}

void QtSerialPort::CloseIfGone() {
    if (!port_.isOpen() || !HungUp(port_)) {
        return;
    }
    gone_ = true;
    port_.close();
    if (WentAway) {
        WentAway(Name() + " went away.");
    }
}

std::string QtSerialPort::Name() const {
    const std::string name = number_ == 0 ? "The serial port" : "COM " + std::to_string(number_);
    return last_device_.isEmpty() ? name : name + " (" + ToBytes(last_device_) + ")";
}

} // namespace nrv::ui
