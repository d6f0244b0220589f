#pragma once

#include "controls/dialog_forms.h"
#include "presets/tool_context.h"

namespace nrv::presets {

/// The dialog that copies one input onto the other.
class CopyInputDialog {
  public:
    CopyInputDialog(ToolContext context, controls::FrmCopyIn& form);
    void Open() { context_.RunDialog(ToolDialog::CopyInput); }

  private:
    void Copy(int source);

    ToolContext context_;
    controls::FrmCopyIn& form_;
};

/// The dialog that copies an output onto another.
class CopyOutputDialog {
  public:
    CopyOutputDialog(ToolContext context, controls::FrmCopyOut& form);
    void Open();

  private:
    void Copy();

    ToolContext context_;
    controls::FrmCopyOut& form_;
};

} // namespace nrv::presets
