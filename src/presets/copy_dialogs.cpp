#include "presets/copy_dialogs.h"

#include "controls/busy_pointer.h"
#include "presets/copy_channels.h"

#include <utility>

namespace nrv::presets {

CopyInputDialog::CopyInputDialog(ToolContext context, controls::FrmCopyIn& form)
    : context_(std::move(context)), form_(form) {
    for (int source = 0; source < InputCount; ++source) {
        form_.Command1[At(source)].Clicked = [this, source] { Copy(source); };
    }
}

void CopyInputDialog::Copy(int source) {
    if (!context_.Boxes.AreYouSure(source == 0 ? "Copy InA to InB" : "Copy InB to InA", BoxAnswer::No)) {
        return;
    }
    {
        const controls::BusyPointer busy(form_.Window);
        context_.Current().Call("the copy");
        context_.Current().Title(std::string("copy of ") + ChannelTitles[At(source)] + " to " +
                                 ChannelTitles[At(1 - source)]);
        CopyInput(context_.Commands, context_.Response, source, 1 - source);
    }
    context_.Host.CloseDialog(ToolDialog::CopyInput);
}

CopyOutputDialog::CopyOutputDialog(ToolContext context, controls::FrmCopyOut& form)
    : context_(std::move(context)), form_(form) {
    form_.Command1.Clicked = [this] { Copy(); };
}

void CopyOutputDialog::Open() {
    std::vector<std::string> names;
    std::vector<std::string> outputs; // names may be alike or blank
    for (std::size_t channel = InputCount; channel < ChannelCount; ++channel) {
        names.push_back(context_.Commands.Form().Label300[channel].Caption());
        outputs.emplace_back(ChannelTitles[channel]);
    }
    for (int list = 0; list < 2; ++list) {
        form_.Combo1[At(list)].SetItems(names);
        form_.Combo1[At(list)].SetItemNotes(outputs);
        form_.Combo1[At(list)].Select(list);
    }
    context_.RunDialog(ToolDialog::CopyOutput);
}

void CopyOutputDialog::Copy() {
    constexpr const char* Title = "Copy Output";
    const int source = form_.Combo1[0].Shown();
    const int destination = form_.Combo1[1].Shown();
    if (source == destination) {
        context_.Boxes.Show({"Copy not possible, Source=Dest", Title, BoxIcon::Critical});
        return;
    }
    if (!context_.Boxes.AreYouSure(Title, BoxAnswer::No)) {
        return;
    }
    {
        const controls::BusyPointer busy(form_.Window);
        context_.Current().Call("the copy");
        context_.Current().Title(std::string("copy of ") + ChannelTitles[At(ChannelOfOutput(source))] + " to " +
                                 ChannelTitles[At(ChannelOfOutput(destination))]);
        CopyOutput(context_.Commands, context_.Response, source, destination);
    }
    context_.Host.CloseDialog(ToolDialog::CopyOutput);
}

} // namespace nrv::presets
