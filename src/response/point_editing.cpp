// Points on the graph: dragged with the mouse, or moved by keys.

#include "model/encodings.h"
#include "model/equaliser_commands.h"
#include "model/marker_mapping.h"
#include "model/number_text.h"
#include "model/put_back.h"
#include "ports/numbering.h"
#include "response/equaliser_editing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nrv::response {
namespace {

using model::NumberText;
using model::ParseNumber;

constexpr double HighestGain = 15.0;

// The field that a marker's corner may stand in, in position units.
constexpr double FieldLeft = -60.0;
constexpr double FieldTop = -60.0;
constexpr double FieldRight = 8595.0;
constexpr double FieldBottom = 2835.0;

} // namespace

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
    const double frequency = std::min(model::MarkerFrequency(left), model::HighestHz);
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

void EqualiserEditing::ReturnMarker(controls::FrmCtrl& form, int section) {
    const std::size_t s = At(section);
    form.MarkerDragging[s] = false;
    if (std::exchange(form.MarkerMoved[s], false) && IsCurrent(form)) {
        model::PutBackPoint(context_, section);
        response_.UpdatePeqCurve(section);
    }
}

void EqualiserEditing::StepPoint(int section, controls::PointStep what, int steps) {
    controls::FrmCtrl& form = context_.Form();
    const std::size_t s = At(section);
    switch (what) {
    case controls::PointStep::Gain:
        form.Slider2[s].UserMove(form.Slider2[s].Shown() - steps);
        break;
    case controls::PointStep::Bandwidth:
        form.UpDown3[s].UserStep(steps);
        break;
    case controls::PointStep::Frequency: {
        const int code = model::NearestFrequencyCode(context_.Values().PeqFrequency[s]);
        const int target = std::clamp(code + steps, 0, model::FrequencyTop);
        if (target != code) {
            form.Text4[s].SetText(NumberText(model::FrequencyFromCode(target)));
            KeyInPeqFrequency(section, controls::EnterKey);
        }
        break;
    }
    }
}

} // namespace nrv::response
