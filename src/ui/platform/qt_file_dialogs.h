#pragma once

#include "ports/file_dialogs.h"
#include "ports/operation.h"

namespace nrv::ui {

/// The toolkit's common file dialog over the active window, named "FileDialog".
class QtFileDialogs : public FileDialogs {
  public:
    /// The operation is told of the questions that the dialog asks by itself.
    explicit QtFileDialogs(Operation& operation) : operation_(operation) {}
    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override;

  private:
    Operation& operation_;
};

} // namespace nrv::ui
