#pragma once

#include "simulator/options.h"
#include "simulator/rack.h"

/// Builds the rack that the program's options ask for.
namespace nrv::simulator {

/// Restores the state file if there is one, adds the devices that are not in it and fills their presets, then sets the
/// password and locks. Throws StateError, or OptionError when a device to lock is not on the line.
Rack BuildRack(const Options& options);

/// Three presets, in the positions 0, 1 and 4, that differ from the factory's settings.
void AddDemoPresets(Device& device);

} // namespace nrv::simulator
