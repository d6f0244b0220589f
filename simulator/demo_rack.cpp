#include "simulator/demo_rack.h"

#include "simulator/factory.h"
#include "simulator/state_file.h"

#include <algorithm>
#include <system_error>

namespace nrv::simulator {
namespace {

/// The factory's settings after a series of commands, each given by P1 to P9.
PresetBody After(std::initializer_list<std::array<Byte, 9>> commands) {
    Device device(0);
    for (const auto& payload : commands) {
        Frame frame{Head0, Head1, 0};
        std::copy(payload.begin(), payload.end(), frame.begin() + 3);
        frame.back() = Tail;
        device.Handle(frame, {});
    }
    return device.LiveImage();
}

} // namespace

void AddDemoPresets(Device& device) {
    device.PutPreset(0, "Factory copy", FactoryPreset());
    // Sound for speech: a low cut on the first two outputs, a little presence on both inputs.
    device.PutPreset(1, "Speech",
                     After({{0x04, 2, 0, 0, 0, 0, 0, 28, 8},
                            {0x04, 3, 0, 0, 0, 0, 0, 28, 8},
                            {0x05, 0, 7, 0, 0, 84, 19, 0, 90},
                            {0x05, 1, 7, 0, 0, 84, 19, 0, 90},
                            {0x0C, 0, 0, 0, 0, 0, 0, 0, 50}}));
    // A stereo two-way system with subwoofers, delayed and named.
    device.PutPreset(4, "2-way + sub",
                     After({{0x0E, 2, 0, ' ', 'S', 'u', 'b', ' ', 'L'},
                            {0x0E, 3, 0, ' ', 'S', 'u', 'b', ' ', 'R'},
                            {0x04, 2, 1, 0, 0, 0, 0, 28, 9},
                            {0x04, 3, 1, 0, 0, 0, 0, 28, 9},
                            {0x02, 4, 0, 0, 0, 0, 0, 12, 24},
                            {0x02, 5, 0, 0, 0, 0, 0, 12, 24},
                            {0x08, 4, 0, 0, 0, 0, 0, 0, 0},
                            {0x08, 5, 0, 0, 0, 0, 0, 0, 1}}));
}

Rack BuildRack(const Options& options) {
    Rack rack;
    std::error_code error;
    const bool saved = !options.State.empty() && std::filesystem::exists(options.State, error);
    if (saved) {
        RestoreState(rack, options.State);
    }
    const std::vector<int> kept = rack.Ids();
    for (const auto& [id, label] : options.Devices) {
        if (Device* device = rack.Find(id); device == nullptr) {
            rack.Add(id, label);
        } else if (!label.empty()) {
            device->SetLabel(label);
        }
    }
    if (!saved && options.Devices.empty()) {
        rack.Add(1);
    }
    for (int id : rack.Ids()) {
        if (options.Presets && std::ranges::find(kept, id) == kept.end()) {
            AddDemoPresets(rack.At(id));
        }
        if (options.Password) {
            rack.At(id).SetPassword(*options.Password);
        }
    }
    for (int id : options.Locked) {
        if (rack.Find(id) == nullptr) {
            throw OptionError("--locked: no device " + std::to_string(id) + " on the line");
        }
        rack.At(id).SetLocked(true);
    }
    return rack;
}

} // namespace nrv::simulator
