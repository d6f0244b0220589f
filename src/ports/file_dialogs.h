#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace nrv {

/// What the common file dialog offers.
struct FileRequest {
    std::string Filter; ///< such as "file preset (*.n91)|*.n91"
    std::filesystem::path StartFolder;
};

/// The toolkit's common dialog for files; no value when the user cancels.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    /// The name need not exist.
    virtual std::optional<std::filesystem::path> AskOpen(const FileRequest& request) = 0;
    /// Asks before an existing file is taken.
    virtual std::optional<std::filesystem::path> AskSave(const FileRequest& request) = 0;
};

} // namespace nrv
