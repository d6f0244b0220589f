#include "tool/tool_desk.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace nrv::testing {
namespace {

using Words = std::vector<std::string>;
using Options = std::set<std::string>;

const std::vector<Words> Commands{{"show"},           {"diff"},          {"check"},          {"set"},
                                  {"curve"},          {"import"},        {"export"},         {"line", "list"},
                                  {"line", "read"},   {"line", "write"}, {"line", "backup"}, {"line", "restore"},
                                  {"line", "verify"}, {"line", "watch"}};

Options LongOptionsIn(const std::string& text) {
    static const std::regex option("--[a-z]+");
    Options found(std::sregex_token_iterator(text.begin(), text.end(), option), std::sregex_token_iterator());
    found.erase("--help");
    return found;
}

std::string HelpOf(Words command) {
    command.emplace_back("--help");
    const ToolRun run = ToolDesk::Run(command);
    EXPECT_EQ(run.Outcome, 0);
    EXPECT_EQ(run.Errors, "");
    return run.Out;
}

/// The synopsis of the man page, a line for each command with its marks taken out.
std::vector<std::string> Synopsis() {
    std::ifstream stream(NRV718_PRESET_MAN_PAGE);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("\\fBnrv718-preset ")) {
            line = std::regex_replace(line, std::regex(R"(\\f[BIR])"), "");
            lines.push_back(std::regex_replace(line, std::regex(R"(\\-)"), "-"));
        }
    }
    return lines;
}

/// The line of the synopsis in which each word of a command stands in its place, alone or as one of several.
std::string SynopsisOf(const Words& command) {
    std::string pattern = "nrv718-preset";
    for (const std::string& word : command) {
        pattern += " ([a-z]+[|])*" + word + "([|][a-z]+)*";
    }
    for (const std::string& line : Synopsis()) {
        if (std::regex_search(line, std::regex("^" + pattern + "( |$)"))) {
            return line;
        }
    }
    return {};
}

/// What bash offers behind the words of a command line.
std::string Offered(const Words& words) {
    std::string line = "COMP_WORDS=(nrv718-preset";
    for (const std::string& word : words) {
        line += " '" + word + "'";
    }
    const std::string script = "source '" NRV718_PRESET_COMPLETION "'; " + line +
                               "); COMP_CWORD=" + std::to_string(words.size()) + "; _nrv718_preset 2>/dev/null; " +
                               R"(printf '%s\n' "${COMPREPLY[@]}")";
    std::FILE* const bash = popen(("bash -c \"$(cat <<'END'\n" + script + "\nEND\n)\"").c_str(), "r");
    std::string offered;
    std::array<char, 4096> part{};
    while (std::fgets(part.data(), part.size(), bash) != nullptr) {
        offered += part.data();
    }
    pclose(bash);
    return offered;
}

TEST(Help, ManPageAndCompletionKnowTheSameOptions) {
    for (const Words& command : Commands) {
        const Options options = LongOptionsIn(HelpOf(command));
        const std::string synopsis = SynopsisOf(command);
        Options in_synopsis = LongOptionsIn(synopsis);
        if (synopsis.find("-o ") != std::string::npos) {
            in_synopsis.insert("--output");
        }
        EXPECT_EQ(in_synopsis, options) << synopsis;
        Words typed = command;
        if (command.front() == "import" || command.front() == "export") {
            typed.emplace_back("rew");
        }
        typed.emplace_back("--");
        EXPECT_EQ(LongOptionsIn(Offered(typed)), options) << command.front() << " " << command.back();
    }
}

TEST(Help, ManPageAndCompletionKnowEveryCommand) {
    Words first{"line"};
    Words below;
    for (const Words& command : Commands) {
        (command.size() == 1 ? first : below).push_back(command.back());
    }
    const auto offered = [](const Words& words) {
        std::istringstream lines(Offered(words));
        Words found;
        for (std::string line; std::getline(lines, line);) {
            found.push_back(line);
        }
        return found;
    };
    first.insert(first.end(), {"--help", "--version"});
    EXPECT_THAT(offered({""}), ::testing::UnorderedElementsAreArray(first));
    EXPECT_THAT(offered({"line", ""}), ::testing::UnorderedElementsAreArray(below));
    EXPECT_EQ(offered({"show", "a.n91", "--channel", "In"}), (Words{"In A", "In B"}));
    std::size_t in_synopsis = 0;
    for (const std::string& line : Synopsis()) {
        in_synopsis += line.find("backup|verify") != std::string::npos ? 2U : 1U;
    }
    EXPECT_EQ(in_synopsis, Commands.size());
}

