#include "lines.h"
#include "simulator/line.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

TEST(LineWire, OfHalfDuplexLosesTheAnswerThatMeetsARequest) {
    Line line(TwoDevices(), {.HalfDuplex = true, .Trace = {}});
    line.Start();
    Terminal terminal(line.DevicePath());
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(terminal.Ask(Request(5, {})), Presence5);
    }
    terminal.Send(Request(9, {0x0B, 0xFF}));
    const Bytes begun = terminal.Read(100);
    EXPECT_EQ(begun.size(), 100U);
    terminal.Send(Request(5, {0x10, 0, 26}));
    const Bytes rest = terminal.Read(500, milliseconds(400));
    ASSERT_GE(rest.size(), 13U);
    EXPECT_LT(rest.size(), 100U);
    EXPECT_EQ(Bytes(rest.end() - 13, rest.end()), (Bytes{0xF0, 0xC3, 5, 0x10, 0, 26, 0, 0, '0', 0, 0, 0, 0xF7}));

    line.SetHalfDuplex(false);
    terminal.Send(Request(5, {}));
    terminal.Send(Request(5, {}));
    EXPECT_EQ(terminal.Read(26).size(), 26U);
}

TEST(LineWire, NoiseComesWhileTheLineIsQuiet) {
    Line line(TwoDevices(), {.Noise = milliseconds(5), .Trace = {}});
    line.Start();
    Terminal terminal(line.DevicePath());
    const Bytes noise = terminal.Read(1000, milliseconds(300));
    EXPECT_GT(noise.size(), 20U);
    EXPECT_LT(noise.size(), 130U);
    line.SetNoise(milliseconds(0));
    while (!terminal.Read(100, milliseconds(20)).empty()) {
    }
    EXPECT_TRUE(terminal.Silent(milliseconds(80)));
    EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
}

TEST(LineWire, NoiseSparesTheAnswers) {
    Line line(TwoDevices(), {.Noise = milliseconds(3), .Trace = {}});
    line.Start();
    Terminal terminal(line.DevicePath());
    const PresetBody factory = FactoryPreset();
    terminal.Send(Request(5, {0x0B, 0xFF}));
    const Bytes all = terminal.Read(1000, milliseconds(350));
    EXPECT_GT(all.size(), 432U);
    EXPECT_NE(std::search(all.begin(), all.end(), factory.begin(), factory.end()), all.end());
}

} // namespace
} // namespace nrv::simulator
