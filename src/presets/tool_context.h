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

    /// The running operation.
    Operation& Current() const { return Commands.Link.Current; }
    /// Shows a dialog until it is closed; its controls are a part of the operation.
    void RunDialog(ToolDialog dialog) const {
        const Operation::Standing standing(Current(), Operation::Loop::Dialog);
        Host.RunDialog(dialog);
    }
};

} // namespace nrv::presets
