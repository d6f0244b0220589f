#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nrv::tool {

enum class FilterFormat { Rew, EqApo };

enum class FilterKind { Peak, LowShelf, HighShelf, LowPass, HighPass };

/// A filter that plays, as it was asked for on the analogue axis.
struct AskedFilter {
    int Line = 0;
    FilterKind Kind = FilterKind::Peak;
    int Order = 2; ///< 1 or 2; a peak's is 2
    double Hz = 0.0;
    double GainDb = 0.0;
    double Q = 0.0; ///< of those of second order
};

/// Something of a line that is told.
struct LineNote {
    int Line;
    std::string What;
};

/// What a text holds: none of its filters is left out in silence.
struct FilterText {
    std::vector<AskedFilter> Filters;
    std::vector<LineNote> Refused; ///< plays there, and has no place in the device or cannot be read
    std::vector<LineNote> Told;    ///< plays nothing, or is no filter
};

FilterText ReadFilters(FilterFormat format, std::string_view bytes);

/// Of a bandwidth in octaves, and back.
double QOfOctaves(double octaves);
double OctavesOfQ(double q);

/// A filter in words: "PK 63.4 Hz -5.2 dB Q 4.12".
std::string InWords(const AskedFilter& filter);

/// The level of a filter in dB at a frequency.
double LevelOf(const AskedFilter& filter, double hz);

} // namespace nrv::tool
