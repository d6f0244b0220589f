#pragma once

#include "simulator/rack.h"
#include "terminal.h"

#include <ctime>

/// What the tests of the line have in common.
namespace nrv::simulator {

/// Devices 5 and 9.
inline Rack TwoDevices() {
    Rack rack;
    rack.Add(5);
    rack.Add(9);
    return rack;
}

inline const Bytes Presence5{0xF0, 0xC3, 5, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7};

/// Processor time of this process so far.
inline double ProcessorMs() {
    timespec spec{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spec);
    return static_cast<double>(spec.tv_sec) * 1e3 + static_cast<double>(spec.tv_nsec) / 1e6;
}

} // namespace nrv::simulator
