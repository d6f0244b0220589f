#include "simulator/console.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace nrv::simulator {
namespace {

using Words = std::vector<std::string>;

constexpr std::string_view CommandHelp = R"(die ID [N]           no answer to anything until revived, or to N requests
revive ID            answers again
lose ID [N]          N answers are lost (1 unless told; 0 for all from now on)
late ID N MS         N answers come MS milliseconds late
cut ID N BYTES       N answers end after BYTES bytes
double ID [N]        N answers come twice
garble ID N K VALUE  byte K of N answers becomes VALUE
as ID N OTHER        N answers are signed with the ID OTHER
from ID N OTHER      N requests are answered by the device OTHER
drip ID N MS         MS milliseconds pass between the bytes of N answers
calm                 forget all of these orders
meters ID L0 ... L7  the device shows these levels, 0 to 6, from In A to Out 6
meters ID move       the meters of the device move again
list                 the devices on the line
quit                 end the program
help                 this text
ID may be "any" in orders. Numbers may be written as 0x1F.
)";

/// What is wrong with a command, for the person who typed it.
struct CommandError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

int Number(const std::string& word, int low, int high, const char* what) {
    const bool hex = word.starts_with("0x") || word.starts_with("0X");
    const char* const first = word.data() + (hex ? 2 : 0);
    const char* const last = word.data() + word.size();
    int value = 0;
    const auto [end, error] = std::from_chars(first, last, value, hex ? 16 : 10);
    if (error != std::errc() || end != last || first == last || value < low || value > high) {
        throw CommandError(std::string(what) + " must be a number from " + std::to_string(low) + " to " +
                           std::to_string(high) + ", not \"" + word + "\"");
    }
    return value;
}

int Id(const std::string& word) {
    return Number(word, 0, HighestId, "the ID");
}

std::optional<int> IdOrAny(const std::string& word) {
    return word == "any" ? std::nullopt : std::optional<int>(Id(word));
}

int Count(const std::string& word) {
    return Number(word, 0, 1000000, "the count");
}

std::chrono::milliseconds Time(const std::string& word) {
    return std::chrono::milliseconds(Number(word, 0, 3600000, "the time"));
}

/// What an order needs behind its ID and count.
struct OrderForm {
    std::string_view Name;
    std::size_t Least; ///< words, the command included
    std::size_t Most;
    Fault (*Make)(const Words&);
};

int CountOrOne(const Words& words) {
    return words.size() > 2 ? Count(words[2]) : 1;
}

const std::array<OrderForm, 9> OrderForms{{
    {"die", 2, 3, [](const Words& w) { return Fault::Die(IdOrAny(w[1]), w.size() > 2 ? Count(w[2]) : 0); }},
    {"lose", 2, 3, [](const Words& w) { return Fault::Lose(IdOrAny(w[1]), CountOrOne(w)); }},
    {"double", 2, 3, [](const Words& w) { return Fault::Double(IdOrAny(w[1]), CountOrOne(w)); }},
    {"late", 4, 4, [](const Words& w) { return Fault::Late(IdOrAny(w[1]), Count(w[2]), Time(w[3])); }},
    {"drip", 4, 4, [](const Words& w) { return Fault::Drip(IdOrAny(w[1]), Count(w[2]), Time(w[3])); }},
    {"cut", 4, 4,
     [](const Words& w) {
         const int bytes = Number(w[3], 0, static_cast<int>(PresetSize), "the number of bytes");
         return Fault::Cut(IdOrAny(w[1]), Count(w[2]), static_cast<std::size_t>(bytes));
     }},
    {"garble", 5, 5,
     [](const Words& w) {
         const int index = Number(w[3], 0, static_cast<int>(PresetSize) - 1, "the byte");
         const int value = Number(w[4], 0, 255, "the value");
         return Fault::Garble(IdOrAny(w[1]), Count(w[2]), static_cast<std::size_t>(index), static_cast<Byte>(value));
     }},
    {"as", 4, 4, [](const Words& w) { return Fault::AnswerAs(IdOrAny(w[1]), Count(w[2]), Id(w[3])); }},
    {"from", 4, 4, [](const Words& w) { return Fault::AnswerFrom(IdOrAny(w[1]), Count(w[2]), Id(w[3])); }},
}};

void CheckWords(const Words& words, std::size_t least, std::size_t most) {
    if (words.size() < least || words.size() > most) {
        throw CommandError("\"" + words[0] + "\" has too " + (words.size() < least ? "few" : "many") +
                           " words behind it; try \"help\"");
    }
}

void SetMeters(Line& line, const Words& words) {
    CheckWords(words, 3, 2 + ChannelCount);
    const int id = Id(words[1]);
    std::optional<Levels> levels;
    if (words[2] == "move") {
        CheckWords(words, 3, 3);
    } else {
        CheckWords(words, 2 + ChannelCount, 2 + ChannelCount);
        levels.emplace();
        for (std::size_t i = 0; i < levels->size(); ++i) {
            (*levels)[i] = static_cast<Byte>(Number(words[2 + i], 0, 255, "a level"));
        }
    }
    line.WithRack([&](Rack& rack) { rack.At(id).SetLevels(levels); });
}

std::string List(Line& line) {
    return line.WithRack([](Rack& rack) {
        std::string text;
        for (const auto& [id, device] : rack.Devices()) {
            text += "ID " + std::to_string(id) + "  " + device.Label() + (device.Locked() ? "  locked" : "") + "\n";
        }
        return text;
    });
}

std::string Run(Line& line, const Words& words, bool& quit) {
    const std::string& name = words[0];
    for (const OrderForm& form : OrderForms) {
        if (form.Name == name) {
            CheckWords(words, form.Least, form.Most);
            line.Order(form.Make(words));
            return {};
        }
    }
    if (name == "meters") {
        SetMeters(line, words);
    } else if (name == "revive") {
        CheckWords(words, 2, 2);
        line.Revive(Id(words[1]));
    } else if (name == "calm") {
        CheckWords(words, 1, 1);
        line.ClearOrders();
    } else if (name == "list") {
        CheckWords(words, 1, 1);
        return List(line);
    } else if (name == "quit") {
        CheckWords(words, 1, 1);
        quit = true;
    } else if (name == "help") {
        return std::string(CommandHelp);
    } else {
        throw CommandError("unknown command \"" + name + R"("; try "help")");
    }
    return {};
}

} // namespace

std::string RunCommand(Line& line, std::string_view command, bool& quit) {
    std::istringstream stream{std::string(command)};
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    if (words.empty()) {
        return {};
    }
    try {
        return Run(line, words, quit);
    } catch (const std::exception& problem) {
        return std::string("error: ") + problem.what() + "\n";
    }
}

} // namespace nrv::simulator
