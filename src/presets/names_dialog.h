#pragma once

#include "controls/dialog_forms.h"
#include "presets/tool_context.h"

namespace nrv::presets {

/// The dialog that edits the channels' names.
class NamesDialog {
  public:
    NamesDialog(ToolContext context, controls::FrmEditLabel& form);

    /// Fills the dialog from the window's captions and shows it until it is closed.
    void Open();

  private:
    void Accept();

    ToolContext context_;
    controls::FrmEditLabel& form_;
};

} // namespace nrv::presets
