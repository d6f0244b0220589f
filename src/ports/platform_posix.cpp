#include "ports/platform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace nrv::platform {
namespace {

namespace fs = std::filesystem;

constexpr int MostLinks = 40; // as many as the system itself follows

void SyncFolder(const fs::path& folder) {
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
}

} // namespace

std::FILE* Open(const fs::path& file, const char* mode) {
    return std::fopen(file.c_str(), mode);
}

bool Sync(std::FILE* stream) {
    return fsync(fileno(stream)) == 0 || errno == EINVAL || errno == ENOSYS;
}

int Follow(const fs::path& file, fs::path& target) {
    std::error_code ignored;
    target = file;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, ignored)); ++links) {
        if (links == MostLinks) {
            return ELOOP;
        }
        target = target.parent_path() / fs::read_symlink(target, ignored);
    }
    return 0;
}

bool HasOneName(const fs::path& file) {
    std::error_code ignored;
    return fs::hard_link_count(file, ignored) == 1;
}

int TakeOver(std::FILE* stream, const fs::path& beside, const fs::path& target) {
    struct stat old = {};
    if (stat(target.c_str(), &old) != 0 || fchown(fileno(stream), old.st_uid, old.st_gid) != 0) {
        return ErrorNow();
    }
    std::error_code error;
    fs::permissions(beside, fs::status(target, error).permissions(), error);
    return error.value();
}

int Replace(const fs::path& beside, const fs::path& target) {
    std::error_code error;
    fs::rename(beside, target, error);
    if (!error) {
        SyncFolder(target.parent_path());
    }
    return error.value();
}

} // namespace nrv::platform
