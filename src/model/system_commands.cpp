#include "model/system_commands.h"

#include "model/tables.h"
#include "ports/flag_guard.h"

#include <array>

namespace nrv::model {
namespace {

/// The blocks of the "Overview" tab whose tool tips show a channel's phase.
constexpr std::array<std::size_t, 8> PhaseLabels{4, 9, 14, 19, 24, 29, 34, 39};

} // namespace

void SetPhase(const CommandContext& context, int index) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t i = At(index);
    const std::size_t channel = ChannelOfControl(i);
    const auto value = static_cast<std::uint8_t>(form.Check2[i].Value());
    context.Values().ChannelPhase[channel] = form.Check2[i].Checked() ? 1.0 : 0.0;
    context.Image().PresetBody[PhaseOffsets[channel]] = value;
    form.Label100[PhaseLabels[channel]].SetToolTip(form.Check2[i].Checked() ? "180'" : "0'");
    if (context.Send(link::PhaseCommand, static_cast<int>(channel), 0, {0, 0, 0, value})) {
        return;
    }
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.Check2[TwinOfControl(i)].SetValue(form.Check2[i].Value());
}

void TellSockets(controls::FrmCtrl& form, bool digital) {
    for (int input = 0; input < InputCount; ++input) {
        const std::string what = digital ? "digital input" : "analog input " + std::to_string(input + 1);
        form.Label400[At(input)].SetToolTip(std::string(ChannelTitles[At(input)]) + ": " + what);
    }
}

void SetInputType(const CommandContext& context) {
    controls::FrmCtrl& form = context.Form();
    const int type = form.Combo4.Index();
    const bool digital = type == 1;
    context.Values().InputType = type;
    context.Stores.LastInputType = type;
    std::uint8_t& option_bits = context.Image().SystemPage[OptionBitsAddress];
    option_bits = static_cast<std::uint8_t>(digital ? option_bits | InputTypeBit : option_bits & ~InputTypeBit);
    form.Label400[0].SetCaption(digital ? " SPDIF " : "Input 1");
    form.Label400[1].SetCaption(digital ? " SPDIF " : "Input 2");
    TellSockets(form, digital);
    context.Send(link::InputTypeCommand, 0, 0, {0, 0, 0, type});
}

} // namespace nrv::model
