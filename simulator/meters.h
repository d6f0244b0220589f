#pragma once

#include "simulator/protocol.h"

#include <chrono>
#include <cstdint>

/// Level meters that move: the same seed, device, channel and time always give the same level.
namespace nrv::simulator {

/// Levels 0 to 6 of the eight channels of device `id` at a time since the rack was switched on.
Levels MovingLevels(std::uint32_t seed, int id, std::chrono::milliseconds time);

} // namespace nrv::simulator
