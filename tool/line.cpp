#include "tool/line.h"

#include "lock/password_dialog.h"
#include "ports/channels.h"
#include "presets/memory_positions.h"
#include "tool/desk.h"
#include "tool/preset_file.h"
#include "tool/progress.h"
#include "tool/text.h"

#include <algorithm>
#include <ostream>

namespace nrv::tool {
namespace {

constexpr int Levels = controls::LampsPerChannel;

void TellDevice(program::Program& program, int id, std::ostream& out) {
    const model::ParamRow& values = program.Stores.ParamValues[At(id)];
    out << IdText(id) << ": " << Quoted(program.State.DeviceNames[At(id)]) << ", active "
        << Quoted(values.CurrentPresetName) << (values.LockFlag == 1.0 ? ", locked" : "") << "\n";
    for (std::size_t position = 0; position < std::size_t{MemoryPositions}; ++position) {
        const bool used = presets::HoldsPreset(values, position);
        out << "  " << position + 1 << ": " << (used ? Quoted(values.PresetNames[position]) : "empty") << "\n";
    }
}

std::string Columns(const std::vector<std::string>& texts) {
    constexpr std::size_t width = 8;
    std::string line;
    for (const std::string& text : texts) {
        line.resize((line.size() + width - 1) / width * width, ' ');
        line += text;
    }
    return line;
}

int LitLamps(const controls::FrmCtrl& form, int channel) {
    int lit = 0;
    for (int lamp = 0; lamp < Levels; ++lamp) {
        lit += form.Shape1[At(Levels * channel + lamp)].Lit() ? 1 : 0;
    }
    return lit;
}

} // namespace

Outcome ListDevices(LineDesk& desk, std::optional<int> id, LineConsole& console) {
    program::Program& program = desk.Program();
    if (id) {
        desk.Open(*id);
        TellDevice(program, *id, console.Out);
        return Outcome::Well;
    }
    bool found = false;
    desk.Do([&] { found = program.Devices.SearchDevices(); });
    if (!found) {
        throw Trouble("No device answers; look at the port, the cable and the power.", Outcome::NoLine);
    }
    desk.Do([&] {
        program.DeviceList.Load();
        program.List.Timer1.Tick();
    });
    for (int row = 0; row <= program.State.FoundLast; ++row) {
        const int found_id = session::FoundId(program.State, row);
        bool read = false;
        desk.Do([&] { read = program.Devices.ReadDeviceState(found_id); });
        if (!read) {
            throw Trouble(IdText(found_id) + " was there and does not answer any more.", Outcome::NoLine);
        }
        TellDevice(program, found_id, console.Out);
    }
    return Outcome::Well;
}

Outcome ReadLive(LineDesk& desk, const std::filesystem::path& file, LineConsole& console) {
    {
        Progress progress(desk, console);
        progress.Begin("reading");
        desk.Confirm();
    }
    WritePreset(file, desk.Image());
    console.Out << IdText(desk.Id()) << " " << Quoted(desk.Label()) << ": what is live is in " << file.string() << "\n";
    return Outcome::Well;
}

void RequireUnlocked(LineDesk& desk, const std::string& password) {
    if (desk.Values().LockFlag != 1.0) {
        return;
    }
    if (password.empty()) {
        throw Trouble(IdText(desk.Id()) + " is locked and is not written; give --password.");
    }
    const auto typed = lock::PasswordBytes(Typed(password));
    if (!std::ranges::equal(typed, desk.Values().DevicePassword,
                            [](std::uint8_t one, double other) { return one == other; })) {
        throw Trouble(IdText(desk.Id()) + " is locked, and this is not its password.");
    }
}

Outcome WriteLive(LineDesk& desk, const std::filesystem::path& file, const std::string& password,
                  LineConsole& console) {
    const model::PresetImageRow image = ReadPreset(file);
    RequireWhole(image);
    RequireUnlocked(desk, password);
    {
        Progress progress(desk, console);
        progress.Begin("load");
        desk.Load(image);
    }
    console.Out << IdText(desk.Id()) << " " << Quoted(desk.Label()) << ": " << file.string() << " is loaded\n";
    if (!desk.Program().Status.Free()) {
        console.Out << desk.Program().Status.Text() << "\n";
    }
    return Outcome::Well;
}

Outcome Watch(LineDesk& desk, const WatchOptions& options, LineConsole& console) {
    controls::FrmCtrl& form = desk.Program().Windows.Current();
    desk.Do([&] { form.SSTab1.SetTab(controls::GainsTab); });
    const std::string head = Columns({ChannelTitles.begin(), ChannelTitles.end()});
    // A line that is broken into two has no begin to go back to.
    const bool in_place = static_cast<std::size_t>(console.TerminalWidth) > head.size() + 1;
    console.Out << head << "\n" << std::flush;
    const auto end_line = [&] { console.Out << (in_place ? "\n" : "") << std::flush; };
    for (int round = 0; (options.Rounds == 0 || round < options.Rounds) && console.Out; ++round) {
        try {
            desk.TickMeters();
        } catch (const Trouble&) {
            end_line();
            if (desk.Interrupted()) {
                return Outcome::Well;
            }
            throw;
        }
        std::vector<std::string> texts;
        for (int channel = 0; channel < ChannelCount; ++channel) {
            const int level = LitLamps(form, channel);
            const std::string bar = std::string(At(level), '#') + std::string(At(Levels - level), '.');
            texts.push_back(options.Bars ? bar : std::to_string(level));
        }
        console.Out << (in_place && round > 0 ? "\r" : "") << Columns(texts) << (in_place ? "" : "\n") << std::flush;
        if (round + 1 != options.Rounds) {
            desk.Pause(options.Milliseconds);
        }
    }
    end_line();
    return Outcome::Well;
}

} // namespace nrv::tool
