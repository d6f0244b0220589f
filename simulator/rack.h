#pragma once

#include "simulator/device.h"
#include "simulator/protocol.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace nrv::simulator {

/// Time since the rack was switched on; what the moving meters are worked out from.
using RackClock = std::function<std::chrono::milliseconds()>;

/// The devices that hang on one line. Not thread-safe: on a running line use Line::WithRack.
class Rack {
  public:
    /// Without a clock of the caller's the meters follow real time.
    explicit Rack(std::uint32_t seed = 718, RackClock clock = {});

    /// Puts a device in its factory state on the line. Throws std::invalid_argument when the ID is not 0 to 32 or is
    /// taken. The reference is good until the device is removed.
    Device& Add(int id, std::string_view label = {});
    void Remove(int id);

    /// Puts a second device of this ID on the line, in its factory state. Both obey each request, and the second begins
    /// to answer `shift` bit times after the first; the answers meet on the wire (see Collide). The state file does not
    /// keep it. Throws std::out_of_range when there is no first, std::invalid_argument when there is a second already.
    Device& AddTwin(int id, int shift);
    void RemoveTwin(int id) { twins_.erase(id); }
    /// The second device of an ID, null when there is none.
    Device* FindTwin(int id);

    /// Lets the devices of an ID reboot: they are silent for this time, by the rack's clock. See Device::Reboot.
    void Reboot(int id, std::chrono::milliseconds silence, bool to_factory);
    bool Rebooting(int id) const;

    /// The device of an ID; Find gives null and At throws std::out_of_range when there is none.
    Device* Find(int id);
    const Device* Find(int id) const;
    Device& At(int id);
    const Device& At(int id) const;

    std::vector<int> Ids() const;
    const std::map<int, Device>& Devices() const { return devices_; }
    void ReplaceDevices(std::map<int, Device> devices);

    /// The answer of the device that the request is addressed to, or of `answerer` in its place. None when no such
    /// device is on the line or when it does not answer this request.
    std::optional<Reply> Handle(const Frame& request, std::optional<int> answerer = std::nullopt);

  private:
    std::uint32_t seed_;
    RackClock clock_;
    struct Twin {
        Device Second;
        int Shift;
    };
    std::optional<Reply> Ask(Device& device, const Frame& request, std::uint32_t seed) const;

    std::map<int, Device> devices_;
    std::map<int, Twin> twins_;
    std::map<int, std::chrono::milliseconds> awake_at_;
};

} // namespace nrv::simulator
