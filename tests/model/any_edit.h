#pragma once

#include "controls/frm_ctrl.h"
#include "controls/text_box.h"
#include "model/decimal_text.h"
#include "presets/parameter_places.h"

#include <random>
#include <set>
#include <string>

namespace nrv::testing {

/// Enters a text as a user does.
inline void TypeInto(controls::TextBox& box, const std::string& text) {
    box.UserText(text);
    box.UserKey(controls::EnterKey);
}

/// The kinds of which something changed between two images.
inline std::set<presets::ParameterKind> KindsThatDiffer(const model::PresetImageRow& one,
                                                        const model::PresetImageRow& other) {
    std::set<presets::ParameterKind> kinds;
    for (const presets::Parameter parameter : presets::Differing(one, other)) {
        kinds.insert(parameter.Kind);
    }
    return kinds;
}

/// Every kind but the names, which no control of the window sets.
inline std::set<presets::ParameterKind> EditedKinds() {
    std::set<presets::ParameterKind> kinds;
    for (const presets::Parameter parameter : presets::Parameters()) {
        kinds.insert(parameter.Kind);
    }
    kinds.erase(presets::ParameterKind::ChannelName);
    return kinds;
}

/// An edit by chance of any parameter that a window's controls set, and of no view.
inline void EditAnyParameter(controls::FrmCtrl& form, std::mt19937& random) {
    const auto pick = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const auto any = [&random](auto& range) -> auto& {
        return range[static_cast<std::size_t>(random() % range.size())];
    };
    const auto channel = static_cast<std::size_t>(pick(ChannelCount));
    const auto filter = static_cast<std::size_t>(pick(ToneCount));
    switch (pick(22)) {
    case 0:
        return any(form.Slider1).UserMove(pick(121));
    case 1:
        return any(form.Check1).UserToggle();
    case 2:
        return any(form.Check2).UserToggle();
    case 3:
        return any(form.UpDown1).UserStep(pick(95) - 47);
    case 4:
        return any(form.UpDown2).UserStep(pick(5001) - 2500);
    case 5:
        return TypeInto(any(form.Text2), model::DecimalText(pick(2'600'000), 3));
    case 6:
        return form.Slider100.UserMove(pick(121));
    case 7:
        return form.Combo4.UserSelect(pick(2));
    case 8:
        return any(form.Option1).Select();
    case 9:
        return any(form.Slider2).UserMove(pick(151));
    case 10:
        return any(form.UpDown3).UserStep(pick(119) - 59);
    case 11:
        return TypeInto(any(form.Text4), std::to_string(pick(25'000)));
    case 12: // of the scale: another text may stay as it was typed
        return TypeInto(any(form.Text5), model::DecimalText(5L * (1 + pick(60)), 2));
    case 13:
        return any(form.Slider3).UserMove(pick(37));
    case 14:
        return form.Combo1[filter].UserSelect(pick(IsToneOfInput(filter) ? 3 : 5));
    case 15:
        return TypeInto(any(form.Text7), std::to_string(pick(25'000)));
    case 16:
        return any(form.Combo2).UserSelect(pick(11));
    case 17:
        return TypeInto(any(form.Text8), std::to_string(pick(25'000)));
    case 18:
        return form.Slider4[channel].UserMove(pick(IsInput(channel) ? 11 : 61));
    case 19:
        return any(form.Slider5).UserMove(pick(19));
    case 20:
        return any(form.Slider6).UserMove(pick(30));
    default:
        return any(form.Combo3).UserSelect(pick(3));
    }
}

} // namespace nrv::testing
