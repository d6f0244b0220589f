#pragma once

#include "tool/line.h"

#include <string>
#include <vector>

namespace nrv::tool {

/// Where a line comes from when a command wants one.
class LineSource {
  public:
    virtual ~LineSource() = default;
    /// Of a device file, which is then COM 1; without one the ports stand under their numbers.
    virtual LinePorts Open(const std::string& device) = 0;
};

/// Runs the tool with the arguments behind its name; returns how the process ends.
int Run(std::vector<std::string> arguments, const LineConsole& streams, LineSource* line);

} // namespace nrv::tool
