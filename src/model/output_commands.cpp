#include "model/output_commands.h"

#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/numbering.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace nrv::model {
namespace {

// The blocks of the "Overview" tab whose tool tips show these settings.
constexpr std::array<std::size_t, 6> CrossoverLabels{10, 15, 20, 25, 30, 35};
constexpr std::array<std::size_t, 8> LimiterLabels{40, 41, 12, 17, 22, 27, 32, 37};

/// All three codes go out whichever of them changed. On an input they share bytes with its name.
void SendLimiter(const CommandContext& context, int channel) {
    const auto& body = context.Image().PresetBody;
    const std::size_t block = LimiterOffsets[At(channel)];
    context.Send(link::LimiterCommand, channel, 0, {body[block], body[block + 1], 0, body[block + 3]});
}

/// Release or attack: its fader, text, texts by code, value, and byte in the limiter's block.
struct TimeControls {
    const controls::Fader& Slider;
    controls::TextBox& Text;
    std::span<const std::string_view> Texts;
    double& Value;
    std::size_t Byte;
};

void SetTime(const CommandContext& context, int channel, const TimeControls& time) {
    const FaderCode code = CodeOf(time.Slider, static_cast<int>(time.Texts.size()) - 1);
    time.Text.SetText(std::string(time.Texts[At(code.Shown)]));
    time.Value = code.Held;
    context.Image().PresetBody[LimiterOffsets[At(channel)] + time.Byte] = CodeByte(code.Held);
    SendLimiter(context, channel);
}

std::string SideHint(const controls::FrmCtrl& form, std::size_t side) {
    return form.Text8[side].Text() + " Hz, " + form.Combo2[side].ShownText();
}

} // namespace

void SetCrossover(const CommandContext& context, int side) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t x = At(side);
    form.Text8[x].SetText(NumberText(SnapToFrequencyTable(ParseNumber(form.Text8[x].Text()))));
    const double frequency = ParseNumber(form.Text8[x].Text());
    const int slope = form.Combo2[x].Index();
    context.Values().CrossoverFrequency[x] = frequency;
    context.Values().CrossoverSlope[x] = slope;
    ShowCrossoverHint(context, side);
    const std::uint8_t frequency_code = CodeByte(NearestFrequencyCode(frequency));
    const std::size_t block = CrossoverOffsets[x];
    context.Image().PresetBody[block + 1] = frequency_code;
    context.Image().PresetBody[block + 2] = CodeByte(slope);
    context.Send(link::CrossoverCommand, ChannelOfCrossover(side), CrossoverInChannel(side),
                 {0, 0, frequency_code, slope});
}

void ShowCrossoverHint(const CommandContext& context, int side) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t output = At(side / 2);
    form.Label100[CrossoverLabels[output]].SetToolTip("HP: " + SideHint(form, 2 * output) +
                                                      " -- LP: " + SideHint(form, 2 * output + 1));
}

void SetThreshold(const CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = At(channel);
    const int top = IsInput(channel) ? NoiseGateThresholdTop : LimiterThresholdTop;
    const FaderCode code = CodeOf(form.Slider4[c], top);
    const std::string text = IsInput(channel) ? std::string(LowLevelTexts[At(code.Shown)])
                                              : NumberText(LimiterThresholdFromCode(code.Shown));
    form.Text9[c].SetText(text);
    context.Values().LimiterThreshold[c] = code.Held;
    context.Image().PresetBody[LimiterOffsets[c] + 3] = CodeByte(code.Held);
    const bool off = IsInput(channel) && code.Shown == 0;
    form.Label100[LimiterLabels[c]].SetToolTip(off ? text : text + " dBu");
    SendLimiter(context, channel);
}

void SetRelease(const CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    SetTime(context, channel,
            {form.Slider5[At(channel)], form.Text10[At(channel)], ReleaseTexts,
             context.Values().LimiterRelease[At(channel)], 1});
}

void SetAttack(const CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    SetTime(context, channel,
            {form.Slider6[At(channel)], form.Text11[At(channel)], AttackTexts,
             context.Values().LimiterAttack[At(channel)], 0});
}

void SetSource(const CommandContext& context, int output) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t y = At(output);
    const int source = form.Combo3[y].Index();
    context.Values().OutputSource[y] = source;
    context.Image().PresetBody[SourceOffsets[y]] = CodeByte(source);
    // A position other than these changes no line.
    if (source >= 0 && source <= 2) {
        const bool from_a = source != 1;
        const bool from_b = source != 0;
        form.Line1000[y].SetVisible(from_a);
        form.Line1100[y].SetVisible(from_b);
        form.Line1[y].SetVisible(from_a);
        form.Line2[y].SetVisible(from_b);
    }
    form.Label200[y].SetToolTip(form.Combo3[y].ShownText());
    context.Send(link::SourceCommand, ChannelOfOutput(output), 0, {0, 0, 0, source});
}

} // namespace nrv::model
