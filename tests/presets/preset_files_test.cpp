#include "presets/files_window.h"

namespace nrv::testing {
namespace {

TEST_F(PresetFilesTest, SaveWritesTheImageAsItStands) {
    const Image before = RandomImage();
    Put(before);
    Save();
    EXPECT_EQ(world.Folder.Read("a.n91"), AsFile(before));
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectSame(Bytes771(), before);
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV-718 - Last preset loaded: come from PC - a.n91");
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(PresetFilesTest, DialogsOfferPresetsInThePresetFolder) {
    world.Files.File.reset();
    Save();
    Load();
    const std::string folder = (world.Folder.Path() / "preset").string();
    EXPECT_THAT(world.Files.Log, ::testing::ElementsAre("save file preset (*.n91)|*.n91 in " + folder,
                                                        "open file preset (*.n91)|*.n91 in " + folder));
    EXPECT_FALSE(world.Folder.Has("preset"));
}

TEST_F(PresetFilesTest, CancelEndsBothSilently) {
    const Image before = Bytes771();
    const std::string title = form.Window.Caption();
    world.Files.File.reset();
    Save();
    Load();
    ExpectNothingDone(before, title);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(Status(), "");
}

TEST_F(PresetFilesTest, SaveKeepsTheTailOfALongerFile) {
    world.Folder.Write("a.n91", Bytes(1000, 0xAB));
    Save();
    const Bytes file = world.Folder.Read("a.n91");
    ASSERT_EQ(file.size(), 1000U);
    EXPECT_EQ(Bytes(file.begin(), file.begin() + 771), AsFile(Bytes771()));
    EXPECT_EQ(Bytes(file.begin() + 771, file.end()), Bytes(229, 0xAB));
}

TEST_F(PresetFilesTest, SaveThatFailsIsToldAtTheFootAndNowhereElse) {
    const Image before = Bytes771();
    const std::string title = form.Window.Caption();
    Choose("absent/a.n91");
    Save();
    EXPECT_EQ(Status(), "The preset was not saved. a.n91 could not be written: No such file or directory.");
    EXPECT_TRUE(world.Boxes.Shown.empty());
    ExpectNothingDone(before, title);
    std::filesystem::create_directory(world.Folder.Path() / "b.n91");
    Choose("b.n91");
    Save();
    EXPECT_EQ(Status(), "The preset was not saved. b.n91 could not be written: it is a folder.");
    EXPECT_EQ(form.Window.Caption(), title);
}

TEST_F(PresetFilesTest, FolderUnderTheNameChangesNothing) {
    std::filesystem::create_directory(world.Folder.Path() / "a.n91");
    program.Stores.LastInputType = 1.0;
    const Image before = Bytes771();
    const std::string title = form.Window.Caption();
    Load();
    ExpectNothingDone(before, title);
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 0.0);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(Status(), "The preset was not loaded. a.n91 could not be read: it is a folder.");
}

TEST_F(PresetFilesTest, MissingFolderIsFileNotFound) {
    world.Folder.Write("file", {1});
    program.Stores.LastInputType = 1.0;
    const Image before = Bytes771();
    const std::string title = form.Window.Caption();
    for (const char* name : {"absent/a.n91", "file/a.n91"}) {
        SCOPED_TRACE(name);
        ExpectFileNotFound(name, before, title);
    }
    EXPECT_FALSE(world.Folder.Has("absent"));
}

TEST_F(PresetFilesTest, NameThatDoesNotExistBecomesAnEmptyFileAndTheImageIsApplied) {
    values.MuteWithPreset = 1.0;
    image.SystemPage[16] = 0x24;
    const Image before = Bytes771();
    Choose("new.n91");
    Load();
    EXPECT_TRUE(world.Folder.Has("new.n91"));
    EXPECT_TRUE(world.Folder.Read("new.n91").empty());
    ExpectSame(Bytes771(), before);
    EXPECT_EQ(world.Port.Sent.size(), std::size_t{BulkLoadFrames});
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV 916 - Last preset loaded: come from PC - new.n91");
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(PresetFilesTest, LoadSendsTheWholePresetUnderTheWaitCursor) {
    const Body body = RandomPreset(random);
    Image file = RandomImage();
    std::ranges::copy(body, file.begin());
    file[OptionBits] = 0x24;
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 1.0;
    const LoadSituation situation{Id, 0x24, true, Sources(), 0};
    Load();
    ExpectSent(Trace(body, situation));
    EXPECT_FALSE(pointers.empty());
    EXPECT_THAT(pointers, ::testing::Each(controls::Pointer::Hourglass));
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV 916 - Last preset loaded: come from PC - a.n91");
    EXPECT_EQ(Status(), "");
    ExpectAtRest();
}

TEST_F(PresetFilesTest, AnyImageComesBackFromItsFileByteForByte) {
    values.MuteWithPreset = 1.0;
    for (int round = 0; round < 8; ++round) {
        const Image saved = [&] {
            Image bytes = RandomImage();
            bytes[OptionBits] |= 0x04;
            return bytes;
        }();
        program.Stores.LastInputType = (saved[OptionBits] & 0x10) != 0 ? 1.0 : 0.0;
        values.LockFlag = (saved[OptionBits] & 0x80) != 0 ? 1.0 : 0.0;
        Put(saved);
        Save();
        Put(RandomImage());
        values.MuteWithPreset = 1.0;
        Load();
        ExpectSame(Bytes771(), saved);
        EXPECT_EQ(values.MuteWithPreset, 1.0);
    }
    ExpectAtRest();
}

TEST_F(PresetFilesTest, ChosenSumComesBackFromItsFile) {
    values.MuteWithPreset = 1.0;
    form.Option2[2].Select();  // Out 1 with In B
    form.Option2[16].Select(); // Out 6 with In A
    Save();
    form.Option2[1].Select();
    form.Option2[15].Select();
    Load();
    EXPECT_TRUE(form.Option2[2].Selected());
    EXPECT_TRUE(form.Option2[16].Selected());
    EXPECT_EQ(program.Response.ViewMode[0], 2);
    const std::vector<int> bytes(image.ViewState.begin() + 40, image.ViewState.begin() + 46);
    EXPECT_THAT(bytes, ::testing::ElementsAre(2, 0, 0, 0, 0, 1));
}

TEST_F(PresetFilesTest, WithTheMuteOptionOffTheFilesMutesAreNotTaken) {
    Image file = RandomImage();
    file[71] = file[MuteBits] = 0x03; // the inputs muted, the outputs not
    file[OptionBits] = 0x07;          // the mute option and two bits without a meaning
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 0.0;
    values.OptionBit5 = 1.0;
    Load();
    EXPECT_EQ(world.Port.CountSent(0x0A), 0);
    EXPECT_THAT(values.ChannelMute, ::testing::ElementsAre(0, 0, 1, 1, 1, 1, 1, 1));
    Image expected = file;
    expected[71] = expected[MuteBits] = 0xFC;
    expected[OptionBits] = 0x20; // rebuilt from the device's settings
    ExpectSame(Bytes771(), expected);
    EXPECT_EQ(values.MuteWithPreset, 0.0);
}

TEST_F(PresetFilesTest, MuteOptionIsTheDevicesAndNotTheFiles) {
    Image file = RandomImage();
    file[OptionBits] = 0x28; // without the mute option
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 1.0;
    Load();
    EXPECT_EQ(values.MuteWithPreset, 1.0);
    EXPECT_EQ(image.SystemPage[16], 0x2C);
    EXPECT_EQ(world.Port.Sent.front(), FrameOf({0x0A}));
    EXPECT_EQ(world.Port.Sent.back(), FrameOf({0x0A, 1}));
}

TEST_F(PresetFilesTest, InputTypeIsTheLastChoiceOfAnyWindowAndGoesToRowZero) {
    Image file = RandomImage();
    file[OptionBits] = 0x04; // analog
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 1.0;
    values.InputType = 0.0;
    program.Stores.LastInputType = 1.0;
    Load();
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 1.0);
    EXPECT_EQ(image.SystemPage[16], 0x14);
    EXPECT_EQ(values.InputType, 1.0); // decoded again from the bit that was forced
    EXPECT_EQ(form.Combo4.Index(), 1);

    file[OptionBits] = 0x14; // digital
    world.Folder.Write("a.n91", AsFile(file));
    program.Stores.LastInputType = 0.0;
    Load();
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 0.0);
    EXPECT_EQ(image.SystemPage[16], 0x04);
    EXPECT_EQ(world.Port.CountSent(0x0D), 0); // not sent
}

TEST_F(PresetFilesTest, LockIsTheDevicesAndNotTheFiles) {
    struct Case {
        int InFile; ///< option bits with the mute option and the unit, locked or not
        double LockFlag;
        int Kept;
    };
    // Only exactly 1.0 is locked.
    for (const Case& one : {Case{0xC4, 0.0, 0x44}, Case{0x44, 1.0, 0xC4}, Case{0xC4, 1.0, 0xC4}, Case{0x44, 0.0, 0x44},
                            Case{0xC4, 0.5, 0x44}}) {
        SCOPED_TRACE(::testing::Message() << one.InFile << " with the lock at " << one.LockFlag);
        values.MuteWithPreset = 1.0;
        values.LockFlag = one.LockFlag;
        form.Option1[0].Select(); // the file's unit is the other one
        Image file = RandomImage();
        file[OptionBits] = static_cast<std::uint8_t>(one.InFile);
        world.Folder.Write("a.n91", AsFile(file));
        TakeSent();
        Load();
        std::vector<Frame> option_writes = TakeSent();
        std::erase_if(option_writes, [](const Frame& frame) { return frame[3] != 0x11 || frame[5] != 16; });
        EXPECT_THAT(option_writes, ::testing::ElementsAre(FrameOf({0x11, 0, 16, 0, 0, one.Kept})));
        EXPECT_EQ(image.SystemPage[16], one.Kept);
        EXPECT_EQ(values.LockFlag, one.LockFlag);
    }
}

TEST_F(PresetFilesTest, RowZeroIsWrittenAndTheDevicesRowStaysWithTheMuteOptionOff) {
    world.Folder.Write("a.n91", AsFile(RandomImage()));
    values.MuteWithPreset = 0.0;
    values.InputType = 0.0;
    values.OptionBit5 = 0.0;
    program.Stores.LastInputType = 1.0;
    Load();
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 1.0);
    EXPECT_EQ(values.InputType, 0.0);
    EXPECT_EQ(image.SystemPage[16], 0x00); // the forced bit is lost when the byte is rebuilt
}

