#pragma once

#include <filesystem>

namespace nrv::simulator {

/// A symbolic link by which the remote control finds the line, such as com1 in its folder.
class LinkFile {
  public:
    /// Makes `path` a link to `target`. A link that leads nowhere, or to `target` already, is replaced; anything else
    /// that stands there is left alone. Throws std::runtime_error with the reason.
    LinkFile(const std::filesystem::path& path, std::filesystem::path target);

    /// Removes the link if it is still this one.
    ~LinkFile();
    LinkFile(const LinkFile&) = delete;
    LinkFile& operator=(const LinkFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_; ///< absolute, so that it is found again from another folder
    std::filesystem::path target_;
};

} // namespace nrv::simulator
