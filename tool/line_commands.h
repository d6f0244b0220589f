#pragma once

#include "tool/command_line.h"
#include "tool/trouble.h"

#include <functional>

namespace CLI {
class App;
}

namespace nrv::tool {

/// What the commands write to, where they get a line, and how the one that was given ends.
struct Console {
    LineConsole Streams;
    LineSource* Line = nullptr;
    std::function<Outcome()> Command;
};

/// The commands of the line: line list, line read and so on.
void AddLine(CLI::App& app, Console& console);

} // namespace nrv::tool
