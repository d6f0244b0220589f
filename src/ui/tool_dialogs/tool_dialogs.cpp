#include "ui/tool_dialogs/tool_dialogs.h"

#include "ui/tool_dialogs/copy_dialogs.h"
#include "ui/tool_dialogs/edit_names_dialog.h"
#include "ui/tool_dialogs/memory_dialogs.h"
#include "ui/tool_dialogs/password_dialog.h"

namespace nrv::ui {

QDialog* MakeToolDialog(ToolDialog dialog, program::Forms& forms, const controls::EventEntry& entry, QWidget* parent) {
    switch (dialog) {
    case ToolDialog::EditNames:
        return new EditNamesDialog(forms.EditNames, entry, parent);
    case ToolDialog::Store:
        return new StoreDialog(forms.Store, entry, parent);
    case ToolDialog::Read:
        return new ReadDialog(forms.Read, entry, parent);
    case ToolDialog::Password:
        return new PasswordDialog(forms.Password, entry, parent);
    case ToolDialog::CopyInput:
        return new CopyInputDialog(forms.CopyIn, entry, parent);
    case ToolDialog::CopyOutput:
        return new CopyOutputDialog(forms.CopyOut, entry, parent);
    }
    return nullptr;
}

} // namespace nrv::ui
