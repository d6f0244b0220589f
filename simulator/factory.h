#pragma once

#include "simulator/protocol.h"

#include <array>
#include <string>
#include <string_view>

/// What a device holds when it leaves the factory.
namespace nrv::simulator {

using DeviceMemory = std::array<Byte, MemorySize>;

/// The settings of a device that nobody has touched.
PresetBody FactoryPreset();

/// Memory with option bits 32, nothing muted, the password "000000", the given label and every position empty.
DeviceMemory FactoryMemory(std::string_view label);

/// The label of a device that was given none: " NRV-718  ID 05 ".
std::string FactoryLabel(int id);

} // namespace nrv::simulator
