#pragma once

#include "controls/containers.h"
#include "model/command_context.h"
#include "ports/message_boxes.h"
#include "ports/window_host.h"
#include "response/response.h"

namespace nrv::presets {

/// What the operations behind the tool buttons work on; all act on the current window and its device.
struct ToolContext {
    model::CommandContext Commands;
    response::Response& Response;
    MessageBoxes& Boxes;
    WindowHost& Host;
    controls::Form& MainWindow; ///< shows the wait cursor
};

} // namespace nrv::presets
