#include "ports/platform.h"

#include <fcntl.h>
#include <io.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace nrv::platform {
namespace {

namespace fs = std::filesystem;

int ErrorOf(DWORD error) {
    const auto condition = std::error_code(static_cast<int>(error), std::system_category()).default_error_condition();
    const bool known = condition && condition.category() == std::generic_category();
    return known ? condition.value() : EIO;
}

HANDLE HandleOf(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

std::FILE* OpenNew(const fs::path& file) {
    const int number = _wopen(file.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    return number < 0 ? nullptr : _fdopen(number, "wb");
}

struct CloseHandleOf {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseHandleOf>;

/// A file behind its links, to ask about it. Null sets the system's last error.
Handle OpenToAsk(const fs::path& file) {
    const HANDLE handle =
        CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// A file's owner and list of rights as they stand; empty sets the system's last error.
std::vector<BYTE> SecurityOf(const fs::path& file) {
    constexpr SECURITY_INFORMATION What = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    GetFileSecurityW(file.c_str(), What, nullptr, 0, &size);
    std::vector<BYTE> security(size);
    const bool there = size != 0 && GetFileSecurityW(file.c_str(), What, security.data(), size, &size) != 0;
    return there ? security : std::vector<BYTE>();
}

PSID OwnerOf(std::vector<BYTE>& security) {
    PSID owner = nullptr;
    BOOL ignored = FALSE;
    GetSecurityDescriptorOwner(security.data(), &owner, &ignored);
    return owner;
}

/// What is marked as coming from the folder loses the mark where that is not asked for.
void KeepMarksOfInheritance(std::vector<BYTE>& security) {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD ignored = 0;
    if (GetSecurityDescriptorControl(security.data(), &control, &ignored) != 0 &&
        (control & SE_DACL_AUTO_INHERITED) != 0) {
        SetSecurityDescriptorControl(security.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    }
}

} // namespace

std::FILE* Open(const fs::path& file, const char* mode) {
    const std::string_view name = mode;
    std::FILE* stream =
        name == "wbx" ? OpenNew(file) : _wfopen(file.c_str(), std::wstring(name.begin(), name.end()).c_str());
    // "nul" and "con" are devices in every folder.
    if (stream != nullptr && GetFileType(HandleOf(stream)) != FILE_TYPE_DISK) {
        std::fclose(stream);
        stream = nullptr;
        errno = EACCES;
    }
    return stream;
}

bool Sync(std::FILE* stream) {
    if (FlushFileBuffers(HandleOf(stream)) != 0 || GetLastError() == ERROR_INVALID_FUNCTION) {
        return true;
    }
    errno = ErrorOf(GetLastError());
    return false;
}

/// A link that leads nowhere is refused: what it would lead to cannot be asked for.
int Follow(const fs::path& file, fs::path& target) {
    target = file;
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return 0;
    }
    const Handle handle = OpenToAsk(file);
    if (!handle) {
        return ErrorOf(GetLastError());
    }
    std::wstring name(GetFinalPathNameByHandleW(handle.get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    const auto room = static_cast<DWORD>(name.size());
    name.resize(GetFinalPathNameByHandleW(handle.get(), name.data(), room, FILE_NAME_NORMALIZED));
    if (name.empty()) {
        return ErrorOf(GetLastError());
    }
    // Not every function takes the prefix of a name of any length.
    constexpr std::wstring_view Prefix = LR"(\\?\)";
    constexpr std::wstring_view OfNetwork = LR"(\\?\UNC\)";
    if (name.starts_with(OfNetwork)) {
        name.replace(0, OfNetwork.size(), LR"(\\)");
    } else if (name.starts_with(Prefix)) {
        name.erase(0, Prefix.size());
    }
    target = name;
    return 0;
}

bool HasOneName(const fs::path& file) {
    const Handle handle = OpenToAsk(file);
    BY_HANDLE_FILE_INFORMATION facts{};
    return handle && GetFileInformationByHandle(handle.get(), &facts) != 0 && facts.nNumberOfLinks == 1;
}

int TakeOver(std::FILE*, const fs::path& beside, const fs::path& target) {
    std::vector<BYTE> old = SecurityOf(target);
    std::vector<BYTE> fresh = SecurityOf(beside);
    if (old.empty() || fresh.empty()) {
        return ErrorOf(GetLastError());
    }
    KeepMarksOfInheritance(old);
    SECURITY_INFORMATION changes = DACL_SECURITY_INFORMATION;
    // Even the owner needs a right of its own to set the owner.
    if (EqualSid(OwnerOf(old), OwnerOf(fresh)) == 0) {
        changes |= OWNER_SECURITY_INFORMATION;
    }
    const bool taken = SetFileSecurityW(beside.c_str(), changes, old.data()) != 0 &&
                       SetFileAttributesW(beside.c_str(), GetFileAttributesW(target.c_str())) != 0;
    return taken ? 0 : ErrorOf(GetLastError());
}

int Replace(const fs::path& beside, const fs::path& target) {
    const bool replaced =
        MoveFileExW(beside.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    return replaced ? 0 : ErrorOf(GetLastError());
}

} // namespace nrv::platform
