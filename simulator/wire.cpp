#include "simulator/wire.h"

#include <algorithm>

namespace nrv::simulator {
namespace {

constexpr std::size_t BitsOfByte = 10;

void Pull(std::vector<bool>& wire, const Reply& answer, std::size_t from) {
    for (const Byte byte : answer) {
        const unsigned bits = (unsigned{byte} | 0x100U) << 1U;
        for (std::size_t bit = 0; bit < BitsOfByte; ++bit, ++from) {
            wire[from] = wire[from] && ((bits >> bit) & 1U) != 0;
        }
    }
}

} // namespace

Reply Collide(const Reply& first, const Reply& second, int shift) {
    const auto late = static_cast<std::size_t>(std::max(shift, 0));
    const std::size_t length = std::max(first.size() * BitsOfByte, late + second.size() * BitsOfByte);
    std::vector<bool> wire(length + BitsOfByte, true);
    Pull(wire, first, 0);
    Pull(wire, second, late);
    Reply heard;
    for (std::size_t at = 0; at < length;) {
        if (wire[at]) {
            ++at;
            continue;
        }
        unsigned value = 0;
        for (std::size_t bit = 0; bit < 8; ++bit) {
            value |= wire[at + 1 + bit] ? 1U << bit : 0U;
        }
        heard.push_back(static_cast<Byte>(value));
        at += BitsOfByte - 1;
        while (at < length && !wire[at]) {
            ++at;
        }
    }
    return heard;
}

} // namespace nrv::simulator
