#pragma once

#include "support/scripted_ports.h"

#include <cstddef>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

// A page of the documents as a test reads it: sections, tables and worked examples.

namespace nrv::testing {

using Row = std::vector<std::string>; ///< the cells, without blanks around them

/// Indented lines, and the sentence above them without its colon.
struct Example {
    std::string Sentence;
    std::vector<std::string> Lines;
};

struct Section {
    std::string Title;
    std::vector<std::vector<Row>> Tables; ///< without their heads
    std::vector<Example> Examples;
};

inline std::string WithoutBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

inline std::string TextOfFile(const std::string& file) {
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error(file + " is missing");
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The codes of all frames that the program knows, with the question whether a device is there.
inline std::set<int> CommandsOfLink(const std::string& project) {
    std::set<int> commands{0};
    const std::string header = TextOfFile(project + "/src/link/link.h");
    const std::regex enumerator("Command = 0x([0-9A-F]{2}),");
    for (std::sregex_iterator match(header.begin(), header.end(), enumerator), end; match != end; ++match) {
        commands.insert(std::stoi((*match)[1], nullptr, 16));
    }
    if (commands.size() < 20) {
        throw std::runtime_error("the commands of the link are not found");
    }
    return commands;
}

inline Row CellsOf(const std::string& line) {
    Row cells;
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
        cells.push_back(WithoutBlanks(cell));
    }
    return cells;
}

inline std::vector<Section> SectionsOf(const std::string& page) {
    std::vector<Section> sections(1);
    std::istringstream lines(page);
    std::string paragraph;
    bool in_paragraph = false;
    bool in_example = false;
    int table_line = 0; // 1 the head, 2 the rule below it
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("## ")) {
            sections.push_back({line.substr(3), {}, {}});
        }
        table_line = line.starts_with("|") ? table_line + 1 : 0;
        const bool indented = line.starts_with("    ");
        if (table_line == 1) {
            sections.back().Tables.emplace_back();
        } else if (table_line > 2) {
            sections.back().Tables.back().push_back(CellsOf(line));
        } else if (indented && !in_example) {
            const bool told = paragraph.ends_with(':');
            sections.back().Examples.push_back({told ? paragraph.substr(0, paragraph.size() - 1) : paragraph, {}});
        }
        if (indented) {
            sections.back().Examples.back().Lines.push_back(line.substr(4));
        } else if (!line.empty()) {
            if (in_paragraph) {
                paragraph += ' ';
            } else {
                paragraph.clear();
            }
            paragraph += line;
        }
        in_example = indented;
        in_paragraph = !line.empty() && !indented;
    }
    return sections;
}

/// The section whose title begins so.
inline const Section& SectionNamed(const std::vector<Section>& sections, const std::string& start) {
    for (const Section& section : sections) {
        if (section.Title.starts_with(start)) {
            return section;
        }
    }
    throw std::runtime_error("no section begins with " + start);
}

/// Bytes in hex, two digits each, with blanks between.
inline Bytes BytesOfHex(const std::string& text) {
    Bytes bytes;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        std::size_t read = 0;
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(word, &read, 16)));
        if (read != 2 || word.size() != 2) {
            throw std::runtime_error("\"" + word + "\" is no byte");
        }
    }
    return bytes;
}

/// The numbers of a cell such as "4" or "4 to 11".
inline std::vector<int> SpanOf(const std::string& cell) {
    const std::size_t to = cell.find(" to ");
    const int first = std::stoi(cell);
    const int last = to == std::string::npos ? first : std::stoi(cell.substr(to + 4));
    std::vector<int> numbers;
    for (int number = first; number <= last; ++number) {
        numbers.push_back(number);
    }
    return numbers;
}

} // namespace nrv::testing
