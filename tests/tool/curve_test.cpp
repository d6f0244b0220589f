#include "ports/numbering.h"
#include "presets/apply_image.h"
#include "support/test_program.h"
#include "tool/tool_desk.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;

std::vector<std::vector<double>> Table(const std::string& csv) {
    std::vector<std::vector<double>> rows;
    std::istringstream stream(csv);
    std::string line;
    std::getline(stream, line); // the head
    while (std::getline(stream, line)) {
        rows.emplace_back();
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');) {
            rows.back().push_back(std::stod(cell));
        }
    }
    return rows;
}

/// The program with a window of device 5 that shows a preset.
struct ShownPreset : TestProgram {
    explicit ShownPreset(const model::PresetImageRow& image) {
        Program.Windows.WindowSlots[0] = {true, 5, 0};
        Program.Stores.PresetImage[5] = image;
        Program.Link.TxSuppressed = true;
        presets::ApplyImage(Program.Commands, Program.Response);
    }
};

TEST(Curve, EqualsWhatTheProgramHoldsWithTheGains) {
    const ToolDesk desk;
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const model::PresetImageRow image = RandomPreset(seed);
        const std::string file = desk.Put("a.n91", image);
        const auto shown = std::make_unique<ShownPreset>(image);
        const auto table = Table(ToolDesk::Run({"curve", file, "--csv", "-"}).Out);
        const auto with_b = Table(ToolDesk::Run({"curve", file, "--add", "in-b", "--csv", "-"}).Out);
        ASSERT_EQ(table.size(), 1705U);
        const auto gain_of = [&](std::size_t byte) { return image.PresetBody[byte] / 5.0 - 12.0; };
        for (std::size_t point = 0; point < table.size(); ++point) {
            ASSERT_EQ(table[point].size(), 9U);
            EXPECT_EQ(table[point][0], response::PlotGrid[point]);
            const double in_b = shown->Program.Response.ChannelTotal(1)[point] + gain_of(73);
            for (int channel = 0; channel < 8; ++channel) {
                const std::size_t gain = channel < 2 ? 72U * At(channel) + 1 : 48U * At(channel) + 88;
                const double level =
                    shown->Program.Response.ChannelTotal(channel)[point] + gain_of(gain) + gain_of(143);
                ASSERT_NEAR(table[point][At(channel) + 1], level, 1e-9);
                ASSERT_NEAR(with_b[point][At(channel) + 1], channel < 2 ? level : level + in_b, 1e-9);
            }
        }
    }
}

TEST(Curve, OfOneFlatChannelIsItsGain) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[1] = 45;   // In A, -3 dB
    image.PresetBody[143] = 70; // the master, 2 dB
    const ToolRun run = ToolDesk::Run({"curve", desk.Put("a.n91", image), "--channel", "In A", "--csv", "-"});
    EXPECT_EQ(run.Outcome, 0) << run.Errors;
    EXPECT_EQ(run.Out.substr(0, run.Out.find('\n')), "Hz,In A dB");
    for (const auto& row : Table(run.Out)) {
        ASSERT_EQ(row.size(), 2U);
        ASSERT_NEAR(row[1], -1.0, 1e-9);
    }
}

/// What stands between two marks of a text, each time.
std::vector<std::string> Between(const std::string& text, const std::string& before, const std::string& behind) {
    std::vector<std::string> found;
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
        at += before.size();
        found.push_back(text.substr(at, text.find(behind, at) - at));
    }
    return found;
}

TEST(Curve, IsDrawnInTheColoursOfTheProgram) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[9] = 125; // In A, section 1: 10 dB at 36 Hz
    const std::string file = desk.Put("a.n91", image);
    ASSERT_EQ(ToolDesk::Run({"curve", file, "--svg", desk.File("a.svg"), "--csv", desk.File("a.csv")}).Outcome, 0);
    EXPECT_EQ(Table(desk.Folder.ReadText("a.csv")).size(), 1705U);
    const std::string svg = desk.Folder.ReadText("a.svg");
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
    EXPECT_EQ(Between(svg, "<path fill='none' stroke-width='1.5' stroke='", "'"),
              (std::vector<std::string>{"#ff0000", "#0000ff", "#ff00ff", "#c00000", "#00c0c0", "#00ff00", "#0000c0",
                                        "#ff8000"}));
    for (const char* text : {">20<", ">100<", ">1k<", ">20k<", ">-30<", ">30<", ">In A<", ">Out 6<", ">Hz<", ">dB<"}) {
        EXPECT_THAT(svg, HasSubstr(text));
    }
    const std::vector<std::string> curves = Between(svg, " d='", "'");
    ASSERT_EQ(curves.size(), 8U);
    // The grid from 20 Hz on has 1695 points; 36 Hz is the 17th. 1.5 units a pixel, 3.18333 pixels a dB.
    EXPECT_EQ(std::ranges::count(curves[0], ' '), 1695);
    std::istringstream points(curves[0]);
    std::string point;
    for (int n = 0; n < 17; ++n) {
        points >> point;
    }
    const double x = std::stod(point.substr(1));
    const double y = std::stod(point.substr(point.find(',') + 1));
    EXPECT_EQ(Between(curves[2], "M", " ").size(), 1U);
    EXPECT_NEAR(x, 48.0 + 1.5 * 575.0 / 3.0 * std::log10(36.0 / 20.0), 0.01);
    EXPECT_NEAR(y, 28.0 + 1.5 * (95.4 - 10.0 * 3.18333), 0.01);
}

TEST(Curve, EndsAtTheEdgesOfThePaper) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[145] = 40; // Out 1: Linkwitz-Riley, 24 dB an octave, from 200 Hz up
    image.PresetBody[146] = 9;
    image.PresetBody[149] = 0;
    ToolDesk::Run({"curve", desk.Put("a.n91", image), "--channel", "out1", "--svg", desk.File("a.svg")});
    const std::string path = Between(desk.Folder.ReadText("a.svg"), " d='", "'").at(0);
    EXPECT_EQ(Between(path, "M", " ").size(), 1U);
    const std::string first = Between(path, "M", " ").at(0);
    // 1 + (200 / f)^4 is 30 dB at 200 / (10^1.5 - 1)^(1/4) Hz.
    const double edge = 200.0 / std::pow(std::pow(10.0, 1.5) - 1.0, 0.25);
    EXPECT_NEAR(std::stod(first), 48.0 + 1.5 * 575.0 / 3.0 * std::log10(edge / 20.0), 0.05);
    EXPECT_NEAR(std::stod(first.substr(first.find(',') + 1)), 28.0 + 1.5 * 190.9, 0.01);
}

TEST(Curve, RefusesWhatCannotBeDrawn) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[6] = 121;
    const std::string file = desk.Put("a.n91", image);
    const ToolRun run = ToolDesk::Run({"curve", file, "--csv", "-"});
    EXPECT_EQ(run.Outcome, 2);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Errors, "nrv718-preset: In A: byte 6 of the image is the frequency code 121, and codes end at 120. "
                          "\"check\" tells every such byte.\n");
    EXPECT_EQ(ToolDesk::Run({"curve", file}).Outcome, 2);
    EXPECT_EQ(ToolDesk::Run({"curve", desk.Put("b.n91", FactoryPreset()), "--csv", "/dev/null/no"}).Outcome, 2);
    EXPECT_EQ(ToolDesk::Run({"curve", desk.File("b.n91"), "--add", "in-c", "--csv", "-"}).Outcome, 2);
}

} // namespace
} // namespace nrv::testing
