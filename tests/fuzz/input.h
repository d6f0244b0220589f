#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace nrv::fuzz {

/// The bytes of one run, taken from the front; what is wanted beyond their end is 0.
class Input {
  public:
    Input(const std::uint8_t* bytes, std::size_t count) : left_(bytes, count) {}

    bool Empty() const { return left_.empty(); }
    std::size_t Left() const { return left_.size(); }

    std::uint8_t Byte() {
        if (left_.empty()) {
            return 0;
        }
        const std::uint8_t byte = left_.front();
        left_ = left_.subspan(1);
        return byte;
    }
    bool Flag() { return (Byte() & 1) != 0; }
    /// 0 to count - 1.
    std::size_t Below(std::size_t count) { return count == 0 ? 0 : Byte() % count; }
    int Signed() { return static_cast<std::int8_t>(Byte()); }
    int Word() {
        const int high = Byte();
        return static_cast<std::int16_t>(high << 8 | Byte());
    }
    std::vector<std::uint8_t> Bytes(std::size_t most) {
        const std::size_t count = std::min(most, left_.size());
        std::vector<std::uint8_t> bytes(left_.begin(), left_.begin() + static_cast<std::ptrdiff_t>(count));
        left_ = left_.subspan(count);
        return bytes;
    }
    std::vector<std::uint8_t> Rest() { return Bytes(left_.size()); }
    std::string Text(std::size_t most) {
        const std::vector<std::uint8_t> bytes = Bytes(most);
        return {bytes.begin(), bytes.end()};
    }

  private:
    std::span<const std::uint8_t> left_;
};

} // namespace nrv::fuzz
