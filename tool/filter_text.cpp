#include "tool/filter_text.h"

#include "model/number_text.h"
#include "tool/filter_lines.h"
#include "tool/line_reader.h"
#include "tool/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace nrv::tool {
namespace {

constexpr double ButterworthQ = std::numbers::sqrt2 / 2.0;
constexpr double LowestAudible = 10.0;
constexpr double HighestAudible = 24000.0;
constexpr double AnyNumber = std::numeric_limits<double>::max();

struct KindWords {
    std::string_view Words; ///< in small letters
    std::optional<FilterKind> Kind;
    int Order;
    bool NeedsQ;
};

using enum FilterKind;

/// Longer ones before those that they begin with.
constexpr std::array<KindWords, 33> Kinds{{{"peq", Peak, 2, true},
                                           {"pk", Peak, 2, true},
                                           {"modal", Peak, 2, true},
                                           {"lsc", LowShelf, 2, false},
                                           {"hsc", HighShelf, 2, false},
                                           {"ls 6 db", LowShelf, 1, false},
                                           {"ls 6db", LowShelf, 1, false},
                                           {"hs 6 db", HighShelf, 1, false},
                                           {"hs 6db", HighShelf, 1, false},
                                           {"ls 12 db", LowShelf, 2, false},
                                           {"ls 12db", LowShelf, 2, false},
                                           {"hs 12 db", HighShelf, 2, false},
                                           {"hs 12db", HighShelf, 2, false},
                                           {"ls q", LowShelf, 2, true},
                                           {"hs q", HighShelf, 2, true},
                                           {"ls", LowShelf, 2, false},
                                           {"hs", HighShelf, 2, false},
                                           {"lp1", LowPass, 1, false},
                                           {"hp1", HighPass, 1, false},
                                           {"lpq", LowPass, 2, true},
                                           {"hpq", HighPass, 2, true},
                                           {"lp q", LowPass, 2, true},
                                           {"hp q", HighPass, 2, true},
                                           {"lp", LowPass, 2, false},
                                           {"hp", HighPass, 2, false},
                                           {"notch", std::nullopt, 2, false},
                                           {"no", std::nullopt, 2, false},
                                           {"all pass", std::nullopt, 2, false},
                                           {"allpass", std::nullopt, 2, false},
                                           {"ap", std::nullopt, 2, false},
                                           {"bp", std::nullopt, 2, false},
                                           {"iir", std::nullopt, 2, false},
                                           {"gain", std::nullopt, 2, false}}};

/// What stands behind the kind, in any order.
struct Values {
    std::optional<double> Hz;
    std::optional<double> GainDb;
    std::optional<double> Q;
    std::optional<double> Slope;
};

double QOfBandwidth(LineReader& line) {
    if (line.Take("bw oct") || line.Take("bandwidth oct")) {
        return QOfOctaves(line.Number("the bandwidth", 0.0, 10.0));
    }
    if (line.Take("bw/60")) {
        constexpr double parts = 60.0;
        return QOfOctaves(line.Number("the bandwidth", 0.0, 600.0) / parts);
    }
    throw Refusal{"the bandwidth cannot be read"};
}

/// What is there twice could mean either.
void PutOnce(std::optional<double>& into, double value, const char* what) {
    if (into) {
        throw Refusal{std::string(what) + " stands there twice"};
    }
    into = value;
}

Values TakeValues(LineReader& line) {
    Values values;
    while (!line.AtEnd()) {
        const std::string word = line.NextWord();
        if (line.Take("fc")) {
            PutOnce(values.Hz, line.Number("the frequency", LowestAudible, HighestAudible), "the frequency");
            if (line.Take("khz")) {
                *values.Hz *= 1000.0;
            } else {
                line.Take("hz");
            }
        } else if (line.Take("gain")) {
            PutOnce(values.GainDb, line.Number("the gain", -99.0, 99.0), "the gain");
            line.Take("db");
        } else if (line.Take("q")) {
            PutOnce(values.Q, line.Number("the Q", 0.0, 100.0), "the Q");
        } else if (word.starts_with("bw") || word == "bandwidth") {
            PutOnce(values.Q, QOfBandwidth(line), "the bandwidth");
        } else if (line.Take("t60 target")) {
            line.Number("the T60 target", 0.0, AnyNumber);
            line.Take("ms");
            line.Take("s");
        } else if (!values.Hz && std::isdigit(static_cast<unsigned char>(word.front())) != 0) {
            PutOnce(values.Slope, line.Number("the slope", 0.0, 99.0), "the slope");
            line.Take("db");
        } else {
            throw Refusal{"\"" + Begin(word) + "\" is not understood"};
        }
    }
    return values;
}

/// Of a shelf that is given by its slope in dB an octave.
double QOfSlope(double slope, double gain_db) {
    constexpr double steepest = 12.0;
    const double a = std::pow(10.0, gain_db / 40.0);
    const double under_root = (a + 1.0 / a) * (steepest / slope - 1.0) + 2.0;
    if (!(slope > 0.0) || !(under_root > 0.0)) {
        throw Refusal{"a slope of " + model::NumberText(slope) + " dB has no shelf"};
    }
    return 1.0 / std::sqrt(under_root);
}

AskedFilter FilterOf(const KindWords& kind, const Values& values) {
    AskedFilter filter{0,
                       *kind.Kind,
                       kind.Order,
                       values.Hz.value_or(0.0),
                       values.GainDb.value_or(0.0),
                       values.Q.value_or(ButterworthQ)};
    const bool has_gain = filter.Kind == Peak || filter.Kind == LowShelf || filter.Kind == HighShelf;
    if (!values.Hz) {
        throw Refusal{"there is no frequency"};
    }
    if (has_gain && !values.GainDb) {
        throw Refusal{"there is no gain"};
    }
    if (kind.NeedsQ && !values.Q) {
        throw Refusal{"there is neither Q nor bandwidth"};
    }
    if (!(filter.Q > 0.0) || !(filter.Hz > 0.0)) {
        throw Refusal{"Q and frequency are more than 0"};
    }
    if (values.GainDb.value_or(0.0) != 0.0 && !has_gain) {
        throw Refusal{"there is a gain, which this kind does not have"};
    }
    if (values.Q && filter.Order == 1) {
        throw Refusal{"there is a Q, which a first order does not have"};
    }
    if (values.Slope && (values.Q || filter.Kind == Peak || !has_gain || filter.Order == 1)) {
        throw Refusal{"there is a slope, where " +
                      std::string(values.Q ? "the Q says the same" : "this kind takes none")};
    }
    if (values.Slope) {
        filter.Q = QOfSlope(*values.Slope, filter.GainDb);
    }
    return filter;
}

/// Reads a line behind "Filter 3:".
void ReadFilter(const std::string& rest, DecimalMark mark, int number, FilterText& text) {
    LineReader line(rest, mark);
    try {
        const bool on = line.Take("on");
        if (!on && !line.Take("off")) {
            throw Refusal{"neither ON nor OFF"};
        }
        if (line.AtEnd() || line.Take("none")) {
            return;
        }
        if (!on) {
            text.Told.push_back({number, "OFF, plays nothing: " + Begin(model::TrimBlanks(rest))});
            return;
        }
        const std::string word = line.NextWord();
        const auto* const kind =
            std::ranges::find_if(Kinds, [&line](const KindWords& known) { return line.Take(known.Words); });
        if (kind == Kinds.end()) {
            throw Refusal{"\"" + Begin(word) + "\" is no kind of filter that is known here"};
        }
        if (!kind->Kind) {
            throw Refusal{"the device has no filter of the kind " + std::string(kind->Words)};
        }
        AskedFilter filter = FilterOf(*kind, TakeValues(line));
        filter.Line = number;
        text.Filters.push_back(filter);
    } catch (const Refusal& refusal) {
        text.Refused.push_back({number, refusal.Why});
    }
}

/// What stands behind "Filter", a number if any, and a colon.
std::optional<std::string> BehindFilter(const std::string& line, bool needs_number) {
    LineReader reader(line, DecimalMark::Point);
    if (!reader.Take("filter")) {
        return std::nullopt;
    }
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    const std::string small = Small(line);
    const std::size_t from = small.find("filter") + std::string_view("filter").size();
    const std::string number = model::TrimBlanks(line.substr(from, std::max(colon, from) - from));
    if ((needs_number && number.empty()) || number.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return line.substr(colon + 1);
}

/// A command of the second format that is no filter.
void ReadCommand(const std::string& line, int number, std::string& channel, FilterText& text) {
    const std::size_t colon = line.find(':');
    const std::string name = model::TrimBlanks(line.substr(0, colon));
    const std::string value = colon == std::string::npos ? "" : model::TrimBlanks(line.substr(colon + 1));
    const std::string small = Small(name);
    if (colon == std::string::npos) {
        text.Refused.push_back({number, "no command: " + Begin(name)});
    } else if (small == "preamp") {
        text.Told.push_back({number, "no filter: Preamp " + Begin(value) + "; \"set\" gives the channel a gain"});
    } else if (small == "delay") {
        text.Told.push_back({number, "no filter: Delay " + Begin(value) + "; \"set\" gives the channel a delay"});
    } else if (small == "channel") {
        channel = value;
    } else {
        text.Refused.push_back({number, "the device has no place for \"" + Begin(name) + "\""});
    }
}

} // namespace

FilterText ReadFilters(FilterFormat format, std::string_view bytes) {
    const std::vector<std::string> lines = LinesOf(bytes);
    std::vector<std::string> filters;
    std::ranges::copy_if(lines, std::back_inserter(filters),
                         [](const std::string& line) { return BehindFilter(line, false).has_value(); });
    const DecimalMark mark = DecimalMarkOf(filters);
    FilterText text;
    std::string channel;
    std::string first_channel;
    int number = 0;
    for (const std::string& line : lines) {
        ++number;
        const std::string trimmed = model::TrimBlanks(line);
        const std::optional<std::string> filter = BehindFilter(line, format == FilterFormat::Rew);
        if (filter && !text.Filters.empty() && channel != first_channel) {
            text.Refused.push_back({number, "for channel " + Begin(channel) +
                                                ", and the filters before it are for another; "
                                                "import each from a text of its own"});
        } else if (filter) {
            first_channel = channel;
            ReadFilter(*filter, mark, number, text);
        } else if (format == FilterFormat::EqApo && !trimmed.empty() && trimmed.front() != '#') {
            ReadCommand(trimmed, number, channel, text);
        }
    }
    return text;
}

} // namespace nrv::tool
