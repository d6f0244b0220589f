#include "tool/tool_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Sets in the factory's preset, and gives back what came of it.
struct SetDesk : ToolDesk {
    std::string Factory = Put("a.n91", FactoryPreset());

    ToolRun Set(std::vector<std::string> values) const {
        values.insert(values.begin(), {"set", Factory, "-o", File("b.n91")});
        return Run(values);
    }
    /// Byte of the preset after one value was set.
    int ByteAfter(const std::string& value, std::size_t byte) const {
        const ToolRun run = Set({value});
        EXPECT_EQ(run.Outcome, 0) << run.Errors;
        return Get("b.n91").PresetBody[byte];
    }
};

TEST(Set, WhatIsShownCanBeSetAndShowsAgain) {
    const ToolDesk desk;
    const std::string factory = desk.Put("factory.n91", FactoryPreset());
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const std::string file = desk.Put("a.n91", RandomPreset(seed));
        const std::string keys = ToolDesk::Run({"show", file, "--keys"}).Out;
        std::vector<std::string> set = LinesOf(keys);
        set.insert(set.begin(), {"set", factory, "-o", desk.File("b.n91")});
        const ToolRun run = ToolDesk::Run(set);
        EXPECT_EQ(run.Outcome, 0) << run.Errors;
        EXPECT_EQ(run.Out, "");
        EXPECT_EQ(ToolDesk::Run({"show", desk.File("b.n91"), "--keys"}).Out, keys) << seed;
        EXPECT_EQ(ToolDesk::Run({"check", desk.File("b.n91")}).Outcome, 0);
    }
}

TEST(Set, PutsEachValueIntoItsByte) {
    const SetDesk desk;
    EXPECT_EQ(desk.ByteAfter("out2.peq3.gain=-3", 212), 60); // block 198 + 2 x 5, byte 4; 75 - 15
    EXPECT_EQ(desk.ByteAfter("Out2.PEQ3.Gain = -3 dB", 212), 60);
    EXPECT_EQ(desk.ByteAfter("out2.peq3.freq=1kHz", 209), 68);
    EXPECT_EQ(desk.ByteAfter("out2.peq3.bw=1", 210), 19);
    EXPECT_EQ(desk.ByteAfter("out1.hp.slope=24lz", 146), 9);
    EXPECT_EQ(desk.ByteAfter("out1.hp.slope=-24dB/oct Lz", 146), 9);
    EXPECT_EQ(desk.ByteAfter("out1.hp.slope=bypass", 146), 0);
    EXPECT_EQ(desk.ByteAfter("in-a.low-shelf.type=2'ord", 57), 2);
    EXPECT_EQ(desk.ByteAfter("out1.shelf.type=1' ord Hi", 172), 3);
    EXPECT_EQ(desk.ByteAfter("out3.source=In A+B", 281), 2);
    EXPECT_EQ(desk.ByteAfter("out3.phase=180", 278), 1);
    EXPECT_EQ(desk.ByteAfter("out3.limiter.release=500ms", 275), 3);
    EXPECT_EQ(desk.ByteAfter("out3.limiter.attack=0.2s", 274), 29);
    EXPECT_EQ(desk.ByteAfter("in-a.gate.threshold=off", 69), 0);
    EXPECT_EQ(desk.ByteAfter("in-a.gate.threshold=-90", 69), 10);
    EXPECT_EQ(desk.ByteAfter("master.gain=+12", 143), 120);
    EXPECT_EQ(desk.ByteAfter("in-a.delay=2.5ms", 4), 24); // 0.5 / 0.021 = 23.8
    EXPECT_EQ(desk.ByteAfter("in-a.delay=0.9999", 3), 1); // 0.987 is further than 1
    EXPECT_EQ(desk.ByteAfter("in-a.delay=3.4m", 3), 10);
    EXPECT_EQ(desk.ByteAfter("in-a.delay=2.5009s", 2), 9); // 2500 = 9 x 256 + 196
}

TEST(Set, MutesStandInBothOfTheirPlaces) {
    const SetDesk desk;
    ASSERT_EQ(desk.Set({"out3.mute=on", "out4.mute=off"}).Outcome, 0);
    EXPECT_EQ(desk.Get("b.n91").SystemPage[18], 0x10);
    EXPECT_EQ(desk.Get("b.n91").PresetBody[71], 0x10);
    ASSERT_EQ(desk.Set({"delay-unit=in metres", "input=digital"}).Outcome, 0);
    EXPECT_EQ(desk.Get("b.n91").SystemPage[16], 0x50);
}

