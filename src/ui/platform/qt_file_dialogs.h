#pragma once

#include "ports/file_dialogs.h"

namespace nrv::ui {

/// The toolkit's common file dialog over the active window, named "FileDialog".
class QtFileDialogs : public FileDialogs {
  public:
    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override;
};

} // namespace nrv::ui
