#include "simulator/rack.h"

#include "simulator/meters.h"
#include "simulator/wire.h"

#include <stdexcept>
#include <string>

namespace nrv::simulator {
namespace {

RackClock RealTime() {
    const auto start = std::chrono::steady_clock::now();
    return [start] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    };
}

std::out_of_range NoSuchDevice(int id) {
    return std::out_of_range("no device " + std::to_string(id) + " on the line");
}

} // namespace

Rack::Rack(std::uint32_t seed, RackClock clock) : seed_(seed), clock_(clock ? std::move(clock) : RealTime()) {}

Device& Rack::Add(int id, std::string_view label) {
    const auto [entry, added] = devices_.try_emplace(id, id, label);
    if (!added) {
        throw std::invalid_argument("device ID " + std::to_string(id) + " is on the line already");
    }
    return entry->second;
}

void Rack::Remove(int id) {
    devices_.erase(id);
    twins_.erase(id);
    awake_at_.erase(id);
}

void Rack::ReplaceDevices(std::map<int, Device> devices) {
    devices_ = std::move(devices);
    twins_.clear();
    awake_at_.clear();
}

Device& Rack::AddTwin(int id, int shift) {
    At(id);
    const auto [entry, added] = twins_.try_emplace(id, Twin{Device(id), shift});
    if (!added) {
        throw std::invalid_argument("there are two devices " + std::to_string(id) + " on the line already");
    }
    return entry->second.Second;
}

Device* Rack::FindTwin(int id) {
    const auto found = twins_.find(id);
    return found == twins_.end() ? nullptr : &found->second.Second;
}

Device* Rack::Find(int id) {
    const auto found = devices_.find(id);
    return found == devices_.end() ? nullptr : &found->second;
}

const Device* Rack::Find(int id) const {
    const auto found = devices_.find(id);
    return found == devices_.end() ? nullptr : &found->second;
}

Device& Rack::At(int id) {
    if (Device* device = Find(id)) {
        return *device;
    }
    throw NoSuchDevice(id);
}

const Device& Rack::At(int id) const {
    if (const Device* device = Find(id)) {
        return *device;
    }
    throw NoSuchDevice(id);
}

std::vector<int> Rack::Ids() const {
    std::vector<int> ids;
    for (const auto& [id, device] : devices_) {
        ids.push_back(id);
    }
    return ids;
}

void Rack::Reboot(int id, std::chrono::milliseconds silence, bool to_factory) {
    At(id).Reboot(to_factory);
    if (Device* second = FindTwin(id)) {
        second->Reboot(to_factory);
    }
    awake_at_[id] = clock_() + silence;
}

bool Rack::Rebooting(int id) const {
    const auto found = awake_at_.find(id);
    return found != awake_at_.end() && clock_() < found->second;
}

std::optional<Reply> Rack::Ask(Device& device, const Frame& request, std::uint32_t seed) const {
    auto reply = device.Handle(request, MovingLevels(seed, device.Id(), clock_()));
    if (reply && reply->size() == FrameSize) {
        (*reply)[2] = static_cast<Byte>(device.Id());
    }
    return reply;
}

std::optional<Reply> Rack::Handle(const Frame& request, std::optional<int> answerer) {
    Device* device = Find(answerer.value_or(request[2]));
    if (device == nullptr || Rebooting(device->Id())) {
        return std::nullopt;
    }
    auto reply = Ask(*device, request, seed_);
    const auto twin = twins_.find(device->Id());
    if (twin == twins_.end()) {
        return reply;
    }
    auto second = Ask(twin->second.Second, request, seed_ + 1);
    if (!reply || !second) {
        return reply ? reply : second;
    }
    return Collide(*reply, *second, twin->second.Shift);
}

} // namespace nrv::simulator
