#pragma once

#include "simulator/protocol.h"

namespace nrv::simulator {

/// What a receiver makes of two answers on one wire, the second of which begins `shift` bit times after the first.
///
/// A byte is a start bit of 0, eight bits, the lowest first, and a stop bit of 1. The wire rests at 1 and is at 0 as
/// soon as one of the two pulls it there. The receiver takes the first 0 for a start bit and reads on from there; after
/// a byte without a stop bit it waits for the wire to rest, and hands the byte over all the same.
Reply Collide(const Reply& first, const Reply& second, int shift);

} // namespace nrv::simulator
