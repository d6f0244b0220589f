#include "response/equaliser_editing.h"

#include "model/encodings.h"
#include "model/equaliser_commands.h"
#include "model/graph_scale.h"
#include "model/number_text.h"
#include "model/output_commands.h"
#include "model/put_back.h"
#include "ports/numbering.h"
#include "ports/runtime_error.h"

namespace nrv::response {
namespace {

using controls::BackspaceKey;
using controls::EnterKey;
using model::NumberText;
using model::ParseNumber;

constexpr char Refused = '?';

bool IsDigit(char key) {
    return key >= '0' && key <= '9';
}

/// Holds what a frequency box shows to 20000 Hz. Throws RuntimeError when it is no number.
void HoldBelowTop(controls::TextBox& box) {
    if (ParseNumber(box.Text()) > model::HighestHz) {
        box.SetText("20000");
    }
}

/// Holds what a frequency box shows to 20 to 20000 Hz. Throws RuntimeError when it is no number.
void HoldFrequency(controls::TextBox& box) {
    HoldBelowTop(box);
    if (ParseNumber(box.Text()) < model::LowestHz) {
        box.SetText("20");
    }
}

bool HoldsNumber(const controls::TextBox& box) {
    try {
        ParseNumber(box.Text());
        return true;
    } catch (const RuntimeError&) {
        return false;
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
                TakePeq(section);
            }
        };
        form.Slider2[s].Moved = change;
        form.UpDown3[s].Changed = change;
        form.Text4[s].KeyPressed = [this, section](char key) { return KeyInPeqFrequency(section, key); };
        form.Text5[s].KeyPressed = [this, section](char key) { return KeyInBandwidth(section, key); };
        form.Label5[s].Pressed = [&form, s] { form.MarkerDragging[s] = true; };
        form.Label5[s].Moved = [this, &form, section](double x, double y) { DragMarker(form, section, x, y); };
        form.Label5[s].Released = [this, &form, section] { DropMarker(form, section); };
        form.Label5[s].GivenUp = [this, &form, section] { ReturnMarker(form, section); };
        form.Label5[s].Stepped = [this, section](controls::PointStep what, int steps) {
            StepPoint(section, what, steps);
        };
    }
}

void EqualiserEditing::WireTone(controls::FrmCtrl& form) {
    const auto guarded = [this](int filter, const char* refusal) {
        try {
            HoldFrequency(context_.Form().Text7[At(filter)]);
            ChangeTone(filter);
        } catch (const RuntimeError&) {
            model::PutBackTone(context_, filter);
            Warn(refusal);
            context_.Form().Text7[At(filter)].Attend();
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
                TakeCrossover(side);
            }
        };
        form.Text8[x].KeyPressed = [this, side](char key) { return KeyInCrossoverFrequency(side, key); };
    }
}

void EqualiserEditing::ChangePeq(int section) {
    model::SetPeq(context_, section);
    response_.UpdatePeqCurve(section);
}

/// Faders, arrows and slopes have no words of their own for an unreadable text: theirs go up to the event boundary,
/// and a copy that runs them ends there.
void EqualiserEditing::TakePeq(int section) {
    controls::TextBox& frequency = context_.Form().Text4[At(section)];
    if (!HoldsNumber(frequency)) {
        model::PutBackPeq(context_, section);
        model::RefuseText(frequency, ChannelOfPeq(section), "PEQ " + std::to_string(PeqInChannel(section) + 1),
                          model::Frequencies);
    }
    HoldBelowTop(frequency);
    ChangePeq(section);
}

void EqualiserEditing::TakeCrossover(int side) {
    controls::TextBox& frequency = context_.Form().Text8[At(side)];
    if (!HoldsNumber(frequency)) {
        model::PutBackCrossover(context_, side);
        model::RefuseText(frequency, ChannelOfCrossover(side), context_.Form().Frame7[At(side)].Caption(),
                          model::Frequencies);
    }
    HoldFrequency(frequency);
    ChangeCrossover(side);
}

void EqualiserEditing::ChangeTone(int filter) {
    model::SetTone(context_, filter);
    response_.UpdateShelfCurve(filter);
}

void EqualiserEditing::ChangeCrossover(int side) {
    model::SetCrossover(context_, side);
    response_.UpdateCrossoverCurve(side);
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
