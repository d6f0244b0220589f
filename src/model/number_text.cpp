#include "model/number_text.h"

#include "ports/runtime_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace nrv::model {

namespace {

constexpr int significant_digits = 15;
constexpr int lowest_plain_exponent = -7;
constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view digits = "0123456789";

/// Digits of a number without trailing zeros, and the power of ten of the first.
struct Decimal {
    std::string Digits;
    int Exponent = 0;
};

Decimal Decompose(double magnitude) {
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                       std::chars_format::scientific, significant_digits - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    const std::size_t mark = text.find('e');
    Decimal decimal{std::string(text.substr(0, mark)), 0};
    decimal.Digits.erase(1, 1);
    decimal.Digits.erase(decimal.Digits.find_last_not_of('0') + 1);
    const std::size_t exponent = text[mark + 1] == '+' ? mark + 2 : mark + 1;
    std::from_chars(text.data() + exponent, text.data() + text.size(), decimal.Exponent);
    return decimal;
}

std::string LayOut(const Decimal& decimal) {
    std::string text = decimal.Digits;
    if (decimal.Exponent < lowest_plain_exponent || decimal.Exponent >= significant_digits) {
        if (text.size() > 1) {
            text.insert(1, 1, '.');
        }
        text += decimal.Exponent < 0 ? "e" : "e+";
        return text += std::to_string(decimal.Exponent);
    }
    if (decimal.Exponent < 0) {
        text.insert(0, static_cast<std::size_t>(-decimal.Exponent), '0');
        text.insert(1, 1, '.');
        return text;
    }
    const std::size_t whole = static_cast<std::size_t>(decimal.Exponent) + 1;
    if (text.size() <= whole) {
        text.resize(whole, '0');
        return text;
    }
    text.insert(whole, 1, '.');
    return text;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the digits at the front of `text` off it and returns them.
std::string_view TakeDigits(std::string_view& text) {
    const std::string_view taken = text.substr(0, text.find_first_not_of(digits));
    text.remove_prefix(taken.size());
    return taken;
}

/// True for digits, a point among them or not, with an optional exponent.
bool IsNumber(std::string_view text) {
    std::size_t count = TakeDigits(text).size();
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        count += TakeDigits(text).size();
    }
    if (count == 0) {
        return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-')) {
            text.remove_prefix(1);
        }
        if (TakeDigits(text).empty()) {
            return false;
        }
    }
    return text.empty();
}

/// Of a number beyond the doubles: true when it lies below the least of them, not above the greatest.
bool IsTooSmall(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, mark);
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(std::min(mantissa.find_first_of("123456789"), mantissa.size()));
    const long power = first < point ? point - first - 1 : point - first;
    if (mark == std::string_view::npos) {
        return power < 0;
    }
    std::string_view exponent = number.substr(mark + 1);
    const bool negative = exponent.starts_with('-');
    if (negative || exponent.starts_with('+')) {
        exponent.remove_prefix(1);
    }
    long size = 0;
    const auto read = std::from_chars(exponent.data(), exponent.data() + exponent.size(), size);
    if (read.ec == std::errc::result_out_of_range) {
        return negative;
    }
    return negative ? power < size : power < -size;
}

} // namespace

std::string NumberText(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (value == 0.0) {
        return "0";
    }
    std::string text = std::isinf(value) ? "inf" : LayOut(Decompose(std::abs(value)));
    if (value < 0.0) {
        text.insert(0, 1, '-');
    }
    return text;
}

double ParseNumber(std::string_view text) {
    std::string_view number = Trimmed(text);
    const bool negative = number.starts_with('-');
    if (negative || number.starts_with('+')) {
        number.remove_prefix(1);
    }
    if (!IsNumber(number)) {
        throw RuntimeError(ErrorKind::TypeMismatch, "\"" + std::string(text) + "\" is no number.");
    }
    double value = 0.0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    if (read.ec == std::errc::result_out_of_range || std::isinf(value)) {
        if (!IsTooSmall(number)) {
            throw RuntimeError(ErrorKind::Overflow, "\"" + std::string(text) + "\" is too large.");
        }
        value = 0.0;
    }
    return negative ? -value : value;
}

std::string TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

} // namespace nrv::model
