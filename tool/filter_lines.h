#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Texts of filters as other programs save them: lines of any encoding, numbers of any place.

namespace nrv::tool {

/// The lines of a text in UTF-8, UTF-16 with a mark or Windows-1252, as ASCII: blanks of every kind become plain,
/// dashes a minus, other characters and those that control a terminal a question mark.
std::vector<std::string> LinesOf(std::string_view bytes);

/// How the numbers of a text are written.
enum class DecimalMark { Unknown, Point, Comma };

/// What the numbers of lines tell of it: Unknown where none of them can mean one thing only.
DecimalMark DecimalMarkOf(const std::vector<std::string>& lines);

/// A number that may be grouped, with no blanks around it. `lowest` and `highest` decide where a single mark before
/// three digits can mean either; none for what cannot be read, or could still be two numbers.
std::optional<double> NumberFrom(std::string_view text, DecimalMark mark, double lowest, double highest);

} // namespace nrv::tool
