#include "simulator/state_file.h"

#include "simulator/descriptor.h"

#include <algorithm>
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
constexpr int MostLinks = 40;
constexpr const char* NoPlainFile = "it is no plain file";
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

/// The file that a chain of links ends at, whether it is there or not.
std::filesystem::path BehindLinks(const std::filesystem::path& path) {
    std::filesystem::path file = path;
    std::error_code error;
    for (int link = 0; link < MostLinks && std::filesystem::is_symlink(file, error); ++link) {
        file = file.parent_path() / std::filesystem::read_symlink(file, error);
    }
    return file;
}

mode_t Umask() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return mask;
}

/// A file of a name of its own beside another, gone with this object unless it was moved to its place.
class NewFile {
  public:
    /// `path` is what a failure names.
    NewFile(const std::filesystem::path& path, const std::filesystem::path& beside)
        : name_(beside.string() + ".XXXXXX"), file_(::mkstemp(name_.data())) {
        if (file_.Get() < 0) {
            throw FileError(path, "no new file can be made beside it: " + ErrorText());
        }
    }
    ~NewFile() {
        if (!moved_) {
            ::unlink(name_.c_str());
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    int Fd() const { return file_.Get(); }
    bool MoveTo(const std::filesystem::path& place) {
        moved_ = ::rename(name_.c_str(), place.c_str()) == 0;
        return moved_;
    }

  private:
    std::string name_;
    Descriptor file_;
    bool moved_ = false;
};

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

void CheckStateCanBeSaved(const std::filesystem::path& path) {
    const std::filesystem::path file = BehindLinks(path);
    struct stat old {};
    if (::stat(file.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode)) {
            throw FileError(path, NoPlainFile);
        }
        if (::access(file.c_str(), W_OK) != 0) {
            throw FileError(path, "it cannot be written: " + ErrorText());
        }
    } else if (errno != ENOENT) {
        throw FileError(path, "it cannot be written: " + ErrorText());
    }
    const NewFile trial(path, file);
}

void SaveState(const Rack& rack, const std::filesystem::path& path) {
    const std::filesystem::path file = BehindLinks(path);
    NewFile fresh(path, file);
    struct stat old {};
    const bool replaces = ::stat(file.c_str(), &old) == 0;
    if (replaces && ::fchown(fresh.Fd(), old.st_uid, old.st_gid) != 0) {
        errno = 0; // another's file, which may be replaced but not given away
    }
    const mode_t mode = replaces ? old.st_mode & 07777U : 0666U & ~Umask();
    if (::fchmod(fresh.Fd(), mode) != 0 || !WriteWhole(fresh.Fd(), EncodeState(rack)) || !fresh.MoveTo(file)) {
        throw FileError(path, "it cannot be written: " + ErrorText());
    }
}

void RestoreState(Rack& rack, const std::filesystem::path& path) {
    // A pipe without a writer would be waited for.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (file.Get() < 0 || ::fstat(file.Get(), &status) != 0) {
        throw FileError(path, "it cannot be opened: " + ErrorText());
    }
    if (!S_ISREG(status.st_mode)) {
        throw FileError(path, NoPlainFile);
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
