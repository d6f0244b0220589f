#include "simulator/pty.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace nrv::simulator {
namespace {

std::system_error Failed(const char* what) {
    return {errno, std::generic_category(), what};
}

} // namespace

Pty::Pty() {
    master_.Reset(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (master_.Get() < 0 || ::grantpt(master_.Get()) != 0 || ::unlockpt(master_.Get()) != 0) {
        throw Failed("no pseudo-terminal to be had");
    }
    std::array<char, 128> name{};
    if (const int error = ::ptsname_r(master_.Get(), name.data(), name.size()); error != 0) {
        throw std::system_error(error, std::generic_category(), "the pseudo-terminal has no name");
    }
    device_path_ = name.data();
    slave_.Reset(::open(device_path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (slave_.Get() < 0) {
        throw Failed("the pseudo-terminal does not open");
    }
    termios settings{};
    if (::tcgetattr(slave_.Get(), &settings) != 0) {
        throw Failed("the pseudo-terminal has no settings");
    }
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B19200);
    if (::tcsetattr(slave_.Get(), TCSANOW, &settings) != 0) {
        throw Failed("the pseudo-terminal takes no settings");
    }
    Watch();
}

void Pty::Watch() {
    watch_.Reset(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch_.Get() >= 0 && ::inotify_add_watch(watch_.Get(), device_path_.c_str(), IN_OPEN | IN_CLOSE) < 0) {
        watch_.Reset();
    }
}

bool Pty::UpdateOpenCount() {
    if (watch_.Get() < 0) {
        return false;
    }
    bool closed = false;
    bool left_alone = false;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t size = ::read(watch_.Get(), buffer.data(), buffer.size());
        if (size <= 0) {
            break;
        }
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += sizeof event + event.len;
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                watch_.Reset(); // the count is not to be trusted any more
                return false;
            }
            if ((event.mask & IN_OPEN) != 0) {
                ++open_count_;
            }
            if ((event.mask & IN_CLOSE) != 0) {
                --open_count_;
                closed = true;
                left_alone = left_alone || open_count_ <= 0;
            }
        }
    }
    if (!closed) {
        return false;
    }
    // An answer that nobody fetched goes with the one who closed the line.
    ::tcflush(slave_.Get(), TCIFLUSH);
    // A program that died left the line to itself alone, and nobody else would get in.
    if (open_count_ <= 0) {
        ::ioctl(slave_.Get(), TIOCNXCL);
    }
    return left_alone;
}

std::vector<Byte> Pty::Read(bool& hung_up) {
    std::array<Byte, ReadSize> buffer{};
    const ssize_t size = ::read(master_.Get(), buffer.data(), buffer.size());
    hung_up = size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR);
    return size > 0 ? std::vector<Byte>(buffer.begin(), buffer.begin() + size) : std::vector<Byte>();
}

void Pty::DiscardRead() {
    std::array<Byte, 4096> buffer{};
    while (::read(master_.Get(), buffer.data(), buffer.size()) > 0) {
    }
}

void Pty::Write(std::span<const Byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t size = ::write(master_.Get(), bytes.data(), bytes.size());
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(size));
    }
}

} // namespace nrv::simulator
