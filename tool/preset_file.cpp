#include "tool/preset_file.h"

#include "ports/record_file.h"

#include <algorithm>
#include <string>

namespace nrv::tool {

namespace fs = std::filesystem;

Trouble TroubleWith(const fs::path& file, const RuntimeError& refused) {
    const std::string what = refused.what();
    const std::string name = FileNameText(file) + " ";
    return Trouble(file.string() + ": " + (what.starts_with(name) ? what.substr(name.size()) : what));
}

PresetBytes ReadPresetBytes(const fs::path& file) {
    std::error_code error;
    if (!fs::exists(file, error)) {
        throw Trouble(file.string() + ": " + (error ? error.message() : "no such file") +
                      "; give the name of a preset.");
    }
    try {
        PresetBytes read{ReadFromStart(file, sizeof(model::PresetImageRow)), 0};
        read.FileSize = fs::file_size(file, error);
        if (error) {
            read.FileSize = read.Bytes.size(); // it is gone meanwhile
        }
        return read;
    } catch (const RuntimeError& refused) {
        throw TroubleWith(file, refused);
    }
}

model::PresetImageRow PresetOf(std::span<const std::uint8_t> bytes) {
    model::PresetImageRow image;
    std::ranges::copy(bytes.first(std::min(bytes.size(), sizeof image)), BytesOf(image).begin());
    return image;
}

model::PresetImageRow ReadPreset(const fs::path& file) {
    const PresetBytes read = ReadPresetBytes(file);
    if (read.Bytes.size() < sizeof(model::PresetImageRow)) {
        throw Trouble(file.string() + ": byte " + std::to_string(read.Bytes.size()) +
                      ": the file ends here, and a preset has " + std::to_string(sizeof(model::PresetImageRow)) +
                      " bytes; save it anew.");
    }
    return PresetOf(read.Bytes);
}

void WritePreset(const fs::path& file, const model::PresetImageRow& image) {
    try {
        WriteAtStart(file, BytesOf(image));
    } catch (const RuntimeError& refused) {
        throw TroubleWith(file, refused);
    }
}

} // namespace nrv::tool
