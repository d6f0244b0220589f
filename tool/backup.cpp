#include "ports/numbering.h"
#include "presets/memory_positions.h"
#include "tool/backup_folder.h"
#include "tool/desk.h"
#include "tool/line.h"
#include "tool/preset_file.h"
#include "tool/progress.h"
#include "tool/show.h"
#include "tool/text.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <system_error>

namespace nrv::tool {
namespace {

namespace fs = std::filesystem;
using Done = std::array<bool, MemoryPositions>;

std::string PositionText(std::size_t position) {
    return "position " + std::to_string(position + 1);
}

BackupRecord RecordOf(LineDesk& desk) {
    BackupRecord record{desk.Id(), desk.Label(), {}, false};
    for (std::size_t position = 0; position < record.Positions.size(); ++position) {
        const bool used = presets::HoldsPreset(desk.Values(), position);
        record.Positions.at(position) = {used, used ? desk.Values().PresetNames[position] : ""};
    }
    return record;
}

/// What is live as an image of its own for a preset of a memory position, so that it is a whole file.
model::PresetImageRow FetchPosition(LineDesk& desk, std::size_t position) {
    model::PresetImageRow image = desk.Image();
    desk.Fetch(static_cast<int>(position), image);
    image.SystemPage[model::MuteBitsAddress] = image.PresetBody[model::MuteBitsCopy];
    return image;
}

bool HasPreset(const fs::path& file) {
    std::error_code ignored;
    return fs::exists(file, ignored) && fs::file_size(file, ignored) == sizeof(model::PresetImageRow);
}

/// Presets of the user's own are not written over.
void RequireNoPresets(const fs::path& folder) {
    std::vector<fs::path> files{LiveFile(folder)};
    for (std::size_t position = 0; position < std::size_t{MemoryPositions}; ++position) {
        files.push_back(PositionFile(folder, position));
    }
    for (const fs::path& file : files) {
        std::error_code ignored;
        if (fs::exists(file, ignored)) {
            throw Trouble(file.string() + ": is there and of no backup; give another folder.");
        }
    }
}

BackupRecord CompleteRecord(const fs::path& folder) {
    const std::optional<BackupRecord> record = ReadRecord(folder);
    if (!record) {
        throw Trouble(folder.string() + ": holds no backup.");
    }
    if (!record->Complete) {
        throw Trouble(folder.string() + ": the backup is not complete; start it again to go on with it.");
    }
    return *record;
}

/// One stored position as the program's store sends it. It stores what it holds for live, with the live mutes.
void StorePosition(LineDesk& desk, std::size_t position, const model::PresetImageRow& image, std::string name) {
    desk.Image().PresetBody = image.PresetBody;
    model::DecodeMuteBits(image.PresetBody[model::MuteBitsCopy], desk.Values());
    desk.Do([&] { desk.Program().StoreDialog.StorePreset(static_cast<int>(position), name); });
}

/// Whether a position holds a preset under a name; what a store writes of it, that is.
bool Holds(LineDesk& desk, std::size_t position, const model::PresetImageRow& image, const std::string& name) {
    const auto end = [](const model::PresetImageRow& of) { return of.PresetBody.begin() + model::PresetBodyOnDevice; };
    const BackupRecord::Position found = RecordOf(desk).Positions.at(position);
    if (!found.Used || found.Name != name) {
        return false;
    }
    const model::PresetImageRow fetched = FetchPosition(desk, position);
    return std::equal(fetched.PresetBody.begin(), end(fetched), image.PresetBody.begin());
}

/// What a load leaves to the user: the mutes where the device takes none from a preset, and the socket.
void SetWhatALoadLeaves(LineDesk& desk, const model::PresetImageRow& live) {
    controls::FrmCtrl& form = desk.Program().Windows.Current();
    const bool digital = model::HasOption(live, model::InputTypeBit);
    desk.Do([&] { form.Combo4.UserSelect(digital ? 1 : 0); });
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const bool muted = ((live.SystemPage[model::MuteBitsAddress] >> At(channel)) & 1) != 0;
        if (form.Check1[At(channel)].Checked() != muted) {
            desk.Do([&] { form.Check1[At(channel)].UserToggle(); });
        }
    }
}

/// Tells what differs, each line with its place; whether anything does.
bool TellDifference(const std::string& place, const model::PresetImageRow& kept, const model::PresetImageRow& found,
                    Progress& progress) {
    std::ostringstream words;
    if (Diff(kept, found, words) == Outcome::Well) {
        return false;
    }
    std::istringstream lines(words.str());
    for (std::string line; std::getline(lines, line);) {
        progress.Tell(std::string(place).append(": ").append(line));
    }
    return true;
}

/// Of the bytes outside the preset only those that play.
model::PresetImageRow Playing(const model::PresetImageRow& image) {
    model::PresetImageRow playing{};
    std::copy_n(image.PresetBody.begin(), model::PresetBodyOnDevice, playing.PresetBody.begin());
    playing.PresetBody[model::MuteBitsCopy] = 0; // of the next, which is compared
    playing.SystemPage[model::MuteBitsAddress] = image.SystemPage[model::MuteBitsAddress];
    playing.SystemPage[model::OptionBitsAddress] =
        static_cast<std::uint8_t>(image.SystemPage[model::OptionBitsAddress] & ~model::LockFlagBit);
    return playing;
}

} // namespace

