#include "model/number_text.h"
#include "response/plot_grid.h"
#include "tool/filter_cases.h"
#include "tool/tool_desk.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct Figures {
    double Largest = 0.0;
    double Mean = 0.0;
};

/// The largest and the mean of what a line of the tool's tells, such as "largest 0.4 dB at 71 Hz, mean 0.05 dB".
Figures FiguresBehind(const std::string& out, const std::string& words) {
    const std::size_t at = out.find(words);
    EXPECT_NE(at, std::string::npos) << out;
    const auto number = [&](const std::string& before) {
        return std::stod(out.substr(out.find(before, at) + before.size()));
    };
    return {number("largest "), number("mean ")};
}

Figures SecondWay(const std::vector<CaseFilter>& filters) {
    Figures figures;
    double length = 0.0;
    double before = 0.0;
    double before_hz = 0.0;
    for (const double hz : response::PlotGrid) {
        if (hz < 20.0) {
            continue;
        }
        double apart = 0.0;
        for (const CaseFilter& filter : filters) {
            apart += AskedLevel(filter, hz) - PlayedLevel(filter, hz);
        }
        apart = std::abs(apart);
        figures.Largest = std::max(figures.Largest, apart);
        if (before_hz > 0.0) {
            const double step = std::log2(hz / before_hz);
            figures.Mean += step * (apart + before) / 2.0;
            length += step;
        }
        before = apart;
        before_hz = hz;
    }
    figures.Mean /= length;
    return figures;
}

class ImportOf : public ::testing::TestWithParam<FilterCase> {
  protected:
    ToolDesk Desk;
    std::string Text = Desk.File("text.txt");

    ToolRun Import(const std::string& into, bool fit = false) {
        const FilterCase& given = GetParam();
        Desk.Folder.WriteText("text.txt", given.Text);
        std::vector<std::string> arguments{"import",    given.Format,  Text, Desk.Put("a.n91", FactoryPreset()),
                                           "--channel", given.Channel, "-o", Desk.File(into)};
        if (fit) {
            arguments.emplace_back("--fit");
        }
        return ToolDesk::Run(arguments);
    }
};

TEST_P(ImportOf, PutsEachFilterOnTheNearestCodes) {
    const ToolRun run = Import("b.n91");
    EXPECT_EQ(run.Outcome, GetParam().Refused.empty() ? 0 : 1) << run.Errors;
    for (const CaseFilter& filter : GetParam().Filters) {
        const bool side = filter.What == Kind::HighPass || filter.What == Kind::LowPass;
        EXPECT_THAT(run.Out, HasSubstr(Text + ":" + std::to_string(filter.Line) + ": "));
        std::string became = "-> " + filter.Place;
        if (!side) {
            became += model::NumberText(filter.GotGain) + " dB, frequency ";
        }
        became += model::NumberText(filter.GotHz) + " Hz";
        if (filter.What == Kind::Peak) {
            became += ", bandwidth " + model::NumberText(filter.GotOctaves) + " oct\n";
        }
        EXPECT_THAT(run.Out, HasSubstr(became));
    }
    const auto arrows = run.Out.size() - [&] {
        std::string without = run.Out;
        std::erase(without, '>');
        return without.size();
    }();
    EXPECT_EQ(arrows, GetParam().Filters.size());
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(run.Errors, '\n')), GetParam().Refused.size()) << run.Errors;
    for (const std::string& refused : GetParam().Refused) {
        EXPECT_THAT(run.Errors, HasSubstr(Text + ":" + refused));
    }
    for (const std::string& told : GetParam().Told) {
        EXPECT_THAT(run.Out, HasSubstr(Text + ":" + told));
    }
    // What is shown of the preset is what was told.
    const std::string shown = ToolDesk::Run({"show", Desk.File("b.n91"), "--channel", GetParam().Channel}).Out;
    for (const CaseFilter& filter : GetParam().Filters) {
        EXPECT_THAT(shown, HasSubstr(GetParam().Channel + ", " + filter.Place));
    }
}

