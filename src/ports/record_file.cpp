#include "ports/record_file.h"

#include "ports/runtime_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace nrv {
namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<std::uint8_t>;

constexpr std::uintmax_t MostCopied = 1U << 20; // a file of more is no record's, and is written in place
constexpr int MostLinks = 40;                   // as many as the system itself follows
constexpr int PlainNewNames = 10;  // names tried beside a file, which those that died on the way may have left,
constexpr int RandomNewNames = 10; // before names that nobody can have left, before it is written in place

struct CloseFile {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void Refuse(const fs::path& file, const char* what, ErrorKind kind, const std::string& why) {
    throw RuntimeError(kind, FileNameText(file) + " could not be " + what + ": " + why + ".");
}

[[noreturn]] void Refuse(const fs::path& file, const char* what, int error) {
    Refuse(file, what, error == ENOSPC ? ErrorKind::DiskFull : ErrorKind::FileAccess, std::strerror(error));
}

int ErrorNow() {
    return errno == 0 ? EIO : errno;
}

/// Unbuffered, so that a write that failed leaves nothing behind that would be tried again. Null sets errno.
Stream Open(const fs::path& file, const char* mode) {
    errno = 0;
    Stream stream(std::fopen(file.string().c_str(), mode));
    if (stream) {
        std::setvbuf(stream.get(), nullptr, _IONBF, 0);
    }
    return stream;
}

/// Whether a file is there; a refusal names it as the user does, who may have named a link to it. A device or a pipe
/// under a file's name could give bytes without end or none for ever, so it is refused.
bool IsThere(const fs::path& target, const fs::path& file, const char* what) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (status.type() == fs::file_type::not_found) {
        return false;
    }
    if (status.type() == fs::file_type::none) {
        Refuse(file, what, error.value());
    }
    if (!fs::is_regular_file(status)) {
        Refuse(file, what, ErrorKind::FileAccess, fs::is_directory(status) ? "it is a folder" : "it is not a file");
    }
    return true;
}

Bytes Read(const fs::path& target, const fs::path& file, std::size_t most) {
    const Stream stream = Open(target, "rb");
    if (!stream) {
        Refuse(file, "read", ErrorNow());
    }
    Bytes bytes;
    std::array<std::uint8_t, 4096> part{};
    while (bytes.size() < most) {
        const std::size_t wanted = std::min(part.size(), most - bytes.size());
        const std::size_t count = std::fread(part.data(), 1, wanted, stream.get());
        bytes.insert(bytes.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(count));
        if (count < wanted) {
            break;
        }
    }
    if (std::ferror(stream.get()) != 0) {
        Refuse(file, "read", ErrorNow());
    }
    return bytes;
}

/// True when the bytes are on the disk, or when the file system knows no such wish.
bool Sync([[maybe_unused]] std::FILE* stream) {
#ifdef _WIN32
    return true;
#else
    return fsync(fileno(stream)) == 0 || errno == EINVAL || errno == ENOSYS;
#endif
}

void SyncFolder([[maybe_unused]] const fs::path& folder) {
#ifndef _WIN32
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
#endif
}

/// Gives a new file the owner and the permissions of the one it is to replace. 0, or the error.
int TakeOver(std::FILE* stream, const fs::path& beside, const fs::path& target) {
    std::error_code error;
#ifdef _WIN32
    static_cast<void>(stream);
#else
    struct stat old = {};
    if (stat(target.c_str(), &old) != 0 || fchown(fileno(stream), old.st_uid, old.st_gid) != 0) {
        return ErrorNow();
    }
#endif
    fs::permissions(beside, fs::status(target, error).permissions(), error);
    return error.value();
}

/// 0, or the error that stopped it.
int Write(std::FILE* stream, std::span<const std::uint8_t> bytes) {
    errno = 0;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size() && Sync(stream);
    return written ? 0 : ErrorNow();
}

/// The file that a name stands for, though it may not exist yet: a link stays a link, and what it leads to is written.
fs::path Followed(const fs::path& file) {
    std::error_code ignored;
    fs::path target = file;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, ignored)); ++links) {
        if (links == MostLinks) {
            Refuse(file, "written", ELOOP);
        }
        target = target.parent_path() / fs::read_symlink(target, ignored);
    }
    return target;
}

