#pragma once

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

namespace nrv::test {

/// The far end of a line: what a device would hold in its hand.
class PseudoTerminal {
  public:
    PseudoTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
            throw std::runtime_error("no pseudo-terminal");
        }
        device_ = ::ptsname(master_);
        // Without this the line would send back what it is sent until the other end sets it up.
        termios raw{};
        ::tcgetattr(master_, &raw);
        ::cfmakeraw(&raw);
        ::tcsetattr(master_, TCSANOW, &raw);
    }
    ~PseudoTerminal() { HangUp(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& Device() const { return device_; }
    void HangUp() {
        if (master_ >= 0) {
            ::close(master_);
            master_ = -1;
        }
    }
    void Send(const std::vector<std::uint8_t>& bytes) {
        if (::write(master_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("the pseudo-terminal takes no bytes");
        }
    }
    /// Waits until so many bytes came, for some seconds at most for each.
    std::vector<std::uint8_t> Receive(std::size_t count) {
        std::vector<std::uint8_t> bytes;
        pollfd state{master_, POLLIN, 0};
        while (bytes.size() < count && ::poll(&state, 1, 5000) > 0) {
            std::uint8_t byte = 0;
            if (::read(master_, &byte, 1) != 1) {
                break;
            }
            bytes.push_back(byte);
        }
        return bytes;
    }
    /// The line's settings as the end with the name has them.
    termios Settings() const {
        termios settings{};
        if (::tcgetattr(master_, &settings) != 0) {
            throw std::runtime_error("the pseudo-terminal tells no settings");
        }
        return settings;
    }
    /// True when nothing comes for some milliseconds.
    bool Silent(int milliseconds) {
        pollfd state{master_, POLLIN, 0};
        return ::poll(&state, 1, milliseconds) == 0;
    }

  private:
    int master_;
    std::string device_;
};

} // namespace nrv::test
