#include "response/equaliser_editing.h"

#include "model/encodings.h"
#include "model/equaliser_commands.h"
#include "model/marker_mapping.h"
#include "model/number_text.h"
#include "model/output_commands.h"
#include "ports/numbering.h"
#include "ports/runtime_error.h"

#include <algorithm>
#include <cmath>

namespace nrv::response {
namespace {

using controls::BackspaceKey;
using controls::EnterKey;
using model::NumberText;
using model::ParseNumber;

constexpr double LowestFrequency = 20.0;
constexpr double HighestFrequency = 20000.0;
constexpr double HighestGain = 15.0;

// The field that a marker's corner may stand in, in position units.
constexpr double FieldLeft = -60.0;
constexpr double FieldTop = -60.0;
constexpr double FieldRight = 8595.0;
constexpr double FieldBottom = 2835.0;

constexpr char Refused = '?';

bool IsDigit(char key) {
    return key >= '0' && key <= '9';
}

/// Holds what a frequency box shows to 20 to 20000 Hz. Throws RuntimeError when it is no number.
void HoldFrequency(controls::TextBox& box) {
    if (ParseNumber(box.Text()) > HighestFrequency) {
        box.SetText("20000");
    }
    if (ParseNumber(box.Text()) < LowestFrequency) {
        box.SetText("20");
    }
}

/// Holds what a frequency box shows to 20000 Hz; what is no number stays for the command to refuse.
void HoldBelowTop(controls::TextBox& box) {
    double frequency = 0.0;
    try {
        frequency = ParseNumber(box.Text());
    } catch (const RuntimeError&) {
        return;
    }
    if (frequency > HighestFrequency) {
        box.SetText("20000");
    }
}

} // namespace

void FlatEqualiser(const model::CommandContext& context, Response& response, int channel) {
    const int first = FirstPeqOf(channel);
    for (int section = first; section < first + PeqCountOf(channel); ++section) {
        const std::size_t s = At(section);
        context.Form().Slider2[s].SetPosition(model::PeqPositionFromGain(0.0));
        // What stands typed in the box and was never entered is no frequency of the section.
        context.Form().Text4[s].SetText(NumberText(context.Values().PeqFrequency[s]));
        model::SetPeq(context, section);
        response.UpdatePeqCurve(section);
    }
}

void EqualiserEditing::Wire(controls::FrmCtrl& form) {
    WirePeq(form);
    WireTone(form);
    WireCrossover(form);
}

void EqualiserEditing::WirePeq(controls::FrmCtrl& form) {
    for (int section = 0; section < PeqCount; ++section) {
        const std::size_t s = At(section);
        const auto change = [this, section] {
            if (!context_.Windows.ControlEventsOff) {
                HoldBelowTop(context_.Form().Text4[At(section)]);
                ChangePeq(section);
            }
        };
        form.Slider2[s].Moved = change;
        form.UpDown3[s].Changed = change;
        form.Text4[s].KeyPressed = [this, section](char key) { return KeyInPeqFrequency(section, key); };
        form.Text5[s].KeyPressed = [this, section](char key) { return KeyInBandwidth(section, key); };
        form.Label5[s].Pressed = [&form, s] { form.MarkerDragging[s] = true; };
        form.Label5[s].Moved = [this, &form, section](double x, double y) { DragMarker(form, section, x, y); };
        form.Label5[s].Released = [this, &form, section] { DropMarker(form, section); };
    }
}

void EqualiserEditing::WireTone(controls::FrmCtrl& form) {
    const auto guarded = [this](int filter, const char* refusal) {
        try {
            HoldFrequency(context_.Form().Text7[At(filter)]);
            ChangeTone(filter);
        } catch (const RuntimeError&) {
            Warn(refusal);
        }
    };
    for (int filter = 0; filter < ToneCount; ++filter) {
        const std::size_t h = At(filter);
        form.Slider3[h].Moved = [guarded, filter] { guarded(filter, "  Incorrect value"); };
        form.Combo1[h].Chosen = [this, guarded, filter] {
            if (!context_.Windows.ControlEventsOff) {
                guarded(filter, "  Incorrect frequency value");
            }
        };
        form.Text7[h].KeyPressed = [this, filter](char key) { return KeyInToneFrequency(filter, key); };
    }
}

void EqualiserEditing::WireCrossover(controls::FrmCtrl& form) {
    for (int side = 0; side < CrossoverCount; ++side) {
        const std::size_t x = At(side);
        form.Combo2[x].Chosen = [this, side] {
            if (!context_.Windows.ControlEventsOff) {
                // An unreadable text goes up to the event boundary: this event alone has no guard, which is meant.
                HoldFrequency(context_.Form().Text8[At(side)]);
                ChangeCrossover(side);
            }
        };
        form.Text8[x].KeyPressed = [this, side](char key) { return KeyInCrossoverFrequency(side, key); };
    }
}

void EqualiserEditing::ChangePeq(int section) {
    model::SetPeq(context_, section);
    response_.UpdatePeqCurve(section);
}

void EqualiserEditing::ChangeTone(int filter) {
    model::SetTone(context_, filter);
    response_.UpdateShelfCurve(filter);
}

void EqualiserEditing::ChangeCrossover(int side) {
    model::SetCrossover(context_, side);
    response_.UpdateCrossoverCurve(side);
}

void EqualiserEditing::DragMarker(controls::FrmCtrl& form, int section, double x, double y) {
    const std::size_t s = At(section);
    // A drag whose button-up was lost waits while another window is the active one.
    if (!form.MarkerDragging[s] || !IsCurrent(form)) {
        return;
    }
    form.MarkerMoved[s] = true;
    double left = form.Label5[s].Left() + x - model::MarkerHalf;
    double top = form.Label5[s].Top() + y - model::MarkerHalf;
    left = std::max(left, FieldLeft);
    top = std::max(top, FieldTop);
    left = std::min(left, FieldRight);
    top = std::min(top, FieldBottom);

    // The marker stops at the limits of gain although the field is taller.
    const double gain = std::clamp(model::MarkerGain(top), -HighestGain, HighestGain);
    form.Label5[s].MoveTo(left, model::MarkerTop(gain));
    form.Text3[s].SetText(NumberText(std::floor(gain * 10.0) / 10.0));
    form.Text3[s].Refresh();
    const double shown_gain = ParseNumber(form.Text3[s].Text());
    form.Slider2[s].SetPosition(model::PeqPositionFromGain(shown_gain));
    const double frequency = std::min(model::MarkerFrequency(left), HighestFrequency);
    form.Text4[s].SetText(NumberText(model::SnapToFrequencyTable(frequency)));
    form.Text4[s].Refresh();
    context_.Values().PeqGain[s] = shown_gain;
    context_.Values().PeqFrequency[s] = ParseNumber(form.Text4[s].Text());
    response_.UpdatePeqCurve(section);
}

void EqualiserEditing::DropMarker(controls::FrmCtrl& form, int section) {
    const std::size_t s = At(section);
    form.MarkerDragging[s] = false;
    if (!form.MarkerMoved[s]) {
        return;
    }
    form.MarkerMoved[s] = false;
    if (IsCurrent(form)) { // another window's device is not to get this one's frame
        model::SetPeq(context_, section);
    }
}

bool EqualiserEditing::IsCurrent(const controls::FrmCtrl& form) const {
    return &form == &context_.Form();
}

template <class Change>
controls::KeyEntry EqualiserEditing::KeyInFrequency(controls::TextBox& box, char key, const char* refusal,
                                                    Change change) {
    if (IsDigit(key) || key == BackspaceKey) {
        return key;
    }
    if (key == EnterKey) {
        try {
            HoldFrequency(box);
            change();
            return key;
        } catch (const RuntimeError&) {
            // The Enter key itself is what is replaced.
        }
    }
    Warn(refusal);
    return {Refused, true};
}

controls::KeyEntry EqualiserEditing::KeyInPeqFrequency(int section, char key) {
    if (context_.Windows.ControlEventsOff) {
        return key;
    }
    return KeyInFrequency(context_.Form().Text4[At(section)], key, "  Incorrect frequency value",
                          [&] { ChangePeq(section); });
}

controls::KeyEntry EqualiserEditing::KeyInToneFrequency(int filter, char key) {
    return KeyInFrequency(context_.Form().Text7[At(filter)], key, "  Incorrect frequency value",
                          [&] { ChangeTone(filter); });
}

controls::KeyEntry EqualiserEditing::KeyInCrossoverFrequency(int side, char key) {
    return KeyInFrequency(context_.Form().Text8[At(side)], key, "  Incorrect f value", [&] { ChangeCrossover(side); });
}

controls::KeyEntry EqualiserEditing::KeyInBandwidth(int section, char key) {
    constexpr std::size_t CharactersRead = 4;
    if (context_.Windows.ControlEventsOff || IsDigit(key) || key == BackspaceKey || key == '.') {
        return key;
    }
    if (key == ',') {
        return '.';
    }
    if (key == EnterKey) {
        try {
            const std::string text =
                model::TrimBlanks(context_.Form().Text5[At(section)].Text()).substr(0, CharactersRead);
            // The change of the up-down does the rest; without a change the text stays as typed.
            context_.Form().UpDown3[At(section)].SetPosition(model::BandwidthCode(ParseNumber(text)));
            return key;
        } catch (const RuntimeError&) {
            // As below.
        }
    }
    Warn("  Incorrect Q value");
    return {' ', true};
}

void EqualiserEditing::Warn(const char* text) {
    boxes_.Show({text, "Warning"});
}

} // namespace nrv::response
