#include "reference/page.h"
#include "support/test_folder.h"
#include "tool/backup_folder.h"

#include <gtest/gtest.h>
#include <map>

namespace nrv::testing {
namespace {

tool::BackupRecord CompleteBackup() {
    tool::BackupRecord record{5, "Main left       ", {}, true};
    record.Positions.at(0) = {true, "Hall            "};
    return record;
}

/// The files of the section on backups in docs/files.md, by name; "..." stands for lines left out.
std::map<std::string, std::vector<std::string>> ToldFiles() {
    std::map<std::string, std::vector<std::string>> files;
    for (const Section& section : SectionsOf(TextOfFile(NRV718_SOURCES "/docs/files.md"))) {
        if (section.Title.starts_with("A backup")) {
            for (const Example& example : section.Examples) {
                files[example.Lines.at(0)] = {example.Lines.begin() + 1, example.Lines.end()};
            }
        }
    }
    return files;
}

void ExpectTold(const std::string& text, const std::vector<std::string>& told) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    const auto dots = std::ranges::find(told, "...");
    if (dots != told.end() && lines.size() > told.size()) {
        lines.erase(lines.begin() + (dots - told.begin()), lines.end() - (told.end() - dots - 1));
        lines.insert(lines.begin() + (dots - told.begin()), "...");
    }
    EXPECT_EQ(lines, told);
}

TEST(FilesPage, TheRecordsOfABackupAreWhatItsFolderHolds) {
    const auto told = ToldFiles();
    ASSERT_EQ(told.size(), 2U);
    const TestFolder folder;
    tool::WriteRecord(folder.Path(), CompleteBackup());
    ExpectTold(folder.ReadText("backup.json"), told.at("backup.json"));
    tool::WriteRestored(folder.Path(), 5, {true});
    ExpectTold(folder.ReadText("restore.json"), told.at("restore.json"));
    EXPECT_EQ(folder.Entries(), 2U);
}

TEST(FilesPage, TheFilesOfABackupHaveTheNamesTold) {
    const std::string page = TextOfFile(NRV718_SOURCES "/docs/files.md");
    EXPECT_NE(page.find("| `" + tool::LiveFile("").string() + "` |"), std::string::npos);
    EXPECT_NE(
        page.find("| `" + tool::PositionFile("", 0).string() + "` to `" + tool::PositionFile("", 7).string() + "` |"),
        std::string::npos);
}

} // namespace
} // namespace nrv::testing
