#include "history/autosave.h"
#include "history/rack_world.h"

namespace nrv::testing {
namespace {

using history::AutosaveFile;

class AutosaveTest : public RackWorld {
  protected:
    Bytes Copy(int id, int number) {
        const auto file = AutosaveFile(world.Folder.Path(), id, number);
        return std::filesystem::exists(file)
                   ? world.Folder.Read(std::filesystem::relative(file, world.Folder.Path()).string())
                   : Bytes{};
    }
    Bytes Image(int id) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&program.Stores.PresetImage[At(id)]);
        return {bytes, bytes + 771};
    }
    bool Exists(int id, int number) { return std::filesystem::exists(AutosaveFile(world.Folder.Path(), id, number)); }
    void EditOne(int slot) {
        By(slot, [&] { Window(slot).Slider1[3].UserMove((Window(slot).Slider1[3].Position() + 1) % 100); });
    }
    void Minute() { program.Main.AutosaveTimer.Tick(); }
};

TEST_F(AutosaveTest, AChangeIsKeptAMinuteLaterAndOlderCopiesGiveWay) {
    EXPECT_FALSE(program.Main.AutosaveTimer.Running());
    std::vector<Bytes> images;
    for (int n = 0; n < 12; ++n) {
        EditOne(1);
        EXPECT_TRUE(program.Main.AutosaveTimer.Running());
        EXPECT_EQ(program.Main.AutosaveTimer.Interval(), 60'000);
        images.push_back(Image(5));
        Minute();
        EXPECT_FALSE(program.Main.AutosaveTimer.Running());
    }
    for (int copy = 1; copy <= 9; ++copy) {
        EXPECT_EQ(Copy(5, copy), images[At(12 - copy)]) << copy;
    }
    EXPECT_FALSE(Exists(5, 10));
    EXPECT_FALSE(Exists(5, 0));
    EXPECT_FALSE(Exists(9, 1)) << "another device changed nothing";
}

TEST_F(AutosaveTest, TheFirstCopyHasNoOlderOne) {
    std::filesystem::create_directory(world.Folder / "preset");
    EditOne(1);
    Minute();
    EXPECT_TRUE(Exists(5, 1));
    EXPECT_FALSE(Exists(5, 2));
}

TEST_F(AutosaveTest, ACopyIsOfADeviceThatChangedSinceItsLast) {
    EditOne(1);
    Minute();
    program.Stores.PresetImage[5].ViewState[60] = 7; // nobody's doing
    EditOne(2);
    Minute();
    EXPECT_FALSE(Exists(5, 2));
    EXPECT_TRUE(Exists(9, 1));
}

TEST_F(AutosaveTest, WhatIsKeptAlreadyIsNotKeptAgain) {
    EditOne(1);
    Minute();
    EditOne(1);
    Undo(1);
    Minute();
    EXPECT_EQ(Copy(5, 1), Image(5));
    EXPECT_EQ(Copy(5, 2), Bytes{});
}

TEST_F(AutosaveTest, AWindowThatClosesLeavesACopy) {
    EditOne(1);
    program.Events.Run(UserIn(1), [&] { program.Control.QueryUnload(1); });
    EXPECT_EQ(Copy(5, 1), Image(5));
}

TEST_F(AutosaveTest, ADeviceThatDiesLeavesACopyOfWhatWasMeant) {
    answers_left = 0;
    EditOne(1);
    ASSERT_FALSE(Loaded(1));
    EXPECT_EQ(Copy(5, 1), Image(5));
    EXPECT_EQ(Image(5)[model::GainOffsets[3] + 1], 120 - Window(1).Slider1[3].Position());
}

TEST_F(AutosaveTest, TheEndLeavesCopiesOfAllWindows) {
    EditOne(0);
    EditOne(2);
    try {
        program.Events.Run(UserOutside(), [&] { program.StartUp.MainQueryUnload(); });
    } catch (const EndOfProcess&) {
    }
    EXPECT_EQ(Copy(2, 1), Image(2));
    EXPECT_EQ(Copy(5, 1), Image(5));
    EXPECT_EQ(Copy(9, 1), Image(9));
}

TEST_F(AutosaveTest, TheFirstAndTheLastIdAreAmongThem) {
    for (const int id : {0, 32}) {
        program.Autosave.Changed(id);
    }
    Minute();
    EXPECT_EQ(Copy(0, 1), Image(0));
    EXPECT_EQ(Copy(32, 1), Image(32));
}

TEST_F(AutosaveTest, TheUsersOwnAreKeptBeforeAComparison) {
    EditOne(1);
    const Bytes own = Image(5);
    Compare(1);
    EXPECT_NE(Image(5), own);
    EXPECT_EQ(Copy(5, 1), own);
    Minute();
    EXPECT_EQ(Copy(5, 2), own);
}

TEST_F(AutosaveTest, ACopyLoadsLikeAnyPreset) {
    EditOne(1);
    Minute();
    const All kept = Look(1);
    for (int n = 0; n < 30; ++n) {
        Edit(1);
    }
    Load(1, AutosaveFile(world.Folder.Path(), 5, 1));
    EXPECT_TRUE(std::equal(kept.Image.begin(), kept.Image.begin() + 71, Look(1).Image.begin()));
}

TEST_F(AutosaveTest, AFolderThatCannotBeWrittenIsToldOnceUntilItCan) {
    world.Folder.Write("preset/x", Bytes{});
    std::filesystem::remove_all(world.Folder.Path() / "preset");
    world.Folder.Write("preset", Bytes{1}); // a file stands in its place
    EditOne(1);
    Minute();
    EXPECT_THAT(program.Main.StatusLine.Caption(),
                ::testing::StartsWith("The copy of what plays in ID:5 was not kept. "));
    EditOne(1);
    Minute();
    EXPECT_EQ(program.Main.StatusLine.Caption(), "");
    std::filesystem::remove(world.Folder.Path() / "preset");
    EditOne(1);
    Minute();
    EXPECT_EQ(Copy(5, 1), Image(5));
    std::filesystem::remove_all(world.Folder.Path() / "preset");
    world.Folder.Write("preset", Bytes{1});
    EditOne(1);
    Minute();
    EXPECT_THAT(program.Main.StatusLine.Caption(),
                ::testing::StartsWith("The copy of what plays in ID:5 was not kept. "));
}

} // namespace
} // namespace nrv::testing
