#include "model/tables.h"
#include "session/discovery.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

constexpr const char* EmptyName = "  Preset Empty  ";

class DemoDevices : public ProgramTest {
  protected:
    DemoDevices() { program.Link.DemoMode = true; }
    void Flag(const std::map<int, int>& flagged) { world.Folder.Write("Speakers.cfg", SpeakersFile(flagged)); }
    std::vector<int> Found() const {
        std::vector<int> ids;
        for (int index = 0; index <= program.State.FoundLast; ++index) {
            ids.push_back(session::FoundId(program.State, index));
        }
        return ids;
    }
    void ExpectNotFoundBox() {
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Exit", "      Devices not found!", BoxIcon::Critical, BoxButtons::Ok);
        EXPECT_TRUE(world.Process.Ended);
    }
    void ExpectDefaults(int id) {
        const model::ParamRow& values = program.Stores.ParamValues[static_cast<std::size_t>(id)];
        const model::PresetImageRow& image = program.Stores.PresetImage[static_cast<std::size_t>(id)];
        EXPECT_EQ(image.SystemPage[16], 32);
        EXPECT_EQ(image.SystemPage[18], 0);
        EXPECT_EQ(values.MuteWithPreset, 0.0);
        EXPECT_EQ(values.OptionBit3, 0.0);
        EXPECT_EQ(values.InputType, 0.0);
        EXPECT_EQ(values.OptionBit5, 1.0);
        EXPECT_EQ(values.DelayUnit, 0.0);
        EXPECT_EQ(values.LockFlag, 0.0);
        EXPECT_THAT(values.ChannelMute, ::testing::Each(0.0));
        EXPECT_THAT(values.DevicePassword, ::testing::Each(48.0));
        for (std::size_t position = 0; position < 8; ++position) {
            EXPECT_EQ(values.PresetUsed[position], 0.0);
            EXPECT_EQ(values.PresetNames[position], EmptyName);
            const auto start = image.SystemPage.begin() + 64 + static_cast<std::ptrdiff_t>(16 * position);
            EXPECT_EQ(std::string(start, start + 16), EmptyName);
        }
        EXPECT_EQ(image.SystemPage[192], image.SystemPage[208]) << "what follows the eighth name";
        EXPECT_EQ(values.CurrentPresetName, "Factory Preset");
    }
    /// Everything that the defaults set, at another value.
    void Spoil(std::size_t id) {
        model::ParamRow& values = program.Stores.ParamValues[id];
        values.MuteWithPreset = values.OptionBit3 = values.InputType = values.DelayUnit = values.LockFlag = 1.0;
        values.OptionBit5 = 0.0;
        values.ChannelMute.fill(1.0);
        values.DevicePassword.fill(65.0);
        values.PresetUsed.fill(85.0);
        values.PresetNames.fill("something");
        values.CurrentPresetName = "something";
        program.Stores.PresetImage[id].PresetBody.fill(0xEE);
        program.Stores.PresetImage[id].SystemPage.fill(0xEE);
    }
};

