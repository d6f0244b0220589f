#include "simulator/demo_rack.h"
#include "simulator/options.h"
#include "simulator/state_file.h"
#include "support/test_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

using Arguments = std::vector<std::string>;

std::string Problem(const Arguments& arguments) {
    try {
        BuildRack(ParseOptions(arguments));
    } catch (const OptionError& error) {
        return error.what();
    }
    return {};
}

TEST(Options, AreReadFromTheCommandLine) {
    const Options options = ParseOptions(
        {"--device",    "5=Stage left", "--device=9", "--ids",      "1,2",           "--link",    "./com1",
         "--link=com2", "--unpaced",    "--trace",    "--state",    "rack.state",    "--presets", "--password",
         "secret",      "--locked",     "5",          "--locked=9", "--interactive", "--seconds", "1.5"});
    EXPECT_THAT(options.Devices,
                ::testing::ElementsAre(std::pair(5, std::string("Stage left")), std::pair(9, std::string()),
                                       std::pair(1, std::string()), std::pair(2, std::string())));
    EXPECT_THAT(options.Links, ::testing::ElementsAre("./com1", "com2"));
    EXPECT_FALSE(options.Paced);
    EXPECT_TRUE(options.Trace);
    EXPECT_EQ(options.State, "rack.state");
    EXPECT_TRUE(options.Presets);
    EXPECT_EQ(options.Password, "secret");
    EXPECT_THAT(options.Locked, ::testing::ElementsAre(5, 9));
    EXPECT_TRUE(options.Interactive);
    EXPECT_EQ(options.Seconds, 1.5);
    EXPECT_FALSE(options.Help);
    EXPECT_FALSE(options.Version);
}

TEST(Options, AreModestWhenNoneIsGiven) {
    const Options options = ParseOptions({});
    EXPECT_TRUE(options.Paced);
    EXPECT_FALSE(options.Trace);
    EXPECT_FALSE(options.Interactive);
    EXPECT_EQ(options.Seconds, std::nullopt);
    EXPECT_EQ(BuildRack(options).Ids(), std::vector<int>{1});
}

TEST(Options, TakeWhatTheWireIsLike) {
    const Options options = ParseOptions({"--half-duplex", "--noise", "250"});
    EXPECT_TRUE(options.HalfDuplex);
    EXPECT_EQ(options.Noise, 250);
}

TEST(Options, KeepALabelWithAnEqualsSignWhole) {
    EXPECT_EQ(ParseOptions({"--device", "5=a=b"}).Devices.at(0).second, "a=b");
    EXPECT_EQ(ParseOptions({"--device=5=a=b"}).Devices.at(0).second, "a=b");
}

TEST(Options, BadOnesAreRefusedInOneLine) {
    EXPECT_EQ(Problem({"--loud"}), "unknown option \"--loud\"; try --help");
    EXPECT_EQ(Problem({"--trace=1"}), "unknown option \"--trace=1\"; try --help");
    EXPECT_EQ(Problem({"com1"}), "unknown option \"com1\"; try --help");
    EXPECT_EQ(Problem({"--ids"}), "--ids: its value is missing");
    EXPECT_EQ(Problem({"--link="}), "--link: its value is empty");
    EXPECT_EQ(Problem({"--ids", "1,33"}), "--ids: \"33\" is no device ID from 0 to 32");
    EXPECT_EQ(Problem({"--ids", "1,,2"}), "--ids: \"\" is no device ID from 0 to 32");
    EXPECT_EQ(Problem({"--device", "5x"}), "--device: \"5x\" is no device ID from 0 to 32");
    EXPECT_EQ(Problem({"--device", "5", "--ids", "5"}), "--ids: the device ID 5 is given twice");
    EXPECT_EQ(Problem({"--seconds", "soon"}), "--seconds: \"soon\" is no number of seconds from 0 to 1000000");
    EXPECT_EQ(Problem({"--seconds", "-1"}), "--seconds: \"-1\" is no number of seconds from 0 to 1000000");
    EXPECT_EQ(Problem({"--seconds", "nan"}), "--seconds: \"nan\" is no number of seconds from 0 to 1000000");
    EXPECT_EQ(Problem({"--password", "toolong"}), "--password: a password has six characters at most");
    EXPECT_EQ(Problem({"--noise", "-1"}), "--noise: \"-1\" is no number of milliseconds from 0 to 3600000");
    EXPECT_EQ(Problem({"--locked", "7"}), "--locked: no device 7 on the line");
}

TEST(DemoRack, IsBuiltAsTold) {
    const Rack rack = BuildRack(ParseOptions(
        {"--device", "5=Stage left of the bar", "--ids", "9", "--password", "abc", "--locked", "9", "--presets"}));
    EXPECT_EQ(rack.Ids(), (std::vector<int>{5, 9}));
    EXPECT_EQ(rack.At(5).Label(), "Stage left of th");
    EXPECT_EQ(rack.At(9).Label(), " NRV-718  ID 09 ");
    EXPECT_EQ(rack.At(5).Password(), "abc   ");
    EXPECT_FALSE(rack.At(5).Locked());
    EXPECT_TRUE(rack.At(9).Locked());
    for (int position = 0; position < 9; ++position) {
        EXPECT_EQ(rack.At(5).PresetUsed(position), position == 0 || position == 1 || position == 4);
    }
    EXPECT_EQ(rack.At(5).PresetName(4), "2-way + sub     ");
    EXPECT_EQ(rack.At(5).Preset(1)[143], 50);
    EXPECT_EQ(rack.At(5).Preset(4)[187], 'S');
    EXPECT_EQ(rack.At(5).LiveImage(), FactoryPreset());
}

TEST(DemoRack, FillsPresetsOfNewDevicesAlone) {
    const testing::TestFolder folder;
    const std::string state = (folder / "rack").string();
    Rack saved;
    saved.Add(3).PutPreset(1, "My own", FactoryPreset());
    SaveState(saved, state);
    const Rack rack = BuildRack(ParseOptions({"--state", state, "--ids", "3,4", "--presets"}));
    EXPECT_EQ(rack.At(3).PresetName(1), "My own          ");
    EXPECT_FALSE(rack.At(3).PresetUsed(4));
    EXPECT_EQ(rack.At(4).PresetName(4), "2-way + sub     ");
}

TEST(DemoRack, TakesItsDevicesFromTheStateFile) {
    const testing::TestFolder folder;
    const std::string state = (folder / "rack").string();
    EXPECT_EQ(BuildRack(ParseOptions({"--state", state})).Ids(), std::vector<int>{1});
    Rack saved;
    saved.Add(3, "Kept").SetMemory(300, 42);
    SaveState(saved, state);
    const Rack rack = BuildRack(ParseOptions({"--state", state, "--ids", "3,4"}));
    EXPECT_EQ(rack.Ids(), (std::vector<int>{3, 4}));
    EXPECT_EQ(rack.At(3).Label(), "Kept            ");
    EXPECT_EQ(rack.At(3).Memory(300), 42);
    EXPECT_EQ(BuildRack(ParseOptions({"--state", state})).Ids(), std::vector<int>{3});
    EXPECT_EQ(BuildRack(ParseOptions({"--state", state, "--device", "3=New"})).At(3).Label(), "New             ");
    folder.WriteText("rack", "nonsense");
    EXPECT_THROW(BuildRack(ParseOptions({"--state", state})), StateError);
}

} // namespace
} // namespace nrv::simulator
