#include "model/gain_commands.h"

#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/flag_guard.h"

#include <array>
#include <string>

namespace nrv::model {
namespace {

/// The blocks of the "Overview" tab whose tool tips show a channel's gain.
constexpr std::array<std::size_t, 8> GainLabels{1, 6, 13, 18, 23, 28, 33, 38};
constexpr std::array<std::size_t, 2> MasterLabels{0, 5};

std::string GainText(const FaderCode& code) {
    return NumberText(ChannelGainFromCode(code.Shown));
}

} // namespace

void SetGain(const CommandContext& context, int index) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t i = At(index);
    const std::size_t twin = TwinOfControl(i);
    const std::size_t channel = ChannelOfControl(i);
    const FaderCode code = CodeOf(form.Slider1[i], ChannelGainTop);
    const std::string text = GainText(code);
    form.Text1[i].SetText(text);
    form.Text1[twin].SetText(text);
    form.Slider1[twin].SetPosition(form.Slider1[i].Position());
    context.Values().ChannelGain[channel] = ParseNumber(text);
    context.Image().PresetBody[GainOffsets[channel] + 1] = CodeByte(code.Held);
    form.Label100[GainLabels[channel]].SetToolTip(text + " dB");
    context.Send(link::GainCommand, static_cast<int>(channel), 0, {0, 0, 0, code.Held});
}

void SetMasterGain(const CommandContext& context) {
    controls::FrmCtrl& form = context.Form();
    const FaderCode code = CodeOf(form.Slider100, ChannelGainTop);
    const std::string text = GainText(code);
    form.Text100.SetText(text);
    context.Values().MasterGain = ParseNumber(text);
    context.Image().PresetBody[MasterGainCode] = CodeByte(code.Held);
    for (const std::size_t label : MasterLabels) {
        form.Label100[label].SetToolTip(text + " dB");
    }
    context.Send(link::MasterGainCommand, 0, 0, {0, 0, 0, code.Held});
}

void SetMute(const CommandContext& context, int index) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t i = At(index);
    const std::size_t channel = ChannelOfControl(i);
    const bool muted = form.Check1[i].Checked();
    context.Values().ChannelMute[channel] = muted ? 1.0 : 0.0;
    form.Label300[channel].SetToolTip(muted ? "Mute" : "Unmute");
    form.Line6[channel].SetVisible(muted);
    form.Line7[channel].SetVisible(muted);
    if (context.Send(link::MuteCommand, static_cast<int>(channel), 0, {0, 0, 0, muted ? 1 : 0})) {
        return;
    }
    StoreMuteBits(SumOfMutes(context.Values()), context.Image());
    if (context.Link.MemoryWrite(context.DeviceId(), static_cast<int>(MuteBitsAddress),
                                 context.Image().SystemPage[MuteBitsAddress])) {
        return;
    }
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.Check1[TwinOfControl(i)].SetValue(form.Check1[i].Value());
}

} // namespace nrv::model
