#include "lock/lock_state.h"

#include "ports/numbering.h"

#include <initializer_list>

namespace nrv::lock {

void ApplyLockState(const model::CommandContext& context, controls::FrmEditLabel& names) {
    using namespace controls;
    FrmCtrl& form = context.Form();
    const bool enabled = context.Values().LockFlag != 1.0;
    const auto first = [enabled](auto& of, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            of[i].SetEnabled(enabled);
        }
    };
    first(form.Frame5, 8);
    first(form.Frame10, 8);
    first(form.Command1, 8);
    first(form.Frame6, 10);
    first(form.Frame1, 17);
    first(form.Frame3, 16);
    first(form.Frame7, 12);
    // Six of the eight: a locked system leaves the limiters of Out 5 and Out 6 open, which is meant.
    first(form.Frame8, 6);
    first(form.Frame9, 6);
    form.Combo4.SetEnabled(enabled);
    for (const ToolButton tool : {LoadPresetTool, SavePresetTool, StorePresetTool, ReadPresetTool, EditNamesTool,
                                  CopyInputTool, CopyOutputTool}) {
        form.Command2[At(tool)].SetEnabled(enabled);
    }
    form.Command2[PasswordTool].SetInForce(!enabled);
    form.Window.SetMark(enabled ? "" : "Locked");
    ApplyLockToNames(context, names);
}

void ApplyLockToNames(const model::CommandContext& context, controls::FrmEditLabel& names) {
    const bool enabled = context.Values().LockFlag != 1.0;
    for (controls::TextBox& box : names.Text1) {
        box.SetEnabled(enabled);
    }
    names.Command1[0].SetEnabled(enabled);
}

} // namespace nrv::lock
