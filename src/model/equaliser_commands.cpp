#include "model/equaliser_commands.h"

#include "model/encodings.h"
#include "model/marker_mapping.h"
#include "model/number_text.h"
#include "model/tables.h"

#include <algorithm>
#include <array>

namespace nrv::model {
namespace {

/// The blocks of the "Overview" tab whose tool tips say whether an input's PEQ is flat.
constexpr std::array<std::size_t, 2> FlatLabels{2, 7};

/// Outputs have no such mark.
void MarkFlatness(const CommandContext& context, int channel) {
    if (channel >= static_cast<int>(FlatLabels.size())) {
        return;
    }
    const auto first = context.Values().PeqGain.begin() + FirstPeqOf(channel);
    const bool flat = std::all_of(first, first + PeqCountOf(channel), [](double gain) { return gain == 0.0; });
    context.Form().Label100[FlatLabels[At(channel)]].SetToolTip(flat ? "Flat" : "~~~~~~");
}

} // namespace

void SetPeq(const CommandContext& context, int section) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t s = At(section);
    const FaderCode gain = CodeOf(form.Slider2[s], PeqGainTop);
    const int bandwidth_code = form.UpDown3[s].Position();
    // The texts follow the controls as they show; the codes are the bytes that were there.
    form.Text3[s].SetText(NumberText(PeqGainFromCode(gain.Shown)));
    form.Text5[s].SetText(NumberText(BandwidthFromCode(form.UpDown3[s].Shown())));
    form.Text4[s].SetText(NumberText(SnapToFrequencyTable(ParseNumber(form.Text4[s].Text()))));

    ParamRow& values = context.Values();
    values.PeqGain[s] = ParseNumber(form.Text3[s].Text());
    values.PeqFrequency[s] = ParseNumber(form.Text4[s].Text());
    values.PeqBandwidth[s] = ParseNumber(form.Text5[s].Text());
    form.Label5[s].MoveTo(MarkerLeft(values.PeqFrequency[s]), MarkerTop(values.PeqGain[s]));

    const int channel = ChannelOfPeq(section);
    MarkFlatness(context, channel);
    const std::uint8_t frequency_code = CodeByte(NearestFrequencyCode(values.PeqFrequency[s]));
    auto& body = context.Image().PresetBody;
    const std::size_t block = PeqOffsets[s];
    body[block + 4] = CodeByte(gain.Held);
    body[block + 1] = frequency_code;
    body[block + 2] = CodeByte(bandwidth_code);
    context.Send(link::PeqCommand, channel, PeqInChannel(section),
                 {body[block + 1], body[block + 2], 0, body[block + 4]});
}

void SetTone(const CommandContext& context, int filter) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t h = At(filter);
    const FaderCode gain = CodeOf(form.Slider3[h], ToneGainTop);
    const int type = form.Combo1[h].Index();
    form.Text6[h].SetText(NumberText(ToneGainFromCode(gain.Shown)));
    form.Text7[h].SetText(NumberText(SnapToFrequencyTable(ParseNumber(form.Text7[h].Text()))));

    ParamRow& values = context.Values();
    values.ToneType[h] = type;
    values.ToneFrequency[h] = ParseNumber(form.Text7[h].Text());
    values.ToneGain[h] = ParseNumber(form.Text6[h].Text());

    const std::uint8_t frequency_code = CodeByte(NearestFrequencyCode(values.ToneFrequency[h]));
    auto& body = context.Image().PresetBody;
    const std::size_t block = ToneOffsets[h];
    body[block + 4] = CodeByte(gain.Held);
    body[block + 1] = frequency_code;
    body[block + 2] = CodeByte(type);
    context.Send(link::ToneCommand, ChannelOfTone(filter), ToneInChannel(filter),
                 {body[block + 1], body[block + 2], 0, body[block + 4]});
}

} // namespace nrv::model
