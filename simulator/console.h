#pragma once

#include "simulator/line.h"

#include <string>
#include <string_view>

/// The commands that a person types at a running rack.
namespace nrv::simulator {

/// Carries out one command and gives back what to say: nothing, the text of "help", or a sentence that begins with
/// "error:". `quit` is set by "quit". An empty line does nothing.
std::string RunCommand(Line& line, std::string_view command, bool& quit);

} // namespace nrv::simulator
