#pragma once

#include "model/command_context.h"
#include "ports/message_boxes.h"

namespace nrv::model {

/// Delay of a channel from either copy of its up-downs, control index 0 to 15; one frame. A reported link failure
/// leaves the twin behind.
void SetDelay(const CommandContext& context, int index);

/// How delays are shown, 0 time or 1 distance: the option bit goes to the device's memory, all texts are written anew.
/// The device itself knows time alone.
void SetDelayUnit(const CommandContext& context, int unit);

/// A key in a delay's text box, control index 0 to 15: returns what enters the box in its place. Enter takes the number
/// over.
controls::KeyEntry TypedDelay(const CommandContext& context, MessageBoxes& boxes, int index, char key);

} // namespace nrv::model
