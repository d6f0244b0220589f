#include "session/failure_text.h"

#include "ports/numbering.h"

namespace nrv::session {

std::string FailureText(const Operation& operation) {
    std::string text = operation.Reason() + "; ";
    if (operation.Name().empty()) {
        text += "the change was not sent";
    } else {
        text += operation.Name() + " stopped";
        if (operation.Frames() > Operation::Untold) {
            text += " after " + std::to_string(operation.Answered()) + " of " + std::to_string(operation.Frames()) +
                    " frames";
        }
    }
    text += ". Double-click ";
    const std::string id = operation.Of() ? IdText(operation.Of()->Device) : std::string();
    text += !id.empty() && operation.Reason().starts_with(id + " ") ? "its row"
                                                                    : "the row of " + (id.empty() ? "the device" : id);
    return text + " to connect it again.";
}

std::string WaitingText(const Operation& operation, int id) {
    return IdText(id) + " does not answer, " + (operation.Progress().empty() ? "waiting" : operation.Progress()) + ".";
}

} // namespace nrv::session
