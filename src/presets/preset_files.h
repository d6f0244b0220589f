#pragma once

#include "ports/file_dialogs.h"
#include "presets/tool_context.h"

#include <filesystem>
#include <utility>

namespace nrv::presets {

/// Presets as files on the PC: the 771 bytes of a device's image, with no header and no check. Work on the current
/// window.
class PresetFiles {
  public:
    struct Parts {
        ToolContext Context;
        FileDialogs& Files;
        const std::filesystem::path& AppFolder;
    };
    explicit PresetFiles(Parts parts) : parts_(std::move(parts)) {}

    /// Asks for a file and writes the image over its start; a longer file keeps its tail. Sends nothing.
    void SavePresetFile();
    /// Asks for a file, takes its bytes for the image, keeps three settings of the device, and applies the image: the
    /// whole preset goes to the device. A file that is shorter leaves the bytes past its end as they were.
    void LoadPresetFile();

  private:
    FileRequest Request() const;
    void Load(const std::filesystem::path& file);
    void KeepDeviceSettings();

    Parts parts_;
};

} // namespace nrv::presets