TEST(Help, WrongUseIsToldInOneLineWithWhatMayStandThere) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const auto told = [](const Words& arguments) {
        const ToolRun run = ToolDesk::Run(arguments);
        EXPECT_EQ(run.Outcome, 2);
        EXPECT_EQ(run.Out, "");
        return run.Errors;
    };
    const std::string all = "; give show, diff, check, set, curve, import, export, line (--help tells how).\n";
    const std::string of_line = "; give list, read, write, backup, restore, verify, watch (--help tells how).\n";
    EXPECT_EQ(told({}), "nrv718-preset: There is no command" + all);
    EXPECT_EQ(told({"sing"}), "nrv718-preset: \"sing\" is no command" + all);
    EXPECT_EQ(told({""}), "nrv718-preset: \"\" is no command" + all);
    EXPECT_EQ(told({"line"}), "nrv718-preset: There is no command" + of_line);
    EXPECT_EQ(told({"line", "sing", "--port", "1"}), "nrv718-preset: \"sing\" is no command" + of_line);
    EXPECT_EQ(told({"export", "wav", file, "--channel", "in-a"}),
              "nrv718-preset: FORMAT: \"wav\" is none; give eqapo or rew (--help tells how)\n");
    EXPECT_EQ(told({"export", "0", file, "--channel", "in-a"}),
              "nrv718-preset: FORMAT: \"0\" is none; give eqapo or rew (--help tells how)\n");
    EXPECT_EQ(told({"curve", file, "--add", "in-c", "--csv", "-"}),
              "nrv718-preset: --add: \"in-c\" is none; give in-a or in-b (--help tells how)\n");
    EXPECT_EQ(told({"curve", file}),
              "nrv718-preset: There is no place to write to; give --csv FILE, --svg FILE or both.\n");
    EXPECT_EQ(told({"line", "watch", "--port", "1", "--id", "5", "--count", "0"}),
              "nrv718-preset: --count: Value 0 not in range 1 to 1000000000 (--help tells how)\n");
    EXPECT_EQ(told({"set", file, "=3", "-o", file}),
              "nrv718-preset: \"=3\": a value is set as KEY=VALUE, such as out2.peq3.gain=-3.\n");
    EXPECT_EQ(told({"set", file, "out1.name=\xE2\x82\xAC", "-o", file}),
              "nrv718-preset: out1.name=\"\xE2\x82\xAC\": a character that the device does not have; use those of "
              "Latin-1.\n");
    desk.Folder.WriteText("text.txt", std::string(5000, 'x') + "\n");
    const std::string long_word = told({"import", "rew", desk.File("text.txt"), file, "--channel", "in-a", "-o", file});
    EXPECT_THAT(long_word,
                ::testing::HasSubstr("holds no filter that plays, which is a line such as \"Filter 1: ON PK"));
    const ToolRun commands =
        ToolDesk::Run({"import", "eqapo", desk.File("text.txt"), file, "--channel", "in-a", "-o", file});
    EXPECT_EQ(commands.Errors.substr(0, commands.Errors.find('\n')),
              desk.File("text.txt") + ":1: refused: no command: " + std::string(80, 'x') + "...");
}

TEST(Help, TellsWhatEachCommandIsFor) {
    const std::string all = HelpOf({});
    for (const Words& command : Commands) {
        const std::string help = HelpOf(command);
        const std::string purpose = help.substr(0, help.find('\n'));
        EXPECT_GT(purpose.size(), 15U);
        const std::string whole = command.size() == 1 ? command[0] : command[0] + " " + command[1];
        EXPECT_THAT(help, ::testing::HasSubstr("\nUsage: nrv718-preset " + whole + " [OPTIONS]"));
        EXPECT_THAT(help, ::testing::Not(::testing::ContainsRegex("TEXT TEXT|INT in|ID:ID")));
        EXPECT_THAT(command.size() == 1 ? all : HelpOf({"line"}), ::testing::HasSubstr(purpose));
        for (std::size_t from = 0; from < help.size(); from = help.find('\n', from) + 1) {
            EXPECT_LE(help.find('\n', from) - from, 100U) << help.substr(from, 110);
        }
    }
}

} // namespace
} // namespace nrv::testing