void RequireBackup(const fs::path& folder) {
    CompleteRecord(folder);
}

Outcome BackUp(LineDesk& desk, const fs::path& folder, LineConsole& console) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw Trouble(folder.string() + ": " + error.message() + ".");
    }
    const std::optional<BackupRecord> earlier = ReadRecord(folder);
    if (earlier && earlier->Complete) {
        throw Trouble(folder.string() + ": holds a complete backup; give another folder.");
    }
    Progress progress(desk, console);
    progress.Begin("reading");
    desk.Confirm();
    BackupRecord record = RecordOf(desk);
    if (earlier && !earlier->SameDevice(record)) {
        throw Trouble(folder.string() + ": holds a part of a backup of something else; give another folder.");
    }
    if (!earlier) {
        RequireNoPresets(folder);
        WriteRecord(folder, record);
    }
    WritePreset(LiveFile(folder), desk.Image());
    progress.Tell("live: kept");
    for (std::size_t position = 0; position < record.Positions.size(); ++position) {
        const fs::path file = PositionFile(folder, position);
        if (!record.Positions.at(position).Used) {
            continue;
        }
        if (earlier && HasPreset(file)) {
            progress.Tell(PositionText(position) + ": kept already");
            continue;
        }
        progress.Begin(PositionText(position));
        try {
            WritePreset(file, FetchPosition(desk, position));
        } catch (const Trouble& trouble) {
            throw Trouble(std::string(trouble.what()) + " The backup stands before " + PositionText(position) +
                              "; start it again to go on.",
                          trouble.EndsAs());
        }
        progress.Tell(PositionText(position) + ": " + Quoted(record.Positions.at(position).Name) + " kept");
    }
    record.Complete = true;
    WriteRecord(folder, record);
    console.Out << IdText(desk.Id()) << " " << Quoted(desk.Label()) << ": the backup in " << folder.string()
                << " is complete\n";
    return Outcome::Well;
}

