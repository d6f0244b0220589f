#include "response/view_options.h"

#include "ports/numbering.h"
#include "response/response.h"

namespace nrv::response {
namespace {

/// True when another option of the output was shown.
bool ShowViewMode(controls::FrmCtrl& form, const Response& response, int output) {
    controls::Option& option = form.Option2[At(SumsPerOutput * output + response.ViewMode[At(output)])];
    const bool differed = !option.Selected();
    option.ShowSelected();
    return differed;
}

/// True when a box on the tab of the output showed something else. A box that is set keeps the value it was set to.
bool ShowOverlays(controls::FrmCtrl& form, const Response& response, int output) {
    bool differed = false;
    for (int row = 0; row < ViewsPerOutput; ++row) {
        controls::CheckBox& box = form.ViewBox(row, output);
        const int viewed = ViewedOutput(output, row);
        const bool overlaid = response.OverlayMatrix[At(ChannelOfOutput(output))][At(ChannelOfOutput(viewed))];
        const std::string caption = response.ViewCaption(viewed);
        differed |= box.Checked() != overlaid || box.Caption() != caption;
        if (box.Checked() != overlaid) {
            box.ShowValue(overlaid ? 1 : 0);
        }
        box.SetCaption(caption);
    }
    return differed;
}

} // namespace

void ShowCursor(const model::CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = At(channel);
    const int first = FirstPeqOf(channel);
    for (int section = first; section < first + PeqCountOf(channel); ++section) {
        form.Label5[At(section)].SetVisible(form.Check3[c].Checked());
    }
    context.Image().ViewState[model::ShowCursorStart + c] = static_cast<std::uint8_t>(form.Check3[c].Value());
}

void ViewOverlay(const model::CommandContext& context, Response& response, int output, int row) {
    const controls::CheckBox& box = context.Form().ViewBox(row, output);
    const int viewed = ChannelOfOutput(ViewedOutput(output, row));
    const int channel = ChannelOfOutput(output);
    response.OverlayMatrix[At(channel)][At(viewed)] = box.Checked();
    response.RedrawChannel(channel);
    context.Image().ViewState[model::ViewBoxStart + model::ViewBoxesInRow * At(row) + At(output)] =
        static_cast<std::uint8_t>(box.Value());
}

void ChooseViewMode(const model::CommandContext& context, Response& response, int option) {
    const int output = option / SumsPerOutput;
    response.SetViewMode(option);
    response.RedrawChannel(ChannelOfOutput(output));
    context.Image().ViewState[model::SumButtonStart + At(output)] = static_cast<std::uint8_t>(option % SumsPerOutput);
}

void ShowSharedViews(const model::CommandContext& context, Response& response) {
    bool differed = false;
    for (int output = 0; output < OutputCount; ++output) {
        differed |= ShowViewMode(context.Form(), response, output);
        differed |= ShowOverlays(context.Form(), response, output);
    }
    if (!differed) {
        return;
    }
    for (int output = 0; output < OutputCount; ++output) {
        response.RedrawChannel(ChannelOfOutput(output));
    }
}

} // namespace nrv::response
