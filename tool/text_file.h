#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

namespace nrv::tool {

/// A file of text as its bytes. Throws Trouble for one that cannot be read, or is longer than any text of filters.
std::string ReadText(const std::filesystem::path& file);

/// Writes a file of text anew, "-" being the standard output. Throws Trouble.
void WriteText(const std::filesystem::path& file, std::ostream& standard_output,
               const std::function<void(std::ostream&)>& write);

} // namespace nrv::tool