TEST_F(PresetFilesTest, NamesOfTheMemoryPositionsStay) {
    const auto before = values.PresetNames;
    const std::string current = values.CurrentPresetName;
    Image file = RandomImage();
    std::fill_n(file.begin() + 433 + 64, 128, std::uint8_t{'x'});
    world.Folder.Write("a.n91", AsFile(file));
    Load();
    EXPECT_EQ(values.PresetNames, before);
    EXPECT_EQ(values.CurrentPresetName, current);
    EXPECT_EQ(image.SystemPage[64], 'x');
    EXPECT_EQ(image.SystemPage[191], 'x');
}

TEST_F(PresetFilesTest, ShortFileLeavesWhatLiesPastItsEnd) {
    values.MuteWithPreset = 1.0;
    for (const std::size_t length : {0U, 1U, 72U, 431U, 433U, 450U, 700U, 770U}) {
        Image before = RandomImage();
        before[71] = before[MuteBits] = 0x21;
        before[OptionBits] = 0x04;
        Image file = RandomImage();
        file[71] = file[MuteBits] = 0x21;
        file[OptionBits] = 0x04;
        std::fill_n(file.begin() + SumButtons, 6, std::uint8_t{1});
        std::fill_n(before.begin() + SumButtons, 6, std::uint8_t{1});
        Put(before);
        world.Folder.Write("a.n91", {file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)});
        Load();
        Image expected = before;
        std::copy_n(file.begin(), length, expected.begin());
        ExpectSame(Bytes771(), expected);
        EXPECT_EQ(Status(), "\"a.n91\" holds " + std::to_string(length) +
                                " of the 771 bytes of a preset; what is missing stayed as it was.");
    }
}

