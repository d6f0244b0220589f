#pragma once

#include "ui/tool_dialogs/tool_dialog_base.h"

namespace nrv::ui {

/// Copies one input onto the other: a button for each way.
class CopyInputDialog : public ToolDialogBase {
  public:
    CopyInputDialog(controls::FrmCopyIn& record, const controls::EventEntry& entry, QWidget* parent = nullptr);
};

/// Copies an output onto another.
class CopyOutputDialog : public ToolDialogBase {
  public:
    CopyOutputDialog(controls::FrmCopyOut& record, const controls::EventEntry& entry, QWidget* parent = nullptr);
};

} // namespace nrv::ui
