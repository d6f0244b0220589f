#include "simulator/console.h"

#include "simulator/orders.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace nrv::simulator {
namespace {

using Words = std::vector<std::string>;

/// What is wrong with a command, for the person who typed it.
struct CommandError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Words Split(std::string_view text) {
    std::istringstream stream{std::string(text)};
    Words words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

int Number(const std::string& word, int low, int high, std::string_view what) {
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

bool IsFixed(const std::string& part) {
    return std::islower(static_cast<unsigned char>(part.front())) != 0;
}

/// True when the fixed words of a form stand where it wants them.
bool Fits(const Words& parts, const Words& words) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (IsFixed(parts[i]) && (i >= words.size() || words[i] != parts[i])) {
            return false;
        }
    }
    return true;
}

const OrderForm& FindForm(const Words& words) {
    const OrderForm* of_the_name = nullptr;
    for (const OrderForm& form : OrderForms()) {
        const Words parts = Split(form.Form);
        if (Fits(parts, words)) {
            return form;
        }
        of_the_name = parts[0] == words[0] ? &form : of_the_name;
    }
    if (of_the_name == nullptr) {
        throw CommandError("unknown command \"" + words[0] + R"("; try "help")");
    }
    return *of_the_name;
}

void CheckCount(const Words& parts, const Words& words) {
    const auto least = static_cast<std::size_t>(
        std::ranges::count_if(parts, [](const std::string& part) { return part.front() != '['; }));
    if (words.size() < least || words.size() > parts.size()) {
        throw CommandError("\"" + words[0] + "\" has too " + (words.size() < least ? "few" : "many") +
                           " words behind it; try \"help\"");
    }
}

const OrderPlace& PlaceOf(const std::string& part) {
    const std::string word = part.front() == '[' ? part.substr(1, part.size() - 2) : part;
    const auto place = std::ranges::find(OrderPlaces(), std::string_view(word), &OrderPlace::Word);
    if (place == OrderPlaces().end()) {
        throw std::logic_error("no such place: " + word);
    }
    return *place;
}

std::string Run(Line& line, const Words& words, bool& quit) {
    const OrderForm& form = FindForm(words);
    const Words parts = Split(form.Form);
    CheckCount(parts, words);
    OrderWords order;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (IsFixed(parts[i])) {
            if (words[i] != parts[i]) {
                throw CommandError("\"" + words[0] + "\" takes \"" + parts[i] + "\" here, not \"" + words[i] + "\"");
            }
        } else if (parts[i] != "ID") {
            const OrderPlace& place = PlaceOf(parts[i]);
            order.Numbers.push_back(Number(words[i], place.Low, place.High, place.Name));
        } else if (words[i] != "any") {
            order.Id = Number(words[i], 0, HighestId, "the ID");
            line.WithRack([&order](Rack& rack) { rack.At(*order.Id); }); // says so when it is not there
        }
    }
    if (form.Run != nullptr) {
        return form.Run(line, order);
    }
    if (words[0] == "help") {
        return OrderHelp();
    }
    quit = true;
    return {};
}

} // namespace

std::string RunCommand(Line& line, std::string_view command, bool& quit) {
    const Words words = Split(command);
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
