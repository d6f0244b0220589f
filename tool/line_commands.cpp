#include "tool/line_commands.h"

#include "ports/numbering.h"
#include "tool/desk.h"
#include "tool/preset_file.h"
#include "tool/text.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace nrv::tool {
namespace {

struct LineArguments {
    std::string Port;
    std::optional<int> Id;
    std::string File;
    std::string Password;
    WatchOptions Watch;
};

/// The number of "COM 3", "com3" or "3", whether there is one or not; none for the name of a device file.
std::optional<int> NumberOf(const std::string& port) {
    std::string digits = Small(port);
    std::erase(digits, ' ');
    if (digits.starts_with("com")) {
        digits.erase(0, 3);
    }
    constexpr std::size_t most_digits = 4;
    if (digits.size() > most_digits || digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return digits.empty() ? 0 : std::stoi(digits);
}

/// A device file under the name that the user gave it, and not under the number that it has in the program.
std::string UnderItsName(std::string text, const std::string& device) {
    const std::string numbered = "COM 1 (" + device + ")";
    const std::size_t at = text.find(numbered);
    return at == std::string::npos ? text : text.replace(at, numbered.size(), device);
}

using Work = std::function<Outcome(LineDesk& desk, LineConsole& console)>;

/// A command with its port, and with its device unless it finds that itself.
std::pair<CLI::App*, std::shared_ptr<LineArguments>> AddCommand(CLI::App& line, const char* name, const char* what) {
    const auto given = std::make_shared<LineArguments>();
    CLI::App* const command = line.add_subcommand(name, what);
    command->add_option("--port", given->Port, "COM 1 to COM 32 as the program names them, or a device file")
        ->type_name("PORT")
        ->required();
    return {command, given};
}

CLI::Option* AddId(CLI::App* command, LineArguments& given, const char* what) {
    return command->add_option("--id", given.Id, what)
        ->check(CLI::Range(0, DeviceCount - 1).description(""))
        ->type_name("ID");
}

void WillRun(CLI::App* command, Console& console, std::shared_ptr<LineArguments> given, Work work) {
    command->callback([given = std::move(given), &console, work = std::move(work)] {
        console.Command = [given, &console, work] {
            if (console.Line == nullptr) {
                throw Trouble("this build has no line");
            }
            const std::optional<int> number = NumberOf(given->Port);
            const std::string device = number ? "" : given->Port;
            try {
                LineDesk desk(console.Line->Open(device), number.value_or(1));
                return work(desk, console.Streams);
            } catch (const Trouble& trouble) {
                throw Trouble(UnderItsName(trouble.what(), device), trouble.EndsAs());
            }
        };
    });
}

/// A command that works on one device, which is open when it begins.
class DeviceCommand {
  public:
    DeviceCommand(CLI::App& line, Console& console, const char* name, const char* what) : console_(console) {
        std::tie(command_, given_) = AddCommand(line, name, what);
        AddId(command_, *given_, "The device's ID, 0 to 32")->required();
    }
    DeviceCommand& OnFile() { return On("FILE", "Preset"); }
    DeviceCommand& OnFolder() { return On("FOLDER", "Folder of the backup"); }
    DeviceCommand& WithPassword() {
        command_->add_option("--password", given_->Password, "Of a device that is locked")->type_name("WORD");
        return *this;
    }
    DeviceCommand& WithRounds() {
        constexpr int most_rounds = 1000000000;
        constexpr int longest_pause = 60000;
        command_->add_flag("--bars", given_->Watch.Bars, "Bars in place of numbers");
        command_->add_option("--count", given_->Watch.Rounds, "Ends after so many rounds")
            ->check(CLI::Range(1, most_rounds).description(""))
            ->type_name("N");
        command_->add_option("--interval", given_->Watch.Milliseconds, "Milliseconds between two rounds")
            ->check(CLI::Range(0, longest_pause).description(""))
            ->type_name("MS");
        return *this;
    }
    /// Looks at what was given before anything is sent. Throws Trouble.
    DeviceCommand& After(std::function<void(const std::string& file)> check) {
        check_ = std::move(check);
        return *this;
    }
    void Runs(std::function<Outcome(LineDesk&, const LineArguments&, LineConsole&)> work) {
        WillRun(command_, console_, given_,
                [given = given_, check = check_, work = std::move(work)](LineDesk& desk, LineConsole& streams) {
                    if (check) {
                        check(given->File);
                    }
                    desk.Open(*given->Id);
                    return work(desk, *given, streams);
                });
    }

  private:
    DeviceCommand& On(const char* name, const char* what) {
        command_->add_option(name, given_->File, what)->type_name("")->required();
        return *this;
    }

    Console& console_;
    CLI::App* command_ = nullptr;
    std::shared_ptr<LineArguments> given_;
    std::function<void(const std::string&)> check_;
};

} // namespace

void AddLine(CLI::App& app, Console& console) {
    CLI::App& line = *app.add_subcommand("line", "Devices on a serial line");
    line.require_subcommand(1);

    const auto [list, given] = AddCommand(line, "list", "The devices that answer, their labels and memory positions");
    AddId(list, *given, "This one alone, 0 to 32");
    WillRun(list, console, given,
            [given = given](LineDesk& desk, LineConsole& streams) { return ListDevices(desk, given->Id, streams); });
    DeviceCommand(line, console, "read", "Writes what is live into a preset")
        .OnFile()
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return ReadLive(desk, with.File, streams);
        });
    DeviceCommand(line, console, "write", "Loads a preset into the device")
        .OnFile()
        .After([](const std::string& file) { RequireWhole(ReadPreset(file)); })
        .WithPassword()
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return WriteLive(desk, with.File, with.Password, streams);
        });
    DeviceCommand(line, console, "backup", "Keeps what is live and every memory position in a folder")
        .OnFolder()
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return BackUp(desk, with.File, streams);
        });
    DeviceCommand(line, console, "restore", "Stores and loads what a backup kept")
        .OnFolder()
        .After(RequireBackup)
        .WithPassword()
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return Restore(desk, with.File, with.Password, streams);
        });
    DeviceCommand(line, console, "verify", "Compares a device with a backup")
        .OnFolder()
        .After(RequireBackup)
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return Verify(desk, with.File, streams);
        });
    DeviceCommand(line, console, "watch", "The meters, 0 to 6 lamps a channel")
        .WithRounds()
        .Runs([](LineDesk& desk, const LineArguments& with, LineConsole& streams) {
            return Watch(desk, with.Watch, streams);
        });
}

} // namespace nrv::tool
