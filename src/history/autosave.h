#pragma once

#include "controls/containers.h"
#include "model/device_stores.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string>

namespace nrv::history {

/// Keeps copies of what plays in each device in files that load like any preset: `preset/autosave-ID5-1.n91`, the
/// newest, to `-9`. One is written a minute after the first change since the last, and when a window closes; none where
/// the newest holds the same.
class Autosave {
  public:
    static constexpr int Copies = 9;
    static constexpr int Interval = 60'000; ///< ms

    struct Parts {
        const model::DeviceStores& Stores;
        const std::filesystem::path& AppFolder;
        controls::Timer& Clock;
        std::function<void(const std::string&)> Tell; ///< that one could not be written; once, until one can
    };
    explicit Autosave(Parts parts);
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    /// The image of a device is another one now.
    void Changed(int device);
    /// Writes the copy of a device now.
    void Write(int device);
    /// Writes those of all devices that changed since their last.
    void WriteAll();

  private:
    Parts parts_;
    std::array<bool, DeviceCount> changed_{};
    bool told_ = false;
};

/// The copies of a device, 1 the newest to 9.
std::filesystem::path AutosaveFile(const std::filesystem::path& app_folder, int device, int copy);

} // namespace nrv::history
