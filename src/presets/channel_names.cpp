#include "presets/channel_names.h"

#include "model/tables.h"
#include "ports/numbering.h"

#include <utility>

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

} // namespace

std::string PaddedName(std::string name) {
    static constexpr std::array<std::size_t, ChannelNameLength> BlanksBefore{6, 3, 2, 2, 1, 1};
    if (name.size() < ChannelNameLength) {
        name.insert(0, BlanksBefore[name.size()], ' ');
        name.resize(ChannelNameLength, ' ');
    }
    return name;
}

void PadChannelName(const model::CommandContext& context, std::string& name, int channel) {
    name = PaddedName(std::move(name));
    if (IsInput(channel)) {
        return;
    }
    for (std::size_t j = 0; j < ChannelNameLength; ++j) {
        context.Image().PresetBody[model::NameOffsets[At(channel)] + j] = static_cast<std::uint8_t>(name[j]);
    }
}

bool NameChannel(const model::CommandContext& context, int channel, const std::string& name) {
    if (!IsInput(channel) && SendName(context, name, channel)) {
        return true;
    }
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = At(channel);
    form.Label300[c].SetCaption(name);
    context.Stores.ChannelNames[At(context.DeviceId())][c] = name;
    form.Frame1[c].SetCaption(name);
    form.Frame3[c].SetCaption(name);
    form.SSTab1.SetTab(channel);
    form.SSTab1.SetTabCaption(channel, name);
    return false;
}

void QuoteNames(const model::CommandContext& context, const response::Response& response) {
    controls::FrmCtrl& form = context.Form();
    const auto& names = context.Stores.ChannelNames[At(context.DeviceId())];
    for (int output = 0; output < OutputCount; ++output) {
        form.Option2[At(SumsPerOutput * output + 1)].SetCaption("Out + " + names[0]);
        form.Option2[At(SumsPerOutput * output + 2)].SetCaption("Out + " + names[1]);
        for (int row = 0; row < ViewsPerOutput; ++row) {
            form.ViewBox(row, output).SetCaption(response.ViewCaption(ViewedOutput(output, row)));
        }
    }
}

void ApplyChannelNames(const model::CommandContext& context, const response::Response& response,
                       const NameTexts& texts) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        if (NameChannel(context, channel, texts[At(channel)])) {
            return;
        }
    }
    QuoteNames(context, response);
}

} // namespace nrv::presets
