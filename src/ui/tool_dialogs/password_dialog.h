#pragma once

#include "ui/tool_dialogs/tool_dialog_base.h"

namespace nrv::ui {

/// The password and the lock: three pages in one place, of which the visible one is seen.
class PasswordDialog : public ToolDialogBase {
  public:
    PasswordDialog(controls::FrmPassword& record, const controls::EventEntry& entry, QWidget* parent = nullptr);

  private:
    QWidget* MakeLoginPage();
    QWidget* MakeSettingsPage();
    QWidget* MakeNewPasswordPage();
    QPushButton* MakeCommand(std::size_t index);
    TextField* MakePasswordField(controls::TextBox& box, const char* name, const controls::Label& caption);

    controls::FrmPassword& record_;
};

} // namespace nrv::ui