TEST(Set, NamesAreBytesOfLatin1) {
    const SetDesk desk;
    ASSERT_EQ(desk.Set({"out2.name=\"Caf\xC3\xA9\""}).Outcome, 0);
    const auto body = desk.Get("b.n91").PresetBody;
    EXPECT_EQ(std::string(body.begin() + 234, body.begin() + 240), " Caf\xE9 ");
    const ToolRun longer = desk.Set({"out2.name=Subwoofer"});
    EXPECT_EQ(longer.Outcome, 2);
    EXPECT_EQ(longer.Errors, "nrv718-preset: out2.name=Subwoofer: a name has 6 characters at most.\n");
    EXPECT_EQ(desk.Set({"out2.name=\xE2\x82\xAC"}).Outcome, 2);
}

TEST(Set, TellsAValueThatTheDeviceDoesNotHave) {
    const SetDesk desk;
    EXPECT_EQ(desk.Set({"out2.peq3.gain=-3.05", "out2.peq3.frequency=1010", "in-b.delay=2.5ms"}).Out,
              "out2.peq3.gain: -3.05 dB asked for, -3 dB set\n"
              "out2.peq3.frequency: 1010 Hz asked for, 1000 Hz set\n"
              "in-b.delay: 2.5 ms asked for, 2.504 ms set\n");
    EXPECT_EQ(desk.Set({"out2.peq3.gain=-3", "out2.peq3.frequency=1k", "in-b.delay=2.504"}).Out, "");
}

TEST(Set, RefusesWhatThereIsNotAndWritesNothing) {
    const SetDesk desk;
    const auto refused = [&](const std::string& value) {
        const ToolRun run = desk.Set({value});
        EXPECT_EQ(run.Outcome, 2);
        EXPECT_EQ(run.Out, "");
        EXPECT_FALSE(desk.Folder.Has("b.n91"));
        return run.Errors;
    };
    EXPECT_EQ(refused("out2.peq3.gain=16"),
              "nrv718-preset: out2.peq3.gain=16: out of range; allowed are -15 to 15 dB.\n");
    EXPECT_EQ(refused("out2.peq3.gain=16Hz"),
              "nrv718-preset: out2.peq3.gain=16Hz: no such value; allowed are -15 to 15 dB.\n");
    EXPECT_EQ(refused("out2.peq5.gain=1"),
              "nrv718-preset: out2.peq5.gain: no such key; behind \"out2.\" may stand mute, "
              "source, limiter, hp, lp, peq1, peq2, peq3, peq4, shelf, phase, delay, gain, "
              "name.\n");
    EXPECT_THAT(refused("gain=1"), HasSubstr("keys begin with input, delay-unit, master, in-a, in-b, out1"));
    EXPECT_THAT(refused("out1.hp.slope=24 dB"), HasSubstr("allowed are Bypass, - 6 dB/oct Bw, -12dB/oct Bw"));
    EXPECT_THAT(refused("in-a.gate.threshold=-100"), HasSubstr("allowed are OFF, -99.0 to -90.0 dBu"));
    EXPECT_THAT(refused("out1.limiter.attack=1ms"), HasSubstr("allowed are 5 to 200 ms"));
    EXPECT_THAT(refused("in-a.delay=2501"), HasSubstr("allowed are 0 to 2500.987 ms"));
    EXPECT_THAT(refused("in-a.delay=-1"), HasSubstr("out of range"));
    EXPECT_THAT(refused("in-a.delay=soon"), HasSubstr("no delay"));
    EXPECT_THAT(refused("in-a.delay"), HasSubstr("KEY=VALUE"));
    EXPECT_THAT(refused("in-a.mute=maybe"), HasSubstr("allowed are off, on"));
}

TEST(Set, LeavesACodeThatStandsForNothingAsItIs) {
    const SetDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[66] = 32;
    image.PresetBody[2] = 10; // a delay past its end
    const std::string file = desk.Put("odd.n91", image);
    std::vector<std::string> set = LinesOf(ToolDesk::Run({"show", file, "--keys"}).Out);
    set.insert(set.begin(), {"set", file, "-o", desk.File("b.n91")});
    EXPECT_EQ(ToolDesk::Run(set).Outcome, 0);
    EXPECT_EQ(desk.Folder.Read("b.n91"), desk.Folder.Read("odd.n91"));
    desk.Folder.Write("b.n91", {});
    EXPECT_EQ(ToolDesk::Run({"set", file, "in-a.gate.attack=code 33", "-o", desk.File("b.n91")}).Outcome, 2);
}

TEST(Set, KeepsWhatIsBehindThePreset) {
    const SetDesk desk;
    std::vector<std::uint8_t> bytes = desk.Folder.Read("a.n91");
    bytes.resize(780, 7);
    desk.Folder.Write("b.n91", bytes);
    ASSERT_EQ(desk.Set({"in-a.gain=1"}).Outcome, 0);
    bytes[1] = 65;
    EXPECT_EQ(desk.Folder.Read("b.n91"), bytes);
}

} // namespace
} // namespace nrv::testing
