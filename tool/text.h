#pragma once

#include <string>
#include <string_view>
#include <vector>

// Texts of presets are single bytes of Latin-1, and the terminal's are UTF-8.

namespace nrv::tool {

/// As the terminal shows it: a control character or a backslash is written "\x00" or "\\".
std::string Shown(std::string_view latin1);

/// A name of a device or a memory position as the terminal shows it, in quotes and without the blanks around it.
std::string Quoted(std::string_view latin1);

/// A text typed on a terminal as single bytes, the escapes of `Shown` read back. Throws Trouble for a character that
/// has no such byte.
std::string Typed(std::string_view utf8);

/// In small letters; of ASCII alone.
std::string Small(std::string_view text);

/// The begin of a text that could be of any length, for a message.
std::string Begin(std::string_view text);

std::vector<std::string> Split(std::string_view text, std::string_view by);

/// Joined by a separator.
std::string Joined(const std::vector<std::string>& parts, std::string_view by);

} // namespace nrv::tool
