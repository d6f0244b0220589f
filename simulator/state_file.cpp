#include "simulator/state_file.h"

#include "simulator/descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <span>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace nrv::simulator {
namespace {

constexpr std::string_view Header = "NRV718-RACK 0001";
constexpr std::size_t ProductLength = 12; // of the header, the blank included; the version follows
constexpr std::size_t DeviceSize = 2 + PresetSize + MemorySize;
constexpr std::size_t FirstDevice = Header.size() + 4;
constexpr std::size_t MaximumSize = FirstDevice + (HighestId + 1) * DeviceSize + 4;

std::uint32_t Crc32(std::span<const Byte> bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (Byte value : bytes) {
        crc ^= value;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

void PutNumber(std::vector<Byte>& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<Byte>(value >> shift));
    }
}

std::uint32_t GetNumber(std::span<const Byte> bytes) {
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
}

Device DecodeDevice(std::span<const Byte> bytes) {
    if (bytes[0] > HighestId) {
        throw StateError("it holds the device ID " + std::to_string(bytes[0]) + ", which is above 32");
    }
    if (bytes[1] > 1) {
        throw StateError("its bulk update mark is neither 0 nor 1");
    }
    Device device(bytes[0]);
    device.SetBulkUpdating(bytes[1] == 1);
    PresetBody live;
    std::ranges::copy(bytes.subspan(2, PresetSize), live.begin());
    device.SetLiveImage(live);
    for (std::size_t address = 0; address < MemorySize; ++address) {
        device.SetMemory(address, bytes[2 + PresetSize + address]);
    }
    return device;
}

StateError FileError(const std::filesystem::path& path, const std::string& what) {
    return StateError("state file " + path.string() + ": " + what);
}

std::string ErrorText() {
    return std::error_code(errno, std::generic_category()).message();
}

bool WriteWhole(int fd, std::span<const Byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t size = ::write(fd, bytes.data(), bytes.size());
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(size));
    }
    return ::fsync(fd) == 0;
}

} // namespace

std::vector<Byte> EncodeState(const Rack& rack) {
    std::vector<Byte> bytes(Header.begin(), Header.end());
    PutNumber(bytes, static_cast<std::uint32_t>(rack.Devices().size()));
    for (const auto& [id, device] : rack.Devices()) {
        bytes.push_back(static_cast<Byte>(id));
        bytes.push_back(device.BulkUpdating() ? 1 : 0);
        bytes.insert(bytes.end(), device.LiveImage().begin(), device.LiveImage().end());
        for (std::size_t address = 0; address < MemorySize; ++address) {
            bytes.push_back(device.Memory(address));
        }
    }
    PutNumber(bytes, Crc32(bytes));
    return bytes;
}

std::map<int, Device> DecodeState(const std::vector<Byte>& bytes) {
    const std::span<const Byte> all(bytes);
    if (all.size() < FirstDevice + 4) {
        throw StateError("it is too short to be a rack's state");
    }
    if (!std::equal(Header.begin(), Header.begin() + ProductLength, all.begin())) {
        throw StateError("it is not a rack's state");
    }
    if (!std::equal(Header.begin() + ProductLength, Header.end(), all.begin() + ProductLength)) {
        throw StateError("it is of a version that this program does not know");
    }
    const std::uint32_t count = GetNumber(all.subspan(Header.size()));
    if (count > HighestId + 1 || all.size() != FirstDevice + count * DeviceSize + 4) {
        throw StateError("its length does not fit its number of devices");
    }
    if (GetNumber(all.last(4)) != Crc32(all.first(all.size() - 4))) {
        throw StateError("it is damaged");
    }
    std::map<int, Device> devices;
    for (std::size_t i = 0; i < count; ++i) {
        const Device device = DecodeDevice(all.subspan(FirstDevice + i * DeviceSize, DeviceSize));
        const int id = device.Id();
        if (!devices.emplace(id, device).second) {
            throw StateError("it holds the device ID " + std::to_string(id) + " twice");
        }
    }
    return devices;
}

void SaveState(const Rack& rack, const std::filesystem::path& path) {
    const std::vector<Byte> bytes = EncodeState(rack);
    std::string beside = path.string() + ".XXXXXX";
    std::string what;
    {
        const Descriptor file(::mkstemp(beside.data()));
        if (file.Get() < 0) {
            throw FileError(path, "no new file can be made beside it: " + ErrorText());
        }
        if (!WriteWhole(file.Get(), bytes) || ::fchmod(file.Get(), 0644) != 0) {
            what = ErrorText();
        }
    }
    if (what.empty() && ::rename(beside.c_str(), path.c_str()) != 0) {
        what = ErrorText();
    }
    if (!what.empty()) {
        ::unlink(beside.c_str());
        throw FileError(path, "it cannot be written: " + what);
    }
}

void RestoreState(Rack& rack, const std::filesystem::path& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) {
        throw FileError(path, "it cannot be opened: " + ErrorText());
    }
    // One byte more than the longest state shows that a file is too long.
    std::vector<Byte> bytes(MaximumSize + 1);
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t part = ::read(file.Get(), bytes.data() + size, bytes.size() - size);
        if (part < 0 && errno == EINTR) {
            continue;
        }
        if (part < 0) {
            throw FileError(path, "it cannot be read: " + ErrorText());
        }
        if (part == 0) {
            break;
        }
        size += static_cast<std::size_t>(part);
    }
    bytes.resize(size);
    try {
        rack.ReplaceDevices(DecodeState(bytes));
    } catch (const StateError& problem) {
        throw FileError(path, problem.what());
    }
}

} // namespace nrv::simulator