TEST_P(ImportOf, TellsHowFarTheCurvesAreApart) {
    const ToolRun run = Import("b.n91");
    const Figures told = FiguresBehind(run.Out, "Difference from what was asked for");
    const Figures expected = SecondWay(GetParam().Filters);
    EXPECT_NEAR(told.Largest, expected.Largest, 0.00051);
    EXPECT_NEAR(told.Mean, expected.Mean, 0.00051);
}

TEST_P(ImportOf, IsNoWorseForAFit) {
    const ToolRun run = Import("c.n91", true);
    const Figures fitted = FiguresBehind(run.Out, "Difference from what was asked for");
    const Figures nearest = FiguresBehind(run.Out, "Before the fit");
    const Figures expected = SecondWay(GetParam().Filters);
    EXPECT_LE(fitted.Largest, nearest.Largest);
    EXPECT_LE(fitted.Mean, nearest.Mean);
    EXPECT_NEAR(nearest.Mean, expected.Mean, 0.00051);
    EXPECT_EQ(ToolDesk::Run({"check", Desk.File("c.n91")}).Outcome, 0);
}

INSTANTIATE_TEST_SUITE_P(EachText, ImportOf, ::testing::ValuesIn(FilterCases()),
                         [](const auto& given) { return given.param.Format + std::to_string(given.index); });

TEST(Import, MakesTheOtherSectionsFlatAndLeavesTheRest) {
    const ToolDesk desk;
    model::PresetImageRow image = RandomPreset(3);
    const std::string file = desk.Put("a.n91", image);
    desk.Folder.WriteText("text.txt", "Filter 1: ON PK Fc 100 Hz Gain 3 dB Q 1.41\n");
    ASSERT_EQ(ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "out1", "-o", file}).Outcome,
              0);
    // Out 1's sections are at 150, 155, 160 and 165.
    image.PresetBody[151] = 28;
    image.PresetBody[152] = 19;
    image.PresetBody[154] = 90;
    image.PresetBody[159] = image.PresetBody[164] = image.PresetBody[169] = 75;
    EXPECT_EQ(std::memcmp(&image, desk.Folder.Read("a.n91").data(), sizeof image), 0);
}

TEST(Import, PutsTwoFiltersOfASideTogether) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto slope = [&](const std::string& text) {
        desk.Folder.WriteText("text.txt", text);
        const ToolRun run =
            ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "out1", "-o", file});
        return run.Outcome == 0 ? desk.Get("a.n91").PresetBody[146] : -1;
    };
    const std::string second = "Filter 1: ON HP Fc 100 Hz\n";
    const std::string first = "Filter 1: ON HP1 Fc 100 Hz\n";
    const auto of_q = [](const std::string& q) { return "Filter 1: ON HP Q Fc 100 Hz Q " + q + "\n"; };
    EXPECT_EQ(slope(first), 1);
    EXPECT_EQ(slope(second), 2);
    EXPECT_EQ(slope(of_q("0.5")), 3);
    EXPECT_EQ(slope(first + first), 3);
    EXPECT_EQ(slope(of_q("1.0") + first), 6);
    EXPECT_EQ(slope(of_q("1.307") + of_q("0.541")), 8);
    EXPECT_EQ(slope(second + second), 9);
    EXPECT_EQ(slope(second + second + second), -1);
    EXPECT_EQ(slope(second + "Filter 2: ON HP Fc 200 Hz\n"), -1);
}

TEST(Import, WritesNothingWhenNoFilterFits) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto import = [&](const std::string& text) {
        desk.Folder.WriteText("text.txt", text);
        return ToolDesk::Run(
            {"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", desk.File("b.n91")});
    };
    EXPECT_EQ(import("").Outcome, 2);
    EXPECT_EQ(import("Filter 1: ON None\n").Outcome, 2);
    const ToolRun refused = import("Filter 1: ON HP Fc 100 Hz\n");
    EXPECT_EQ(refused.Outcome, 1);
    EXPECT_THAT(refused.Errors, HasSubstr("the preset is not written"));
    EXPECT_FALSE(desk.Folder.Has("b.n91"));
    EXPECT_EQ(ToolDesk::Run({"import", "rew", desk.File("none"), file, "--channel", "in-a", "-o", file}).Outcome, 2);
    EXPECT_EQ(ToolDesk::Run({"import", "wav", desk.File("text.txt"), file, "--channel", "in-a", "-o", file}).Outcome,
              2);
}

