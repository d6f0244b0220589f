#pragma once

#include "ports/channels.h"
#include "ports/runtime_error.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// The constant tables that tie a byte on the wire to a frequency, a text or a place in the preset image.
/// Texts are single bytes of the device's code page.
namespace nrv::model {

/// The preset of a device that has no settings of its own.
extern const std::array<std::uint8_t, 432> FactoryImage;

// Positions in the 432-byte preset.

/// Gain of each channel: an unused byte, then the gain code.
inline constexpr std::array<std::uint32_t, ChannelCount> GainOffsets{0, 72, 183, 231, 279, 327, 375, 423};

inline constexpr std::array<std::uint32_t, ChannelCount> PhaseOffsets{65, 137, 182, 230, 278, 326, 374, 422};

/// Delay by control index: the eight channels twice over.
inline constexpr std::array<std::uint32_t, StripCount> DelayOffsets{2, 74, 175, 223, 271, 319, 367, 415,
                                                                    2, 74, 175, 223, 271, 319, 367, 415};

/// Block of each PEQ section: 0 to 9 In A, 10 to 19 In B, then four for each output.
inline constexpr std::array<std::uint32_t, PeqCount> PeqOffsets = [] {
    std::array<std::uint32_t, PeqCount> offsets{};
    for (std::uint32_t section = 0; section < PeqCount; ++section) {
        const std::uint32_t channel = ChannelOfPeq(section);
        const std::uint32_t first = IsInput(channel) ? 5 + 72 * channel : 150 + 48 * OutputOf(channel);
        offsets[section] = first + 5 * PeqInChannel(section);
    }
    return offsets;
}();

/// Block of each tone filter: two of In A, two of In B, one of each output.
inline constexpr std::array<std::uint32_t, ToneCount> ToneOffsets{55, 60, 127, 132, 170, 218, 266, 314, 362, 410};

inline constexpr std::array<std::uint32_t, OutputCount> SourceOffsets{185, 233, 281, 329, 377, 425};

/// Block of each crossover side: 2x the high-pass of output x, 2x + 1 its low-pass.
inline constexpr std::array<std::uint32_t, CrossoverCount> CrossoverOffsets{144, 147, 192, 195, 240, 243,
                                                                            288, 291, 336, 339, 384, 387};

/// Limiter block of each channel; of the inputs, the noise gate, whose codes share the bytes of `NameOffsets`.
inline constexpr std::array<std::uint32_t, ChannelCount> LimiterOffsets{66, 138, 178, 226, 274, 322, 370, 418};

/// Six name bytes of each channel.
inline constexpr std::array<std::uint32_t, ChannelCount> NameOffsets{66, 138, 186, 234, 282, 330, 378, 426};

// Values and texts of codes.

/// Noise gate threshold in dBu by code; a fader shows entry 10 - position.
inline constexpr std::array<std::string_view, 11> LowLevelTexts{"OFF",   "-99.0", "-98.0", "-97.0", "-96.0", "-95.0",
                                                                "-94.0", "-93.0", "-92.0", "-91.0", "-90.0"};

/// What is added to the name of an output for its source.
inline constexpr std::array<std::string_view, 3> SourceSuffixes{"", "+InA", "+InB"};

/// The value of each bit of a byte.
inline constexpr std::array<std::uint32_t, 8> BitMasks{1, 2, 4, 8, 16, 32, 64, 128};

/// The name of an empty memory position, one character an entry.
inline constexpr std::array<std::string_view, MemoryNameLength> EmptyPresetChars{
    " ", " ", "P", "r", "e", "s", "e", "t", " ", "E", "m", "p", "t", "y", " ", " "};

/// Hertz of each frequency code. The rounding follows no single rule, so the entries stand as they are.
inline constexpr std::array<double, 121> FrequencyTable{
    20,    21,    22,    23,    25,    26,    28,    30,    31,   33,   36,   38,   40,    42,    45,    47,
    50,    53,    57,    59,    63,    67,    71,    76,    80,   85,   90,   95,   100,   106,   113,   119,
    125,   134,   143,   151,   160,   170,   180,   190,   200,  212,  225,  237,  250,   266,   283,   299,
    315,   336,   358,   379,   400,   425,   450,   475,   500,  532,  565,  597,  630,   672,   715,   757,
    800,   850,   900,   950,   1000,  1062,  1125,  1187,  1250, 1337, 1425, 1512, 1600,  1700,  1800,  1900,
    2000,  2125,  2250,  2375,  2500,  2662,  2825,  2987,  3150, 3362, 3575, 3787, 4000,  4250,  4500,  4750,
    5000,  5325,  5650,  5975,  6300,  6725,  7150,  7575,  8000, 8500, 9000, 9500, 10000, 10625, 11250, 11875,
    12500, 13375, 14250, 15125, 16000, 17000, 18000, 19000, 20000};

/// Q of each bandwidth code: code i is a bandwidth of (i + 1) / 20 octaves.
extern const std::array<double, 60> QTable;

/// Behind a delay: time, distance.
inline constexpr std::array<std::string_view, 2> DelayUnitTexts{" ms", " m"};

/// Release by code; a fader shows entry 18 - position.
inline constexpr std::array<std::string_view, 19> ReleaseTexts{"0.2s", "0.3s", "0.4s", "0.5s", "0.6s", "0.7s", "0.8s",
                                                               "0.9s", "1.0s", "1.1s", "1.2s", "1.3s", "1.4s", "1.5s",
                                                               "1.6s", "1.7s", "1.8s", "1.9s", "2.0s"};

/// Attack by code; a fader shows entry 29 - position.
inline constexpr std::array<std::string_view, 30> AttackTexts{
    "  5ms", "  6ms", "  7ms", "  8ms", "  9ms", " 10ms", " 11ms", " 12ms", " 13ms", " 14ms",
    " 15ms", " 16ms", " 17ms", " 18ms", " 19ms", " 20ms", " 25ms", " 30ms", " 40ms", " 50ms",
    " 60ms", " 70ms", " 80ms", " 90ms", "100ms", "120ms", "140ms", "160ms", "180ms", "200ms"};

/// Number of filter stages of each crossover slope code.
inline constexpr std::array<std::int16_t, 11> SlopeStageTable{0, 1, 2, 2, 2, 2, 3, 3, 4, 4, 4};

/// Entry of a table under an index that came from outside, such as a byte of an image.
/// Throws `RuntimeError` of kind IndexOutOfRange when the table has no such entry.
template <class T, std::size_t N, class Index>
constexpr const T& Entry(const std::array<T, N>& table, Index index) {
    if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, N)) {
        throw RuntimeError(ErrorKind::IndexOutOfRange,
                           "The value " + std::to_string(index) + " lies outside 0 to " + std::to_string(N - 1) + ".");
    }
    return table[static_cast<std::size_t>(index)];
}

} // namespace nrv::model
