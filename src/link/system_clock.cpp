#include "link/system_clock.h"

#include <chrono>

namespace nrv::link {

double SystemClock::Now() {
    using namespace std::chrono;
    constexpr double SecondsPerDay = 86400.0;
    const auto seconds_since_epoch = floor<seconds>(system_clock::now().time_since_epoch());
    return static_cast<double>(seconds_since_epoch.count()) / SecondsPerDay;
}

} // namespace nrv::link
