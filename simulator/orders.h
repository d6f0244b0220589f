#pragma once

#include "simulator/line.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The orders that a running rack takes, and the help on them.
namespace nrv::simulator {

/// What stands behind the name of an order: the device, none for "any", and the numbers in their sequence.
struct OrderWords {
    std::optional<int> Id;
    std::vector<int> Numbers;

    int Number(std::size_t index, int otherwise = 0) const {
        return index < Numbers.size() ? Numbers[index] : otherwise;
    }
};

/// A word in capitals in an order's form stands for a number.
struct OrderPlace {
    std::string_view Word; ///< as the form has it
    int Low;
    int High;
    std::string_view Name; ///< as a complaint has it
    std::string_view Meaning;
};

/// An order: its form, such as "lose ID [N]", and what it does. "ID" may be "any"; brackets hold what may be left out.
struct OrderForm {
    std::string_view Form;
    std::string_view Meaning;
    std::string (*Run)(Line& line, const OrderWords& words); ///< none for "quit" and "help"
};

std::span<const OrderPlace> OrderPlaces();
/// Of two forms of one name the one with more fixed words comes first.
std::span<const OrderForm> OrderForms();
std::string OrderHelp();

} // namespace nrv::simulator
