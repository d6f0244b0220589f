#include "session/config_files.h"

#include "ports/record_file.h"

#include <algorithm>
#include <span>
#include <vector>

namespace nrv::session {
namespace {

constexpr const char* InitName = "init.cfg";
constexpr const char* ConfiguredIdsName = "TenDev.cfg";
constexpr const char* SpeakersName = "Speakers.cfg";
constexpr std::size_t SpeakerRecordSize = 128;

/// Exactly so many bytes from the start of the file, 0 where it has none.
std::vector<std::uint8_t> ReadPadded(const std::filesystem::path& file, std::size_t size) {
    std::vector<std::uint8_t> bytes = ReadFromStart(file, size);
    bytes.resize(size);
    return bytes;
}

std::int16_t WordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return static_cast<std::int16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

void SetWordAt(std::span<std::uint8_t> bytes, std::size_t offset, int value) {
    bytes[offset] = static_cast<std::uint8_t>(value);
    bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

} // namespace

InitFile InitFile::Read(const std::filesystem::path& folder) {
    InitFile file;
    std::ranges::copy(ReadPadded(folder / InitName, Size), file.Bytes.begin());
    return file;
}

void InitFile::Write(const std::filesystem::path& folder) const {
    WriteAtStart(folder / InitName, Bytes);
}

int InitFile::ComIndex() const {
    return WordAt(Bytes, 0);
}

void InitFile::SetComIndex(int index) {
    SetWordAt(Bytes, 0, index);
}

std::array<int, DeviceCount> ReadConfiguredIds(const std::filesystem::path& folder) {
    std::array<int, DeviceCount> ids{};
    const std::vector<std::uint8_t> bytes = ReadPadded(folder / ConfiguredIdsName, 2 * ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        ids[i] = WordAt(bytes, 2 * i);
    }
    return ids;
}

void WriteConfiguredIds(const std::filesystem::path& folder, const std::array<int, DeviceCount>& ids) {
    std::array<std::uint8_t, std::size_t{2} * DeviceCount> bytes{};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        SetWordAt(bytes, 2 * i, ids[i]);
    }
    WriteAtStart(folder / ConfiguredIdsName, bytes);
}

std::array<SpeakerRecord, DeviceCount> ReadSpeakerRecords(const std::filesystem::path& folder) {
    std::array<SpeakerRecord, DeviceCount> records{};
    const std::vector<std::uint8_t> bytes = ReadPadded(folder / SpeakersName, SpeakerRecordSize * records.size());
    for (std::size_t r = 0; r < records.size(); ++r) {
        for (std::size_t word = 0; word < records[r].Words.size(); ++word) {
            records[r].Words[word] = WordAt(bytes, SpeakerRecordSize * r + 2 * word);
        }
    }
    return records;
}

} // namespace nrv::session
