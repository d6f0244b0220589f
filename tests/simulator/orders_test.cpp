#include "simulator/console.h"
#include "terminal.h"

#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace nrv::simulator {
namespace {

Rack EveryDevice() {
    Rack rack;
    for (int id = 0; id <= HighestId; ++id) {
        rack.Add(id);
    }
    return rack;
}

/// What the help says, taken from its text alone.
struct Help {
    std::vector<std::vector<std::string>> Forms;
    std::map<std::string, std::pair<int, int>> Ranges; ///< of the words in capitals
};

Help ReadHelp(const std::string& text) {
    Help help;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t gap = line.find("  ");
        if (gap == std::string::npos) {
            continue;
        }
        std::vector<std::string> words;
        std::istringstream form(line.substr(0, gap));
        for (std::string word; form >> word;) {
            words.push_back(word);
        }
        if (std::islower(static_cast<unsigned char>(words[0][0])) != 0) {
            help.Forms.push_back(words);
            continue;
        }
        std::istringstream meaning(line.substr(gap));
        int low = 0;
        int high = 0;
        std::string to;
        meaning >> low >> to >> high;
        EXPECT_EQ(to, "to") << line;
        help.Ranges[words[0]] = {low, high};
    }
    return help;
}

class Orders : public ::testing::Test {
  protected:
    Orders() : line_(EveryDevice(), {.Paced = false, .Trace = {}}), help_(ReadHelp(Run("help"))) {}

    std::string Run(const std::string& command) { return RunCommand(line_, command, quit_); }
    bool Takes(const std::string& command) { return !Run(command).starts_with("error: "); }

    static std::string Bare(const std::string& word) {
        return word.front() == '[' ? word.substr(1, word.size() - 2) : word;
    }
    bool IsPlace(const std::string& word) const { return help_.Ranges.contains(Bare(word)); }
    std::string Low(const std::string& word) const {
        return IsPlace(word) ? std::to_string(help_.Ranges.at(Bare(word)).first) : word;
    }

    /// The order with the lowest number everywhere but at one word; words in brackets left out unless told.
    std::string Order(const std::vector<std::string>& form, std::size_t at, const std::string& instead,
                      bool whole = true) const {
        std::string order;
        for (std::size_t i = 0; i < form.size(); ++i) {
            if (whole || form[i].front() != '[') {
                order += (i == at ? instead : Low(form[i])) + " ";
            }
        }
        return order;
    }

    Line line_;
    bool quit_ = false;
    Help help_;
};

constexpr std::size_t Nowhere = 99;

TEST_F(Orders, AreTakenAsTheHelpSays) {
    EXPECT_GE(help_.Forms.size(), 16U);
    EXPECT_EQ(help_.Ranges.at("ID"), std::pair(0, 32));
    for (const auto& form : help_.Forms) {
        EXPECT_TRUE(Takes(Order(form, Nowhere, ""))) << Order(form, Nowhere, "");
        EXPECT_TRUE(Takes(Order(form, Nowhere, "", false))) << Order(form, Nowhere, "", false);
        EXPECT_FALSE(Takes(Order(form, Nowhere, "") + "0")) << form[0];
        for (std::size_t at = 1; at < form.size(); ++at) {
            if (!IsPlace(form[at])) {
                EXPECT_TRUE(std::islower(static_cast<unsigned char>(form[at][0])) != 0) << form[at];
                EXPECT_FALSE(Takes(Order(form, at, "otherwise"))) << form[0];
                continue;
            }
            const auto [low, high] = help_.Ranges.at(Bare(form[at]));
            EXPECT_TRUE(Takes(Order(form, at, std::to_string(high)))) << Order(form, at, std::to_string(high));
            for (const int wrong : {low - 1, high + 1}) {
                EXPECT_FALSE(Takes(Order(form, at, std::to_string(wrong)))) << Order(form, at, std::to_string(wrong));
            }
            EXPECT_EQ(Takes(Order(form, at, "any")), form[at] == "ID") << form[0];
        }
    }
    EXPECT_TRUE(quit_);
}

} // namespace
} // namespace nrv::simulator
