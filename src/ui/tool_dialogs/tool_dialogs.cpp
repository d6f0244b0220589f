#include "ui/tool_dialogs/tool_dialogs.h"

#include "ui/tool_dialogs/copy_dialogs.h"
#include "ui/tool_dialogs/edit_names_dialog.h"
#include "ui/tool_dialogs/memory_dialogs.h"
#include "ui/tool_dialogs/password_dialog.h"

namespace nrv::ui {

QDialog* MakeToolDialog(ToolDialog dialog, program::Forms& forms, controls::EventBoundary& boundary, QWidget* parent) {
    switch (dialog) {
    case ToolDialog::EditNames:
        return new EditNamesDialog(forms.EditNames, boundary, parent);
    case ToolDialog::Store:
        return new StoreDialog(forms.Store, boundary, parent);
    case ToolDialog::Read:
        return new ReadDialog(forms.Read, boundary, parent);
    case ToolDialog::Password:
        return new PasswordDialog(forms.Password, boundary, parent);
    case ToolDialog::CopyInput:
        return new CopyInputDialog(forms.CopyIn, boundary, parent);
    case ToolDialog::CopyOutput:
        return new CopyOutputDialog(forms.CopyOut, boundary, parent);
    }
    return nullptr;
}

} // namespace nrv::ui
