#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

namespace nrv::tool {

/// A file of text as its bytes. Throws Trouble for one that cannot be read, or is longer than 4 MiB.
std::string ReadText(const std::filesystem::path& file);

/// Writes a text: a file is the old one or the whole new one. Throws Trouble.
void WriteText(const std::filesystem::path& file, const std::function<void(std::ostream&)>& write);

/// The same, "-" being the standard output.
void WriteText(const std::filesystem::path& file, std::ostream& standard_output,
               const std::function<void(std::ostream&)>& write);

/// Throws Trouble when a file that would be written is one that was read.
void RequireOther(const std::filesystem::path& written, const std::filesystem::path& read);

} // namespace nrv::tool
