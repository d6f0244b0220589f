#include "presets/apply_image.h"

#include "model/encodings.h"
#include "model/gain_commands.h"
#include "model/tables.h"
#include "ports/flag_guard.h"

namespace nrv::presets {
namespace {

using model::CommandContext;

void ApplyMutes(const CommandContext& context) {
    controls::FrmCtrl& form = context.Form();
    bool& events_off = context.Windows.ControlEventsOff;
    for (std::size_t channel = 0; channel < controls::ChannelCount; ++channel) {
        {
            const FlagGuard guard(events_off);
            form.Check1[channel].SetValue(static_cast<int>(context.Values().ChannelMute[channel]));
        }
        model::SetMute(context, static_cast<int>(channel));
        const FlagGuard guard(events_off);
        form.Check1[channel + 8].SetValue(form.Check1[channel].Value());
    }
}

/// A window opens: the live marks, not the preset's.
void ApplyHead(const CommandContext& context) {
    const auto& page = context.Image().SystemPage;
    model::DecodeMuteBits(page[model::MuteBitsAddress], context.Values());
    ApplyMutes(context);
    model::DecodeOptionBits(page[model::OptionBitsAddress], context.Values());
    const FlagGuard guard(context.Windows.ControlEventsOff);
    context.Form().Combo4.Select(static_cast<int>(context.Values().InputType));
}

void ApplyGains(const CommandContext& context) {
    controls::FrmCtrl& form = context.Form();
    for (std::size_t channel = 0; channel < controls::ChannelCount; ++channel) {
        const int code = context.Image().PresetBody[model::GainOffsets[channel] + 1];
        form.Slider1[channel].SetPosition(model::ChannelGainTop - code);
        model::SetGain(context, static_cast<int>(channel));
    }
}

void ApplyMasterGain(const CommandContext& context) {
    const int code = context.Image().PresetBody[model::MasterGainCode];
    context.Form().Slider100.SetPosition(model::ChannelGainTop - code);
    model::SetMasterGain(context);
}

} // namespace

void ApplyImage(const CommandContext& context) {
    const int remembered_tab = context.Form().SSTab1.Tab();
    ApplyHead(context);
    ApplyGains(context);
    ApplyMasterGain(context);
    context.Form().SSTab1.SetTab(remembered_tab);
}

} // namespace nrv::presets
