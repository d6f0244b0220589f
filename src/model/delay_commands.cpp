#include "model/delay_commands.h"

#include "controls/text_box.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "model/put_back.h"
#include "model/tables.h"
#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "ports/runtime_error.h"

#include <array>
#include <string>

namespace nrv::model {
namespace {

/// The blocks of the "Overview" tab whose tool tips show a channel's delay.
constexpr std::array<std::size_t, 8> DelayLabels{3, 8, 11, 16, 21, 26, 31, 36};

bool InMetres(const CommandContext& context) {
    return context.Values().DelayUnit == 1.0;
}

/// The delay of a control index as a number in the unit shown.
std::string DelayNumber(const CommandContext& context, std::size_t i) {
    const controls::FrmCtrl& form = context.Form();
    const int coarse = form.UpDown2[i].Shown();
    const int fine = form.UpDown1[i].Shown();
    return NumberText(InMetres(context) ? DelayInMetres(coarse, fine) : DelayInMs(coarse, fine));
}

std::string UnitText(const CommandContext& context) {
    return std::string(DelayUnitTexts[InMetres(context) ? 1 : 0]);
}

/// False when there is nothing to take.
bool TakeTypedDelay(const CommandContext& context, MessageBoxes& boxes, int index) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t i = At(index);
    const std::string text = TrimBlanks(form.Text2[i].Text());
    if (text.empty()) {
        boxes.Show({"  Incorrect value", "Warning"});
        return false;
    }
    double number = 0.0;
    try {
        number = ParseNumber(text.substr(0, text.find(' ')));
    } catch (const RuntimeError&) {
        const double longest =
            InMetres(context) ? DelayInMetres(DelayCoarseTop, DelayFineTop) : DelayInMs(DelayCoarseTop, DelayFineTop);
        RefuseText(form.Text2[i], static_cast<int>(ChannelOfControl(i)), "Delay",
                   {"delay", "0 to " + NumberText(longest) + UnitText(context)});
    }
    const DelayPositions typed = InMetres(context) ? DelayFromMetres(number) : DelayFromMs(number);
    {
        const FlagGuard events_off(context.Windows.ControlEventsOff);
        form.UpDown2[i].SetPosition(typed.Coarse);
        form.UpDown1[i].SetPosition(typed.Fine);
    }
    SetDelay(context, index);
    return true;
}

} // namespace

void SetDelay(const CommandContext& context, int index) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t i = At(index);
    const std::size_t twin = TwinOfControl(i);
    const std::size_t channel = ChannelOfControl(i);
    const int coarse = form.UpDown2[i].Position();
    const int fine = form.UpDown1[i].Position();
    form.Text2[i].SetText(DelayNumber(context, i) + UnitText(context));
    context.Values().DelayCoarse[channel] = coarse;
    context.Values().DelayFine[channel] = fine;

    SplitBuffer split;
    split.SplitBytes(coarse, 0);
    auto& body = context.Image().PresetBody;
    const std::size_t field = DelayOffsets[i];
    body[field] = split.Bytes[2];
    body[field + 1] = split.Bytes[3];
    body[field + 2] = static_cast<std::uint8_t>(fine);
    if (context.Send(link::DelayCommand, static_cast<int>(channel), 0,
                     {0, body[field], body[field + 1], body[field + 2]})) {
        return;
    }
    {
        const FlagGuard events_off(context.Windows.ControlEventsOff);
        form.UpDown1[twin].SetPosition(fine);
        form.UpDown2[twin].SetPosition(coarse);
        form.Text2[twin].SetText(form.Text2[i].Text());
    }
    form.Label100[DelayLabels[channel]].SetToolTip(form.Text2[i].Text());
}

void SetDelayUnit(const CommandContext& context, int unit) {
    context.Values().DelayUnit = unit;
    std::uint8_t& option_bits = context.Image().SystemPage[OptionBitsAddress];
    const bool set = (option_bits & DelayUnitBit) != 0;
    if (set && unit == 0) {
        option_bits = static_cast<std::uint8_t>(option_bits - DelayUnitBit);
    } else if (!set && unit == 1) {
        option_bits = static_cast<std::uint8_t>(option_bits + DelayUnitBit);
    }
    if (context.Link.MemoryWrite(context.DeviceId(), static_cast<int>(OptionBitsAddress), option_bits)) {
        return;
    }
    controls::FrmCtrl& form = context.Form();
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        const std::string number = DelayNumber(context, channel);
        form.Text2[channel].SetText(number + UnitText(context));
        // The copy on the channel's tab is a bare number until the channel's next change; that is meant.
        form.Text2[TwinOfControl(channel)].SetText(number);
        form.Label100[DelayLabels[channel]].SetToolTip(form.Text2[channel].Text());
    }
}

controls::KeyEntry TypedDelay(const CommandContext& context, MessageBoxes& boxes, int index, char key) {
    if (context.Windows.ControlEventsOff) {
        return key;
    }
    if (key == controls::EnterKey) {
        return {key, !TakeTypedDelay(context, boxes, index)};
    }
    if ((key >= '0' && key <= '9') || key == controls::BackspaceKey || key == ' ' || key == '.') {
        return key;
    }
    return key == ',' ? controls::KeyEntry('.') : controls::KeyEntry(' ', true);
}

} // namespace nrv::model
