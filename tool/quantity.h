#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nrv::tool {

/// A number and what is written behind it, in small letters: "2.5 ms".
struct Quantity {
    double Number;
    std::string Unit;
};

/// None for a text that does not begin with a number.
std::optional<Quantity> QuantityFrom(std::string_view text);

/// The number in another unit: "2.5" and "2.5kHz" in "Hz". None for a unit of another kind.
std::optional<double> In(std::string_view unit, const Quantity& quantity);

} // namespace nrv::tool
