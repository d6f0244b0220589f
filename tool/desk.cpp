#include "tool/desk.h"

#include "ports/flag_guard.h"
#include "presets/apply_image.h"
#include "tool/trouble.h"

namespace nrv::tool {

CurveDesk::CurveDesk(const model::PresetImageRow& image) {
    program_->Link.DemoMode = true;
    program_->Windows.WindowSlots[0] = {true, 1, 0};
    Show(image);
}

void CurveDesk::Show(const model::PresetImageRow& image) {
    program::Program& program = *program_;
    program.Commands.Image() = image;
    const FlagGuard unplotted(program.Response.PlotSuspended);
    try {
        presets::ApplyImage(program.Commands, program.Response);
    } catch (const RuntimeError& refused) {
        throw Trouble(std::string(refused.what()) + " \"check\" tells every such byte.");
    }
}

response::Curve CurveDesk::Levels(int channel, AddedInput added) {
    return program_->Response.DrawnLevels(channel, static_cast<int>(added));
}

void RequireWhole(const model::PresetImageRow& image) {
    const CurveDesk shown(image);
}

} // namespace nrv::tool
