#include "simulator/rack.h"

#include "simulator/meters.h"

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

std::optional<Reply> Rack::Handle(const Frame& request, std::optional<int> answerer) {
    Device* device = Find(answerer.value_or(request[2]));
    if (device == nullptr) {
        return std::nullopt;
    }
    auto reply = device->Handle(request, MovingLevels(seed_, device->Id(), clock_()));
    if (reply && reply->size() == FrameSize) {
        (*reply)[2] = static_cast<Byte>(device->Id());
    }
    return reply;
}

} // namespace nrv::simulator
