#pragma once

#include "ports/file_dialogs.h"
#include "ports/message_boxes.h"
#include "ports/operation.h"

namespace nrv {

/// Message boxes of whose standing the operation knows. After its one report it shows none: what was asked is not done.
class StandingBoxes final : public MessageBoxes {
  public:
    StandingBoxes(MessageBoxes& boxes, Operation& operation) : boxes_(boxes), operation_(operation) {}
    BoxAnswer Show(const MessageBox& box) override;

  private:
    MessageBoxes& boxes_;
    Operation& operation_;
};

/// File dialogs of whose standing the operation knows.
class StandingFileDialogs final : public FileDialogs {
  public:
    StandingFileDialogs(FileDialogs& files, Operation& operation) : files_(files), operation_(operation) {}
    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override;

  private:
    FileDialogs& files_;
    Operation& operation_;
};

} // namespace nrv
