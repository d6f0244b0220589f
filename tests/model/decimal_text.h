#pragma once

#include <string>

namespace nrv::model {

/// Text of `units` steps of 10^-places, worked in whole numbers alone: (-38, 1) is "-3.8", (1500, 3) is "1.5".
inline std::string DecimalText(long units, int places) {
    std::string digits = std::to_string(units < 0 ? -units : units);
    while (static_cast<int>(digits.size()) <= places) {
        digits.insert(digits.begin(), '0');
    }
    digits.insert(digits.end() - places, '.');
    while (digits.back() == '0') {
        digits.pop_back();
    }
    if (digits.back() == '.') {
        digits.pop_back();
    }
    return (units < 0 ? "-" : "") + digits;
}

} // namespace nrv::model
