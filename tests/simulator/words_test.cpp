#include "simulator/device.h"
#include "simulator/scales.h"
#include "simulator/words.h"
#include "terminal.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

std::string Words(std::initializer_list<int> payload) {
    return DescribeRequest(Request(5, payload));
}

TEST(Words, NameEveryChannelCommand) {
    EXPECT_EQ(Words({1, 3, 0, 0, 0, 0, 0, 0, 61}), "Gain of Out 2: code 61 (0.2 dB)");
    EXPECT_EQ(Words({2, 0, 0, 0, 0, 0, 9, 196, 47}), "Delay of In A: 2500.987 ms");
    EXPECT_EQ(Words({3, 1, 0, 0, 0, 0, 0, 0, 1}), "Phase of In B: 180 degrees");
    EXPECT_EQ(Words({4, 2, 0, 0, 0, 0, 0, 68, 9}),
              "High pass of Out 1: frequency code 68 (1000 Hz), slope code 9 (24 dB/oct Lz)");
    EXPECT_EQ(Words({4, 7, 1, 0, 0, 0, 0, 0, 0}), "Low pass of Out 6: frequency code 0 (20 Hz), slope code 0 (bypass)");
    EXPECT_EQ(Words({5, 0, 9, 0, 0, 120, 8, 0, 75}),
              "PEQ 10 of In A: frequency code 120 (20000 Hz), bandwidth code 8 (0.45 oct), gain code 75 (0 dB)");
    EXPECT_EQ(
        Words({6, 2, 0, 0, 0, 68, 4, 0, 25}),
        "Tone filter 1 of Out 1: frequency code 68 (1000 Hz), type code 4 (2nd order high), gain code 25 (0.5 dB)");
    EXPECT_EQ(Words({7, 2, 0, 0, 0, 5, 10, 0, 58}),
              "Limiter of Out 1: attack code 5 (10 ms), release code 10 (1.2 s), threshold code 58 (19 dBu)");
    EXPECT_EQ(Words({7, 0, 0, 0, 0, 32, 73, 0, 1}),
              "Noise gate of In A: attack code 32 (out of range), release code 73 "
              "(out of range), threshold code 1 (-99 dBu)");
    EXPECT_EQ(Words({8, 7, 0, 0, 0, 0, 0, 0, 2}), "Source of Out 6: code 2 (In A+B)");
    EXPECT_EQ(Words({9, 4, 0, 0, 0, 0, 0, 0, 1}), "Mute of Out 3: muted");
    EXPECT_EQ(Words({9, 4, 0, 0, 0, 0, 0, 0, 0}), "Mute of Out 3: sounding");
    EXPECT_EQ(Words({14, 2, 0, ' ', 'S', 'u', 'b', 1, 200}), "Name of Out 1: \" Sub??\"");
    EXPECT_EQ(Words({1, 8, 0, 0, 0, 0, 0, 0, 61}), "Gain of channel 8 (no such channel): code 61 (0.2 dB)");
}

TEST(Words, NameEveryOtherCommand) {
    EXPECT_EQ(Words({}), "Are you there?");
    EXPECT_EQ(Words({0, 0, 0, 0, 0, 0, 0, 0, 1}), "Unknown command 0x00: 00 00 00 00 00 00 00 01");
    EXPECT_EQ(Words({0x0A, 0}), "Bulk update begins");
    EXPECT_EQ(Words({0x0A, 1}), "Bulk update ends");
    EXPECT_EQ(Words({0x0B, 0xFF}), "Read live preset");
    EXPECT_EQ(Words({0x0B, 3}), "Read preset of position 3");
    EXPECT_EQ(Words({0x0C, 0, 0, 0, 0, 0, 0, 0, 53}), "Master gain: code 53 (-1.4 dB)");
    EXPECT_EQ(Words({0x0D, 0, 0, 0, 0, 0, 0, 0, 1}), "Input type: digital");
    EXPECT_EQ(Words({0x0F}), "Unconnect, no answer expected");
    EXPECT_EQ(Words({0x8F}), "The remote control goes away, no answer expected");
    EXPECT_EQ(Words({0x12}), "Levels?");
    EXPECT_EQ(Words({0x33, 1}), "Unknown command 0x33: 01 00 00 00 00 00 00 00");
}

TEST(Words, NameWhateverADeviceObeys) {
    Device device(5);
    for (int code = 1; code < 256; ++code) {
        const bool notice = code == 0x0F || code == 0x8F;
        const bool obeyed = notice || device.Handle(Request(5, {code}), {}).has_value();
        EXPECT_EQ(Words({code}).starts_with("Unknown command"), !obeyed) << code;
    }
}

TEST(Words, NamePlacesOfMemory) {
    EXPECT_EQ(Words({0x10, 0, 16}), "Read memory byte 16 (option bits)");
    EXPECT_EQ(Words({0x11, 0, 18, 0, 0, 3}), "Write memory byte 18 (mute bits): 3");
    EXPECT_EQ(Words({0x10, 0, 31}), "Read memory byte 31 (password)");
    EXPECT_EQ(Words({0x10, 0, 47}), "Read memory byte 47 (label)");
    EXPECT_EQ(Words({0x10, 0, 50}), "Read memory byte 50 (used mark of position 2)");
    EXPECT_EQ(Words({0x10, 0, 191}), "Read memory byte 191 (name of position 7)");
    EXPECT_EQ(Words({0x10, 0, 192}), "Read memory byte 192 (name of the active preset)");
    EXPECT_EQ(Words({0x10, 2, 127}), "Read memory byte 639");
    EXPECT_EQ(Words({0x10, 4, 48}), "Read memory byte 1072 (preset of position 1)");
    EXPECT_EQ(Words({0x10, 255, 255}), "Read memory byte 65535");
}

