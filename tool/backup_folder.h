#pragma once

#include "model/preset_image.h"
#include "ports/channels.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>

namespace nrv::tool {

/// What the folder of a backup says of its device.
struct BackupRecord {
    struct Position {
        bool Used = false;
        std::string Name; ///< 16 bytes where it is used
        bool operator==(const Position&) const = default;
    };
    int Device = 0;
    std::string Label;
    std::array<Position, MemoryPositions> Positions;
    bool Complete = false;

    bool SameDevice(const BackupRecord& other) const {
        return Device == other.Device && Label == other.Label && Positions == other.Positions;
    }
};

std::filesystem::path LiveFile(const std::filesystem::path& folder);
/// Of position 0 to 7, which users count from 1.
std::filesystem::path PositionFile(const std::filesystem::path& folder, std::size_t position);

/// None when the folder holds no backup. Throws Trouble for a record that cannot be read.
std::optional<BackupRecord> ReadRecord(const std::filesystem::path& folder);
void WriteRecord(const std::filesystem::path& folder, const BackupRecord& record);

/// Which positions a restore that was cut short has stored in a device already; none of another device. Throws Trouble
/// as above.
std::array<bool, MemoryPositions> ReadRestored(const std::filesystem::path& folder, int device);
void WriteRestored(const std::filesystem::path& folder, int device, const std::array<bool, MemoryPositions>& done);
void ForgetRestored(const std::filesystem::path& folder);

} // namespace nrv::tool
