#include "model/put_back.h"

#include "model/encodings.h"
#include "model/marker_mapping.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/flag_guard.h"
#include "ports/runtime_error.h"

#include <algorithm>

namespace nrv::model {

void PutBackPeq(const CommandContext& context, int section) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t s = At(section);
    const auto& body = context.Image().PresetBody;
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.Slider2[s].SetPosition(PeqGainTop - body[PeqOffsets[s] + 4]);
    form.UpDown3[s].SetPosition(body[PeqOffsets[s] + 2]);
    form.Text3[s].SetText(NumberText(PeqGainFromCode(CodeOf(form.Slider2[s], PeqGainTop).Shown)));
}

void PutBackTone(const CommandContext& context, int filter) {
    controls::FrmCtrl& form = context.Form();
    const std::size_t h = At(filter);
    const auto& body = context.Image().PresetBody;
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    form.Slider3[h].SetPosition(ToneGainTop - body[ToneOffsets[h] + 4]);
    form.Combo1[h].Select(body[ToneOffsets[h] + 2]);
}

void PutBackCrossover(const CommandContext& context, int side) {
    const FlagGuard events_off(context.Windows.ControlEventsOff);
    context.Form().Combo2[At(side)].Select(context.Image().PresetBody[CrossoverOffsets[At(side)] + 2]);
}

void PutBackPoint(const CommandContext& context, int section) {
    PutBackPeq(context, section);
    controls::FrmCtrl& form = context.Form();
    const std::size_t s = At(section);
    const int code = std::min<int>(context.Image().PresetBody[PeqOffsets[s] + 1], FrequencyTop);
    form.Text4[s].SetText(NumberText(FrequencyFromCode(code)));
    ParamRow& values = context.Values();
    values.PeqGain[s] = ParseNumber(form.Text3[s].Text());
    values.PeqFrequency[s] = ParseNumber(form.Text4[s].Text());
    form.Label5[s].MoveTo(MarkerLeft(values.PeqFrequency[s]), MarkerTop(values.PeqGain[s]));
}

void RefuseText(controls::TextBox& box, int channel, const std::string& part, const TakenText& taken) {
    constexpr std::size_t longest = 24; // a pasted page would make a message wider than the screen
    const std::string& text = box.Text();
    const std::string shown = text.size() > longest ? text.substr(0, longest) + "..." : text;
    box.Attend();
    throw RuntimeError(ErrorKind::TypeMismatch, std::string(ChannelTitles[At(channel)]) + ", " + part + ": \"" + shown +
                                                    "\" is no " + taken.What + ". Type " + taken.Range +
                                                    " and press Enter.");
}

} // namespace nrv::model
