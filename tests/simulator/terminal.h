#pragma once

#include "simulator/descriptor.h"
#include "simulator/protocol.h"

#include <chrono>
#include <fcntl.h>
#include <initializer_list>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace nrv::simulator {

using Bytes = std::vector<Byte>;
using std::chrono::milliseconds;

/// A request with P1 to P9; what is not given is 0.
inline Frame Request(int id, std::initializer_list<int> payload) {
    Frame frame{0xF0, 0xC3, static_cast<Byte>(id)};
    std::size_t at = 3;
    for (int value : payload) {
        frame[at++] = static_cast<Byte>(value);
    }
    frame[12] = 0xF7;
    return frame;
}

/// The far end of the line, as the remote control has it.
class Terminal {
  public:
    explicit Terminal(const std::string& path) : file_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (file_.Get() < 0) {
            throw std::runtime_error("cannot open " + path);
        }
    }

    template <typename Container>
    void Send(const Container& bytes) {
        if (::write(file_.Get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("cannot write");
        }
    }

    /// Reads until `size` bytes are there or `limit` has passed.
    Bytes Read(std::size_t size, milliseconds limit = milliseconds(5000)) {
        Bytes bytes;
        const auto end = std::chrono::steady_clock::now() + limit;
        while (bytes.size() < size) {
            const auto left = std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
            pollfd wait{file_.Get(), POLLIN, 0};
            if (left.count() < 0 || ::poll(&wait, 1, static_cast<int>(left.count()) + 1) <= 0) {
                break;
            }
            Bytes part(size - bytes.size());
            const ssize_t count = ::read(file_.Get(), part.data(), part.size());
            if (count <= 0) {
                break;
            }
            bytes.insert(bytes.end(), part.begin(), part.begin() + count);
        }
        return bytes;
    }

    /// One exchange.
    Bytes Ask(const Frame& request, std::size_t size = 13) {
        Send(request);
        return Read(size);
    }

    /// True when nothing comes for a while.
    bool Silent(milliseconds time = milliseconds(60)) { return Read(1, time).empty(); }

  private:
    Descriptor file_;
};

} // namespace nrv::simulator
