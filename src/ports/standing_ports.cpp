#include "ports/standing_ports.h"

namespace nrv {

BoxAnswer StandingBoxes::Show(const MessageBox& box) {
    if (operation_.Reported()) {
        return box.Buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }
    const Operation::Standing standing(operation_, Operation::Loop::Box);
    return boxes_.Show(box);
}

std::optional<std::filesystem::path> StandingFileDialogs::AskOpen(const FileRequest& request) {
    const Operation::Standing standing(operation_, Operation::Loop::Dialog);
    return files_.AskOpen(request);
}

std::optional<std::filesystem::path> StandingFileDialogs::AskSave(const FileRequest& request) {
    const Operation::Standing standing(operation_, Operation::Loop::Dialog);
    return files_.AskSave(request);
}

} // namespace nrv