Outcome Restore(LineDesk& desk, const fs::path& folder, const std::string& password, LineConsole& console) {
    const BackupRecord record = CompleteRecord(folder);
    // All files are read before anything is written.
    const model::PresetImageRow live = ReadPreset(LiveFile(folder));
    RequireWhole(live);
    std::array<model::PresetImageRow, MemoryPositions> images{};
    for (std::size_t position = 0; position < record.Positions.size(); ++position) {
        if (record.Positions.at(position).Used) {
            images.at(position) = ReadPreset(PositionFile(folder, position));
        }
    }
    RequireUnlocked(desk, password);
    const BackupRecord found = RecordOf(desk);
    Done done = ReadRestored(folder, desk.Id());
    Progress progress(desk, console);
    if (record.Device != desk.Id() || record.Label != desk.Label()) {
        progress.Tell("The backup is of " + IdText(record.Device) + " " + Quoted(record.Label) + ".");
    }
    std::string at = "the first position";
    Outcome outcome = Outcome::Well;
    try {
        for (std::size_t position = 0; position < record.Positions.size(); ++position) {
            const BackupRecord::Position& kept = record.Positions.at(position);
            at = PositionText(position);
            if (kept.Used && done.at(position) && Holds(desk, position, images.at(position), kept.Name)) {
                progress.Tell(at + ": stored already");
            } else if (kept.Used) {
                progress.Begin(at);
                StorePosition(desk, position, images.at(position), kept.Name);
                done.at(position) = true;
                WriteRestored(folder, desk.Id(), done);
                progress.Tell(at + ": " + Quoted(kept.Name) + " stored");
            } else if (found.Positions.at(position).Used) {
                progress.Tell(at + ": was empty, and keeps " + Quoted(found.Positions.at(position).Name) +
                              ", for the device empties none");
                outcome = Outcome::Differs;
            }
        }
        at = "what was live";
        progress.Begin("live");
        desk.Load(live);
        SetWhatALoadLeaves(desk, live);
    } catch (const Trouble& trouble) {
        throw Trouble(std::string(trouble.what()) + " The restore stands before " + at + "; start it again to go on.",
                      trouble.EndsAs());
    }
    ForgetRestored(folder);
    progress.Tell("live: loaded");
    console.Out << IdText(desk.Id()) << " " << Quoted(desk.Label()) << ": restored from " << folder.string() << "\n";
    return outcome;
}

Outcome Verify(LineDesk& desk, const fs::path& folder, LineConsole& console) {
    const BackupRecord record = CompleteRecord(folder);
    Progress progress(desk, console);
    progress.Begin("reading");
    desk.Confirm();
    const BackupRecord found = RecordOf(desk);
    bool differs = TellDifference("live", Playing(ReadPreset(LiveFile(folder))), Playing(desk.Image()), progress);
    if (record.Label != found.Label) {
        progress.Tell("label: " + Quoted(record.Label) + " to " + Quoted(found.Label));
        differs = true;
    }
    for (std::size_t position = 0; position < record.Positions.size(); ++position) {
        const BackupRecord::Position& kept = record.Positions.at(position);
        const BackupRecord::Position& now = found.Positions.at(position);
        const std::string place = PositionText(position);
        if (!(kept == now)) {
            const auto text = [](const BackupRecord::Position& of) { return of.Used ? Quoted(of.Name) : "empty"; };
            progress.Tell(place + ": " + text(kept) + " to " + text(now));
            differs = true;
        }
        if (kept.Used && now.Used) {
            progress.Begin(place);
            const model::PresetImageRow fetched = FetchPosition(desk, position);
            model::PresetImageRow from = ReadPreset(PositionFile(folder, position));
            // Outside the preset a position has nothing of its own.
            from.SystemPage = fetched.SystemPage;
            from.ViewState = fetched.ViewState;
            from.SystemPage[model::MuteBitsAddress] = from.PresetBody[model::MuteBitsCopy];
            from.PresetBody[model::PresetBodyOnDevice] = fetched.PresetBody[model::PresetBodyOnDevice];
            differs = TellDifference(place, from, fetched, progress) || differs;
        }
    }
    progress.Tell(IdText(desk.Id()) + " " + Quoted(desk.Label()) + ": " +
                  (differs ? "differs from " : "holds what is in ") + folder.string());
    return differs ? Outcome::Differs : Outcome::Well;
}

} // namespace nrv::tool
