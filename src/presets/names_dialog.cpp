#include "presets/names_dialog.h"

#include "lock/lock_state.h"
#include "presets/channel_names.h"

#include <utility>

namespace nrv::presets {

NamesDialog::NamesDialog(ToolContext context, controls::FrmEditLabel& form)
    : context_(std::move(context)), form_(form) {
    form_.Command1[0].Clicked = [this] { Accept(); };
    form_.Command1[1].Clicked = [this] { context_.Host.CloseDialog(ToolDialog::EditNames); };
}

void NamesDialog::Open() {
    for (std::size_t channel = 0; channel < form_.Text1.size(); ++channel) {
        form_.Text1[channel].SetText(context_.Commands.Form().Label300[channel].Caption());
    }
    // Another device's window may have left it as that device's lock has it.
    lock::ApplyLockToNames(context_.Commands, form_);
    context_.RunDialog(ToolDialog::EditNames);
}

void NamesDialog::Accept() {
    if (!context_.Boxes.AreYouSure("Edit Names")) {
        return;
    }
    NameTexts texts;
    for (std::size_t channel = 0; channel < texts.size(); ++channel) {
        texts[channel] = form_.Text1[channel].Text();
    }
    context_.Current().Call("the naming", OutputCount);
    ApplyChannelNames(context_.Commands, context_.Response, texts);
    context_.Host.CloseDialog(ToolDialog::EditNames);
}

} // namespace nrv::presets
