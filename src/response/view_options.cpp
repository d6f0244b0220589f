#include "response/view_options.h"

#include "response/response.h"

namespace nrv::response {

void ShowCursor(const model::CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = static_cast<std::size_t>(channel);
    const int first = model::FirstPeqOf(channel);
    for (int section = first; section < first + model::PeqCountOf(channel); ++section) {
        form.Label5[static_cast<std::size_t>(section)].SetVisible(form.Check3[c].Checked());
    }
    context.Image().ViewState[model::ShowCursorStart + c] = static_cast<std::uint8_t>(form.Check3[c].Value());
}

void ViewOverlay(const model::CommandContext& context, Response& response, int output, int row) {
    const controls::CheckBox& box = context.Form().ViewBox(row, output);
    const int viewed = model::ChannelOfOutput(controls::ViewedOutput(output, row));
    const int channel = model::ChannelOfOutput(output);
    response.OverlayMatrix[static_cast<std::size_t>(channel)][static_cast<std::size_t>(viewed)] = box.Checked();
    response.RedrawChannel(channel);
    context.Image().ViewState[model::ViewBoxStart + model::ViewBoxesInRow * static_cast<std::size_t>(row) +
                              static_cast<std::size_t>(output)] = static_cast<std::uint8_t>(box.Value());
}

void ChooseViewMode(const model::CommandContext& context, Response& response, int option) {
    const int output = option / 3;
    response.SetViewMode(option);
    response.RedrawChannel(model::ChannelOfOutput(output));
    context.Image().ViewState[model::SumButtonStart + static_cast<std::size_t>(output)] =
        static_cast<std::uint8_t>(option % 3);
}

} // namespace nrv::response
