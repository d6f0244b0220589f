#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The command line of the rack program.
namespace nrv::simulator {

struct Options {
    std::vector<std::pair<int, std::string>> Devices; ///< ID and label, empty for the factory's
    std::vector<std::filesystem::path> Links;
    std::filesystem::path State;
    std::optional<std::string> Password;
    std::vector<int> Locked;
    std::optional<double> Seconds;
    bool Paced = true;
    bool HalfDuplex = false;
    int Noise = 0; ///< milliseconds, 0 for none
    bool Trace = false;
    bool Presets = false;
    bool Interactive = false;
    bool Help = false;
    bool Version = false;
};

/// What is wrong with the command line, in one line.
struct OptionError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws OptionError. A value may follow as the next word or behind "=".
Options ParseOptions(const std::vector<std::string>& arguments);

std::string_view HelpText();

} // namespace nrv::simulator