TEST(Words, TellWhatAnAnswerSays) {
    const auto answer = [](std::initializer_list<int> request, const Bytes& bytes) {
        return DescribeAnswer(Request(5, request), bytes);
    };
    EXPECT_EQ(answer({}, {0xF0, 0xC3, 5, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7}), "Here");
    EXPECT_EQ(answer({}, {0xF0, 0xC3, 5, 0, 0x11, 0, 0, 0, 0, 0, 0, 0, 0xF7}), "Byte 4 is 0x11");
    EXPECT_EQ(answer({0x10, 0, 16}, {0xF0, 0xC3, 5, 0x10, 0, 16, 0, 0, 32, 0, 0, 0, 0xF7}), "Value 32");
    EXPECT_EQ(answer({0x12}, {0xF0, 0xC3, 5, 0x12, 0, 1, 2, 3, 4, 5, 6, 0, 0xF7}), "Levels 0 1 2 3 4 5 6 0");
    EXPECT_EQ(answer({0x0B, 0xFF}, Bytes(432, 0)), "432 bytes of preset");
    EXPECT_EQ(answer({1}, {0xF0, 0xC3}), "F0 C3");
    EXPECT_EQ(answer({1}, {}), "");
}

TEST(Words, MakeWholeLinesOfATrace) {
    const Frame frame = Request(5, {0x0B, 0xFF});
    EXPECT_EQ(RequestInWords(frame), "-> ID 5  Read live preset");
    EXPECT_EQ(AnswerInWords(frame, Bytes(432, 0)), "<- ID 5  432 bytes of preset");
    EXPECT_EQ(AnswerInWords(frame, Bytes(6, 0), "cut to 6 bytes"), "<- ID 5  6 bytes of preset [cut to 6 bytes]");
    EXPECT_EQ(NoAnswerInWords(frame, "dead"), "<- ID 5  No answer [dead]");
}

TEST(Scales, HoldTheirEnds) {
    EXPECT_EQ(GainCode(0), "code 0 (-12 dB)");
    EXPECT_EQ(GainCode(59), "code 59 (-0.2 dB)");
    EXPECT_EQ(GainCode(120), "code 120 (12 dB)");
    EXPECT_EQ(GainCode(121), "code 121 (out of range)");
    EXPECT_EQ(PeqGainCode(0), "code 0 (-15 dB)");
    EXPECT_EQ(PeqGainCode(150), "code 150 (15 dB)");
    EXPECT_EQ(PeqGainCode(151), "code 151 (out of range)");
    EXPECT_EQ(ToneGainCode(0), "code 0 (-12 dB)");
    EXPECT_EQ(ToneGainCode(36), "code 36 (6 dB)");
    EXPECT_EQ(ToneGainCode(37), "code 37 (out of range)");
    EXPECT_EQ(FrequencyCode(121), "code 121 (out of range)");
    EXPECT_EQ(FrequencyCode(34), "code 34 (143 Hz)");
    EXPECT_EQ(FrequencyCode(100), "code 100 (6300 Hz)");
    EXPECT_EQ(BandwidthCode(0), "code 0 (0.05 oct)");
    EXPECT_EQ(BandwidthCode(19), "code 19 (1 oct)");
    EXPECT_EQ(BandwidthCode(59), "code 59 (3 oct)");
    EXPECT_EQ(BandwidthCode(60), "code 60 (out of range)");
    EXPECT_EQ(SlopeCode(10), "code 10 (24 dB/oct Cv)");
    EXPECT_EQ(SlopeCode(11), "code 11 (out of range)");
    EXPECT_EQ(ToneTypeCode(true, 2), "code 2 (2nd order)");
    EXPECT_EQ(ToneTypeCode(true, 3), "code 3 (out of range)");
    EXPECT_EQ(ThresholdCode(true, 0), "code 0 (off)");
    EXPECT_EQ(ThresholdCode(true, 10), "code 10 (-90 dBu)");
    EXPECT_EQ(ThresholdCode(true, 11), "code 11 (out of range)");
    EXPECT_EQ(ThresholdCode(false, 0), "code 0 (-10 dBu)");
    EXPECT_EQ(ThresholdCode(false, 60), "code 60 (20 dBu)");
    EXPECT_EQ(AttackCode(0), "code 0 (5 ms)");
    EXPECT_EQ(AttackCode(15), "code 15 (20 ms)");
    EXPECT_EQ(AttackCode(16), "code 16 (25 ms)");
    EXPECT_EQ(AttackCode(17), "code 17 (30 ms)");
    EXPECT_EQ(AttackCode(24), "code 24 (100 ms)");
    EXPECT_EQ(AttackCode(25), "code 25 (120 ms)");
    EXPECT_EQ(AttackCode(29), "code 29 (200 ms)");
    EXPECT_EQ(ReleaseCode(0), "code 0 (0.2 s)");
    EXPECT_EQ(ReleaseCode(18), "code 18 (2 s)");
    EXPECT_EQ(SourceCode(3), "code 3 (out of range)");
    EXPECT_EQ(DelayCodes(0, 0), "0 ms");
    EXPECT_EQ(DelayCodes(1, 10), "1.21 ms");
    EXPECT_EQ(DelayCodes(0, 1), "0.021 ms");
}

} // namespace
} // namespace nrv::simulator
