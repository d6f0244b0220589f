#pragma once

#include "session/session_state.h"

#include <array>
#include <cstdint>
#include <filesystem>

namespace nrv::session {

/// init.cfg: 14 bytes. Integers of all three files are 16-bit, low byte first, signed.
///
/// | Offset | Size | Content |
/// |---|---|---|
/// | 0 | 2 | the port choice, 0 "NONE" to 32 |
/// | 2 | 12 | put to no use, written back as read |
struct InitFile {
    static constexpr std::size_t Size = 14;

    /// Missing bytes read as 0. Throws RuntimeError of kind FileAccess.
    static InitFile Read(const std::filesystem::path& folder);
    /// Throws RuntimeError of kind FileAccess or DiskFull.
    void Write(const std::filesystem::path& folder) const;

    int ComIndex() const;
    void SetComIndex(int index);

    std::array<std::uint8_t, Size> Bytes{};
};

/// TenDev.cfg: 33 integers, the configured IDs. Missing ones read as 0. Throws RuntimeError of kind FileAccess.
std::array<int, DeviceCount> ReadConfiguredIds(const std::filesystem::path& folder);
/// Throws RuntimeError of kind FileAccess or DiskFull.
void WriteConfiguredIds(const std::filesystem::path& folder, const std::array<int, DeviceCount>& ids);

/// Speakers.cfg: 33 records of 128 bytes, of which the first 22 are read: eleven integers. Missing bytes read as 0.
/// Throws RuntimeError of kind FileAccess.
std::array<SpeakerRecord, DeviceCount> ReadSpeakerRecords(const std::filesystem::path& folder);

} // namespace nrv::session
