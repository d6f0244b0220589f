#pragma once

#include <array>
#include <cstdint>

/// What turns codes, positions and values into one another.
namespace nrv::model {

// Highest code of each parameter. Where it has a fader, code = top - position and position = top - code.
inline constexpr int ChannelGainTop = 120;
inline constexpr int PeqGainTop = 150;
inline constexpr int ToneGainTop = 36;
inline constexpr int FrequencyTop = 120;
inline constexpr int BandwidthTop = 59;
inline constexpr int DelayCoarseTop = 2500;
inline constexpr int DelayFineTop = 47;
inline constexpr int LimiterThresholdTop = 60;
inline constexpr int NoiseGateThresholdTop = 10;
inline constexpr int ReleaseTop = 18;
inline constexpr int AttackTop = 29;

/// Metres that sound goes in a millisecond, as the device reckons.
inline constexpr double MetresPerMs = 0.34;

/// Logarithm to base 10: the natural logarithm of x by that of 10.
double Log10(double x);

/// To the nearest whole number, a half going to the even neighbour.
double RoundHalfEven(double value);

/// The double nearest to `value` written with `places` decimals (0 to 9): 12.2 - 12 becomes 0.2.
double ToDecimal(double value, int places);

/// A value as a byte, rounded half to even. Throws `RuntimeError` of kind Overflow outside 0 to 255.
std::uint8_t ToByte(double value);

/// A code as the byte that it is on the wire.
constexpr std::uint8_t CodeByte(int code) {
    return static_cast<std::uint8_t>(code);
}

/// Bit n (0 to 7) of a byte as 0.0 or 1.0. Throws `RuntimeError` of kind IndexOutOfRange for another n.
double DecodeBit(std::uint8_t byte, int n);

/// The nearest entry of `FrequencyTable` in Hz, the lower of two equally near. Below 20 and above 20000 it is 20.
double SnapToFrequencyTable(double hz);

/// The code of that entry, 0 to 120.
std::int16_t NearestFrequencyCode(double hz);

/// Code, 0 to 59, of a bandwidth in octaves, held to the range; half-way between two codes it is the even one.
std::int16_t BandwidthCode(double octaves);

/// Room in which a whole number is laid out as bytes.
struct SplitBuffer {
    std::array<std::uint8_t, 31> Bytes{};

    /// Writes `value`, rounded half to even, as four bytes from `start`, high byte first; a negative one as its two's
    /// complement. Throws `RuntimeError`: IndexOutOfRange for a start outside 0 to 27, Overflow for a value that is not
    /// finite.
    void SplitBytes(double value, int start);
};

// Values from codes. Each is the double nearest to the decimal shown, so that a value, its text and what is read back
// from the text are one and the same. Codes beyond the range follow the same line.

/// dB, -12.0 to 12.0 for codes 0 to 120; of the master gain too.
double ChannelGainFromCode(int code);

/// dB, -15.0 to 15.0 for codes 0 to 150.
double PeqGainFromCode(int code);

/// dB, -12.0 to 6.0 for codes 0 to 36.
double ToneGainFromCode(int code);

/// Octaves, 0.05 to 3.0 for codes 0 to 59.
double BandwidthFromCode(int code);

/// dBu of an output's limiter, -10.0 to 20.0 for codes 0 to 60.
double LimiterThresholdFromCode(int code);

/// Hz of a frequency code. Throws `RuntimeError` of kind IndexOutOfRange outside 0 to 120.
double FrequencyFromCode(int code);

/// A delay as the positions of its two up-downs.
struct DelayPositions {
    int Coarse = 0; ///< 0 to 2500
    int Fine = 0;   ///< 0 to 47
};
/// The positions of a delay in milliseconds, or of one in metres, each held to its range.
DelayPositions DelayFromMs(double ms);
DelayPositions DelayFromMetres(double metres);

/// Position, 0 to 150, of the fader of a PEQ gain in dB; rounded half to even.
int PeqPositionFromGain(double gain_db);

/// Milliseconds, 0 to 2500.987, of a coarse (0 to 2500) and a fine (0 to 47) position.
double DelayInMs(int coarse, int fine);

/// The same delay as metres.
double DelayInMetres(int coarse, int fine);

} // namespace nrv::model
