#include "ports/record_file.h"

#include "ports/platform.h"
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

namespace nrv {
namespace {

namespace fs = std::filesystem;
using platform::ErrorNow;

using Bytes = std::vector<std::uint8_t>;

constexpr std::uintmax_t MostCopied = 1U << 20; // a file of more is no record's, and is written in place
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

/// A number of errno, whatever the system counts in.
int ErrorOf(const std::error_code& error) {
    return error.default_error_condition().value();
}

/// Unbuffered, so that a write that failed leaves nothing behind that would be tried again. Null sets errno.
Stream Open(const fs::path& file, const char* mode) {
    errno = 0;
    Stream stream(platform::Open(file, mode));
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
        Refuse(file, what, ErrorOf(error));
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

/// 0, or the error that stopped it.
int Write(std::FILE* stream, std::span<const std::uint8_t> bytes) {
    errno = 0;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size() && platform::Sync(stream);
    return written ? 0 : ErrorNow();
}

/// The file that a name stands for, though it may not exist yet: a link stays a link, and what it leads to is written.
fs::path Followed(const fs::path& file) {
    fs::path target;
    if (const int error = platform::Follow(file, target); error != 0) {
        Refuse(file, "written", error);
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
    int error = existed ? platform::TakeOver(stream.get(), beside, target) : 0;
    if (error == 0) {
        error = Write(stream.get(), whole);
    }
    stream.reset();
    if (error == 0) {
        error = platform::Replace(beside, target);
    }
    if (error != 0) {
        std::error_code ignored;
        fs::remove(beside, ignored);
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
        replaceable = copied && platform::HasOneName(target);
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
    const fs::path name = file.filename();
    std::string text;
    const auto add = [&text](std::uint32_t code) { text += code < 256 ? static_cast<char>(code) : '?'; };
    try {
        std::ranges::for_each(name.u32string(), add);
    } catch (const std::exception&) { // no Unicode: as it stands
        for (const fs::path::value_type unit : name.native()) {
            add(static_cast<std::make_unsigned_t<fs::path::value_type>>(unit));
        }
    }
    return text;
}

} // namespace nrv
