#pragma once

#include "controls/dialog_forms.h"
#include "presets/tool_context.h"

namespace nrv::presets {

/// The dialog that reads a memory position of the device into the present settings.
class ReadDialog {
  public:
    ReadDialog(ToolContext context, controls::FrmRead& form);

    void Open();
    /// Fetches a memory position, 0 to 7, and applies it; nothing goes back to the device. Throws RuntimeError when the
    /// port cannot be reopened or the image holds a frequency code or a view option without an entry; the graphs then
    /// show what was applied before it.
    void ReadPreset(int position);

  private:
    void Read();
    /// What a fetch put into the image: nothing, for the link failed for good; what the buffer held; the position.
    enum class Fetched { Nothing, WhatTheBufferHeld, Position };
    Fetched Fetch(int position);
    void Apply();
    void RedrawAll();

    ToolContext context_;
    controls::FrmRead& form_;
};

} // namespace nrv::presets
