#include "tool/line_world.h"
#include "tool/terminal_picture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

/// A command of the page, and what stands below it.
struct Example {
    std::string Command;
    std::vector<std::string> Output;
};

std::vector<Example> ExamplesOf(const std::string& page) {
    constexpr std::string_view indent = "    ";
    std::vector<Example> examples;
    std::istringstream lines(page);
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("    $ ")) {
            examples.push_back({line.substr(6), {}});
            inside = true;
        } else if (inside && line.starts_with(indent)) {
            examples.back().Output.push_back(line.substr(indent.size()));
        } else if (inside && line.empty()) {
            examples.back().Output.emplace_back(); // of the block, when more of it follows
        } else {
            inside = false;
        }
    }
    for (Example& example : examples) {
        while (!example.Output.empty() && example.Output.back().empty()) {
            example.Output.pop_back();
        }
    }
    return examples;
}

/// As a shell splits it, with double quotes alone.
std::vector<std::string> WordsOf(const std::string& command) {
    std::vector<std::string> words(1);
    bool quoted = false;
    for (const char c : command) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ' ' && !quoted) {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    return words;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

std::string ReadWhole(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The page, in the folder in which its examples are run.
class Documentation : public ::testing::Test {
  protected:
    void SetUp() override { std::filesystem::current_path(World.Desk.Folder.Path()); }
    void TearDown() override { std::filesystem::current_path(before_); }

    /// Holds a picture of the page to what it must show now; with NRV718_UPDATE_PICTURES set, draws it anew.
    void ExpectPicture(const std::string& name, const std::string& svg) const {
        const std::filesystem::path file =
            std::filesystem::path(NRV718_PRESET_TOOL_PAGE).parent_path() / "pictures" / name;
        if (std::getenv("NRV718_UPDATE_PICTURES") != nullptr) {
            std::ofstream(file) << svg;
        }
        EXPECT_EQ(ReadWhole(file), svg) << name << ": run this with NRV718_UPDATE_PICTURES=1, and look at it";
        EXPECT_NE(Page.find("](pictures/" + name + ")"), std::string::npos) << name << " is not on the page";
    }

    LineWorld World{[](simulator::Device& device) {
        device.SetLabel("Main left");
        device.PutPreset(0, "Hall", device.LiveImage());
        device.PutPreset(1, "Speech", device.LiveImage());
        device.SetLevels(simulator::Levels{4, 3, 0, 0, 0, 0, 0, 0});
    }};
    const std::string Page = ReadWhole(NRV718_PRESET_TOOL_PAGE);

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

constexpr std::size_t PictureWidth = 134;

TEST_F(Documentation, ItsExamplesAndPicturesAreWhatTheToolDoes) {
    std::size_t commands = 0;
    std::string session; // what the first picture shows
    for (const Example& example : ExamplesOf(Page)) {
        std::vector<std::string> words = WordsOf(example.Command);
        if (words.front() == "cat") {
            World.Desk.Folder.WriteText(words.at(1), Joined(example.Output));
            continue;
        }
        ASSERT_EQ(words.front(), "nrv718-preset");
        words.erase(words.begin());
        const ToolRun run = World.RunAll(words);
        ++commands;
        const std::string told = run.Errors + run.Out;
        std::vector<std::string> expected = example.Output;
        if (!expected.empty() && expected.back() == "...") {
            expected.pop_back();
            EXPECT_EQ(told.substr(0, Joined(expected).size()), Joined(expected)) << example.Command;
            EXPECT_GT(told.size(), Joined(expected).size());
        } else {
            EXPECT_EQ(told, Joined(expected)) << example.Command;
        }
        if (commands > 1 && session.find("$ nrv718-preset diff") == std::string::npos && words.back() != "--keys") {
            session += "$ " + example.Command + "\n" + told;
        }
    }
    EXPECT_EQ(commands, 21U);
    ExpectPicture("preset-session.svg", TerminalPicture(session, PictureWidth));
    ExpectPicture("preset-curve.svg", World.Desk.Folder.ReadText("out1.svg"));

    World.TerminalWidth = PictureWidth;
    const std::vector<std::string> restore{"line", "restore", "--port", "1", "--id", "5", "main-left"};
    const std::string typed = "$ nrv718-preset line restore --port 1 --id 5 main-left\n";
    World.InterruptWith(800);
    std::string terminal = typed + World.RunOnTerminal(restore);
    terminal += typed + World.RunOnTerminal(restore, 420);
    ExpectPicture("preset-restore.svg", TerminalPicture(terminal, PictureWidth));
    ExpectPicture("preset-watch.svg",
                  TerminalPicture("$ nrv718-preset line watch --port 1 --id 5 --bars --count 2\n" +
                                      World.RunOnTerminal({"line", "watch", "--port", "1", "--id", "5", "--bars",
                                                           "--count", "2", "--interval", "1"}),
                                  PictureWidth));
}

} // namespace
} // namespace nrv::testing
