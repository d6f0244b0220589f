#include "model/encodings.h"
#include "reference/reference_desk.h"

// The codes of docs/line.md against the scales and lists of the program.

namespace nrv::testing {
namespace {

using Values = std::map<std::string, std::function<double(int)>>;

const Values& Scales() {
    static const Values scales = {{"gain", model::ChannelGainFromCode},
                                  {"PEQ gain", model::PeqGainFromCode},
                                  {"tone gain", model::ToneGainFromCode},
                                  {"bandwidth", model::BandwidthFromCode},
                                  {"limiter threshold", model::LimiterThresholdFromCode},
                                  {"coarse delay", [](int code) { return model::DelayInMs(code, 0); }},
                                  {"fine delay", [](int code) { return model::DelayInMs(0, code); }}};
    return scales;
}

TEST(LinePageCodes, ScalesRiseByTheirStep) {
    std::size_t scales = 0;
    for (const Row& row : SectionNamed(LinePage(), "Codes").Tables.at(0)) {
        SCOPED_TRACE(row.at(0));
        ++scales;
        const auto& value = Scales().at(row.at(0));
        const int from = std::stoi(row.at(1));
        const int to = std::stoi(row.at(2));
        EXPECT_DOUBLE_EQ(value(to), std::stod(row.at(4)));
        for (int code = from; code <= to; ++code) {
            EXPECT_NEAR(value(code), std::stod(row.at(3)) + (code - from) * std::stod(row.at(5)), 1e-9) << code;
        }
    }
    EXPECT_EQ(scales, Scales().size());
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(WithoutBlanks(part));
    }
    return parts;
}

template <class Texts>
std::vector<std::string> Trimmed(const Texts& texts) {
    std::vector<std::string> trimmed;
    for (const auto& text : texts) {
        trimmed.push_back(WithoutBlanks(std::string(text)));
    }
    return trimmed;
}

TEST(LinePageCodes, ListsAreTheProgramsInTheirOrder) {
    const controls::FrmCtrl form;
    std::vector<std::string> frequencies;
    for (const double hertz : model::FrequencyTable) {
        frequencies.push_back(std::to_string(std::lround(hertz)));
    }
    const std::map<std::string, std::vector<std::string>> lists = {
        {"frequency, Hz", frequencies},
        {"noise gate threshold, dBu", Trimmed(model::LowLevelTexts)},
        {"release", Trimmed(model::ReleaseTexts)},
        {"attack", Trimmed(model::AttackTexts)},
        {"slope", Trimmed(form.Combo2[0].Items())},
        {"type of an input's tone filter", Trimmed(form.Combo1[0].Items())},
        {"type of an output's tone filter", Trimmed(form.Combo1[4].Items())},
        {"source", Trimmed(form.Combo3[0].Items())}};
    std::map<std::string, std::vector<std::string>> told;
    for (const Row& row : SectionNamed(LinePage(), "Codes").Tables.at(1)) {
        told[row.at(0)] = Split(row.at(1), row.at(1).find(',') == std::string::npos ? ' ' : ',');
    }
    EXPECT_EQ(told, lists);
}

} // namespace
} // namespace nrv::testing
