#include "ui/platform/qt_serial_port.h"

#include "ports/runtime_error.h"
#include "ui/binding/text.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <thread>

#ifdef Q_OS_UNIX
#include <poll.h>
#include <termios.h>
#endif

namespace nrv::ui {
namespace {

constexpr int RestMilliseconds = 1;
constexpr int AwaitedSingly = 2;             ///< the last bytes of an answer: each wakes the program when it comes
constexpr int WriteLimitMilliseconds = 1000; ///< a request of 13 bytes takes 7 at 19200 baud

using std::chrono::steady_clock;

/// A start bit, 8 data bits, a stop bit.
constexpr std::chrono::nanoseconds TenBits = std::chrono::seconds(10);

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

void QtSerialPort::SetSettings(const link::LineSettings& settings) {
    if (settings.Baud <= 0 || !port_.setBaudRate(settings.Baud) || !port_.setParity(QSerialPort::NoParity) ||
        !port_.setDataBits(QSerialPort::Data8) || !port_.setStopBits(QSerialPort::OneStop)) {
        throw RuntimeError(ErrorKind::PortUnavailable,
                           Name() + " does not take the speed of " + std::to_string(settings.Baud) + " baud.");
    }
    byte_time_ = TenBits / settings.Baud;
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
    due_ = steady_clock::now() + byte_time_ * (size + in_buffer_size_);
}

/// Rests until bytes come, or could all have come; then until all that are missing but the last can be there.
void QtSerialPort::RestUntilDue() {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due_ - steady_clock::now());
    if (!port_.waitForReadyRead(std::max(RestMilliseconds, static_cast<int>(left.count())))) {
        RequireThere(); // it may be but a time-out, which is no error
        return;
    }
    const qint64 missing = in_buffer_size_ - port_.bytesAvailable();
    if (missing > AwaitedSingly) {
        std::this_thread::sleep_for(byte_time_ * (missing - AwaitedSingly));
        port_.waitForReadyRead(0);
    }
}

int QtSerialPort::InBufferCount() {
    RequireOpen();
    // What came while events were served needs no rest.
    if (port_.bytesAvailable() < in_buffer_size_ && port_.bytesAvailable() == seen_) {
        RestUntilDue();
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
