#pragma once

#include "model/command_context.h"
#include "ports/message_boxes.h"
#include "response/response.h"

namespace nrv::response {

/// Every PEQ section of a channel, 0 to 7, to 0 dB at its stored frequency and bandwidth: one frame for each section.
void FlatEqualiser(const model::CommandContext& context, Response& response, int channel);

/// Turns what the user does to a filter's controls and to the markers on the graph into values: what is typed is
/// checked and held to its range, what is dragged follows the mouse, then the command sends the frame and the curve
/// follows.
class EqualiserEditing {
  public:
    EqualiserEditing(const model::CommandContext& context, Response& response, MessageBoxes& boxes)
        : context_(context), response_(response), boxes_(boxes) {}

    /// Attaches the events of a window's filters; the window's slot is current when they run.
    void Wire(controls::FrmCtrl& form);

  private:
    void WirePeq(controls::FrmCtrl& form);
    void WireTone(controls::FrmCtrl& form);
    void WireCrossover(controls::FrmCtrl& form);

    void ChangePeq(int section);
    void ChangeTone(int filter);
    /// The change, or the controls as they were and a RuntimeError that names the box.
    void TakePeq(int section);
    void TakeCrossover(int side);
    void ChangeCrossover(int side);

    void DragMarker(controls::FrmCtrl& form, int section, double x, double y);
    void DropMarker(controls::FrmCtrl& form, int section);
    /// Ends a drag as if it had not been.
    void ReturnMarker(controls::FrmCtrl& form, int section);
    /// A key's change, by the way that the fader, the arrows or a typed frequency go.
    void StepPoint(int section, controls::PointStep what, int steps);
    bool IsCurrent(const controls::FrmCtrl& form) const;

    controls::KeyEntry KeyInPeqFrequency(int section, char key);
    controls::KeyEntry KeyInBandwidth(int section, char key);
    controls::KeyEntry KeyInToneFrequency(int filter, char key);
    controls::KeyEntry KeyInCrossoverFrequency(int side, char key);

    /// Digits and backspace pass, Enter holds the frequency and runs the change, all else is refused with the text.
    template <class Change>
    controls::KeyEntry KeyInFrequency(controls::TextBox& box, char key, const char* refusal, Change change);
    void Warn(const char* text);

    model::CommandContext context_;
    Response& response_;
    MessageBoxes& boxes_;
};

} // namespace nrv::response
