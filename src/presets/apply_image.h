#pragma once

#include "model/command_context.h"
#include "response/response.h"

namespace nrv::presets {

/// Who applies an image.
enum class ImageCase {
    FromDevice, ///< a memory position of the device was read
    FromFile,   ///< a preset file was loaded, and goes to the device
    Opening,    ///< a window opens
};

/// Brings the image of the current window's device to life: sets each control and runs the command that a user's change
/// of it would run, so that `ParamValues`, the curves and, unless frames are suppressed, the device follow. The tab on
/// top stays, unless a bulk update failed. Throws RuntimeError of kind IndexOutOfRange for a frequency code or a view
/// option without an entry.
void ApplyImage(const model::CommandContext& context, response::Response& response,
                ImageCase image_case = ImageCase::Opening);

/// How many frames a load of the image makes: a source that changes goes out twice, a unit that changes once.
int FramesOfLoad(const model::CommandContext& context);

} // namespace nrv::presets