TEST_F(PresetFilesTest, ANameMistypedIsToldAndSoAreTheMutesThatComeOfIt) {
    Choose("hal.n91");
    Load();
    EXPECT_EQ(Status(), "\"hal.n91\" was not there: it was made empty, and the settings stayed as they were. "
                        "All outputs are muted, for ID:9 takes no mutes from a preset. \"Gains\" unmutes them.");
}

TEST_F(PresetFilesTest, AWholePresetWithMutesOfItsOwnIsWorthNoWord) {
    values.MuteWithPreset = 1.0;
    world.Folder.Write("a.n91", AsFile(RandomImage()));
    Load();
    EXPECT_EQ(Status(), "");
}

TEST_F(PresetFilesTest, LongFileIsReadInItsFirst771Bytes) {
    values.MuteWithPreset = 1.0;
    Image file = RandomImage();
    file[OptionBits] = 0x04;
    Bytes longer = AsFile(file);
    longer.resize(5000, 0xEE);
    world.Folder.Write("a.n91", longer);
    Load();
    ExpectSame(Bytes771(), file);
    EXPECT_EQ(world.Folder.Read("a.n91"), longer);
}

TEST_F(PresetFilesTest, FailedBulkUpdateEndsTheApplyingAndTheTitleStays) {
    Image file = RandomImage();
    file[OptionBits] = 0x04;
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 1.0;
    const int gain = form.Slider1[0].Position();
    const std::string title = form.Window.Caption();
    const int changed = SourcesThatDiffer(file);
    form.SSTab1.SetTab(4);
    Silence(0x0A);
    Load();
    EXPECT_EQ(TakeSent(), std::vector<Frame>(5, FrameOf({0x0A})));
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Boxes.Shown[0].Title, "Communication problem");
    EXPECT_FALSE(Loaded(0));
    EXPECT_EQ(form.Window.Caption(), title);
    EXPECT_EQ(program.Main.StatusLine.Caption(), StoppedLoad(0, changed));
    EXPECT_EQ(form.Slider1[0].Position(), gain);
    ExpectSame(Bytes771(), file); // the image holds the new data already
    ExpectAtRest();
}

