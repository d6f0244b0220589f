#pragma once

#include "ui/tool_dialogs/tool_dialog_base.h"

namespace nrv::ui {

/// Stores the settings into a memory position: the names at the left, name and position of the store at the right.
class StoreDialog : public ToolDialogBase {
  public:
    StoreDialog(controls::FrmStore& record, const controls::EventEntry& entry, QWidget* parent = nullptr);
};

/// Reads a memory position.
class ReadDialog : public ToolDialogBase {
  public:
    ReadDialog(controls::FrmRead& record, const controls::EventEntry& entry, QWidget* parent = nullptr);
};

} // namespace nrv::ui