TEST(Import, AsksWhatANumberMeansOnlyWhereItMustBeKnown) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto import = [&](const std::string& text) {
        desk.Folder.WriteText("text.txt", text);
        return ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", file});
    };
    EXPECT_THAT(import("Filter 1: ON PK Fc 1,250 Hz Gain 1 dB Q 4,120\n").Out, HasSubstr("PK 1250 Hz 1 dB Q 4.12 "));
    EXPECT_THAT(import("Filter 1: ON PK Fc 63,400 Hz Gain 1 dB Q 4\n").Out, HasSubstr("PK 63.4 Hz"));
    EXPECT_THAT(import("Filter 1: ON PK Fc 20,000 Hz Gain 1 dB Q 4\n").Errors,
                HasSubstr("1: refused: the frequency \"20,000\" cannot be read as one number"));
    EXPECT_THAT(import("Filter 1: ON PK Fc 20,000 Hz Gain 1.5 dB Q 4\n").Out, HasSubstr("PK 20000 Hz"));
    EXPECT_THAT(import("Filter 1: ON PK Fc 20,000 Hz Gain 1,5 dB Q 4\n").Out, HasSubstr("PK 20 Hz"));
}

TEST(Import, TakesNoNumberThatCouldBeTwo) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto errors = [&](const std::string& values) {
        desk.Folder.WriteText("text.txt", "Filter 1: ON " + values + "\n");
        const ToolRun run = ToolDesk::Run(
            {"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", desk.File("b.n91")});
        EXPECT_FALSE(desk.Folder.Has("b.n91")) << values;
        return run.Errors.substr(0, run.Errors.find('\n'));
    };
    const std::string begin = desk.File("text.txt") + ":1: refused: ";
    for (const char* hz : {"1,2,3", "12 50", "1 2500", "1250.5 5", "100 -5", "1.250,000.0", "1'2", "+-5", "."}) {
        EXPECT_EQ(errors("PK Fc " + std::string(hz) + " Hz Gain 1.5 dB Q 1"),
                  begin + "the frequency \"" + hz + "\" cannot be read as one number");
    }
    EXPECT_EQ(errors("PK Fc 100 Hz Gain 1 dB Q 4.12 3"), begin + "the Q \"4.12 3\" cannot be read as one number");
    EXPECT_EQ(errors("PK Fc 100 Hz Fc 200 Hz Gain 1 dB Q 1"), begin + "the frequency stands there twice");
    EXPECT_EQ(errors("PK Fc 100 Hz Gain 1 dB Gain 2 dB Q 1"), begin + "the gain stands there twice");
    EXPECT_EQ(errors("PK Fc 100 Hz Gain 1 dB Q 1 BW Oct 2"), begin + "the bandwidth stands there twice");
    EXPECT_EQ(errors("PK Fc 100 Hz Gain 1 dB BW 2"), begin + "the bandwidth cannot be read");
    EXPECT_EQ(errors("PK 12 dB Fc 100 Hz Gain 1 dB Q 1"), begin + "there is a slope, where the Q says the same");
    EXPECT_EQ(errors("PK 12 dB Fc 100 Hz Gain 1 dB"), begin + "there is neither Q nor bandwidth");
    EXPECT_EQ(errors("LP 12 dB Fc 100 Hz"), begin + "there is a slope, where this kind takes none");
    EXPECT_EQ(errors("HP Fc 100 Hz Gain 3 dB"), begin + "there is a gain, which this kind does not have");
    EXPECT_EQ(errors("LS 6dB Fc 100 Hz Gain 3 dB Q 1"), begin + "there is a Q, which a first order does not have");
}

