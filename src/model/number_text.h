#pragma once

#include <string>
#include <string_view>

namespace nrv::model {

/// The decimal a person expects: at most 15 significant digits, no trailing zeros, a point whatever the locale, "0" for
/// minus zero. Values from 0.0001 up to below 1e15, which is more than the program has, come without an exponent.
std::string NumberText(double value);

/// Reads a number as a person types it: blanks around it, a sign, digits with a point, an exponent ("1e9").
/// Throws `RuntimeError`: TypeMismatch for anything else, Overflow for a number too large for a double.
double ParseNumber(std::string_view text);

/// A text without the blanks at its ends.
std::string TrimBlanks(std::string_view text);

} // namespace nrv::model
