#include "tool/command_line.h"

#include "ports/channels.h"
#include "ports/numbering.h"
#include "tool/curve.h"
#include "tool/desk.h"
#include "tool/exchange.h"
#include "tool/keys.h"
#include "tool/line_commands.h"
#include "tool/preset_file.h"
#include "tool/set.h"
#include "tool/show.h"
#include "tool/text.h"
#include "tool/text_file.h"
#include "tool/trouble.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <span>

namespace nrv::tool {
namespace {

std::optional<int> ChannelOrAll(const std::optional<std::string>& typed) {
    return typed ? std::optional(ChannelFromTyped(*typed)) : std::nullopt;
}

/// An option that is one of a few words.
template <class Value>
CLI::Option* AddChoice(CLI::App& command, const char* name, Value& value, const char* what,
                       const std::map<std::string, Value>& words) {
    const std::string given_name = name;
    CLI::Option* const option = command.add_option_function<std::string>(
        name,
        [words, given_name, &value](const std::string& given) {
            const auto known = words.find(Small(given));
            if (known == words.end()) {
                std::vector<std::string> allowed;
                for (const auto& [word, ignored] : words) {
                    allowed.push_back(word);
                }
                throw CLI::ValidationError(given_name, "\"" + given + "\" is none; give " + Joined(allowed, " or "));
            }
            value = known->second;
        },
        what);
    return option->type_name(option->get_positional() ? "" : "WORD");
}

void AddShow(CLI::App& app, Console& console) {
    struct Arguments {
        std::string File;
        std::optional<std::string> Channel;
        bool Json = false;
        bool Keys = false;
    };
    const auto given = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand("show", "Every parameter of a preset in words and units");
    command->add_option("FILE", given->File, "Preset")->type_name("")->required();
    command->add_option("--channel", given->Channel, "This channel alone, such as \"Out 2\"")->type_name("CHANNEL");
    CLI::Option* const json = command->add_flag("--json", given->Json, "As JSON, by key");
    command->add_flag("--keys", given->Keys, "A line for each value, as \"set\" takes it")->excludes(json);
    command->callback([given, &console] {
        console.Command = [given, &console] {
            const ShowAs how = given->Json ? ShowAs::Json : given->Keys ? ShowAs::Keys : ShowAs::Words;
            Show(ReadPreset(given->File), ChannelOrAll(given->Channel), how, console.Streams.Out);
            return Outcome::Well;
        };
    });
}

void AddDiff(CLI::App& app, Console& console) {
    const auto files = std::make_shared<std::array<std::string, 2>>();
    CLI::App* const command = app.add_subcommand("diff", "What differs between two presets, in words");
    command->add_option("FILE", (*files)[0], "Preset")->type_name("")->required();
    command->add_option("OTHER", (*files)[1], "Another")->type_name("")->required();
    command->callback([files, &console] {
        console.Command = [files, &console] {
            return Diff(ReadPreset((*files)[0]), ReadPreset((*files)[1]), console.Streams.Out);
        };
    });
}

void AddCheck(CLI::App& app, Console& console) {
    const auto file = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("check", "Whether a file is a whole preset, every code in range");
    command->add_option("FILE", *file, "Preset")->type_name("")->required();
    command->callback(
        [file, &console] { console.Command = [file, &console] { return Check(*file, console.Streams.Out); }; });
}

void AddSet(CLI::App& app, Console& console) {
    struct Arguments {
        std::string File;
        std::vector<std::string> Values;
        std::string Into;
    };
    const auto given = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand("set", "Sets values of a preset by their keys");
    command->add_option("FILE", given->File, "Preset")->type_name("")->required();
    command->add_option("KEY=VALUE", given->Values, "Such as out2.peq3.gain=-3 or in-a.delay=2.5ms")
        ->type_name("")
        ->required();
    command->add_option("-o,--output", given->Into, "Where the preset is written")->type_name("FILE")->required();
    command->callback([given, &console] {
        console.Command = [given, &console] {
            model::PresetImageRow image = ReadPreset(given->File);
            Set(image, given->Values, console.Streams.Out);
            WritePreset(given->Into, image);
            return Outcome::Well;
        };
    });
}

/// The curves of one channel, or of all.
std::vector<NamedCurve> CurvesOf(const model::PresetImageRow& image, std::optional<int> channel, AddedInput added) {
    CurveDesk desk(image);
    std::vector<NamedCurve> curves;
    for (int c = 0; c < ChannelCount; ++c) {
        if (!channel || *channel == c) {
            const bool adds = added != AddedInput::None && !IsInput(c);
            const std::string suffix = adds ? std::string(" + ") + ChannelTitles[At(static_cast<int>(added) - 1)] : "";
            curves.push_back({c, ChannelTitles[At(c)] + suffix, desk.Levels(c, added)});
        }
    }
    return curves;
}

void AddCurve(CLI::App& app, Console& console) {
    struct Arguments {
        std::string File;
        std::optional<std::string> Channel;
        std::string Csv;
        std::string Svg;
        AddedInput Added = AddedInput::None;
    };
    const auto given = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand("curve", "The frequency response as the program draws it");
    command->add_option("FILE", given->File, "Preset")->type_name("")->required();
    command->add_option("--channel", given->Channel, "This channel alone, such as \"Out 2\"")->type_name("CHANNEL");
    AddChoice<AddedInput>(*command, "--add", given->Added, "Adds an input to the outputs: in-a or in-b",
                          {{"in-a", AddedInput::InA}, {"in-b", AddedInput::InB}});
    command->add_option("--csv", given->Csv, "Writes a table there, - for the standard output")->type_name("FILE");
    command->add_option("--svg", given->Svg, "Writes a drawing there, - for the standard output")->type_name("FILE");
    command->callback([given, &console] {
        console.Command = [given, &console] {
            if (given->Csv.empty() && given->Svg.empty()) {
                throw Trouble("There is no place to write to; give --csv FILE, --svg FILE or both.");
            }
            for (const std::string& into : {given->Csv, given->Svg}) {
                RequireOther(into, given->File);
            }
            if (!given->Csv.empty() && given->Csv == given->Svg) {
                throw Trouble(given->Csv + ": is given for the table and for the drawing; give each a place.");
            }
            const auto curves = CurvesOf(ReadPreset(given->File), ChannelOrAll(given->Channel), given->Added);
            if (!given->Csv.empty()) {
                WriteText(given->Csv, console.Streams.Out, [&](std::ostream& out) { WriteCsv(curves, out); });
            }
            if (!given->Svg.empty()) {
                WriteText(given->Svg, console.Streams.Out, [&](std::ostream& out) { WriteSvg(curves, out); });
            }
            return Outcome::Well;
        };
    });
}

void AddFormat(CLI::App& command, FilterFormat& format) {
    AddChoice<FilterFormat>(command, "FORMAT", format, "rew or eqapo",
                            {{"rew", FilterFormat::Rew}, {"eqapo", FilterFormat::EqApo}})
        ->required();
}

void AddImport(CLI::App& app, Console& console) {
    struct Arguments {
        Import What;
        std::string File;
        std::string Channel;
        std::string Into;
    };
    const auto given = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand("import", "Puts the filters of another program's text into a channel");
    AddFormat(*command, given->What.Format);
    command->add_option("TEXT", given->What.Text, "Text of filters")->type_name("")->required();
    command->add_option("FILE", given->File, "Preset")->type_name("")->required();
    command->add_option("--channel", given->Channel, "Such as \"In A\"")->type_name("CHANNEL")->required();
    command->add_flag("--fit", given->What.WithFit, "Looks for the codes that come nearest to the curve asked for");
    command->add_option("-o,--output", given->Into, "Where the preset is written")->type_name("FILE")->required();
    command->callback([given, &console] {
        console.Command = [given, &console] {
            RequireOther(given->Into, given->What.Text);
            given->What.Channel = ChannelFromTyped(given->Channel);
            model::PresetImageRow image = ReadPreset(given->File);
            const Outcome outcome = ImportFilters(given->What, image, console.Streams.Out, console.Streams.Errors);
            WritePreset(given->Into, image);
            return outcome;
        };
    });
}

void AddExport(CLI::App& app, Console& console) {
    struct Arguments {
        FilterFormat Format = FilterFormat::Rew;
        std::string File;
        std::string Channel;
        std::string Into = "-";
    };
    const auto given = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand("export", "Writes the filters of a channel as another program's text");
    AddFormat(*command, given->Format);
    command->add_option("FILE", given->File, "Preset")->type_name("")->required();
    command->add_option("--channel", given->Channel, "Such as \"In A\"")->type_name("CHANNEL")->required();
    command->add_option("-o,--output", given->Into, "Where the text is written; the standard output if not given");
    command->callback([given, &console] {
        console.Command = [given, &console] {
            RequireOther(given->Into, given->File);
            const int channel = ChannelFromTyped(given->Channel);
            const model::PresetImageRow image = ReadPreset(given->File);
            Outcome outcome = Outcome::Well;
            WriteText(given->Into, console.Streams.Out, [&](std::ostream& out) {
                outcome = ExportFilters(given->Format, channel, image, out, console.Streams.Errors);
            });
            return outcome;
        };
    });
}

/// One line, whatever a message holds.
std::string OneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// Throws Trouble for a word that stands where a command does and is none, or for none.
void RequireCommand(const CLI::App& app, std::span<const std::string> arguments) {
    const std::vector<const CLI::App*> commands = app.get_subcommands({});
    if (commands.empty() || (!arguments.empty() && arguments.front().starts_with('-'))) {
        return;
    }
    std::vector<std::string> names;
    for (const CLI::App* const command : commands) {
        names.push_back(command->get_name());
        if (!arguments.empty() && command->get_name() == arguments.front()) {
            RequireCommand(*command, arguments.subspan(1));
            return;
        }
    }
    throw Trouble((arguments.empty() ? "There is no command" : "\"" + arguments.front() + "\" is no command") +
                  std::string("; give ") + Joined(names, ", ") + " (--help tells how).");
}

int Tell(Console& console, const std::string& what, Outcome outcome) {
    console.Streams.Errors << "nrv718-preset: " << OneLine(what) << "\n";
    return static_cast<int>(outcome);
}

} // namespace

int Run(std::vector<std::string> arguments, const LineConsole& streams, LineSource* line) {
    Console console{streams, line, {}};
    CLI::App app("Presets of the NRV-718 on the PC and over the line", "nrv718-preset");
    app.require_subcommand(1);
    app.set_version_flag("--version", "nrv718-preset " NRV718_VERSION, "The version");
    AddShow(app, console);
    AddDiff(app, console);
    AddCheck(app, console);
    AddSet(app, console);
    AddCurve(app, console);
    AddImport(app, console);
    AddExport(app, console);
    AddLine(app, console);
    try {
        RequireCommand(app, arguments);
        std::ranges::reverse(arguments); // as the parser takes them
        app.parse(std::move(arguments));
        return static_cast<int>(console.Command());
    } catch (const CLI::CallForVersion&) {
        streams.Out << app.version() << "\n";
        return static_cast<int>(Outcome::Well);
    } catch (const CLI::Success&) {
        streams.Out << app.help();
        return static_cast<int>(Outcome::Well);
    } catch (const CLI::ParseError& error) {
        return Tell(console, std::string(error.what()) + " (--help tells how)", Outcome::Refused);
    } catch (const Trouble& trouble) {
        return Tell(console, trouble.what(), trouble.EndsAs());
    }
}

} // namespace nrv::tool
