#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace nrv::testing {

/// What a terminal of a width shows after a text was written to it: lines are broken where it ends, and a carriage
/// return goes back to their begin.
inline std::vector<std::string> OnTerminal(const std::string& written, std::size_t width) {
    std::vector<std::string> lines(1);
    std::size_t column = 0;
    for (const char c : written) {
        if (c == '\r') {
            column = 0;
            continue;
        }
        if (c == '\n' || column == width) {
            lines.emplace_back();
            column = 0;
        }
        if (c != '\n') {
            std::string& line = lines.back();
            line.resize(std::max(line.size(), column + 1), ' ');
            line[column++] = c;
        }
    }
    for (std::string& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
    }
    return lines;
}

/// A drawing of that terminal, with the cursor behind a last line that has not ended. What stands behind "$ " was
/// typed.
inline std::string TerminalPicture(const std::string& written, std::size_t width) {
    constexpr int character = 8;
    constexpr int line_height = 18;
    constexpr int margin = 12;
    std::vector<std::string> lines = OnTerminal(written, width);
    const bool with_cursor = !lines.back().empty();
    if (!with_cursor) {
        lines.pop_back();
    }
    const auto across = static_cast<int>(width) * character + 2 * margin;
    const auto down = static_cast<int>(lines.size()) * line_height + 2 * margin;
    std::ostringstream svg;
    svg << "<svg xmlns='http://www.w3.org/2000/svg' width='" << across << "' height='" << down << "' viewBox='0 0 "
        << across << ' ' << down << "' font-family='DejaVu Sans Mono, monospace' font-size='13'>\n"
        << "<rect x='0.5' y='0.5' width='" << across - 1 << "' height='" << down - 1
        << "' rx='6' fill='#fafafa' stroke='#b0b0b0'/>\n";
    int row = 0;
    bool typed = false;
    for (const std::string& line : lines) {
        // A command that is longer than the terminal is wide goes on in the next line.
        typed =
            line.starts_with("$ ") || (typed && row > 0 && lines[static_cast<std::size_t>(row) - 1].size() == width);
        const int y = margin + row * line_height + 13;
        if (!line.empty()) {
            svg << "<text x='" << margin << "' y='" << y << "' textLength='"
                << static_cast<int>(line.size()) * character << "' xml:space='preserve'"
                << (typed ? " fill='#000000' font-weight='bold'" : " fill='#404040'") << '>';
            for (const char c : line) {
                svg << (c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c));
            }
            svg << "</text>\n";
        }
        ++row;
    }
    if (with_cursor) {
        svg << "<rect x='" << margin + static_cast<int>(lines.back().size()) * character << "' y='"
            << margin + (row - 1) * line_height + 2 << "' width='" << character << "' height='14' fill='#808080'/>\n";
    }
    svg << "</svg>\n";
    return std::move(svg).str();
}

} // namespace nrv::testing
