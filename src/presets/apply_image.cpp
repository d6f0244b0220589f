#include "presets/apply_image.h"

#include "model/gain_commands.h"
#include "model/output_commands.h"
#include "model/system_commands.h"
#include "model/tables.h"
#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "presets/channel_names.h"
#include "presets/parameters.h"
#include "response/view_options.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

// Every step sets controls from bytes of the image and then runs their commands. A guarded stretch, in which the
// controls' own events do nothing, ends before the commands run.

namespace nrv::presets {
namespace {
using model::CommandContext;
using response::Response;

template <class Write>
void Guarded(const CommandContext& context, Write write) {
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    write();
}

void ApplyMutes(const CommandContext& context, bool check_suppressed) {
    controls::FrmCtrl& form = context.Form();
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t c = At(channel);
        ShowParameter(context, {ParameterKind::Mute, channel});
        {
            std::optional<FlagGuard> suppressed;
            if (check_suppressed) {
                suppressed.emplace(context.Link.CheckSuppressed);
            }
            model::SetMute(context, channel);
        }
        Guarded(context, [&] { form.Check1[TwinOfControl(c)].SetValue(form.Check1[c].Value()); });
    }
}

void ApplyOptionBits(const CommandContext& context) {
    model::DecodeOptionBits(context.Image().SystemPage[model::OptionBitsAddress], context.Values());
    Guarded(context, [&] { context.Form().Combo4.Select(static_cast<int>(context.Values().InputType)); });
    model::TellSockets(context.Form(), context.Values().InputType == 1.0);
}

/// Which mutes and options hold from here on. False when the bulk update failed.
bool ApplyHead(const CommandContext& context, ImageCase image_case) {
    model::ParamRow& values = context.Values();
    model::PresetImageRow& image = context.Image();
    if (image_case == ImageCase::Opening) {
        // A window opens: the live marks, not the preset's.
        model::DecodeMuteBits(image.SystemPage[model::MuteBitsAddress], values);
        ApplyMutes(context, false);
        ApplyOptionBits(context);
        return true;
    }
    if (values.MuteWithPreset == 1.0) {
        if (image_case == ImageCase::FromFile && context.Send({link::BulkUpdateCommand, 0})) {
            return false;
        }
        model::DecodeMuteBits(image.PresetBody[model::MuteBitsCopy], values);
        ApplyMutes(context, image_case == ImageCase::FromDevice);
        ApplyOptionBits(context);
        return true;
    }
    // The safe start after a preset: inputs sounding, outputs muted, whatever the image says.
    for (int channel = 0; channel < ChannelCount; ++channel) {
        values.ChannelMute[At(channel)] = IsInput(channel) ? 0.0 : 1.0;
    }
    ApplyMutes(context, false);
    image.SystemPage[model::OptionBitsAddress] = model::RebuildOptionBits(values);
    return true;
}

/// Sets the controls of a parameter and runs its command.
void Apply(const CommandContext& context, Response& response, Parameter parameter) {
    ShowParameter(context, parameter);
    RunParameter(context, response, parameter);
}

/// The list's own event runs its command too, when its choice changes.
void ApplySources(const CommandContext& context) {
    for (int output = 0; output < OutputCount; ++output) {
        context.Form().Combo3[At(output)].Select(context.BodyByte(model::SourceOffsets[At(output)]));
        model::SetSource(context, output);
    }
}

void ApplyDynamics(const CommandContext& context, Response& response) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::array<Parameter, 3> parameters = {
            {{ParameterKind::Threshold, channel}, {ParameterKind::Release, channel}, {ParameterKind::Attack, channel}}};
        for (const Parameter parameter : parameters) {
            ShowParameter(context, parameter);
        }
        for (const Parameter parameter : parameters) {
            RunParameter(context, response, parameter);
        }
    }
}

void ApplyFilters(const CommandContext& context, Response& response) {
    for (const Parameter parameter : Parameters()) {
        using enum ParameterKind;
        if (parameter.Kind == Crossover || parameter.Kind == Peq || parameter.Kind == Tone) {
            Apply(context, response, parameter);
        }
    }
}

void ApplyPhases(const CommandContext& context, Response& response) {
    controls::FrmCtrl& form = context.Form();
    for (int channel = 0; channel < ChannelCount; ++channel) {
        Apply(context, response, {ParameterKind::Phase, channel});
        const std::size_t c = At(channel);
        Guarded(context, [&] { form.Check2[TwinOfControl(c)].SetValue(form.Check2[c].Value()); });
    }
}

