#include "tool/curve.h"

#include "model/encodings.h"
#include "model/graph_scale.h"
#include "model/number_text.h"
#include "response/response.h"

#include <ostream>

namespace nrv::tool {
namespace {

using model::NumberText;

/// A pixel of the program's graph is so many units of the drawing.
constexpr double Scale = 1.5;
constexpr double Left = 48.0;
constexpr double Top = 28.0;
constexpr double Right = 16.0;
constexpr double Bottom = 44.0;
constexpr int LevelRange = 30;
constexpr int LevelStep = 10;
constexpr double Width = model::GraphWidth * Scale;
constexpr double Height = model::GraphHeight * Scale;

std::string Place(double value) {
    return NumberText(model::ToDecimal(value, 2));
}
std::string ColumnOf(double hz) {
    return Place(Left + Scale * model::PixelsPerDecade * model::Log10(hz / model::LowestHz));
}
std::string RowOf(double level) {
    return Place(Top + Scale * (model::ZeroDbRow - level * model::PixelsPerDb));
}

std::string Hex(const controls::Colour& colour) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const auto part : {colour.Red, colour.Green, colour.Blue}) {
        const auto value = static_cast<unsigned>(part);
        text += {digits[(value >> 4U) & 15U], digits[value & 15U]};
    }
    return text;
}

std::string FrequencyText(double hz) {
    return hz < 1000.0 ? NumberText(hz) : NumberText(hz / 1000.0) + "k";
}

void WriteGrid(std::ostream& out) {
    const std::string top = Place(Top);
    const std::string bottom = Place(Top + Height);
    const std::string left = Place(Left);
    const std::string right = Place(Left + Width);
    for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
        for (int multiple = 1; multiple < 10; ++multiple) {
            const double hz = decade * multiple;
            if (hz < model::LowestHz || hz > model::HighestHz) {
                continue;
            }
            const std::string x = ColumnOf(hz);
            out << "<line x1='" << x << "' y1='" << top << "' x2='" << x << "' y2='" << bottom << "' stroke='"
                << (multiple == 1 ? "#909090" : "#dcdcdc") << "'/>\n";
            if (multiple == 1 || multiple == 2 || multiple == 5) {
                out << "<text x='" << x << "' y='" << Place(Top + Height + 16.0) << "' text-anchor='middle'>"
                    << FrequencyText(hz) << "</text>\n";
            }
        }
    }
    for (int level = -LevelRange; level <= LevelRange; level += LevelStep) {
        const std::string y = RowOf(level);
        out << "<line x1='" << left << "' y1='" << y << "' x2='" << right << "' y2='" << y << "' stroke='"
            << (level == 0 ? "#505050" : "#dcdcdc") << "'/>\n"
            << "<text x='" << Place(Left - 6.0) << "' y='" << y << "' text-anchor='end' dominant-baseline='middle'>"
            << level << "</text>\n";
    }
    out << "<text x='" << Place(Left + Width / 2.0) << "' y='" << Place(Top + Height + 34.0)
        << "' text-anchor='middle'>Hz</text>\n<text x='14' y='" << RowOf(0.0) << "' transform='rotate(-90 14 "
        << RowOf(0.0) << ")' text-anchor='middle'>dB</text>\n";
}

bool IsOnPaper(double level) {
    return level >= -LevelRange && level <= LevelRange;
}

/// Where the straight between two points leaves the paper.
std::string EdgeBetween(double hz, double level, double next_hz, double next_level) {
    const double outside = IsOnPaper(level) ? next_level : level;
    const double edge = outside > 0.0 ? LevelRange : -LevelRange;
    const double share = (edge - level) / (next_level - level);
    return ColumnOf(hz + share * (next_hz - hz)) + ',' + RowOf(edge);
}

/// One path, broken where the curve runs above or below the paper.
void WriteCurve(const NamedCurve& curve, std::ostream& out) {
    out << "<path fill='none' stroke-width='1.5' stroke='" << Hex(response::CurveColour(curve.Channel)) << "' d='";
    bool drawing = false;
    double hz = 0.0;
    double level = 0.0;
    for (std::size_t point = 0; point < response::GridPoints; ++point) {
        const double next_hz = response::PlotGrid[point];
        const double next_level = curve.Levels[point];
        if (next_hz < model::LowestHz) {
            continue;
        }
        const bool on_paper = IsOnPaper(next_level);
        if (hz != 0.0 && on_paper != drawing) {
            out << (on_paper ? 'M' : 'L') << EdgeBetween(hz, level, next_hz, next_level) << ' ';
        }
        if (on_paper) {
            out << (hz == 0.0 ? 'M' : 'L') << ColumnOf(next_hz) << ',' << RowOf(next_level) << ' ';
        }
        drawing = on_paper;
        hz = next_hz;
        level = next_level;
    }
    out << "'/>\n";
}

} // namespace

void WriteCsv(const std::vector<NamedCurve>& curves, std::ostream& out) {
    out << "Hz";
    for (const NamedCurve& curve : curves) {
        out << ',' << curve.Name << " dB";
    }
    out << "\n";
    for (std::size_t point = 0; point < response::GridPoints; ++point) {
        out << NumberText(response::PlotGrid[point]);
        for (const NamedCurve& curve : curves) {
            out << ',' << NumberText(curve.Levels[point]);
        }
        out << "\n";
    }
}

void WriteSvg(const std::vector<NamedCurve>& curves, std::ostream& out) {
    const std::string width = Place(Left + Width + Right);
    const std::string height = Place(Top + Height + Bottom);
    out << "<svg xmlns='http://www.w3.org/2000/svg' width='" << width << "' height='" << height << "' viewBox='0 0 "
        << width << ' ' << height << "' font-family='sans-serif' font-size='12'>\n"
        << "<rect width='100%' height='100%' fill='#ffffff'/>\n";
    WriteGrid(out);
    double legend = Left;
    for (const NamedCurve& curve : curves) {
        WriteCurve(curve, out);
        out << "<text x='" << Place(legend) << "' y='18' fill='" << Hex(response::CurveColour(curve.Channel)) << "'>"
            << curve.Name << "</text>\n";
        constexpr double character = 7.0;
        legend += character * static_cast<double>(curve.Name.size() + 3);
    }
    out << "</svg>\n";
}

} // namespace nrv::tool
