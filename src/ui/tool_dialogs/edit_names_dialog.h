#pragma once

#include "ui/tool_dialogs/tool_dialog_base.h"

namespace nrv::ui {

/// The channels' names: the two inputs over the six outputs, each under its caption and the mark of its colour.
class EditNamesDialog : public ToolDialogBase {
  public:
    EditNamesDialog(controls::FrmEditLabel& record, const controls::EventEntry& entry, QWidget* parent = nullptr);

  private:
    QWidget* MakeName(controls::FrmEditLabel& record, std::size_t channel);
};

} // namespace nrv::ui