std::string NewName(int name) {
    if (name > PlainNewNames) {
        return ".new-" + std::to_string(std::random_device()());
    }
    return name == 1 ? ".new" : ".new" + std::to_string(name);
}

/// Writes a new file beside the target and renames it; a file that has its name already is another's and stays. 0, or
/// the error, and then the target is as it was and nothing lies beside it.
int Replace(const fs::path& target, bool existed, std::span<const std::uint8_t> whole) {
    fs::path beside;
    Stream stream;
    for (int name = 1; name <= PlainNewNames + RandomNewNames && !stream; ++name) {
        beside = target;
        beside += NewName(name);
        stream = Open(beside, "wbx");
        if (!stream && errno != EEXIST) {
            break;
        }
    }
    if (!stream) {
        return ErrorNow();
    }
    int error = existed ? TakeOver(stream.get(), beside, target) : 0;
    if (error == 0) {
        error = Write(stream.get(), whole);
    }
    stream.reset();
    std::error_code failed;
    if (error == 0) {
        fs::rename(beside, target, failed);
        error = failed.value();
    }
    if (error == 0) {
        SyncFolder(target.parent_path());
    } else {
        fs::remove(beside, failed);
    }
    return error;
}

/// Writes over the start of a file; what got through of a write that failed is taken back. 0, or the error.
int WriteInPlace(const fs::path& target, std::span<const std::uint8_t> record, const Bytes& old,
                 std::uintmax_t old_size) {
    Stream stream = Open(target, "r+b");
    if (!stream) {
        return ErrorNow();
    }
    const int error = Write(stream.get(), record);
    if (error != 0) {
        std::rewind(stream.get());
        Write(stream.get(), std::span(old).first(std::min(old.size(), record.size())));
        stream.reset();
        std::error_code ignored;
        if (fs::file_size(target, ignored) > old_size) {
            fs::resize_file(target, old_size, ignored);
        }
    }
    return error;
}

/// Writes a file that does not exist, for want of a second name in its folder. 0, or the error, and then there is none.
int WriteNew(const fs::path& target, std::span<const std::uint8_t> record) {
    Stream stream = Open(target, "wbx");
    if (!stream) {
        return ErrorNow();
    }
    const int error = Write(stream.get(), record);
    stream.reset();
    if (error != 0) {
        std::error_code ignored;
        fs::remove(target, ignored);
    }
    return error;
}

} // namespace

std::vector<std::uint8_t> ReadFromStart(const fs::path& file, std::size_t most) {
    if (!IsThere(file, file, "read")) {
        Open(file, "ab");
        return {};
    }
    return Read(file, file, most);
}

void WriteAtStart(const fs::path& file, std::span<const std::uint8_t> record) {
    const fs::path target = Followed(file);
    const bool existed = IsThere(target, file, "written");
    Bytes old;
    std::uintmax_t old_size = 0;
    bool replaceable = true;
    if (existed) {
        std::error_code ignored;
        old_size = fs::file_size(target, ignored);
        const bool copied = old_size <= MostCopied;
        old = Read(target, file, copied ? MostCopied : record.size());
        // The folder's permission must not stand in for the file's: a file that may not be written is not replaced.
        if (!Open(target, "r+b")) {
            Refuse(file, "written", ErrorNow());
        }
        // A second name of the file would go on standing for the old one.
        replaceable = copied && fs::hard_link_count(target, ignored) == 1;
    }
    Bytes whole(record.begin(), record.end());
    if (old.size() > whole.size()) {
        whole.insert(whole.end(), old.begin() + static_cast<std::ptrdiff_t>(whole.size()), old.end());
    }
    if (replaceable && Replace(target, existed, whole) == 0) {
        return;
    }
    if (const int error = existed ? WriteInPlace(target, record, old, old_size) : WriteNew(target, record);
        error != 0) {
        Refuse(file, "written", error);
    }
}

std::string FileNameText(const fs::path& file) {
    try {
        std::string text;
        for (const char32_t character : file.filename().u32string()) {
            text += character < 256 ? static_cast<char>(character) : '?';
        }
        return text;
    } catch (const std::exception&) {
        return file.filename().string(); // a name that is no UTF-8
    }
}

} // namespace nrv
