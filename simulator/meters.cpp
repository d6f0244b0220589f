#include "simulator/meters.h"

namespace nrv::simulator {
namespace {

constexpr std::uint64_t AnchorMilliseconds = 400; // music swells and falls about so fast

/// A well mixed number from four; nothing but spread is asked of it.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    std::uint64_t x = a * 0x9E3779B97F4A7C15U + b * 0xC2B2AE3D27D4EB4FU + c * 0x165667B19E3779F9U + d;
    for (int round = 0; round < 2; ++round) {
        x ^= x >> 31;
        x *= 0xBF58476D1CE4E5B9U;
    }
    return x ^ (x >> 29);
}

} // namespace

Levels MovingLevels(std::uint32_t seed, int id, std::chrono::milliseconds time) {
    const auto ms = static_cast<std::uint64_t>(time.count() < 0 ? 0 : time.count());
    const std::uint64_t anchor = ms / AnchorMilliseconds;
    const std::uint64_t part = ms % AnchorMilliseconds;
    Levels levels{};
    for (std::size_t channel = 0; channel < levels.size(); ++channel) {
        const auto source = static_cast<std::uint64_t>(id) * ChannelCount + channel;
        // 0 to 699 at each anchor, a straight line between two: the level is its hundreds.
        const std::uint64_t from = Mix(seed, source, anchor, 1) % 700;
        const std::uint64_t to = Mix(seed, source, anchor + 1, 1) % 700;
        levels[channel] =
            static_cast<Byte>((from * (AnchorMilliseconds - part) + to * part) / AnchorMilliseconds / 100);
    }
    return levels;
}

} // namespace nrv::simulator
