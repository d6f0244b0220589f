#pragma once

#include "controls/containers.h"
#include "model/command_context.h"
#include "ports/message_boxes.h"
#include "ports/numbering.h"
#include "ports/window_host.h"
#include "response/response.h"

#include <functional>
#include <string>

namespace nrv::presets {

/// What the operations behind the tool buttons work on; all act on the current window and its device.
struct ToolContext {
    model::CommandContext Commands;
    response::Response& Response;
    MessageBoxes& Boxes;
    WindowHost& Host;
    controls::Form& MainWindow;                   ///< shows the wait cursor
    std::function<void(const std::string&)> Tell; ///< the status line; an empty sentence takes it back

    /// The running operation.
    Operation& Current() const { return Commands.Link.Current; }
    /// An image was applied: tells what the user would not expect of it, and that the outputs are muted where the
    /// device takes no mutes from a preset.
    void TellApplied(std::string sentence = {}) const {
        if (Commands.Values().MuteWithPreset != 1.0) {
            sentence += sentence.empty() ? "" : " ";
            sentence += "All outputs are muted, for " + IdText(Commands.DeviceId()) +
                        " takes no mutes from a preset. \"Gains\" unmutes them.";
        }
        if (!sentence.empty()) {
            Tell(sentence);
        }
    }
    /// Shows a dialog until it is closed; its controls are a part of the operation.
    void RunDialog(ToolDialog dialog) const {
        const Operation::Standing standing(Current(), Operation::Loop::Dialog);
        Host.RunDialog(dialog);
    }
};

} // namespace nrv::presets
