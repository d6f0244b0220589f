#include "presets/parameters.h"

#include "model/delay_commands.h"
#include "model/encodings.h"
#include "model/equaliser_commands.h"
#include "model/gain_commands.h"
#include "model/number_text.h"
#include "model/output_commands.h"
#include "model/system_commands.h"
#include "model/tables.h"
#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "ports/runtime_error.h"

#include <string>

namespace nrv::presets {
namespace {

using enum ParameterKind;
using model::CommandContext;

/// Setting its controls would run events, which are guarded. Faders run none.
bool HasEvents(ParameterKind kind) {
    return kind == Mute || kind == InputType || kind == Crossover || kind == Peq || kind == Tone || kind == Phase ||
           kind == Delay;
}

/// The text of a frequency byte of a channel.
std::string FrequencyText(const CommandContext& context, int channel, std::size_t position) {
    const int code = context.BodyByte(position);
    if (code > model::FrequencyTop) {
        RefuseByte(channel, position, "frequency code " + std::to_string(code) + ", and codes end at 120");
    }
    return model::NumberText(model::FrequencyFromCode(code));
}

void ShowCrossover(const CommandContext& context, int side) {
    const std::size_t block = model::CrossoverOffsets[At(side)];
    controls::FrmCtrl& form = context.Form();
    form.Text8[At(side)].SetText(FrequencyText(context, ChannelOfCrossover(side), block + 1));
    form.Combo2[At(side)].Select(context.BodyByte(block + 2));
}

void ShowPeq(const CommandContext& context, int section) {
    const std::size_t block = model::PeqOffsets[At(section)];
    controls::FrmCtrl& form = context.Form();
    form.Slider2[At(section)].SetPosition(model::PeqGainTop - context.BodyByte(block + 4));
    form.Text4[At(section)].SetText(FrequencyText(context, ChannelOfPeq(section), block + 1));
    form.UpDown3[At(section)].SetPosition(context.BodyByte(block + 2));
}

void ShowTone(const CommandContext& context, int filter) {
    const std::size_t block = model::ToneOffsets[At(filter)];
    controls::FrmCtrl& form = context.Form();
    form.Slider3[At(filter)].SetPosition(model::ToneGainTop - context.BodyByte(block + 4));
    form.Text7[At(filter)].SetText(FrequencyText(context, ChannelOfTone(filter), block + 1));
    form.Combo1[At(filter)].Select(context.BodyByte(block + 2));
}

void ShowDelay(const CommandContext& context, int index) {
    const std::size_t field = model::DelayOffsets[At(index)];
    controls::FrmCtrl& form = context.Form();
    form.UpDown2[At(index)].SetPosition(256 * context.BodyByte(field) + context.BodyByte(field + 1));
    form.UpDown1[At(index)].SetPosition(context.BodyByte(field + 2));
}

int GainPosition(const CommandContext& context, std::size_t position) {
    return model::ChannelGainTop - context.BodyByte(position);
}

void Show(const CommandContext& context, Parameter parameter) {
    controls::FrmCtrl& form = context.Form();
    const int index = parameter.Index;
    const std::size_t i = At(index);
    switch (parameter.Kind) {
    case Mute:
        form.Check1[i].SetValue(static_cast<int>(context.Values().ChannelMute[i]));
        break;
    case InputType:
        form.Combo4.Select(model::HasOption(context.Image(), model::InputTypeBit) ? 1 : 0);
        break;
    case Source:
        form.Combo3[i].Show(context.BodyByte(model::SourceOffsets[i]));
        break;
    case Threshold:
        form.Slider4[i].SetPosition((IsInput(index) ? model::NoiseGateThresholdTop : model::LimiterThresholdTop) -
                                    context.BodyByte(model::LimiterOffsets[i] + 3));
        break;
    case Release:
        form.Slider5[i].SetPosition(model::ReleaseTop - context.BodyByte(model::LimiterOffsets[i] + 1));
        break;
    case Attack:
        form.Slider6[i].SetPosition(model::AttackTop - context.BodyByte(model::LimiterOffsets[i]));
        break;
    case Crossover:
        ShowCrossover(context, index);
        break;
    case Peq:
        ShowPeq(context, index);
        break;
    case Tone:
        ShowTone(context, index);
        break;
    case Phase:
        form.Check2[i].SetValue(context.BodyByte(model::PhaseOffsets[i]));
        break;
    case Delay:
        ShowDelay(context, index);
        break;
    case DelayUnit:
        form.Option1[model::HasOption(context.Image(), model::DelayUnitBit) ? 1 : 0].ShowSelected();
        break;
    case Gain:
        form.Slider1[i].SetPosition(GainPosition(context, model::GainOffsets[i] + 1));
        break;
    case MasterGain:
        form.Slider100.SetPosition(GainPosition(context, model::MasterGainCode));
        break;
    case ChannelName:
        break;
    }
}

} // namespace

void RefuseByte(int channel, std::size_t place, const std::string& what) {
    throw RuntimeError(ErrorKind::IndexOutOfRange, std::string(ChannelTitles[At(channel)]) + ": byte " +
                                                       std::to_string(place) + " of the image is the " + what + ".");
}

void ShowParameter(const CommandContext& context, Parameter parameter) {
    if (HasEvents(parameter.Kind)) {
        const FlagGuard events_off(context.Windows.ControlEventsOff);
        Show(context, parameter);
    } else {
        Show(context, parameter);
    }
}

void RunParameter(const CommandContext& context, response::Response& response, Parameter parameter) {
    const int index = parameter.Index;
    switch (parameter.Kind) {
    case Mute:
        model::SetMute(context, index);
        break;
    case InputType:
        model::SetInputType(context);
        break;
    case Source:
        model::SetSource(context, index);
        break;
    case Threshold:
        model::SetThreshold(context, index);
        break;
    case Release:
        model::SetRelease(context, index);
        break;
    case Attack:
        model::SetAttack(context, index);
        break;
    case Crossover:
        model::SetCrossover(context, index);
        response.UpdateCrossoverCurve(index);
        break;
    case Peq:
        model::SetPeq(context, index);
        response.UpdatePeqCurve(index);
        break;
    case Tone:
        model::SetTone(context, index);
        response.UpdateShelfCurve(index);
        break;
    case Phase:
        model::SetPhase(context, index);
        break;
    case Delay:
        model::SetDelay(context, index);
        break;
    case DelayUnit:
        model::SetDelayUnit(context, model::HasOption(context.Image(), model::DelayUnitBit) ? 1 : 0);
        break;
    case Gain:
        model::SetGain(context, index);
        break;
    case MasterGain:
        model::SetMasterGain(context);
        break;
    case ChannelName:
        break;
    }
}

int FramesOf(Parameter parameter) {
    return parameter.Kind == Mute ? 2 : 1; // the second writes the bits of all mutes
}

} // namespace nrv::presets
