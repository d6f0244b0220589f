#include "presets/channel_names.h"

#include "model/tables.h"
#include "ports/numbering.h"

namespace nrv::presets {
namespace {

/// True when the link failed for good.
bool SendName(const model::CommandContext& context, const std::string& text, int channel) {
    std::string padded = text;
    PadChannelName(context, padded, channel);
    const auto& body = context.Image().PresetBody;
    const std::size_t field = model::NameOffsets[At(channel)];
    return context.Send({link::ChannelNameSetCommand, static_cast<std::uint8_t>(channel), 0, body[field],
                         body[field + 1], body[field + 2], body[field + 3], body[field + 4], body[field + 5]});
}

void QuoteNames(const model::CommandContext& context, const response::Response& response, const NameTexts& texts) {
    controls::FrmCtrl& form = context.Form();
    for (int output = 0; output < OutputCount; ++output) {
        form.Option2[At(SumsPerOutput * output + 1)].SetCaption("Out + " + texts[0]);
        form.Option2[At(SumsPerOutput * output + 2)].SetCaption("Out + " + texts[1]);
        for (int row = 0; row < OutputCount - 1; ++row) {
            form.ViewBox(row, output).SetCaption(response.ViewCaption(ViewedOutput(output, row)));
        }
    }
}

} // namespace

void PadChannelName(const model::CommandContext& context, std::string& name, int channel) {
    static constexpr std::array<std::size_t, ChannelNameLength> BlanksBefore{6, 3, 2, 2, 1, 1};
    if (name.size() < ChannelNameLength) {
        name.insert(0, BlanksBefore[name.size()], ' ');
        name.resize(ChannelNameLength, ' ');
    }
    if (IsInput(channel)) {
        return;
    }
    for (std::size_t j = 0; j < ChannelNameLength; ++j) {
        context.Image().PresetBody[model::NameOffsets[At(channel)] + j] = static_cast<std::uint8_t>(name[j]);
    }
}

void ApplyChannelNames(const model::CommandContext& context, const response::Response& response,
                       const NameTexts& texts) {
    controls::FrmCtrl& form = context.Form();
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t c = At(channel);
        if (!IsInput(channel) && SendName(context, texts[c], channel)) {
            return;
        }
        form.Label300[c].SetCaption(texts[c]);
        context.Stores.ChannelNames[At(context.DeviceId())][c] = texts[c];
        form.Frame1[c].SetCaption(texts[c]);
        form.Frame3[c].SetCaption(texts[c]);
        form.SSTab1.SetTab(channel);
        form.SSTab1.SetTabCaption(channel, texts[c]);
    }
    QuoteNames(context, response, texts);
}

} // namespace nrv::presets
