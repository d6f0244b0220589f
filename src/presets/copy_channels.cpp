#include "presets/copy_channels.h"

#include "model/delay_commands.h"
#include "model/gain_commands.h"
#include "model/output_commands.h"
#include "model/system_commands.h"
#include "ports/flag_guard.h"
#include "ports/numbering.h"
#include "presets/parameters.h"

namespace nrv::presets {
namespace {

using model::CommandContext;
using response::Response;

void CopyGain(const CommandContext& context, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    form.Slider1[At(d)].SetPosition(form.Slider1[At(s)].Position());
    model::SetGain(context, d);
    form.Text1[At(TwinOfControl(d))].SetText(form.Text1[At(s)].Text());
    form.Text1[At(TwinOfControl(d))].Refresh();
    form.Slider1[At(TwinOfControl(d))].SetPosition(form.Slider1[At(s)].Position());
}

void CopyPeqSection(const CommandContext& context, Response& response, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    form.Slider2[At(d)].SetPosition(form.Slider2[At(s)].Position());
    form.Text4[At(d)].SetText(form.Text4[At(s)].Text());
    form.UpDown3[At(d)].SetPosition(form.UpDown3[At(s)].Position());
    RunParameter(context, response, {ParameterKind::Peq, d});
}

void CopyTone(const CommandContext& context, Response& response, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    form.Slider3[At(d)].SetPosition(form.Slider3[At(s)].Position());
    form.Text7[At(d)].SetText(form.Text7[At(s)].Text());
    form.Combo1[At(d)].Select(form.Combo1[At(s)].Index());
    RunParameter(context, response, {ParameterKind::Tone, d});
}

/// The phase box of a channel, and the command for a channel that need not be the same one.
void CopyPhase(const CommandContext& context, int s, int d, int commanded) {
    controls::FrmCtrl& form = context.Form();
    form.Check2[At(d)].SetValue(form.Check2[At(s)].Value());
    model::SetPhase(context, commanded);
}

/// With the twin of the phase box, whose guarded stretch goes on into this step.
void CopyDelay(const CommandContext& context, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    {
        const FlagGuard events_off(context.Windows.ControlEventsOff);
        form.Check2[At(TwinOfControl(d))].SetValue(form.Check2[At(s)].Value());
        form.UpDown2[At(d)].SetPosition(form.UpDown2[At(s)].Position());
        form.UpDown1[At(d)].SetPosition(form.UpDown1[At(s)].Position());
    }
    model::SetDelay(context, d);
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.UpDown1[At(TwinOfControl(d))].SetPosition(form.UpDown1[At(s)].Position());
    form.UpDown2[At(TwinOfControl(d))].SetPosition(form.UpDown2[At(s)].Position());
    form.Text2[At(TwinOfControl(d))].SetText(form.Text2[At(s)].Text());
}

void CopyDynamics(const CommandContext& context, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    form.Slider4[At(d)].SetPosition(form.Slider4[At(s)].Position());
    form.Slider5[At(d)].SetPosition(form.Slider5[At(s)].Position());
    form.Slider6[At(d)].SetPosition(form.Slider6[At(s)].Position());
    model::SetThreshold(context, d);
    model::SetRelease(context, d);
    model::SetAttack(context, d);
}

void CopyMute(const CommandContext& context, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    form.Check1[At(d)].SetValue(form.Check1[At(s)].Value());
    model::SetMute(context, d);
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.Check1[At(TwinOfControl(d))].SetValue(form.Check1[At(s)].Value());
}

void CopyCrossover(const CommandContext& context, Response& response, int s, int d) {
    controls::FrmCtrl& form = context.Form();
    for (int side = 0; side < SidesPerOutput; ++side) {
        form.Text8[At(FirstSideOf(d) + side)].SetText(form.Text8[At(FirstSideOf(s) + side)].Text());
    }
    for (int side = 0; side < SidesPerOutput; ++side) {
        const int copied = FirstSideOf(d) + side;
        form.Combo2[At(copied)].Select(form.Combo2[At(FirstSideOf(s) + side)].Index());
        RunParameter(context, response, {ParameterKind::Crossover, copied});
    }
}

} // namespace

void CopyInput(const CommandContext& context, Response& response, int source, int destination) {
    CopyGain(context, source, destination);
    for (int band = 0; band < PeqPerInput; ++band) {
        CopyPeqSection(context, response, FirstPeqOf(source) + band, FirstPeqOf(destination) + band);
    }
    for (int block = 0; block < TonePerInput; ++block) {
        CopyTone(context, response, FirstToneOf(source) + block, FirstToneOf(destination) + block);
    }
    CopyPhase(context, source, destination, destination);
    CopyDelay(context, source, destination);
    CopyDynamics(context, source, destination);
    CopyMute(context, source, destination);
}

void CopyOutput(const CommandContext& context, Response& response, int source, int destination) {
    controls::FrmCtrl& form = context.Form();
    const int s = ChannelOfOutput(source);
    const int d = ChannelOfOutput(destination);
    CopyGain(context, s, d);
    form.Combo3[At(destination)].Select(form.Combo3[At(source)].Index());
    model::SetSource(context, destination);
    CopyDynamics(context, s, d);
    CopyCrossover(context, response, source, destination);
    for (int band = 0; band < PeqPerOutput; ++band) {
        CopyPeqSection(context, response, FirstPeqOf(s) + band, FirstPeqOf(d) + band);
    }
    CopyTone(context, response, FirstToneOf(s), FirstToneOf(d));
    // The command goes to the channel of the list position, two channels off; the right one is reached by the box's own
    // event alone, when it changes. That is meant.
    CopyPhase(context, s, d, destination);
    CopyDelay(context, s, d);
    CopyMute(context, s, d);
}

} // namespace nrv::presets
