#pragma once

#include "model/number_text.h"
#include "tool/filter_lines.h"
#include "tool/text.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>

namespace nrv::tool {

/// Ends the reading of a line.
struct Refusal {
    std::string Why;
};

/// One line behind its colon, read from left to right.
class LineReader {
  public:
    LineReader(std::string_view rest, DecimalMark mark) : line_(Small(rest)), rest_(line_), mark_(mark) {}
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// The next words, if they are these and end there.
    bool Take(std::string_view words) {
        SkipBlanks();
        std::size_t at = 0;
        for (const char c : words) {
            if (c == ' ') {
                const std::size_t next = rest_.find_first_not_of(' ', at);
                if (next == at || next == std::string_view::npos) {
                    return false;
                }
                at = next;
            } else if (at >= rest_.size() || rest_[at++] != c) {
                return false;
            }
        }
        if (at < rest_.size() && std::isalnum(static_cast<unsigned char>(rest_[at])) != 0) {
            return false;
        }
        rest_.remove_prefix(at);
        return true;
    }
    double Number(const std::string& what, double lowest, double highest) {
        SkipBlanks();
        const std::size_t end = std::min(rest_.find_first_not_of("0123456789.,+-' "), rest_.size());
        const std::string text = model::TrimBlanks(rest_.substr(0, end));
        const std::optional<double> number = NumberFrom(text, mark_, lowest, highest);
        if (!number) {
            throw Refusal{what + " \"" + Begin(text.empty() ? NextWord() : text) + "\" cannot be read as one number"};
        }
        rest_.remove_prefix(end);
        return *number;
    }
    bool AtEnd() {
        SkipBlanks();
        return rest_.empty();
    }
    std::string NextWord() {
        SkipBlanks();
        return std::string(rest_.substr(0, rest_.find(' ')));
    }

  private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    std::string line_;
    std::string_view rest_;
    DecimalMark mark_;
};

} // namespace nrv::tool
