#pragma once

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

// Texts of filters with what each filter is and what the device has nearest to it, worked out by hand - a gain half-way
// between two goes where the fader's position is even -, and a second way
// of computing both curves: squared magnitudes of real numbers.

namespace nrv::testing {

enum class Kind { Peak, LowShelf, HighShelf, LowShelf6, HighShelf6, HighPass, LowPass };

struct CaseFilter {
    int Line;
    Kind What;
    double Hz;
    double Gain;
    double Q;
    std::string Place; ///< what is told of the filter it became
    double GotGain;
    double GotHz;
    double GotOctaves; ///< of a peak
};

struct FilterCase {
    std::string Name;
    std::string Format;
    std::string Text;
    std::string Channel;
    std::vector<CaseFilter> Filters;
    std::vector<std::string> Refused; ///< begins of lines behind the file's name
    std::vector<std::string> Told;
};

inline void PrintTo(const FilterCase& given, std::ostream* out) {
    *out << given.Name;
}

inline double AskedLevel(const CaseFilter& filter, double hz) {
    const double a = std::pow(10.0, filter.Gain / 40.0);
    const double w = hz / filter.Hz;
    const double w2 = w * w;
    const double q2 = filter.Q * filter.Q;
    const auto square = [](double x) { return x * x; };
    const auto ratio = [](double over, double under) { return 10.0 * std::log10(over / under); };
    switch (filter.What) {
    case Kind::Peak:
        return ratio(square(1.0 - w2) + a * a * w2 / q2, square(1.0 - w2) + w2 / (a * a * q2));
    case Kind::LowShelf:
        return ratio(a * a * (square(a - w2) + a * w2 / q2), square(1.0 - a * w2) + a * w2 / q2);
    case Kind::HighShelf:
        return ratio(a * a * (square(1.0 - a * w2) + a * w2 / q2), square(a - w2) + a * w2 / q2);
    case Kind::LowShelf6:
        return ratio(w2 + a * a, w2 + 1.0 / (a * a));
    case Kind::HighShelf6:
        return ratio(1.0 + a * a * w2, 1.0 + w2 / (a * a));
    case Kind::HighPass:
        return ratio(w2 * w2, square(1.0 - w2) + w2 / q2);
    case Kind::LowPass:
        return ratio(1.0, square(1.0 - w2) + w2 / q2);
    }
    return 0.0;
}

/// The device's own formulas. Of the sides only the Butterworth one of second order.
inline double PlayedLevel(const CaseFilter& filter, double hz) {
    const double c = filter.GotHz;
    const double a = std::pow(10.0, filter.GotGain / 20.0);
    const double root = std::sqrt(2.0) * c * hz;
    const auto decibels = [](double x) { return 20.0 * std::log10(x); };
    switch (filter.What) {
    case Kind::Peak: {
        const double p = std::pow(2.0, filter.GotOctaves);
        const double detuning = (p + 1.0) / (2.0 * (p - 1.0)) * (c / hz - hz / c);
        return filter.GotGain / (1.0 + detuning * detuning);
    }
    case Kind::LowShelf:
        return decibels((c * c + hz * hz + root) / (c * c / a + hz * hz + root / std::sqrt(a)));
    case Kind::HighShelf:
        return decibels((c * c + hz * hz + root) * a / (c * c * a + hz * hz + root * std::sqrt(a)));
    case Kind::LowShelf6:
        return decibels((c + hz) / (c / a + hz));
    case Kind::HighShelf6:
        return decibels((c + hz) * a / (c * a + hz));
    case Kind::HighPass:
        return -10.0 * std::log10(1.0 + std::pow(c / hz, 4.0));
    case Kind::LowPass:
        return -10.0 * std::log10(1.0 + std::pow(hz / c, 4.0));
    }
    return 0.0;
}

/// UTF-16 with its mark, the low byte first or the high one.
inline std::string Utf16(const std::string& text, bool high_first) {
    std::string bytes = high_first ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text) {
        bytes += high_first ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return bytes;
}

inline std::vector<FilterCase> FilterCases() {
    using enum Kind;
    const std::string head = "Filter Settings file\n\nRoom EQ V5.31.3\nDated: 3 Mar 2025\n\nNotes:Left\n\n";
    const auto peak = [](int line, double hz, double gain, double q, int section, double got_gain, double got_hz,
                         double octaves) {
        return CaseFilter{line,     Peak,   hz,     gain, q, "PEQ " + std::to_string(section) + ": gain ",
                          got_gain, got_hz, octaves};
    };
    return {
        {"plain",
         "rew",
         head + "Filter  1: ON  PK       Fc   63.40 Hz  Gain  -5.20 dB  Q  4.120\n"
                "Filter  2: ON  LS       Fc   110.0 Hz  Gain   2.50 dB\n"
                "Filter  3: OFF PK       Fc    1250 Hz  Gain  -1.00 dB  Q  1.410\n"
                "Filter  4: ON  None\n",
         "In A",
         {peak(8, 63.4, -5.2, 4.12, 1, -5.2, 63, 0.35),
          {9, LowShelf, 110, 2.5, 0.70710678, "low shelving: gain ", 2.5, 113, 0}},
         {},
         {"10: OFF, plays nothing: OFF PK"}},
        {"decimal commas, groups of points and CRLF",
         "rew",
         "Filter Settings file\r\nFilter 1: ON PK Fc 1.250,0 Hz Gain -3,1 dB Q 2,00\r\n"
         "Filter 2: ON PK Fc 12.000 Hz Gain 4,0 dB BW Oct 0,500\r\n",
         "In B",
         {peak(2, 1250, -3.1, 2, 1, -3, 1250, 0.7), peak(3, 12000, 4, 2.8710, 2, 4, 11875, 0.5)},
         {},
         {}},
        {"decimal points and groups of commas",
         "rew",
         "Filter  1: ON  PK  Fc  1,250.0 Hz  Gain  -3.0 dB  Q  1.41\nFilter  2: ON PK Fc 10,000 Hz Gain 1.0 dB Q 5.0\n",
         "Out 1",
         {peak(1, 1250, -3, 1.41, 1, -3, 1250, 1), peak(2, 10000, 1, 5, 2, 1, 10000, 0.3)},
         {},
         {}},
        {"groups of blanks, narrow and no-break, in UTF-8",
         "rew",
         "\xEF\xBB\xBF"
         "Filter 1: ON PK Fc 1\xC2\xA0"
         "250 Hz Gain \xE2\x88\x92"
         "3,0 dB Q 3,0\nFilter 2: ON PK Fc 8\xE2\x80\xAF"
         "123 Hz Gain 2,0 dB Q 8,0\n",
         "In A",
         {peak(1, 1250, -3, 3, 1, -3, 1250, 0.5), peak(2, 8123, 2, 8, 2, 2, 8000, 0.2)},
         {},
         {}},
        {"UTF-16, low byte first",
         "rew",
         Utf16("Filter 1: ON\tPK\tFc 500 Hz Gain 6.0 dB BW/60 30\r\n", false),
         "Out 6",
         {peak(1, 500, 6, 2.8710, 1, 6, 500, 0.5)},
         {},
         {}},
        {"UTF-16, high byte first",
         "rew",
         Utf16("Filter 1: ON Modal Fc 42.5 Hz Gain -9.0 dB Q 10.0 T60 target 300 ms\n", true),
         "In B",
         {peak(1, 42.5, -9, 10, 1, -9, 42, 0.15)},
         {},
         {}},
        {"Windows-1252 and shelves of first order",
         "rew",
         "Notes:Caf\xE9 \x96 links\nFilter 1: ON LS 6dB Fc 200 Hz Gain -4.0 dB\nFilter 2: ON HS 6dB Fc 4000 Hz Gain "
         "3.0 "
         "dB\n",
         "In A",
         {{2, LowShelf6, 200, -4, 0, "low shelving: gain ", -4, 200, 0},
          {3, HighShelf6, 4000, 3, 0, "high shelving: gain ", 3, 4000, 0}},
         {},
         {}},
        {"a crossover",
         "rew",
         "Filter 1: ON HP Fc 40 Hz\nFilter 2: ON LP Q Fc 12500 Hz Q 0.707\nFilter 3: ON HS Q Fc 3150 Hz Gain 2 dB Q "
         "0.7\n"
         "Filter 4: ON LS 12dB Fc 80.7 Hz Gain 1 dB\n",
         "Out 3",
         {{3, HighShelf, 3150, 2, 0.7, "shelving: gain ", 2, 3150, 0},
          {1, HighPass, 40, 0, 0.70710678, "high pass: frequency ", 0, 40, 0},
          {2, LowPass, 12500, 0, 0.707, "low pass: frequency ", 0, 12500, 0}},
         {"4: refused: LS 80.7 Hz 1 dB Q 0.7071: Out 3 has no such shelf left"},
         {}},
        {"what has no place",
         "rew",
         "Filter 1: ON PK Fc 100 Hz Gain -20 dB Q 2\nFilter 2: ON PK Fc 15 Hz Gain -2 dB Q 2\n"
         "Filter 3: ON PK Fc 100 Hz Gain -2 dB Q 0.3\nFilter 4: ON Notch Fc 100 Hz\nFilter 5: ON All pass Fc 100 Hz Q "
         "1\n"
         "Filter 6: ON HP Fc 30 Hz\nFilter 7: ON LS Fc 100 Hz Gain 7 dB\nFilter 8: ON LS Q Fc 100 Hz Gain 3 dB Q 1.5\n"
         "Filter 9: ON PK Fc 1000 Hz Gain -2 dB Q 1\n",
         "In A",
         {peak(9, 1000, -2, 1, 1, -2, 1000, 1.4)},
         {"1: refused: PK 100 Hz -20 dB Q 2: a gain in dB of -20 is out of range, which is -15 to 15",
          "2: refused: PK 15 Hz -2 dB Q 2: a frequency in Hz of 15 is out of range, which is 20 to 20000",
          "3: refused: PK 100 Hz -2 dB Q 0.3: a bandwidth in octaves of 3.704 is out of range, which is 0.05 to 3",
          "4: refused: the device has no filter of the kind notch",
          "5: refused: the device has no filter of the kind all pass",
          "6: refused: HP 30 Hz Q 0.7071: inputs have no crossover",
          "7: refused: LS 100 Hz 7 dB Q 0.7071: a shelf's gain in dB of 7 is out of range, which is -12 to 6",
          "8: refused: LS 100 Hz 3 dB Q 1.5: the device's shelves are of Q 0.707"},
         {}},
        {"bad lines and too many sections",
         "rew",
         "Filter 1: ON PK Fc abc Hz Gain 1 dB Q 1\nFilter 2: ON PK Fc 100 Hz Q 1\nFilter 3: ON PK Fc 100 Hz Gain 1 dB\n"
         "Filter 4: PERHAPS PK\nFilter 5: ON XY Fc 100 Hz\nFilter 6: ON PK Fc 100 Hz Gain 1 dB Q 0\n"
         "Filter 7: ON PK Fc 100 Hz Gain 1 dB Q 1\nFilter 8: ON PK Fc 200 Hz Gain 1 dB Q 1\n"
         "Filter 9: ON PK Fc 400 Hz Gain 1 dB Q 1\nFilter 10: ON PK Fc 800 Hz Gain 1 dB Q 1\n"
         "Filter 11: ON PK Fc 1600 Hz Gain 1 dB Q 1\n",
         "Out 2",
         {peak(7, 100, 1, 1, 1, 1, 100, 1.4), peak(8, 200, 1, 1, 2, 1, 200, 1.4), peak(9, 400, 1, 1, 3, 1, 400, 1.4),
          peak(10, 800, 1, 1, 4, 1, 800, 1.4)},
         {"1: refused: the frequency \"abc\" cannot be read as one number", "2: refused: there is no gain",
          "3: refused: there is neither Q nor bandwidth", "4: refused: neither ON nor OFF",
          "5: refused: \"xy\" is no kind of filter that is known here", "6: refused: Q and frequency are more than 0",
          "11: refused: PK 1600 Hz 1 dB Q 1: all 4 sections of Out 2 are in use"},
         {}},
        {"plain",
         "eqapo",
         "# Left stack\nPreamp: -6.5 dB\nChannel: L\nFilter 1: ON PK Fc 63.4 Hz Gain -5.2 dB Q 4.12\n"
         "Filter: ON PK Fc 1250 Hz Gain -1 dB BW Oct 1.02\nFilter 3: ON LSC 12 dB Fc 110 Hz Gain 2.5 dB\n"
         "Delay: 2.5 ms\n",
         "In A",
         {peak(4, 63.4, -5.2, 4.12, 1, -5.2, 63, 0.35),
          peak(5, 1250, -1, 1.385197, 2, -1, 1250, 1),
          {6, LowShelf, 110, 2.5, 0.70710678, "low shelving: gain ", 2.5, 113, 0}},
         {},
         {"2: no filter: Preamp -6.5 dB", "7: no filter: Delay 2.5 ms"}},
        {"PEQ and small letters",
         "eqapo",
         "filter 1: on peq fc 1 kHz gain 3 db q 2\n",
         "Out 4",
         {peak(1, 1000, 3, 2, 1, 3, 1000, 0.7)},
         {},
         {}},
        {"shelves by Q",
         "eqapo",
         "Filter: ON LSC Fc 100 Hz Gain -6 dB Q 0.707\nFilter: ON HSC Fc 8000 Hz Gain 4 dB Q 0.71\n",
         "In B",
         {{1, LowShelf, 100, -6, 0.707, "low shelving: gain ", -6, 100, 0},
          {2, HighShelf, 8000, 4, 0.71, "high shelving: gain ", 4, 8000, 0}},
         {},
         {}},
        {"shelves with no Q, and 6 dB",
         "eqapo",
         "Filter: ON LS Fc 63 Hz Gain 3 dB\nFilter: ON HS 6dB Fc 5000 Hz Gain -3 dB\n",
         "In A",
         {{1, LowShelf, 63, 3, 0.70710678, "low shelving: gain ", 3, 63, 0},
          {2, HighShelf6, 5000, -3, 0, "high shelving: gain ", -3, 5000, 0}},
         {},
         {}},
        {"a crossover",
         "eqapo",
         "Filter 5: ON HPQ Fc 30 Hz Q 0.707\nFilter 6: ON LP Fc 2000 Hz\n",
         "Out 5",
         {{1, HighPass, 30, 0, 0.707, "high pass: frequency ", 0, 30, 0},
          {2, LowPass, 2000, 0, 0.70710678, "low pass: frequency ", 0, 2000, 0}},
         {},
         {}},
        {"kinds that the device does not have",
         "eqapo",
         "Filter: ON BP Fc 100 Hz Q 1\nFilter: ON NO Fc 100 Hz Q 5\nFilter: ON AP Fc 100 Hz Q 1\n"
         "Filter: ON IIR Order 2 Coefficients 1 2 3 4 5 6\nFilter: ON LSC 24 dB Fc 100 Hz Gain 6 dB\n"
         "Filter: ON HPQ Fc 30 Hz Q 1.3\nFilter: ON PK Fc 100 Hz Gain 0.1 dB Q 40\n",
         "Out 1",
         {peak(7, 100, 0.1, 40, 1, 0.2, 100, 0.05)},
         {"1: refused: the device has no filter of the kind bp", "2: refused: the device has no filter of the kind no",
          "3: refused: the device has no filter of the kind ap", "4: refused: the device has no filter of the kind iir",
          "5: refused: LS 100 Hz 6 dB Q ", "6: refused: HP 30 Hz Q 1.3: the crossover has no slope of this Q"},
         {}},
        {"other commands",
         "eqapo",
         "Device: all\nStage: post-mix\nInclude: more.txt\nIf: x\nCopy: L=R\nGraphicEQ: 25 0\nConvolution: "
         "a.wav\nnonsense\n"
         "Filter: ON PK Fc 315 Hz Gain 5 dB Q 5\n",
         "In A",
         {peak(9, 315, 5, 5, 1, 5, 315, 0.3)},
         {"1: refused: the device has no place for \"Device\"", "2: refused: the device has no place for \"Stage\"",
          "3: refused: the device has no place for \"Include\"", "4: refused: the device has no place for \"If\"",
          "5: refused: the device has no place for \"Copy\"", "6: refused: the device has no place for \"GraphicEQ\"",
          "7: refused: the device has no place for \"Convolution\"", "8: refused: no command: nonsense"},
         {}},
        {"filters of two channels",
         "eqapo",
         "Channel: L\r\nFilter: ON PK Fc 100 Hz Gain 5 dB Q 5\r\nChannel: R\r\nFilter: ON PK Fc 200 Hz Gain 5 dB Q "
         "5\r\n",
         "In A",
         {peak(2, 100, 5, 5, 1, 5, 100, 0.3)},
         {"4: refused: for channel R, and the filters before it are for another"},
         {}},
        {"a widest and a narrowest",
         "eqapo",
         "Filter: ON PK Fc 20 Hz Gain 15 dB Q 30\nFilter: ON PK Fc 20000 Hz Gain -15 dB Q 0.4\nFilter: ON None\n"
         "Filter: OFF PK Fc 1 Hz\n",
         "In B",
         {peak(1, 20, 15, 30, 1, 15, 20, 0.05), peak(2, 20000, -15, 0.4, 2, -15, 20000, 3)},
         {},
         {"4: OFF, plays nothing"}},
        {"UTF-16 and old line ends",
         "eqapo",
         Utf16("# one\rFilter 1: ON PK Fc 251 Hz Gain 2.3 dB Q 1.41\rFilter 2: ON PK Fc x Hz Gain 2 dB Q 1\r", false),
         "Out 6",
         {peak(2, 251, 2.3, 1.41, 1, 2.2, 250, 1)},
         {"3: refused: the frequency \"x\" cannot be read as one number"},
         {}},
    };
}

} // namespace nrv::testing