TEST(Import, ReadsALineOfAnyLengthInNoTime) {
    const ToolDesk desk;
    std::string line = "Filter 1: ON Modal Fc 100 Hz Gain 1 dB Q 1.41";
    while (line.size() < 4'000'000) {
        line += " T60 target 1 ms";
    }
    desk.Folder.WriteText("text.txt", line + "\n");
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", file}).Outcome,
              0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(20)); // it took many minutes
    desk.Folder.WriteText("text.txt", line + line + "\n");
    EXPECT_THAT(ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", file}).Errors,
                HasSubstr("text.txt: longer than 4 MiB"));
}

TEST(Import, RefusesEachOfThousandsOfFiltersThatFindNoSection) {
    const ToolDesk desk;
    std::string text;
    for (int n = 1; n <= 5000; ++n) {
        text += "Filter " + std::to_string(n) + ": ON PK Fc " + std::to_string(20 + n) + " Hz Gain 1 dB Q 1.41\n";
    }
    desk.Folder.WriteText("text.txt", text);
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const ToolRun run =
        ToolDesk::Run({"import", "eqapo", desk.File("text.txt"), file, "--channel", "in-a", "-o", desk.File("b.n91")});
    EXPECT_EQ(run.Outcome, 1);
    EXPECT_EQ(std::ranges::count(run.Errors, '\n'), 4990);
    EXPECT_EQ(std::ranges::count(run.Out, '\n'), 10 + 1);
    EXPECT_THAT(run.Out, HasSubstr("Difference from what was asked for, the refused left out, 20 Hz to 20 kHz: "));
}

