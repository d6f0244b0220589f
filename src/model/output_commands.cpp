#include "model/output_commands.h"

#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/numbering.h"

#include <array>
#include <string>

namespace nrv::model {
namespace {

// The blocks of the "Overview" tab whose tool tips show these settings.
constexpr std::array<std::size_t, 6> CrossoverLabels{10, 15, 20, 25, 30, 35};
constexpr std::array<std::size_t, 8> LimiterLabels{40, 41, 12, 17, 22, 27, 32, 37};

/// All three codes go out whichever of them changed. On an input they share bytes with its name.
void SendLimiter(const CommandContext& context, int channel) {
    const auto& body = context.Image().PresetBody;
    const std::size_t block = LimiterOffsets[At(channel)];
    context.Send({link::LimiterCommand, CodeByte(channel), 0, 0, 0, body[block], body[block + 1], 0, body[block + 3]});
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
    context.Send({link::CrossoverCommand, CodeByte(ChannelOfCrossover(side)), CodeByte(CrossoverInChannel(side)), 0, 0,
                  0, 0, frequency_code, CodeByte(slope)});
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
    const int code = top - form.Slider4[c].Position();
    // The text follows the fader as it shows; the code is the byte that was there.
    const int shown = top - form.Slider4[c].Shown();
    const std::string text =
        IsInput(channel) ? std::string(LowLevelTexts[At(shown)]) : NumberText(LimiterThresholdFromCode(shown));
    form.Text9[c].SetText(text);
    context.Values().LimiterThreshold[c] = code;
    context.Image().PresetBody[LimiterOffsets[c] + 3] = CodeByte(code);
    const bool off = IsInput(channel) && shown == 0;
    form.Label100[LimiterLabels[c]].SetToolTip(off ? text : text + " dBu");
    SendLimiter(context, channel);
}

void SetRelease(const CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = At(channel);
    const int code = ReleaseTop - form.Slider5[c].Position();
    form.Text10[c].SetText(std::string(ReleaseTexts[At(ReleaseTop - form.Slider5[c].Shown())]));
    context.Values().LimiterRelease[c] = code;
    context.Image().PresetBody[LimiterOffsets[c] + 1] = CodeByte(code);
    SendLimiter(context, channel);
}

void SetAttack(const CommandContext& context, int channel) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t c = At(channel);
    const int code = AttackTop - form.Slider6[c].Position();
    form.Text11[c].SetText(std::string(AttackTexts[At(AttackTop - form.Slider6[c].Shown())]));
    context.Values().LimiterAttack[c] = code;
    context.Image().PresetBody[LimiterOffsets[c]] = CodeByte(code);
    SendLimiter(context, channel);
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
    context.Send({link::SourceCommand, CodeByte(ChannelOfOutput(output)), 0, 0, 0, 0, 0, 0, CodeByte(source)});
}

} // namespace nrv::model
