#pragma once

#include "tool/line_desk.h"
#include "tool/trouble.h"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

// The commands of the tool that work on a line.

namespace nrv::tool {

/// Where a command writes what it did, and, on a terminal, how far it is.
struct LineConsole {
    std::ostream& Out;
    std::ostream& Errors;
    int TerminalWidth = 0; ///< in characters; 0 for no terminal
};

/// The devices that answer, with their labels and memory positions; of all IDs, or one alone.
Outcome ListDevices(LineDesk& desk, std::optional<int> id, LineConsole& console);

/// The settings that are live in the open device, as a preset.
Outcome ReadLive(LineDesk& desk, const std::filesystem::path& file, LineConsole& console);

/// Loads a preset into the open device. A device that is locked takes it with its password alone.
Outcome WriteLive(LineDesk& desk, const std::filesystem::path& file, const std::string& password, LineConsole& console);

/// Throws Trouble for a locked device and another password.
void RequireUnlocked(LineDesk& desk, const std::string& password);

// The folder of a backup holds live.n91, position-1.n91 to position-8.n91 for those in use, and backup.json.

/// Throws Trouble for a folder that holds no complete one.
void RequireBackup(const std::filesystem::path& folder);
/// Goes on where an earlier one ended.
Outcome BackUp(LineDesk& desk, const std::filesystem::path& folder, LineConsole& console);
/// Stores the positions and loads what was live; goes on where an earlier one ended.
Outcome Restore(LineDesk& desk, const std::filesystem::path& folder, const std::string& password, LineConsole& console);
/// Reads the device back and tells what is otherwise than in the folder.
Outcome Verify(LineDesk& desk, const std::filesystem::path& folder, LineConsole& console);

struct WatchOptions {
    int Rounds = 0; ///< 0: until the line or the process ends
    int Milliseconds = 200;
    bool Bars = false;
};
/// The meters of the open device, a line for each round.
Outcome Watch(LineDesk& desk, const WatchOptions& options, LineConsole& console);

} // namespace nrv::tool