TEST_F(PresetFilesTest, FailureOfAnyOtherFrameLetsTheLoadGoOnInControlsAndStores) {
    values.MuteWithPreset = 1.0;
    Image file = RandomImage();
    file[OptionBits] = 0x04;
    world.Folder.Write("a.n91", AsFile(file));
    const std::string title = form.Window.Caption();
    const int changed = SourcesThatDiffer(file);
    Silence(0x05);
    Load();
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_EQ(world.Port.CountSent(0x05), 5); // the first section, five times
    EXPECT_EQ(world.Port.Sent.back()[3], 0x05);
    EXPECT_EQ(form.Slider100.Position(), 120 - file[143]);
    EXPECT_EQ(values.MasterGain, std::stod(form.Text100.Text()));
    EXPECT_EQ(form.Window.Caption(), title);
    // Behind the bulk update, 16 mutes, the sources, 24 dynamics and 12 crossovers.
    EXPECT_EQ(program.Main.StatusLine.Caption(), StoppedLoad(1 + 16 + 6 + changed + 24 + 12, changed));
    ExpectAtRest();
}

TEST_F(PresetFilesTest, CodeWithoutAnEntryIsToldAtTheFootWithChannelAndByte) {
    Image file = RandomImage();
    file[OptionBits] = 0x04;
    file[151] = 200; // frequency of Out 1's first section
    world.Folder.Write("a.n91", AsFile(file));
    values.MuteWithPreset = 1.0;
    const std::string title = form.Window.Caption();
    Load();
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_THAT(Status(), ::testing::StartsWith("The preset was not loaded to its end. "));
    EXPECT_THAT(Status(), ::testing::HasSubstr("Out 1"));
    EXPECT_THAT(Status(), ::testing::HasSubstr("byte 151 "));
    EXPECT_THAT(Status(), ::testing::HasSubstr("200"));
    EXPECT_EQ(form.Window.Caption(), title);
    ExpectSame(Bytes771(), file);
    ExpectAtRest();

    Put(RandomImage());
    Save(); // what is told of one file is gone with the next
    EXPECT_EQ(Status(), "");
}

TEST_F(PresetFilesTest, DemoModeLoadsTheSameAndSendsNothing) {
    program.Link.DemoMode = true;
    values.MuteWithPreset = 1.0;
    Image file = RandomImage();
    file[OptionBits] = 0x04;
    world.Folder.Write("a.n91", AsFile(file));
    Load();
    ExpectSame(Bytes771(), file);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(form.Window.Caption(), "ID:9 NRV 916 - Last preset loaded: come from PC - a.n91");
}

TEST_F(PresetFilesTest, LoadPlotsAtOnceAndKeepsTheTab) {
    values.MuteWithPreset = 1.0;
    world.Folder.Write("a.n91", AsFile(RandomImage()));
    form.SSTab1.SetTab(3);
    form.Picture1[3].Clear();
    Load();
    EXPECT_EQ(form.SSTab1.Tab(), 3);
    EXPECT_FALSE(form.Picture1[3].Strokes().empty());
}

TEST_F(ProgramTest, LoadOnDeviceZeroTakesTheLastInputTypeWithTheMuteOptionOff) {
    controls::FrmCtrl& form = OpenFactoryDevice(0);
    world.Folder.Write("a.n91", Bytes(model::FactoryImage.begin(), model::FactoryImage.end()));
    world.Files.File = world.Folder.Path() / "a.n91";
    program.Stores.LastInputType = 1.0;
    program.Events.Run(UserIn(0), [&] { form.Command2[0].UserClick(); });
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 1.0);
    EXPECT_EQ(program.Stores.PresetImage[0].SystemPage[16], 0x10); // rebuilt from the row that was written
}

} // namespace
} // namespace nrv::testing
