#include "session/discovery.h"
#include "session/program_fixture.h"

#include <algorithm>

namespace nrv::testing {
namespace {

class DeviceReading : public ProgramTest {
  protected:
    DeviceReading() {
        program.Link.ComIndex = 1;
        program.Link.OpenPort();
        program.Link.ReopenPort(13);
        Forget();
    }
    DevicesOnLine::Device& Device() { return line.Devices.at(6); }
    model::ParamRow& Values() { return program.Stores.ParamValues[6]; }
    model::PresetImageRow& Image() { return program.Stores.PresetImage[6]; }
    std::string PageText(std::ptrdiff_t address) {
        const auto start = Image().SystemPage.begin() + address;
        return {start, start + 16};
    }
    /// Every address asked for while no position is in use.
    static std::vector<int> FixedAddresses() {
        std::vector<int> addresses = {16, 18, 26, 27, 28, 29, 30, 31, 48, 49, 50, 51, 52, 53, 54, 55};
        Append(addresses, Range(192, 207));
        return addresses;
    }
};

TEST_F(DeviceReading, ImageIsFetchedWithThePortSetForItsLength) {
    line.Add(6, "six");
    program.Devices.ReadDeviceImage(6);
    EXPECT_THAT(world.Port.Log, ::testing::ElementsAre("close", "buffer 432", "input 432", "open", "close", "buffer 13",
                                                       "input 13", "open"));
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(Frame{0xF0, 0xC3, 6, 0x0B, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_TRUE(std::equal(Device().Preset.begin(), Device().Preset.end(), Image().PresetBody.begin()));
    EXPECT_EQ(Image().PresetBody[432], 0);
    EXPECT_TRUE(world.Port.PortOpen());
}

TEST_F(DeviceReading, ImageTakesWhatTheBufferHoldsWhateverTheResult) {
    for (std::size_t n = 0; n < program.Link.RxFrame.size(); ++n) {
        program.Link.RxFrame[n] = static_cast<std::uint8_t>(200 - n % 100);
    }
    program.Link.TxSuppressed = true;
    program.Devices.ReadDeviceImage(6);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(Image().PresetBody[0], 200);
    EXPECT_EQ(Image().PresetBody[431], 200 - 31);
    EXPECT_EQ(Image().PresetBody[432], 0);
}

TEST_F(DeviceReading, ImageThatNeverComesEndsTheProcess) {
    EXPECT_THROW(program.Devices.ReadDeviceImage(6), ProcessEnded);
    EXPECT_EQ(world.Port.CountSent(0x0B), 6);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "", "Time out", BoxIcon::Exclamation, BoxButtons::Ok);
}

TEST_F(DeviceReading, ImageOfAPortThatCannotBeReopenedIsARunTimeError) {
    line.Add(6, "six");
    world.Port.Present = false;
    EXPECT_THROW(program.Devices.ReadDeviceImage(6), RuntimeError);
}

TEST_F(DeviceReading, StateOfADeviceWithNoPresetCostsThirtyTwoExchanges) {
    line.Add(6, "six");
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(FixedAddresses().size(), 32U);
    EXPECT_EQ(AddressesRead(world.Port.Sent), FixedAddresses());
    EXPECT_EQ(world.Port.Sent.size(), 32U);
    EXPECT_EQ(world.Port.Sent[0], (Frame{0xF0, 0xC3, 6, 0x10, 0, 16, 0, 0, 0, 0, 0, 0, 0xF7}));
}

TEST_F(DeviceReading, StateOfADeviceFullOfPresetsCostsAHundredAndSixty) {
    line.Add(6, "six");
    for (int position = 0; position < 8; ++position) {
        Device().Memory[48 + position] = 85;
        DevicesOnLine::PutText(Device(), 64 + 16 * position, "Preset number " + std::to_string(10 + position));
    }
    program.Devices.ReadDeviceState(6);
    std::vector<int> expected = {16, 18, 26, 27, 28, 29, 30, 31, 48, 49, 50, 51, 52, 53, 54, 55};
    Append(expected, Range(64, 207));
    EXPECT_EQ(expected.size(), 160U);
    EXPECT_EQ(AddressesRead(world.Port.Sent), expected);
    EXPECT_EQ(Values().PresetNames[0], "Preset number 10");
    EXPECT_EQ(Values().PresetNames[7], "Preset number 17");
    EXPECT_EQ(PageText(64 + 16 * 7), "Preset number 17");
    EXPECT_EQ(Values().PresetUsed[7], 85.0);
}

TEST_F(DeviceReading, OnlyTheMarkItselfMeansInUse) {
    line.Add(6, "six");
    Device().Memory[48] = 0x54;
    Device().Memory[49] = 0x55;
    Device().Memory[50] = 0x56;
    Device().Memory[51] = 0xFF;
    DevicesOnLine::PutText(Device(), 64, "never asked for ");
    DevicesOnLine::PutText(Device(), 80, "The second place");
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(world.Port.Sent.size(), 48U);
    EXPECT_EQ(Values().PresetNames[0], "  Preset Empty  ");
    EXPECT_EQ(PageText(64), "  Preset Empty  ");
    EXPECT_EQ(Values().PresetNames[1], "The second place");
    EXPECT_EQ(Values().PresetNames[2], "  Preset Empty  ");
    EXPECT_EQ(Values().PresetNames[3], "  Preset Empty  ");
    EXPECT_EQ(Values().PresetUsed[0], 84.0);
    EXPECT_EQ(Values().PresetUsed[3], 255.0);
}

TEST_F(DeviceReading, OptionBitsAreDecodedOneByOne) {
    line.Add(6, "six");
    Device().Memory[16] = 0x97; // 1001 0111
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(Image().SystemPage[16], 0x97);
    EXPECT_EQ(Values().MuteWithPreset, 1.0);
    EXPECT_EQ(Values().OptionBit3, 0.0);
    EXPECT_EQ(Values().InputType, 1.0);
    EXPECT_EQ(Values().OptionBit5, 0.0);
    EXPECT_EQ(Values().DelayUnit, 0.0);
    EXPECT_EQ(Values().LockFlag, 1.0);
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
    Device().Memory[16] = 0x68; // 0110 1000
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(Values().MuteWithPreset, 0.0);
    EXPECT_EQ(Values().OptionBit3, 1.0);
    EXPECT_EQ(Values().InputType, 0.0);
    EXPECT_EQ(Values().OptionBit5, 1.0);
    EXPECT_EQ(Values().DelayUnit, 1.0);
    EXPECT_EQ(Values().LockFlag, 0.0);
    EXPECT_EQ(program.Stores.LastInputType, 0.0);
}

TEST_F(DeviceReading, MutesPasswordAndNameGoToTheirPlaces) {
    line.Add(6, "six");
    Device().Memory[18] = 0xA5; // channels 0, 2, 5 and 7
    DevicesOnLine::PutText(Device(), 26, "aB3 zZ");
    DevicesOnLine::PutText(Device(), 192, "Current preset 1");
    Image().SystemPage[26] = Image().SystemPage[48] = 0x77;
    Device().Memory[48] = 85;
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(Image().SystemPage[18], 0xA5);
    EXPECT_THAT(Values().ChannelMute, ::testing::ElementsAre(1.0, 0.0, 1.0, 0.0, 0.0, 1.0, 0.0, 1.0));
    EXPECT_THAT(Values().DevicePassword, ::testing::ElementsAre(97.0, 66.0, 51.0, 32.0, 122.0, 90.0));
    EXPECT_EQ(Values().CurrentPresetName, "Current preset 1");
    EXPECT_EQ(PageText(192), "Current preset 1");
    // Password and marks are not mirrored.
    EXPECT_EQ(Image().SystemPage[26], 0x77);
    EXPECT_EQ(Image().SystemPage[48], 0x77);
}

TEST_F(DeviceReading, NamesAreRenewedAndNotAppended) {
    line.Add(6, "six");
    DevicesOnLine::PutText(Device(), 192, "Current preset 1");
    program.Devices.ReadDeviceState(6);
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(Values().CurrentPresetName, "Current preset 1");
    EXPECT_EQ(Values().PresetNames[4], "  Preset Empty  ");
}

TEST_F(DeviceReading, ReportedFailureStopsTheReadingWithWhatWasRead) {
    line.Add(6, "six");
    Device().Memory[16] = 4;
    Device().Memory[18] = 3;
    DevicesOnLine::PutText(Device(), 26, "abcdef");
    Values().CurrentPresetName = "as before";
    program.Link.ReportLinkFailure = true;
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 28 ? Bytes{} : line.Answer(frame); };
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(AddressesRead(world.Port.Sent), (std::vector<int>{16, 18, 26, 27, 28, 28, 28, 28, 28}));
    EXPECT_EQ(Values().MuteWithPreset, 1.0);
    EXPECT_THAT(Values().DevicePassword, ::testing::ElementsAre(97.0, 98.0, 48.0, 48.0, 48.0, 48.0));
    EXPECT_EQ(Values().CurrentPresetName, "as before");
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
}

TEST_F(DeviceReading, ReportedFailureStopsTheReadingAtEveryAddress) {
    line.Add(6, "six");
    Device().Memory[50] = 85;
    std::vector<int> all = {16, 18, 26, 27, 28, 29, 30, 31, 48, 49, 50, 51, 52, 53, 54, 55};
    Append(all, Range(96, 111));
    Append(all, Range(192, 207));
    for (std::size_t n = 0; n < all.size(); ++n) {
        SCOPED_TRACE(all[n]);
        Forget();
        program.Link.ReportLinkFailure = true;
        world.Port.Answer = [this, &all, n](const Frame& frame) {
            return frame[5] == all[n] ? Bytes{} : line.Answer(frame);
        };
        program.Devices.ReadDeviceState(6);
        EXPECT_EQ(world.Port.Sent.size(), n + 5);
        EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    }
}

TEST_F(DeviceReading, UnreportedFailureGoesOnWithTheStaleByte) {
    line.Add(6, "six");
    Device().Memory[16] = 0x15;
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 16 ? line.Answer(frame) : Bytes{}; };
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(world.Port.Sent.size(), 1U + 31U * 5U);
    EXPECT_EQ(Image().SystemPage[18], 0x15);
    EXPECT_THAT(Values().ChannelMute, ::testing::ElementsAre(1.0, 0.0, 1.0, 0.0, 1.0, 0.0, 0.0, 0.0));
    EXPECT_THAT(Values().DevicePassword, ::testing::Each(21.0));
    EXPECT_EQ(Values().CurrentPresetName, std::string(16, '\x15'));
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(DeviceReading, PasswordOfADeviceNotYetReadIsTheDefault) {
    EXPECT_THAT(program.Stores.ParamValues[32].DevicePassword, ::testing::Each(48.0));
}

TEST_F(DeviceReading, LastInputTypeIsKnownBeforeTheNextByteIsAskedFor) {
    line.Add(6, "six");
    Device().Memory[16] = 0x10;
    program.Link.ReportLinkFailure = true;
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 18 ? Bytes{} : line.Answer(frame); };
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(AddressesRead(world.Port.Sent), (std::vector<int>{16, 18, 18, 18, 18, 18}));
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
}

TEST_F(DeviceReading, NameThatStopsHalfWayHoldsWhatWasReadOfIt) {
    line.Add(6, "six");
    Device().Memory[48] = 85;
    DevicesOnLine::PutText(Device(), 64, "Church, main hal");
    Values().PresetNames[0] = "of the last time";
    Values().CurrentPresetName = "current before";
    program.Link.ReportLinkFailure = true;
    world.Port.Answer = [this](const Frame& frame) { return frame[5] == 70 ? Bytes{} : line.Answer(frame); };
    program.Devices.ReadDeviceState(6);
    EXPECT_EQ(Values().PresetNames[0], "Church");
    EXPECT_EQ(Values().CurrentPresetName, "current before");
}

} // namespace
} // namespace nrv::testing
