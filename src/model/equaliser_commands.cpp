#include "model/equaliser_commands.h"

#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "response/marker_mapping.h"
#include "response/response.h"

#include <algorithm>
#include <array>

namespace nrv::model {
namespace {

constexpr int FlatPosition = 75;
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
    const int gain_code = PeqGainTop - form.Slider2[s].Position();
    const int bandwidth_code = form.UpDown3[s].Position();
    // The texts follow the controls as they show; the codes are the bytes that were there.
    form.Text3[s].SetText(NumberText(PeqGainFromCode(PeqGainTop - form.Slider2[s].Shown())));
    form.Text5[s].SetText(NumberText(BandwidthFromCode(form.UpDown3[s].Shown())));
    form.Text4[s].SetText(NumberText(SnapToFrequencyTable(ParseNumber(form.Text4[s].Text()))));

    ParamRow& values = context.Values();
    values.PeqGain[s] = ParseNumber(form.Text3[s].Text());
    values.PeqFrequency[s] = ParseNumber(form.Text4[s].Text());
    values.PeqBandwidth[s] = ParseNumber(form.Text5[s].Text());
    form.Label5[s].MoveTo(response::MarkerLeft(values.PeqFrequency[s]), response::MarkerTop(values.PeqGain[s]));

    const int channel = ChannelOfPeq(section);
    MarkFlatness(context, channel);
    const std::uint8_t frequency_code = CodeByte(NearestFrequencyCode(values.PeqFrequency[s]));
    auto& body = context.Image().PresetBody;
    const std::size_t block = PeqOffsets[s];
    body[block + 4] = CodeByte(gain_code);
    body[block + 1] = frequency_code;
    body[block + 2] = CodeByte(bandwidth_code);
    context.Send({link::PeqCommand, CodeByte(channel), CodeByte(PeqInChannel(section)), 0, 0, frequency_code,
                  body[block + 2], 0, body[block + 4]});
}

void SetTone(const CommandContext& context, int filter) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t h = At(filter);
    const int gain_code = ToneGainTop - form.Slider3[h].Position();
    const int type = form.Combo1[h].Index();
    form.Text6[h].SetText(NumberText(ToneGainFromCode(ToneGainTop - form.Slider3[h].Shown())));
    form.Text7[h].SetText(NumberText(SnapToFrequencyTable(ParseNumber(form.Text7[h].Text()))));

    ParamRow& values = context.Values();
    values.ToneType[h] = type;
    values.ToneFrequency[h] = ParseNumber(form.Text7[h].Text());
    values.ToneGain[h] = ParseNumber(form.Text6[h].Text());

    const std::uint8_t frequency_code = CodeByte(NearestFrequencyCode(values.ToneFrequency[h]));
    auto& body = context.Image().PresetBody;
    const std::size_t block = ToneOffsets[h];
    body[block + 4] = CodeByte(gain_code);
    body[block + 1] = frequency_code;
    body[block + 2] = CodeByte(type);
    context.Send({link::ToneCommand, CodeByte(ChannelOfTone(filter)), CodeByte(ToneInChannel(filter)), 0, 0,
                  frequency_code, body[block + 2], 0, body[block + 4]});
}

void FlatEqualiser(const CommandContext& context, response::Response& response, int channel) {
    const int first = FirstPeqOf(channel);
    for (int section = first; section < first + PeqCountOf(channel); ++section) {
        context.Form().Slider2[At(section)].SetPosition(FlatPosition);
        // What stands typed in the box and was never entered is no frequency of the section.
        context.Form().Text4[At(section)].SetText(NumberText(context.Values().PeqFrequency[At(section)]));
        SetPeq(context, section);
        response.UpdatePeqCurve(section);
    }
}

} // namespace nrv::model
