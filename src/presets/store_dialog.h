#pragma once

#include "controls/dialog_forms.h"
#include "presets/tool_context.h"

#include <string>

namespace nrv::presets {

/// The dialog that stores the present settings into a memory position of the device.
class StoreDialog {
  public:
    StoreDialog(ToolContext context, controls::FrmStore& form);

    void Open();
    /// Writes mark, name and preset of a memory position, 0 to 8, byte by byte: 450 frames. The name is padded in
    /// place. A reported link failure ends it where it stands.
    void StorePreset(int position, std::string& name);

  private:
    void Store();
    void CopyName();
    /// True when the link failed for good.
    bool Write(std::size_t address, std::uint8_t value);
    bool WriteAll(std::size_t position);

    ToolContext context_;
    controls::FrmStore& form_;
};

} // namespace nrv::presets
