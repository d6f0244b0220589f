#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace nrv {

/// The first bytes of a file, fewer when it is shorter; a file that does not exist is created empty where that can be
/// done, and reads as nothing. Throws RuntimeError of kind FileAccess when what is there cannot be read or is no file.
std::vector<std::uint8_t> ReadFromStart(const std::filesystem::path& file, std::size_t most);

/// Writes a record over the start of a file and keeps what lies behind it. The file is the old one or the whole new
/// one: a new file is written beside it and renamed, with the owner and the permissions of the old one. Where that
/// cannot be done, or the file has a second name or is larger than a MiB, it is written in place, and a write that
/// fails on the way is taken back. A link stays a link. Throws RuntimeError of kind FileAccess or DiskFull.
void WriteAtStart(const std::filesystem::path& file, std::span<const std::uint8_t> record);

/// A file's name without its folder, as single bytes of Latin-1; a character that is none becomes "?".
std::string FileNameText(const std::filesystem::path& file);

} // namespace nrv
