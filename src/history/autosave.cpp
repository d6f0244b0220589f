#include "history/autosave.h"

#include "ports/numbering.h"
#include "ports/record_file.h"
#include "ports/runtime_error.h"

#include <algorithm>
#include <span>
#include <system_error>
#include <utility>

namespace nrv::history {
namespace {

namespace fs = std::filesystem;

constexpr int Incoming = 0; // the number of a copy that is written and not yet in its place

bool Holds(const fs::path& file, std::span<const std::uint8_t> bytes) {
    std::error_code ignored;
    return fs::exists(file, ignored) && std::ranges::equal(ReadFromStart(file, bytes.size()), bytes);
}

/// The older ones give way, oldest first: whoever dies here leaves a gap in the numbers and no broken file.
void PutInPlace(const fs::path& app_folder, int device) {
    std::error_code missing;
    for (int copy = Autosave::Copies; copy > Incoming; --copy) {
        fs::rename(AutosaveFile(app_folder, device, copy - 1), AutosaveFile(app_folder, device, copy), missing);
    }
}

} // namespace

fs::path AutosaveFile(const fs::path& app_folder, int device, int copy) {
    return app_folder / "preset" / ("autosave-ID" + std::to_string(device) + '-' + std::to_string(copy) + ".n91");
}

Autosave::Autosave(Parts parts) : parts_(std::move(parts)) {
    parts_.Clock.Tick = [this] { WriteAll(); };
}

void Autosave::Changed(int device) {
    changed_[At(device)] = true;
    if (!parts_.Clock.Running()) {
        parts_.Clock.Start(Interval);
    }
}

void Autosave::Write(int device) {
    changed_[At(device)] = false;
    const auto bytes = model::BytesOf(parts_.Stores.PresetImage[At(device)]);
    try {
        if (Holds(AutosaveFile(parts_.AppFolder, device, 1), bytes)) {
            return;
        }
        std::error_code ignored;
        fs::create_directory(parts_.AppFolder / "preset", ignored);
        WriteAtStart(AutosaveFile(parts_.AppFolder, device, Incoming), bytes);
        PutInPlace(parts_.AppFolder, device);
        told_ = false;
    } catch (const RuntimeError& error) {
        if (!std::exchange(told_, true)) {
            parts_.Tell("The copy of what plays in " + IdText(device) + " was not kept. " + error.what());
        }
    }
}

void Autosave::WriteAll() {
    parts_.Clock.Stop();
    for (int device = 0; device < DeviceCount; ++device) {
        if (changed_[At(device)]) {
            Write(device);
        }
    }
}

} // namespace nrv::history
