#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/channels.h"
#include "ports/numbering.h"
#include "response/response.h"
#include "tool/exchange.h"
#include "tool/parameters.h"

#include <ostream>
#include <vector>

namespace nrv::tool {
namespace {

using presets::Parameter;
using presets::ParameterKind;

/// A filter of the device behind its kind, in the words of a format.
struct Line {
    std::string Kind;
    double Hz;
    std::string Rest; ///< gain and Q
};

std::string Number(double value) {
    constexpr int places = 4;
    return model::NumberText(model::ToDecimal(value, places));
}

class Exporter {
  public:
    Exporter(FilterFormat format, int channel, const model::PresetImageRow& image, std::ostream& errors)
        : format_(format), channel_(channel), image_(image), errors_(errors) {}

    std::vector<Line> Run() {
        for (int n = 0; n < PeqCountOf(channel_); ++n) {
            AddSection({ParameterKind::Peq, FirstPeqOf(channel_) + n});
        }
        for (int n = 0; n < ToneCountOf(channel_); ++n) {
            AddShelf({ParameterKind::Tone, FirstToneOf(channel_) + n});
        }
        for (int n = 0; n < SidesPerOutput && !IsInput(channel_); ++n) {
            AddSide({ParameterKind::Crossover, FirstSideOf(OutputOf(channel_)) + n});
        }
        return std::move(lines_);
    }
    bool LeftOut() const { return left_out_; }

  private:
    /// The codes of a parameter; none when one of them stands for nothing.
    std::vector<int> Codes(Parameter parameter) {
        std::vector<int> codes;
        for (const presets::CodePlace& place : CodesOf(parameter)) {
            codes.push_back(presets::CodeIn(image_, place));
            if (codes.back() > place.Top) {
                Refuse(parameter, "holds a code that stands for nothing; \"check\" tells which");
                return {};
            }
        }
        return codes;
    }
    void Refuse(Parameter parameter, const std::string& why) {
        errors_ << "nrv718-preset: " << presets::PlaceOf(parameter) << ": " << why << "\n";
        left_out_ = true;
    }

    void AddSection(Parameter parameter) {
        const std::vector<int> codes = Codes(parameter);
        if (codes.empty() || model::PeqGainFromCode(codes[0]) == 0.0) {
            return;
        }
        lines_.push_back({"PK", model::FrequencyFromCode(codes[1]),
                          Gain(model::PeqGainFromCode(codes[0])) + Q(QOfOctaves(model::BandwidthFromCode(codes[2])))});
    }

    void AddShelf(Parameter parameter) {
        using enum response::ShelfKind;
        const std::vector<int> codes = Codes(parameter);
        if (codes.empty()) {
            return;
        }
        const response::ShelfKind kind = response::KindOfShelf(parameter.Index, codes[2]);
        if (kind == Bypass || model::ToneGainFromCode(codes[0]) == 0.0) {
            return;
        }
        const bool low = kind == FirstOrderLow || kind == SecondOrderLow;
        const bool first = kind == FirstOrderLow || kind == FirstOrderHigh;
        lines_.push_back({std::string(low ? "LS" : "HS") + (first ? " 6dB" : " 12dB"),
                          model::FrequencyFromCode(codes[1]), Gain(model::ToneGainFromCode(codes[0]))});
    }

    void AddSide(Parameter parameter) {
        const std::vector<int> codes = Codes(parameter);
        if (codes.empty() || codes[1] == 0) {
            return;
        }
        const std::string pass = CrossoverInChannel(parameter.Index) == 0 ? "HP" : "LP";
        const double hz = model::FrequencyFromCode(codes[0]);
        const bool rew = format_ == FilterFormat::Rew;
        const std::string with_q = pass + (rew ? " Q" : "Q");
        const std::vector<Line> first = {{pass + "1", hz, ""}};
        const auto of_q = [&](double q) { return Line{with_q, hz, Q(q)}; };
        std::vector<Line> lines;
        switch (codes[1]) {
        case 1:
            lines = first;
            break;
        case 2:
            lines = {{pass, hz, ""}};
            break;
        case 3:
            lines = {of_q(0.5)};
            break;
        case 6:
            lines = {first.front(), of_q(1.0)};
            break;
        case 8:
            lines = {of_q(0.5412), of_q(1.3066)};
            break;
        case 9:
            lines = {{pass, hz, ""}, {pass, hz, ""}};
            break;
        default:
            break;
        }
        if (lines.empty() || (!rew && (codes[1] == 1 || codes[1] == 6))) {
            Refuse(parameter, "its slope has no words in this format, and is left out");
            return;
        }
        lines_.insert(lines_.end(), lines.begin(), lines.end());
    }

    static std::string Gain(double decibels) { return "  Gain " + Number(decibels) + " dB"; }
    static std::string Q(double q) { return "  Q " + Number(q); }

    FilterFormat format_;
    int channel_;
    const model::PresetImageRow& image_;
    std::ostream& errors_;
    std::vector<Line> lines_;
    bool left_out_ = false;
};

} // namespace

Outcome ExportFilters(FilterFormat format, int channel, const model::PresetImageRow& image, std::ostream& out,
                      std::ostream& errors) {
    Exporter exporter(format, channel, image, errors);
    const std::vector<Line> lines = exporter.Run();
    const char* const title = ChannelTitles[At(channel)];
    if (format == FilterFormat::Rew) {
        out << "Filter Settings file\n\nNotes:NRV-718, " << title << "\n\nEqualiser: Generic\n";
    } else {
        out << "# NRV-718, " << title << "\n";
    }
    int number = 0;
    for (const Line& line : lines) {
        out << "Filter " << ++number << ": ON " << line.Kind << "  Fc " << Number(line.Hz) << " Hz" << line.Rest
            << "\n";
    }
    return exporter.LeftOut() ? Outcome::Differs : Outcome::Well;
}

} // namespace nrv::tool
