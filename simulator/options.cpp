#include "simulator/options.h"

#include "simulator/protocol.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace nrv::simulator {
namespace {

int ParseId(const std::string& option, std::string_view text) {
    int id = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id < 0 || id > HighestId) {
        throw OptionError(option + ": \"" + std::string(text) + "\" is no device ID from 0 to 32");
    }
    return id;
}

void AddDevice(Options& options, const std::string& option, int id, std::string label) {
    if (std::ranges::any_of(options.Devices, [id](const auto& device) { return device.first == id; })) {
        throw OptionError(option + ": the device ID " + std::to_string(id) + " is given twice");
    }
    options.Devices.emplace_back(id, std::move(label));
}

void ParseDevice(Options& options, const std::string& option, const std::string& text) {
    const std::size_t sign = text.find('=');
    const int id = ParseId(option, std::string_view(text).substr(0, sign));
    AddDevice(options, option, id, sign == std::string::npos ? std::string() : text.substr(sign + 1));
}

void ParseIds(Options& options, const std::string& option, std::string_view text) {
    for (;;) {
        const std::size_t comma = text.find(',');
        AddDevice(options, option, ParseId(option, text.substr(0, comma)), {});
        if (comma == std::string_view::npos) {
            return;
        }
        text.remove_prefix(comma + 1);
    }
}

double ParseSeconds(const std::string& option, const std::string& text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0 && seconds <= 1e6)) {
        throw OptionError(option + ": \"" + text + "\" is no number of seconds from 0 to 1000000");
    }
    return seconds;
}

int ParseNoise(const std::string& option, const std::string& text) {
    int interval = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), interval);
    if (error != std::errc() || end != text.data() + text.size() || interval < 0 || interval > 3600000) {
        throw OptionError(option + ": \"" + text + "\" is no number of milliseconds from 0 to 3600000");
    }
    return interval;
}

bool ParseFlag(Options& options, const std::string& name) {
    const std::array<std::pair<const char*, bool Options::*>, 7> flags{{
        {"--trace", &Options::Trace},
        {"--half-duplex", &Options::HalfDuplex},
        {"--presets", &Options::Presets},
        {"--interactive", &Options::Interactive},
        {"--version", &Options::Version},
        {"--help", &Options::Help},
        {"-h", &Options::Help},
    }};
    for (const auto& [flag, member] : flags) {
        if (name == flag) {
            options.*member = true;
            return true;
        }
    }
    if (name != "--unpaced") {
        return false;
    }
    options.Paced = false;
    return true;
}

void ParseValue(Options& options, const std::string& name, const std::string& value) {
    if (name == "--device") {
        ParseDevice(options, name, value);
    } else if (name == "--ids") {
        ParseIds(options, name, value);
    } else if (name == "--link") {
        options.Links.emplace_back(value);
    } else if (name == "--state") {
        options.State = value;
    } else if (name == "--locked") {
        options.Locked.push_back(ParseId(name, value));
    } else if (name == "--noise") {
        options.Noise = ParseNoise(name, value);
    } else if (name == "--seconds") {
        options.Seconds = ParseSeconds(name, value);
    } else if (value.size() > PasswordSize) {
        throw OptionError(name + ": a password has six characters at most");
    } else {
        options.Password = value;
    }
}

bool TakesValue(const std::string& name) {
    constexpr std::array<std::string_view, 8> Names{"--device", "--ids",    "--link",    "--state",
                                                    "--noise",  "--locked", "--seconds", "--password"};
    return std::ranges::find(Names, name) != Names.end();
}

} // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::size_t sign = arguments[i].starts_with("--") ? arguments[i].find('=') : std::string::npos;
        const std::string name = arguments[i].substr(0, sign);
        if (!TakesValue(name)) {
            if (sign != std::string::npos || !ParseFlag(options, name)) {
                throw OptionError("unknown option \"" + arguments[i] + "\"; try --help");
            }
            continue;
        }
        if (sign == std::string::npos && i + 1 == arguments.size()) {
            throw OptionError(name + ": its value is missing");
        }
        const std::string value = sign == std::string::npos ? arguments[++i] : arguments[i].substr(sign + 1);
        if (value.empty() && name != "--password") {
            throw OptionError(name + ": its value is empty");
        }
        ParseValue(options, name, value);
    }
    return options;
}

std::string_view HelpText() {
    return R"(Usage: nrv718-rack [option]...
A rack of virtual NRV-718 devices on a pseudo-terminal that stands for the serial line.

  --device ID[=LABEL]  a device with this ID, 0 to 32, and a label of up to 16 characters; may come more than once
  --ids 1,2,5          devices with these IDs
                       (without these two and without a state file: one device with the ID 1)
  --link PATH          make PATH a link to the line, such as ./com1; may come more than once
  --unpaced            answer at once, not with the timing of 19200 baud
  --half-duplex        one pair of wires for both directions: an answer that meets a request is lost
  --noise MS           a stray byte comes about every MS milliseconds while the line is quiet
  --trace              print each frame in words
  --state FILE         restore the rack from FILE if it exists, save it there at the end
  --presets            fill memory positions 1, 2 and 5 of each device that the state file does not hold
  --password TEXT      the password of every device, up to six characters (else 000000)
  --locked ID          this device is locked; may come more than once
  --interactive        take orders such as "lose 5 2" from the standard input; "help" lists them
  --seconds N          end after N seconds
  --help, --version    print this text, or the version, and end

The program runs until it gets SIGINT, SIGTERM or SIGHUP. Exit status: 0 at a clean end, 1 when something failed, 2 for
a bad option.
)";
}

} // namespace nrv::simulator
