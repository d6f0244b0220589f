#pragma once

#include <cerrno>
#include <cstdio>
#include <filesystem>

/// What files ask of the system beyond the standard library: one file for each system. An error is a number of errno.
namespace nrv::platform {

/// The error of the call that just failed, which may have said none.
inline int ErrorNow() {
    return errno == 0 ? EIO : errno;
}

/// As std::fopen does, with its modes; "wbx" fails with EEXIST where the name is taken. Null sets errno.
std::FILE* Open(const std::filesystem::path& file, const char* mode);

/// True when the bytes are on the disk, or when the file system knows no such wish; false sets errno.
bool Sync(std::FILE* stream);

/// Follows the links that a name leads through, to a file that may not exist yet. 0, or the error.
int Follow(const std::filesystem::path& file, std::filesystem::path& target);

/// Whether a file goes by no second name; false where that cannot be told.
bool HasOneName(const std::filesystem::path& file);

/// Gives a new file, open as `stream`, the owner and the permissions of the one it is to replace. 0, or the error.
int TakeOver(std::FILE* stream, const std::filesystem::path& beside, const std::filesystem::path& target);

/// Renames a closed file; one that has its new name already is gone with the same step. 0, or the error.
int Replace(const std::filesystem::path& beside, const std::filesystem::path& target);

} // namespace nrv::platform