/// Every delay twice, once for each copy of its controls.
void ApplyDelays(const CommandContext& context, Response& response) {
    controls::FrmCtrl& form = context.Form();
    model::ParamRow& values = context.Values();
    values.DelayUnit = model::HasOption(context.Image(), model::DelayUnitBit) ? 1.0 : 0.0;
    for (int index = 0; index < StripCount; ++index) {
        Apply(context, response, {ParameterKind::Delay, index});
        const std::size_t i = At(index);
        const std::size_t twin = TwinOfControl(i);
        Guarded(context, [&] {
            form.UpDown1[twin].SetPosition(form.UpDown1[i].Position());
            form.UpDown2[twin].SetPosition(form.UpDown2[i].Position());
            form.Text2[twin].SetText(form.Text2[i].Text());
        });
    }
    form.Option1[At(static_cast<int>(values.DelayUnit))].Select();
}

void ApplyGains(const CommandContext& context, Response& response) {
    controls::FrmCtrl& form = context.Form();
    for (int channel = 0; channel < ChannelCount; ++channel) {
        Apply(context, response, {ParameterKind::Gain, channel});
        const std::size_t c = At(channel);
        form.Text1[TwinOfControl(c)].SetText(form.Text1[c].Text());
        form.Slider1[TwinOfControl(c)].SetPosition(form.Slider1[c].Position());
    }
}

void ApplyNames(const CommandContext& context, const Response& response) {
    NameTexts texts;
    for (std::size_t c = 0; c < texts.size(); ++c) {
        for (std::size_t j = 0; j < ChannelNameLength; ++j) {
            texts[c] += static_cast<char>(context.BodyByte(model::NameOffsets[c] + j));
        }
    }
    ApplyChannelNames(context, response, texts);
}

void ApplyViewState(const CommandContext& context, Response& response) {
    controls::FrmCtrl& form = context.Form();
    const auto view = context.Image().ViewState;
    for (int channel = 0; channel < ChannelCount; ++channel) {
        form.Check3[At(channel)].SetValue(view[model::ShowCursorStart + At(channel)]);
        response::ShowCursor(context, channel);
    }
    for (int row = 0; row < ViewsPerOutput; ++row) {
        for (int output = 0; output < OutputCount; ++output) {
            const std::size_t byte = model::ViewBoxStart + model::ViewBoxesInRow * At(row) + At(output);
            form.ViewBox(row, output).SetValue(view[byte]);
            response::ViewOverlay(context, response, output, row);
        }
    }
    for (int output = 0; output < OutputCount; ++output) {
        const std::size_t byte = model::SumButtonStart + At(output);
        const int option = view[byte] + SumsPerOutput * output;
        if (option >= static_cast<int>(form.Option2.size())) {
            RefuseByte(ChannelOfOutput(output), offsetof(model::PresetImageRow, ViewState) + byte,
                       "view option " + std::to_string(view[byte]) + ", and options end at 2");
        }
        form.Option2[At(option)].Select();
        // Its event stores the choice, which for a byte past the output's options is another output's.
        context.Image().ViewState = view;
        // The button is chosen by one byte and the number comes from another, of an output seen before; that is meant.
        response.SetViewMode(view[model::SumButtonStart + At(output / 3)] + SumsPerOutput * output);
    }
}

} // namespace

void ApplyImage(const CommandContext& context, Response& response, ImageCase image_case) {
    controls::TabControl& tabs = context.Form().SSTab1;
    const int remembered_tab = tabs.Tab();
    if (!ApplyHead(context, image_case)) {
        return;
    }
    ApplySources(context);
    ApplyDynamics(context, response);
    ApplyFilters(context, response);
    ApplyPhases(context, response);
    ApplyDelays(context, response);
    ApplyGains(context, response);
    ApplyNames(context, response);
    Apply(context, response, {ParameterKind::MasterGain});
    ApplyViewState(context, response);
    if (image_case != ImageCase::Opening && context.Values().MuteWithPreset == 1.0 &&
        context.Send({link::BulkUpdateCommand, 1})) {
        return;
    }
    tabs.SetTab(remembered_tab);
}

int FramesOfLoad(const CommandContext& context) {
    // Mutes, sources, dynamics, crossovers, sections, tones, phases, delays, gains, names and master.
    int frames = 16 + 6 + 24 + 12 + 44 + 10 + 8 + 16 + 8 + 6 + 1;
    for (int output = 0; output < OutputCount; ++output) {
        const int shown = context.Form().Combo3[At(output)].Index();
        frames += shown == context.BodyByte(model::SourceOffsets[At(output)]) ? 0 : 1;
    }
    if (context.Values().MuteWithPreset != 1.0) {
        return frames; // and the unit stays
    }
    const std::size_t unit = model::HasOption(context.Image(), model::DelayUnitBit) ? 1 : 0;
    return frames + 2 + (context.Form().Option1[unit].Selected() ? 0 : 1); // a bulk update before and after
}

} // namespace nrv::presets
