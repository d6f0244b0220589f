#pragma once

#include "simulator/rack.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

/// A whole rack on disk.
///
/// | Offset | Size | Content                                                              |
/// |--------|------|----------------------------------------------------------------------|
/// | 0      | 16   | "NRV718-RACK" blank "0001" (the version)                             |
/// | 16     | 4    | number of devices n, 0 to 33, low byte first                         |
/// | 20     | 4962 | first device, then the others in rising order of ID                  |
/// | end-4  | 4    | CRC-32 (polynomial 0xEDB88320) of all bytes before it, low byte first |
///
/// One device:
///
/// | Offset | Size | Content                                        |
/// |--------|------|------------------------------------------------|
/// | 0      | 1    | ID, 0 to 32                                    |
/// | 1      | 1    | 1 during a bulk update, otherwise 0            |
/// | 2      | 432  | live preset                                    |
/// | 434    | 4528 | device memory from address 0                   |
///
/// A rack of one device is thus 16 + 4 + 4962 + 4 = 4986 bytes long.
namespace nrv::simulator {

/// Why a state could not be saved or restored, with the name of the file.
struct StateError : std::runtime_error {
    explicit StateError(const std::string& what) : std::runtime_error(what) {}
};

std::vector<Byte> EncodeState(const Rack& rack);
/// Throws StateError, without a file name, for anything but an undamaged state.
std::map<int, Device> DecodeState(const std::vector<Byte>& bytes);

/// Throws StateError when a state could not be saved to `path`: what stands there is no plain file or may not be
/// written, or nothing can be written beside it.
void CheckStateCanBeSaved(const std::filesystem::path& path);

/// Writes a new file beside the file that `path` leads to and renames it, so that a failed write leaves the old file. A
/// link stays a link, and a file keeps its rights and its owner. Throws StateError.
void SaveState(const Rack& rack, const std::filesystem::path& path);

/// Replaces the rack's devices by those of the file. Throws StateError and leaves the rack as it was when the file
/// cannot be read or is damaged.
void RestoreState(Rack& rack, const std::filesystem::path& path);

} // namespace nrv::simulator
