#include "tool/line_world.h"

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

TEST(Documentation, ItsExamplesAreWhatTheToolDoes) {
    std::ifstream stream(NRV718_PRESET_TOOL_PAGE);
    const std::string page((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    LineWorld world([](simulator::Device& device) {
        device.SetLabel("Main left");
        device.PutPreset(0, "Hall", device.LiveImage());
        device.PutPreset(1, "Speech", device.LiveImage());
        device.SetLevels(simulator::Levels{4, 3, 0, 0, 0, 0, 0, 0});
    });
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(world.Desk.Folder.Path());
    std::size_t commands = 0;
    for (const Example& example : ExamplesOf(page)) {
        std::vector<std::string> words = WordsOf(example.Command);
        if (words.front() == "cat") {
            world.Desk.Folder.WriteText(words.at(1), Joined(example.Output));
            continue;
        }
        ASSERT_EQ(words.front(), "nrv718-preset");
        words.erase(words.begin());
        const ToolRun run = world.RunAll(words);
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
    }
    std::filesystem::current_path(before);
    EXPECT_EQ(commands, 21U);
}

} // namespace
} // namespace nrv::testing
