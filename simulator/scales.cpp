#include "simulator/scales.h"

#include <array>
#include <cstdlib>
#include <string_view>

namespace nrv::simulator {
namespace {

// Hertz by code: the third-octave series, each step in four.
constexpr std::array<int, 121> Hertz{
    20,    21,    22,    23,    25,    26,    28,    30,    31,   33,   36,   38,   40,    42,    45,    47,
    50,    53,    57,    59,    63,    67,    71,    76,    80,   85,   90,   95,   100,   106,   113,   119,
    125,   134,   143,   151,   160,   170,   180,   190,   200,  212,  225,  237,  250,   266,   283,   299,
    315,   336,   358,   379,   400,   425,   450,   475,   500,  532,  565,  597,  630,   672,   715,   757,
    800,   850,   900,   950,   1000,  1062,  1125,  1187,  1250, 1337, 1425, 1512, 1600,  1700,  1800,  1900,
    2000,  2125,  2250,  2375,  2500,  2662,  2825,  2987,  3150, 3362, 3575, 3787, 4000,  4250,  4500,  4750,
    5000,  5325,  5650,  5975,  6300,  6725,  7150,  7575,  8000, 8500, 9000, 9500, 10000, 10625, 11250, 11875,
    12500, 13375, 14250, 15125, 16000, 17000, 18000, 19000, 20000};

constexpr std::array<std::string_view, 11> Slopes{"bypass",       "6 dB/oct Bw",  "12 dB/oct Bw", "12 dB/oct Lz",
                                                  "12 dB/oct Bs", "12 dB/oct Cv", "18 dB/oct Bw", "18 dB/oct Cv",
                                                  "24 dB/oct Bw", "24 dB/oct Lz", "24 dB/oct Cv"};

constexpr std::array<std::string_view, 3> InputToneTypes{"bypass", "1st order", "2nd order"};
constexpr std::array<std::string_view, 5> OutputToneTypes{"bypass", "1st order low", "2nd order low", "1st order high",
                                                          "2nd order high"};
constexpr std::array<std::string_view, 3> Sources{"In A", "In B", "In A+B"};

std::string Code(int code, const std::string& value) {
    return "code " + std::to_string(code) + " (" + value + ")";
}

std::string OutOfRange(int code) {
    return Code(code, "out of range");
}

/// A number that is given in units of 1 / scale, with no more decimals than it needs.
std::string Decimal(int value, int scale) {
    const int size = std::abs(value);
    std::string text(value < 0 ? "-" : "");
    text += std::to_string(size / scale);
    std::string decimals;
    for (int rest = size % scale, unit = scale / 10; rest != 0; rest %= unit, unit /= 10) {
        decimals += std::to_string(rest / unit);
        if (unit == 1) {
            break;
        }
    }
    return decimals.empty() ? text : text + "." + decimals;
}

template <std::size_t N>
std::string Listed(int code, const std::array<std::string_view, N>& texts) {
    return code < static_cast<int>(N) ? Code(code, std::string(texts[static_cast<std::size_t>(code)]))
                                      : OutOfRange(code);
}

} // namespace

std::string GainCode(int code) {
    return code > 120 ? OutOfRange(code) : Code(code, Decimal(2 * code - 120, 10) + " dB");
}

std::string PeqGainCode(int code) {
    return code > 150 ? OutOfRange(code) : Code(code, Decimal(2 * code - 150, 10) + " dB");
}

std::string ToneGainCode(int code) {
    return code > 36 ? OutOfRange(code) : Code(code, Decimal(5 * code - 120, 10) + " dB");
}

std::string FrequencyCode(int code) {
    return code > 120 ? OutOfRange(code) : Code(code, std::to_string(Hertz[static_cast<std::size_t>(code)]) + " Hz");
}

std::string BandwidthCode(int code) {
    return code > 59 ? OutOfRange(code) : Code(code, Decimal(5 * (code + 1), 100) + " oct");
}

std::string SlopeCode(int code) {
    return Listed(code, Slopes);
}

std::string ToneTypeCode(bool input, int code) {
    return input ? Listed(code, InputToneTypes) : Listed(code, OutputToneTypes);
}

std::string ThresholdCode(bool input, int code) {
    if (code > (input ? 10 : 60)) {
        return OutOfRange(code);
    }
    if (!input) {
        return Code(code, Decimal(5 * code - 100, 10) + " dBu");
    }
    return Code(code, code == 0 ? "off" : std::to_string(code - 100) + " dBu");
}

std::string AttackCode(int code) {
    if (code > 29) {
        return OutOfRange(code);
    }
    const int ms = code <= 15 ? code + 5 : code == 16 ? 25 : code <= 24 ? 10 * (code - 14) : 20 * (code - 19);
    return Code(code, std::to_string(ms) + " ms");
}

std::string ReleaseCode(int code) {
    return code > 18 ? OutOfRange(code) : Code(code, Decimal(code + 2, 10) + " s");
}

std::string SourceCode(int code) {
    return Listed(code, Sources);
}

std::string DelayCodes(int coarse, int fine) {
    return Decimal(1000 * coarse + 21 * fine, 1000) + " ms";
}

} // namespace nrv::simulator
