#include "fuzz/desk.h"
#include "model/preset_image.h"

#include <algorithm>
#include <cstring>

// A preset file of any bytes and any length, loaded into an open window.

namespace nrv::fuzz {
namespace {

void LookAtImage(Desk& desk, const std::vector<std::uint8_t>& bytes) {
    const auto& body = desk.Program().Stores.PresetImage[Desk::FrontDevice].PresetBody;
    for (std::size_t n = 0; n < std::min(bytes.size(), body.size()); ++n) {
        // The mutes of a safe start are not the file's.
        Require(n == model::MuteBitsCopy || body[n] == bytes[n], "a byte of the file changed because it was shown");
    }
}

void Load(Desk& desk, Input& input) {
    desk.Reset();
    const std::uint8_t options = input.Byte();
    program::Program& program = desk.Program();
    program.Stores.ParamValues[Desk::FrontDevice].MuteWithPreset = (options & 1) != 0 ? 1.0 : 0.0;
    program.Stores.LastInputType = (options & 2) != 0 ? 1.0 : 0.0;
    program.Link.DemoMode = (options & 4) != 0;
    if ((options & 8) != 0) {
        const std::uint8_t kind = input.Byte();
        desk.Meet({static_cast<Trouble::Kind>(kind % Trouble::Kinds), input.Byte(), kind / Trouble::Kinds});
    }
    testing::TestFolder& folder = desk.World().Folder;
    desk.World().Files.File = folder / "any.n91";
    const std::vector<std::uint8_t> bytes = input.Rest();
    folder.Write("any.n91", bytes);

    Require(desk.UseTool(Desk::FrontSlot, controls::LoadPresetTool), "the load did not begin");
    Require(folder.Read("any.n91") == bytes, "the file changed");
    if (desk.Window(Desk::FrontSlot).Window.Caption().ends_with("any.n91")) {
        LookAtImage(desk, bytes);
    } else {
        Require(!desk.Program().Status.Text().empty() || desk.Ended(), "a load that stopped says nothing");
    }
    // What was loaded is saved as it stands, and loads again.
    desk.Meet({});
    if (program.Windows.Loaded[Desk::FrontSlot]) {
        desk.UseTool(Desk::FrontSlot, controls::SavePresetTool);
        const auto& image = program.Stores.PresetImage[Desk::FrontDevice];
        std::vector<std::uint8_t> expected(sizeof image);
        std::memcpy(expected.data(), &image, sizeof image);
        if (bytes.size() > expected.size()) {
            expected.insert(expected.end(), bytes.begin() + static_cast<std::ptrdiff_t>(expected.size()), bytes.end());
        }
        Require(folder.Read("any.n91") == expected, "the file is not the image");
    }
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static nrv::fuzz::Desk desk;
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Load(desk, input);
    return 0;
}
