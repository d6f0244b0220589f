#include "ports/child.h"
#include "presets/files_window.h"

// Permissions, links and devices as POSIX has them.

namespace nrv::testing {
namespace {

class RefusedPresetFile : public PresetFilesTest {
  protected:
    /// What a load says and does for a user for whom file permissions count.
    std::string LoadAsOrdinaryUser() {
        return AsOrdinaryUser([this] {
            const Image before = Bytes771();
            Load();
            std::string said = std::to_string(world.Port.Sent.size()) + " frames";
            for (const MessageBox& box : world.Boxes.Shown) {
                said += box.Icon == BoxIcon::Exclamation ? ", ! " : ", ";
                said += box.Title + ':' + box.Text;
            }
            return said + (Status().empty() ? "" : ", " + Status()) + (Bytes771() == before ? "" : ", changed");
        });
    }
    void Allow(const std::string& name, unsigned permissions) const {
        std::filesystem::permissions(world.Folder.Path() / name, std::filesystem::perms(permissions));
    }
};

TEST_F(PresetFilesTest, LinkIntoAMissingFolderIsFileNotFound) {
    std::filesystem::create_symlink("absent/a.n91", world.Folder.Path() / "link.n91");
    program.Stores.LastInputType = 1.0;
    const Image before = Bytes771();
    const std::string title = form.Window.Caption();
    ExpectFileNotFound("link.n91", before, title);
    EXPECT_FALSE(world.Folder.Has("absent"));
}

TEST_F(PresetFilesTest, SaveToADeviceIsRefused) {
    ASSERT_TRUE(std::filesystem::is_character_file("/dev/null"));
    const std::string title = form.Window.Caption();
    world.Files.File = "/dev/null";
    Save();
    EXPECT_EQ(Status(), "The preset was not saved. null could not be written: it is not a file.");
    EXPECT_EQ(form.Window.Caption(), title);
}

TEST_F(RefusedPresetFile, FileThatMayNotBeReadChangesNothing) {
    world.Folder.Write("a.n91", AsFile(RandomImage()));
    Allow("a.n91", 0000);
    Allow("", 0777);
    const std::string said = LoadAsOrdinaryUser();
    EXPECT_EQ(said, "0 frames, The preset was not loaded. a.n91 could not be read: Permission denied.");
}

TEST_F(RefusedPresetFile, FileThatMayOnlyBeReadIsLoaded) {
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x04;
    Image file = Bytes771();
    file[1] = 90; // gain of In A
    world.Folder.Write("a.n91", AsFile(file));
    Allow("a.n91", 0444);
    Allow("", 0555);
    const std::string said = LoadAsOrdinaryUser();
    EXPECT_EQ(said, std::to_string(BulkLoadFrames) + " frames, changed");
    EXPECT_EQ(world.Folder.Read("a.n91"), AsFile(file));
}

TEST_F(RefusedPresetFile, NameThatCannotBeMadeInItsFolderIsFileNotFound) {
    Allow("", 0555);
    const std::string said = LoadAsOrdinaryUser();
    EXPECT_EQ(said, "0 frames, !  Error: File not found. Try again.");
    EXPECT_FALSE(world.Folder.Has("a.n91"));
}

TEST_F(PresetFilesTest, LinkToANameThatCanBeMadeBecomesAnEmptyFile) {
    values.MuteWithPreset = 1.0;
    std::filesystem::create_symlink("made.n91", world.Folder.Path() / "link.n91");
    Choose("link.n91");
    Load();
    EXPECT_TRUE(world.Folder.Has("made.n91"));
    EXPECT_TRUE(world.Folder.Read("made.n91").empty());
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV 916 - Last preset loaded: come from PC - link.n91");
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

} // namespace
} // namespace nrv::testing