TEST(Import, SendsNothingToTheTerminalThatControlsIt) {
    const ToolDesk desk;
    desk.Folder.WriteText("text.txt", "Filter 1: ON PK Fc 100 Hz Gain 1 dB Q 1\nFilter 2: OFF \x1B[2J\x07 PK\n");
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const ToolRun run = ToolDesk::Run({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", file});
    EXPECT_THAT(run.Out, HasSubstr("text.txt:2: OFF, plays nothing: OFF ?[2J? PK\n"));
}

TEST(Import, WritesOverNothingThatItReads) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const std::string text = "Filter 1: ON PK Fc 100 Hz Gain 1 dB Q 1\n";
    desk.Folder.WriteText("text.txt", text);
    std::filesystem::create_symlink(desk.File("a.n91"), desk.File("link.n91"));
    const auto refused = [&](const std::vector<std::string>& arguments, const std::string& name) {
        const ToolRun run = ToolDesk::Run(arguments);
        EXPECT_EQ(run.Outcome, 2);
        EXPECT_EQ(run.Errors, "nrv718-preset: " + name + ": is what is read; give another name to write to.\n");
    };
    refused({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", desk.File("text.txt")},
            desk.File("text.txt"));
    refused({"export", "rew", file, "--channel", "in-a", "-o", desk.File("link.n91")}, desk.File("link.n91"));
    refused({"curve", file, "--csv", file}, file);
    refused({"curve", file, "--svg", file, "--csv", "-"}, file);
    EXPECT_EQ(ToolDesk::Run({"curve", file, "--svg", "-", "--csv", "-"}).Outcome, 2);
    EXPECT_EQ(desk.Folder.ReadText("text.txt"), text);
    const model::PresetImageRow factory = FactoryPreset();
    EXPECT_EQ(std::memcmp(desk.Folder.Read("a.n91").data(), &factory, sizeof factory), 0);
}

TEST(Export, ReplacesALongerFileWholeAndKeepsALink) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    desk.Folder.WriteText("old.txt", std::string(5000, 'x'));
    std::filesystem::create_symlink("old.txt", desk.File("link.txt"));
    ASSERT_EQ(ToolDesk::Run({"export", "eqapo", file, "--channel", "in-a", "-o", desk.File("link.txt")}).Outcome, 0);
    EXPECT_EQ(desk.Folder.ReadText("old.txt"), "# NRV-718, In A\n");
    EXPECT_TRUE(std::filesystem::is_symlink(desk.File("link.txt")));
    const ToolRun full = ToolDesk::Run({"curve", file, "--csv", "/dev/full"});
    EXPECT_EQ(full.Outcome, 2);
    EXPECT_EQ(full.Errors, "nrv718-preset: /dev/full: could not be written: No space left on device.\n");
    const ToolRun folder = ToolDesk::Run({"curve", file, "--csv", desk.Folder.Path().string()});
    EXPECT_EQ(folder.Errors,
              "nrv718-preset: " + desk.Folder.Path().string() + ": could not be written: it is a folder.\n");
}

TEST(Import, FitsBetterWhereTheFormulasDiffer) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    desk.Folder.WriteText("text.txt",
                          "Filter 1: ON LS Fc 200 Hz Gain -9 dB\nFilter 2: ON PK Fc 1000 Hz Gain 12 dB Q 0.7\n"
                          "Filter 3: ON PK Fc 1500 Hz Gain -8 dB Q 2\n");
    const ToolRun run = ToolDesk::Run(
        {"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "--fit", "-o", desk.File("b.n91")});
    ASSERT_EQ(run.Outcome, 0);
    EXPECT_LT(FiguresBehind(run.Out, "Difference from").Mean, 0.8 * FiguresBehind(run.Out, "Before the fit").Mean)
        << run.Out;
}

TEST(Export, WritesWhatTheImportReads) {
    const ToolDesk desk;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        model::PresetImageRow image = RandomPreset(seed);
        for (const std::size_t side : {146U, 149U}) {
            constexpr std::array<std::uint8_t, 7> with_words{0, 1, 2, 3, 6, 8, 9};
            image.PresetBody[side] = with_words.at((seed + side) % 7);
        }
        const std::string file = desk.Put("a.n91", image);
        for (const std::string channel : {"In A", "In B", "Out 1"}) {
            const std::string text = desk.File("text.txt");
            ASSERT_EQ(ToolDesk::Run({"export", "rew", file, "--channel", channel, "-o", text}).Outcome, 0);
            model::PresetImageRow bare = FactoryPreset();
            bare.PresetBody[146] = bare.PresetBody[149] = 0;
            const std::string into = desk.Put("b.n91", bare);
            const ToolRun import = ToolDesk::Run({"import", "rew", text, into, "--channel", channel, "-o", into});
            ASSERT_EQ(import.Outcome, 0) << import.Errors;
            const ToolRun again = ToolDesk::Run({"export", "rew", into, "--channel", channel});
            EXPECT_EQ(again.Out, desk.Folder.ReadText("text.txt"));
        }
    }
}

TEST(Export, TellsWhatHasNoWords) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[9] = 50; // In A, section 1: -5 dB at 36 Hz, 0.45 octaves
    image.PresetBody[57] = 2; // its low shelf
    image.PresetBody[59] = 30;
    image.PresetBody[146] = 4;
    image.PresetBody[149] = 6;
    const std::string file = desk.Put("a.n91", image);
    EXPECT_EQ(ToolDesk::Run({"export", "eqapo", file, "--channel", "In A"}).Out,
              "# NRV-718, In A\nFilter 1: ON PK  Fc 36 Hz  Gain -5 dB  Q 3.193\n"
              "Filter 2: ON LS 12dB  Fc 85 Hz  Gain 3 dB\n");
    const ToolRun rew = ToolDesk::Run({"export", "rew", file, "--channel", "Out 1"});
    EXPECT_EQ(rew.Outcome, 1);
    EXPECT_EQ(rew.Errors, "nrv718-preset: Out 1, high pass: its slope has no words in this format, and is left out\n");
    EXPECT_THAT(rew.Out, HasSubstr("Filter 1: ON LP1  Fc 63 Hz\nFilter 2: ON LP Q  Fc 63 Hz  Q 1\n"));
    const ToolRun eqapo = ToolDesk::Run({"export", "eqapo", file, "--channel", "Out 1"});
    EXPECT_THAT(eqapo.Errors, HasSubstr("Out 1, low pass"));
    EXPECT_THAT(eqapo.Out, Not(HasSubstr("Filter")));
}

} // namespace
} // namespace nrv::testing
