#include "model/number_text.h"

#include "ports/runtime_error.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace nrv::model {
namespace {

constexpr int SignificantDigits = 15;
constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view NumberStarts = "0123456789.";

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

std::string NumberText(double value) {
    if (value == 0.0) {
        return "0"; // minus zero too
    }
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general,
                                       SignificantDigits);
    return {buffer.data(), written.ptr};
}

double ParseNumber(std::string_view text) {
    std::string_view number = Trimmed(text, Blanks);
    const bool negative = number.starts_with('-');
    if (negative || number.starts_with('+')) {
        number.remove_prefix(1);
    }
    double value = 0.0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    // The library would take a second sign, "inf" and "nan" as well.
    if (number.find_first_of(NumberStarts) != 0 || read.ptr != number.data() + number.size()) {
        throw RuntimeError(ErrorKind::TypeMismatch, "\"" + std::string(text) + "\" is no number.");
    }
    // Out of range the value stays 0, which is what a tiny number is.
    if (read.ec == std::errc::result_out_of_range && number.find("e-") == std::string_view::npos &&
        number.find("E-") == std::string_view::npos) {
        throw RuntimeError(ErrorKind::Overflow, "\"" + std::string(text) + "\" is too large.");
    }
    return negative ? -value : value;
}

std::string TrimBlanks(std::string_view text) {
    return std::string(Trimmed(text, " "));
}

} // namespace nrv::model
