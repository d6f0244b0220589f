#pragma once

#include <cstddef>
#include <string>

namespace nrv {

inline constexpr int DeviceCount = 33; ///< device IDs on a line are 0 to 32

constexpr bool IsDeviceId(int id) {
    return id >= 0 && id < DeviceCount;
}

/// "ID:5", as every text names a device.
inline std::string IdText(int id) {
    return "ID:" + std::to_string(id);
}

/// A number of the system, which is never negative where it counts, as the index of a container.
constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace nrv
