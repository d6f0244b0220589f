#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace nrv::tool {

/// Runs the tool with the arguments behind its name; returns how the process ends.
int Run(std::vector<std::string> arguments, std::ostream& out, std::ostream& errors);

} // namespace nrv::tool
