#include "tool/text.h"

#include "model/number_text.h"
#include "tool/trouble.h"

#include <cctype>
#include <charconv>

namespace nrv::tool {
namespace {

constexpr std::string_view HexDigits = "0123456789abcdef";

bool IsControl(unsigned char c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

[[noreturn]] void RefuseCharacter(std::string_view text) {
    throw Trouble("\"" + std::string(text) + "\": a character that the device does not have; use those of Latin-1.");
}

/// The byte behind a backslash, which the text is moved past.
char Escaped(std::string_view text, std::size_t& at) {
    if (at + 1 < text.size() && text[at + 1] == '\\') {
        at += 2;
        return '\\';
    }
    if (at + 3 < text.size() && text[at + 1] == 'x') {
        unsigned value = 0;
        const char* const first = text.data() + at + 2;
        if (std::from_chars(first, first + 2, value, 16).ptr == first + 2) {
            at += 4;
            return static_cast<char>(value);
        }
    }
    throw Trouble("\"" + std::string(text) + "\": behind a backslash come x and two hex digits, or another backslash.");
}

} // namespace

std::string Shown(std::string_view latin1) {
    std::string text;
    for (const char character : latin1) {
        const auto c = static_cast<unsigned char>(character);
        if (IsControl(c)) {
            text += {'\\', 'x', HexDigits[c >> 4U], HexDigits[c & 15U]};
        } else if (c == '\\') {
            text += "\\\\";
        } else if (c < 0x80) {
            text += character;
        } else {
            text += {static_cast<char>(0xC0U | (c >> 6U)), static_cast<char>(0x80U | (c & 0x3FU))};
        }
    }
    return text;
}

std::string Quoted(std::string_view latin1) {
    return '"' + Shown(model::TrimBlanks(latin1)) + '"';
}

std::string Typed(std::string_view utf8) {
    std::string text;
    std::size_t at = 0;
    while (at < utf8.size()) {
        const auto c = static_cast<unsigned char>(utf8[at]);
        if (c == '\\') {
            text += Escaped(utf8, at);
        } else if (c < 0x80) {
            text += utf8[at++];
        } else if ((c == 0xC2 || c == 0xC3) && at + 1 < utf8.size() &&
                   (static_cast<unsigned char>(utf8[at + 1]) & 0xC0U) == 0x80U) {
            const auto low = static_cast<unsigned char>(utf8[at + 1]);
            text += static_cast<char>(((c & 3U) << 6U) | (low & 0x3FU));
            at += 2;
        } else {
            RefuseCharacter(utf8);
        }
    }
    return text;
}

std::string Small(std::string_view text) {
    std::string small(text);
    for (char& c : small) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return small;
}

std::string Begin(std::string_view text) {
    constexpr std::size_t longest = 80;
    return text.size() <= longest ? std::string(text) : std::string(text.substr(0, longest)) + "...";
}

std::vector<std::string> Split(std::string_view text, std::string_view by) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t at = text.find(by); at != std::string_view::npos; at = text.find(by, from)) {
        parts.emplace_back(text.substr(from, at - from));
        from = at + by.size();
    }
    parts.emplace_back(text.substr(from));
    return parts;
}

std::string Joined(const std::vector<std::string>& parts, std::string_view by) {
    std::string all;
    for (const std::string& part : parts) {
        all += (&part == &parts.front() ? "" : std::string(by)) + part;
    }
    return all;
}

} // namespace nrv::tool
