#include "model/encodings.h"

#include "model/tables.h"
#include "ports/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace nrv::model {

namespace {

/// Gain in steps of 0.2 dB from `lowest` up.
double FifthsOfDecibel(int code, double lowest) {
    return ToDecimal(std::floor(code / 5.0 * 10.0) / 10.0 + lowest, 1);
}

constexpr double MsPerFineStep = 0.021;
/// Far beyond every delay, and no further: what is reckoned from a typed one stays a number.
constexpr double LongestTypedMs = 1e9;

double UnroundedMs(int coarse, int fine) {
    return fine * MsPerFineStep + coarse;
}

int Held(double position, int top) {
    return static_cast<int>(std::clamp(position, 0.0, static_cast<double>(top)));
}

} // namespace

double Log10(double x) {
    return std::log(x) / std::log(10.0);
}

// The program never leaves the rounding mode it starts with, to nearest and half to even.
double RoundHalfEven(double value) {
    return std::nearbyint(value);
}

double ToDecimal(double value, int places) {
    constexpr std::array<double, 10> powers{1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    const double power = Entry(powers, places);
    return RoundHalfEven(value * power) / power;
}

std::uint8_t ToByte(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= 0.0 && rounded <= 255.0)) {
        throw RuntimeError(ErrorKind::Overflow, "A value does not fit into a byte.");
    }
    return static_cast<std::uint8_t>(rounded);
}

double DecodeBit(std::uint8_t byte, int n) {
    return (byte & Entry(BitMasks, n)) != 0 ? 1.0 : 0.0;
}

double SnapToFrequencyTable(double hz) {
    return FrequencyTable[static_cast<std::size_t>(NearestFrequencyCode(hz))];
}

std::int16_t NearestFrequencyCode(double hz) {
    std::size_t below = 0;
    for (std::size_t code = 0; code < FrequencyTable.size(); ++code) {
        const double entry = FrequencyTable[code];
        if (entry < hz) {
            below = code;
            continue;
        }
        if (hz - FrequencyTable[below] <= entry - hz) {
            return static_cast<std::int16_t>(below);
        }
        return static_cast<std::int16_t>(code);
    }
    // Meant: a value above the table's end falls to its bottom, not to its top.
    return 0;
}

std::int16_t BandwidthCode(double octaves) {
    const auto past_half = [octaves](int code) {
        // The double that the half's decimal reads as: a quotient of 0.05 misses the half that a person types.
        const double half = (2 * code + 3) / 40.0;
        return octaves > half || (octaves == half && code % 2 != 0);
    };
    int code = 0;
    while (code < BandwidthTop && past_half(code)) {
        ++code;
    }
    return static_cast<std::int16_t>(code);
}

void SplitBuffer::SplitBytes(double value, int start) {
    constexpr int byte_count = 4;
    if (start < 0 || start > static_cast<int>(Bytes.size()) - byte_count) {
        throw RuntimeError(ErrorKind::IndexOutOfRange, "A number does not fit into the buffer at this place.");
    }
    if (!std::isfinite(value)) {
        throw RuntimeError(ErrorKind::Overflow, "A number that is not finite has no bytes.");
    }
    double x = RoundHalfEven(value) / 16777216.0;
    for (std::size_t i = 0; i < byte_count; ++i) {
        const double whole = std::floor(x);
        Bytes[static_cast<std::size_t>(start) + i] =
            static_cast<std::uint8_t>(whole - std::floor(whole / 256.0) * 256.0);
        x = (x - whole) * 256.0;
    }
}

double ChannelGainFromCode(int code) {
    return FifthsOfDecibel(code, -12.0);
}

double PeqGainFromCode(int code) {
    return FifthsOfDecibel(code, -15.0);
}

double ToneGainFromCode(int code) {
    return code / 2.0 - 12.0;
}

double BandwidthFromCode(int code) {
    return ToDecimal(code * 0.05 + 0.05, 2);
}

double LimiterThresholdFromCode(int code) {
    return code / 2.0 - 10.0;
}

double FrequencyFromCode(int code) {
    return Entry(FrequencyTable, code);
}

DelayPositions DelayFromMs(double ms) {
    // 3.4 m are 10 ms and not a bit less.
    const double typed = ToDecimal(std::clamp(ms, -LongestTypedMs, LongestTypedMs), 9);
    const double whole = std::floor(typed);
    const double fine = RoundHalfEven((typed - whole) / MsPerFineStep);
    return {Held(whole, DelayCoarseTop), Held(fine, DelayFineTop)};
}

DelayPositions DelayFromMetres(double metres) {
    return DelayFromMs(metres / MetresPerMs);
}

int PeqPositionFromGain(double gain_db) {
    return static_cast<int>(RoundHalfEven(75.0 - gain_db * 5.0));
}

double DelayInMs(int coarse, int fine) {
    return ToDecimal(UnroundedMs(coarse, fine), 3);
}

double DelayInMetres(int coarse, int fine) {
    return ToDecimal(UnroundedMs(coarse, fine) * MetresPerMs, 5);
}

} // namespace nrv::model
