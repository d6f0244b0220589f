/// The command line of the rack program.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nrv::simulator {

struct Options {
    std::vector<std::pair<int, std::string>> devices; ///< ID and label, empty for the factory's
    std::vector<std::filesystem::path> links;
    std::filesystem::path state;
    std::optional<std::string> password;
    std::vector<int> locked;
    std::optional<double> seconds;
    bool paced = true;
    bool trace = false;
    bool presets = false;
    bool interactive = false;
    bool help = false;
    bool version = false;
};

/// What is wrong with the command line, in one line.
struct OptionError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws OptionError. A value may follow as the next word or behind "=".
Options ParseOptions(const std::vector<std::string>& arguments);

std::string_view HelpText();

} // namespace nrv::simulator
