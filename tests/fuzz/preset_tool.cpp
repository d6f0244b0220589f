#include "fuzz/input.h"
#include "fuzz/watch.h"
#include "support/test_folder.h"
#include "tool/command_line.h"

#include <sstream>
#include <string>

// A preset file of any bytes and any length under the commands of the preset tool that read one.

namespace nrv::fuzz {
namespace {

struct Ran {
    int Outcome;
    std::string Out;
};

Ran Run(std::vector<std::string> arguments) {
    std::ostringstream out;
    std::ostringstream errors;
    const int outcome = tool::Run(std::move(arguments), {out, errors}, nullptr);
    const std::string told = errors.str();
    Require(outcome != 2 || told.ends_with('\n'), "a refusal says nothing");
    return {outcome, out.str()};
}

void ReadFile(Input& input) {
    static const testing::TestFolder folder;
    const std::uint8_t chosen = input.Byte();
    const std::vector<std::uint8_t> bytes = input.Rest();
    folder.Write("any.n91", bytes);
    const std::string file = (folder / "any.n91").string();
    const std::string into = (folder / "other.n91").string();
    const bool whole = bytes.size() >= 771;

    const Ran check = Run({"check", file});
    Require(check.Outcome == 0 || check.Outcome == 1, "a file is neither sound nor unsound");
    Require(whole || check.Outcome == 1, "a short file is sound");
    const Ran keys = Run({"show", file, "--keys"});
    Require(keys.Outcome == (whole ? 0 : 2), "a whole preset is not shown, or half a one is");
    Run({"show", file, "--json"});
    Run({"diff", file, file});
    Run({"export", "rew", file, "--channel", "Out 1"});
    if (chosen % 8 == 0) {
        Require(check.Outcome != 0 || Run({"curve", file, "--csv", "-"}).Outcome == 0, "a sound preset has no curve");
    }
    if (!whole) {
        return;
    }
    // One of the values, set as it is shown, changes nothing that is shown.
    std::istringstream lines(keys.Out);
    std::string line;
    for (int n = 0; n <= chosen; ++n) {
        std::getline(lines, line);
    }
    folder.Write("other.n91", {});
    if (!line.empty()) {
        Require(Run({"set", file, line, "-o", into}).Outcome == 0, "what is shown cannot be set");
        Require(Run({"show", into, "--keys"}).Out == keys.Out, "what is shown changes when it is set");
    }
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::ReadFile(input);
    return 0;
}
