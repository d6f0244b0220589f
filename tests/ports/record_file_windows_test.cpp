#include "ports/outcome.h"
#include "ports/platform.h"
#include "ports/record_files.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <aclapi.h>
#include <sddl.h>
#include <windows.h>

// Attributes, rights, sharing and names as Windows has them.

namespace nrv::testing {
namespace {

namespace fs = std::filesystem;

/// A file that somebody has open, and what others may do with it meanwhile.
class HeldOpen {
  public:
    HeldOpen(const fs::path& file, DWORD others_may)
        : handle_(CreateFileW(file.c_str(), GENERIC_READ, others_may, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~HeldOpen() { CloseHandle(handle_); }
    HeldOpen(const HeldOpen&) = delete;
    HeldOpen& operator=(const HeldOpen&) = delete;

  private:
    HANDLE handle_;
};

/// Who may do what with a file, in the system's words: owner and list of rights.
std::string RightsOf(const fs::path& file) {
    constexpr SECURITY_INFORMATION What = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    PSECURITY_DESCRIPTOR rights = nullptr;
    char* words = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(file.c_str(), SE_FILE_OBJECT, What, nullptr, nullptr, nullptr, nullptr, &rights),
              DWORD{ERROR_SUCCESS});
    EXPECT_NE(ConvertSecurityDescriptorToStringSecurityDescriptorA(rights, SDDL_REVISION_1, What, &words, nullptr), 0);
    std::string text = words;
    LocalFree(words);
    LocalFree(rights);
    return text;
}

/// Takes all rights from whoever is neither the owner nor an administrator.
void KeepFromOthers(const fs::path& file) {
    PSECURITY_DESCRIPTOR rights = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorA("D:P(A;;FA;;;OW)(A;;FA;;;BA)", SDDL_REVISION_1,
                                                                   &rights, nullptr),
              0);
    EXPECT_NE(SetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights), 0);
    LocalFree(rights);
}

TEST_F(RecordFile, HiddenFileStaysHidden) {
    folder.Write("init.cfg", {1, 2, 3});
    ASSERT_NE(SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_HIDDEN), 0);
    WriteAtStart(File(), Bytes{9});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 2, 3}));
    EXPECT_NE(GetFileAttributesW(File().c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST_F(RecordFile, ReadOnlyFileIsRefusedAndUnharmed) {
    folder.Write("init.cfg", {1, 2, 3});
    ASSERT_NE(SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_READONLY), 0);
    if (std::ofstream(File(), std::ios::app)) {
        GTEST_SKIP() << "this user may write it all the same";
    }
    ExpectRefused([this] { WriteAtStart(File(), Bytes{9}); }, "init.cfg could not be written: Permission denied.");
    EXPECT_EQ(ReadFromStart(File(), 4), (Bytes{1, 2, 3}));
    EXPECT_EQ(folder.Entries(), 1U);
    SetFileAttributesW(File().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(RecordFile, FileThatAnotherReadsIsWrittenInPlace) {
    folder.Write("init.cfg", {1, 2, 3});
    const HeldOpen reader(File(), FILE_SHARE_READ | FILE_SHARE_WRITE);
    WriteAtStart(File(), Bytes{9, 8});
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 8, 3}));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, FileThatAnotherKeepsForItselfIsRefusedAndUnharmed) {
    folder.Write("init.cfg", {1, 2, 3});
    {
        const HeldOpen owner(File(), 0);
        EXPECT_EQ(OutcomeOf([this] { ReadFromStart(File(), 3); }), "FileAccess");
        EXPECT_EQ(OutcomeOf([this] { WriteAtStart(File(), Bytes{9}); }), "FileAccess");
    }
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{1, 2, 3}));
    EXPECT_EQ(folder.Entries(), 1U);
}

TEST_F(RecordFile, NewFileTakesOverOwnerAndRights) {
    folder.Write("init.cfg", {1, 2, 3});
    const std::string usual = RightsOf(File());
    KeepFromOthers(File());
    const std::string before = RightsOf(File());
    ASSERT_NE(before, usual);
    WriteAtStart(File(), Bytes{9});
    EXPECT_EQ(RightsOf(File()), before);
    EXPECT_EQ(folder.Read("init.cfg"), (Bytes{9, 2, 3}));
}

TEST_F(RecordFile, DeviceIsNotOpened) {
    errno = 0;
    EXPECT_EQ(platform::Open(folder.Path() / "nul", "wb"), nullptr);
    EXPECT_EQ(errno, EACCES);
}

TEST_F(RecordFile, NamesInAnyWritingAreReadAndWritten) {
    const fs::path file = folder.Path() / fs::path(u8"\u97f3\u97ff caf\u00e9.n91");
    WriteAtStart(file, Bytes{1, 2, 3});
    WriteAtStart(file, Bytes{9});
    EXPECT_EQ(ReadFromStart(file, 4), (Bytes{9, 2, 3}));
    EXPECT_EQ(folder.Entries(), 1U);
    EXPECT_EQ(FileNameText(file), "?? caf\xE9.n91");
}

TEST(FileNameText, OfANameThatIsNoTextHasMarksForWhatIsNoCharacter) {
    EXPECT_EQ(FileNameText(L"bad\xD800name"), "bad?name");
}

} // namespace
} // namespace nrv::testing
