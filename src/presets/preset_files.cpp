#include "presets/preset_files.h"

#include "controls/busy_pointer.h"
#include "ports/record_file.h"
#include "ports/runtime_error.h"
#include "presets/apply_image.h"
#include "presets/preset_titles.h"

#include <algorithm>

namespace nrv::presets {
namespace {

namespace fs = std::filesystem;

/// What is told of a file that does not hold a whole preset; empty of one that does.
std::string Shortfall(const fs::path& file, bool was_there, std::size_t bytes) {
    const std::string name = "\"" + FileNameText(file) + "\"";
    if (!was_there) {
        return name + " was not there: it was made empty, and the settings stayed as they were.";
    }
    if (bytes < model::ImageSize) {
        return name + " holds " + std::to_string(bytes) + " of the " + std::to_string(model::ImageSize) +
               " bytes of a preset; what is missing stayed as it was.";
    }
    return {};
}

/// The file's bytes up to the image's size. A name that does not exist becomes an empty file where one can be made.
/// Throws RuntimeError.
std::vector<std::uint8_t> ReadPreset(const fs::path& file) {
    std::vector<std::uint8_t> bytes = ReadFromStart(file, model::ImageSize);
    std::error_code ignored;
    if (!fs::exists(file, ignored)) {
        throw RuntimeError(ErrorKind::FileNotFound, FileNameText(file) + " was not found.");
    }
    return bytes;
}

void SetBit(std::uint8_t& byte, std::uint8_t bit, bool set) {
    byte = static_cast<std::uint8_t>(set ? byte | bit : byte & ~bit);
}

} // namespace

FileRequest PresetFiles::Request() const {
    return {"file preset (*.n91)|*.n91", parts_.AppFolder / "preset"};
}

void PresetFiles::SavePresetFile() {
    const std::optional<fs::path> file = parts_.Files.AskSave(Request());
    if (!file) {
        return;
    }
    try {
        WriteAtStart(*file, BytesOf(parts_.Context.Commands.Image()));
    } catch (const RuntimeError& error) {
        parts_.Context.Tell(std::string("The preset was not saved. ") + error.what());
        return;
    }
    parts_.Context.Current().Leave(Operation::Leaves::Copy);
    TitleAfterSave(parts_.Context.Commands, FileNameText(*file));
}

void PresetFiles::LoadPresetFile() {
    const std::optional<fs::path> file = parts_.Files.AskOpen(Request());
    if (!file) {
        return;
    }
    try {
        Load(*file);
    } catch (const RuntimeError& error) {
        if (error.Kind() == ErrorKind::FileNotFound) {
            parts_.Context.Boxes.Show({" File not found. Try again.", " Error", BoxIcon::Exclamation});
        } else if (parts_.Context.Current().Reported()) {
            // The failure was told, and says more.
        } else if (error.Kind() == ErrorKind::IndexOutOfRange) {
            // What came before the code without an entry is applied and stays.
            parts_.Context.Current().Leave(Operation::Leaves::Pieces);
            parts_.Context.Tell(std::string("The preset was not loaded to its end. ") + error.what());
        } else {
            parts_.Context.Tell(std::string("The preset was not loaded. ") + error.what());
        }
    }
}

void PresetFiles::Load(const fs::path& file) {
    const controls::BusyPointer busy(parts_.Context.MainWindow);
    std::error_code ignored;
    const bool was_there = fs::exists(file, ignored);
    const std::vector<std::uint8_t> bytes = ReadPreset(file);
    std::ranges::copy(bytes, BytesOf(parts_.Context.Commands.Image()).begin());
    KeepDeviceSettings();
    parts_.Context.Current().Call("the load", FramesOfLoad(parts_.Context.Commands));
    parts_.Context.Current().Title("load of \"" + FileNameText(file) + '"');
    ApplyImage(parts_.Context.Commands, parts_.Context.Response, ImageCase::FromFile);
    if (!parts_.Context.Current().Reported()) {
        parts_.Context.Current().Leave(Operation::Leaves::Preset);
        TitleAfterLoad(parts_.Context.Commands, FileNameText(file));
        parts_.Context.TellApplied(Shortfall(file, was_there, bytes.size()));
    }
}

/// The mute option, the input type and the lock are not taken from a file.
void PresetFiles::KeepDeviceSettings() {
    model::DeviceStores& stores = parts_.Context.Commands.Stores;
    // Row 0 and not the device's row; and the last input type of any window. Both are meant.
    stores.ParamValues[0].InputType = stores.LastInputType;
    std::uint8_t& option_bits = parts_.Context.Commands.Image().SystemPage[model::OptionBitsAddress];
    SetBit(option_bits, model::MuteWithPresetBit, parts_.Context.Commands.Values().MuteWithPreset == 1.0);
    SetBit(option_bits, model::InputTypeBit, stores.LastInputType == 1.0);
    // The whole byte goes to the device when the unit differs: a file neither locks nor unlocks it.
    SetBit(option_bits, model::LockFlagBit, parts_.Context.Commands.Values().LockFlag == 1.0);
}

} // namespace nrv::presets