TEST_F(DemoDevices, AllFlaggedRecordsAreTakenInFileOrder) {
    Flag({{2, 2}, {5, 30}, {32, 7}});
    program.Devices.LoadDemoDevices();
    EXPECT_THAT(Found(), ::testing::ElementsAre(2, 30, 7));
    ExpectDefaults(2);
    ExpectDefaults(30);
    ExpectDefaults(7);
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(DemoDevices, RecordsAreKeptAsTheFileHasThem) {
    Flag({{2, 2}, {5, 30}});
    program.Devices.LoadDemoDevices();
    EXPECT_EQ(program.State.SpeakerRecords[5].DeviceId(), 30);
    EXPECT_TRUE(program.State.SpeakerRecords[5].Found());
    EXPECT_EQ(program.State.SpeakerRecords[30].DeviceId(), 30);
    EXPECT_FALSE(program.State.SpeakerRecords[30].Found());
}

TEST_F(DemoDevices, IdsThatNoStoreHasARowForArePassedOver) {
    Flag({{1, 33}, {2, -1}, {3, 3}, {4, 32767}, {5, 32}});
    program.Devices.LoadDemoDevices();
    EXPECT_THAT(Found(), ::testing::ElementsAre(3, 32));
}

TEST_F(DemoDevices, IdsOutOfRangeAloneEndTheProcess) {
    Flag({{1, 33}, {2, -7}});
    EXPECT_THROW(program.Devices.LoadDemoDevices(), ProcessEnded);
    ExpectNotFoundBox();
}

TEST_F(DemoDevices, OneDemoDeviceTakesTheChosenId) {
    Flag({{4, 4}, {6, 6}});
    program.State.SingleId = 21;
    program.Devices.LoadDemoDevice();
    EXPECT_THAT(Found(), ::testing::ElementsAre(21));
    EXPECT_EQ(program.State.SpeakerRecords[4].DeviceId(), 21);
    EXPECT_EQ(program.State.SpeakerRecords[6].DeviceId(), 6);
    ExpectDefaults(21);
}

TEST_F(DemoDevices, OneDemoDeviceNeedsOnlyTheFlagOfTheRecord) {
    Flag({{4, 999}});
    program.State.SingleId = 3;
    program.Devices.LoadDemoDevice();
    EXPECT_THAT(Found(), ::testing::ElementsAre(3));
}

TEST_F(DemoDevices, MissingFileEndsTheProcess) {
    EXPECT_THROW(program.Devices.LoadDemoDevices(), ProcessEnded);
    ExpectNotFoundBox();
}

TEST_F(DemoDevices, EmptyFileEndsTheProcessOfOneDeviceToo) {
    world.Folder.Write("Speakers.cfg", {});
    program.State.SingleId = 5;
    EXPECT_THROW(program.Devices.LoadDemoDevice(), ProcessEnded);
    ExpectNotFoundBox();
    EXPECT_EQ(program.State.FoundLast, -1);
}

TEST_F(DemoDevices, FileWithoutAFlagEndsTheProcess) {
    Flag({});
    program.State.FoundLast = 4;
    EXPECT_THROW(program.Devices.LoadDemoDevices(), ProcessEnded);
    ExpectNotFoundBox();
}

TEST_F(DemoDevices, FileThatCannotBeReadEndsTheProcess) {
    std::filesystem::create_directory(world.Folder.Path() / "Speakers.cfg");
    EXPECT_THROW(program.Devices.LoadDemoDevices(), ProcessEnded);
    ExpectNotFoundBox();
}

TEST_F(DemoDevices, ShortFileIsTakenAsFarAsItGoes) {
    Bytes bytes = SpeakersFile({{0, 11}, {1, 12}, {2, 13}});
    bytes.resize(128 + 21);
    world.Folder.Write("Speakers.cfg", bytes);
    program.Devices.LoadDemoDevices();
    EXPECT_THAT(Found(), ::testing::ElementsAre(11, 12));
    EXPECT_EQ(world.Folder.Read("Speakers.cfg"), bytes); // the file is never written
}

TEST_F(DemoDevices, FactoryStateIsTheFactoryImageAndTheDefaults) {
    Spoil(9);
    program.Devices.LoadFactoryState(9);
    ExpectDefaults(9);
    const auto& body = program.Stores.PresetImage[9].PresetBody;
    EXPECT_TRUE(std::equal(model::FactoryImage.begin(), model::FactoryImage.end(), body.begin()));
    EXPECT_EQ(body[432], 0xEE);
    // Some bytes of it by hand: the gains of In A and Out 1, the master gain, a PEQ gain, a source.
    EXPECT_EQ(body[1], 60);
    EXPECT_EQ(body[184], 60);
    EXPECT_EQ(body[9], 75);
    EXPECT_EQ(body[185], 1);
}

TEST_F(DemoDevices, ReadingADemoDeviceSetsTheDefaultsAndSendsNothing) {
    Spoil(9);
    program.Link.LinkReady = true;
    program.Devices.ReadDeviceState(9);
    ExpectDefaults(9);
    EXPECT_EQ(program.Stores.PresetImage[9].PresetBody[0], 0xEE); // the image in memory stays
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(DemoDevices, ReadingADemoDeviceEmptiesTheNameOfRowZero) {
    program.Stores.ParamValues[0].CurrentPresetName = "of device 0";
    program.Devices.ReadDeviceState(9);
    EXPECT_EQ(program.Stores.ParamValues[0].CurrentPresetName, "");
    EXPECT_EQ(program.Stores.ParamValues[9].CurrentPresetName, "Factory Preset");
}

TEST_F(DemoDevices, ReadingDemoDeviceZeroEndsWithItsName) {
    program.Devices.ReadDeviceState(0);
    EXPECT_EQ(program.Stores.ParamValues[0].CurrentPresetName, "Factory Preset");
}

TEST_F(DemoDevices, FactoryStateLeavesTheNameOfRowZero) {
    program.Stores.ParamValues[0].CurrentPresetName = "of device 0";
    program.Devices.LoadFactoryState(9);
    EXPECT_EQ(program.Stores.ParamValues[0].CurrentPresetName, "of device 0");
}

TEST_F(DemoDevices, DefaultsLeaveTheLastInputType) {
    program.Stores.LastInputType = 1.0;
    program.Devices.ReadDeviceState(9);
    program.Devices.LoadFactoryState(9);
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
}

} // namespace
} // namespace nrv::testing
