#include "tool/backup_folder.h"

#include "ports/numbering.h"
#include "tool/text.h"
#include "tool/text_file.h"
#include "tool/trouble.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <ostream>
#include <system_error>

namespace nrv::tool {
namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;

fs::path RecordFile(const fs::path& folder) {
    return folder / "backup.json";
}
fs::path RestoredFile(const fs::path& folder) {
    return folder / "restore.json";
}

void WriteJson(const fs::path& file, const ordered_json& json) {
    WriteText(file, [&](std::ostream& out) { out << json.dump(2) << "\n"; });
}

/// The library would take a fraction or a number of any size for an ID.
int DeviceIn(const ordered_json& json) {
    const ordered_json& device = json.at("device");
    const auto number = device.is_number_integer() ? device.get<std::int64_t>() : -1;
    if (number < 0 || number >= DeviceCount) {
        throw Trouble("no ID of a device");
    }
    return static_cast<int>(number);
}

/// A position in use has the name that a device keeps of it, and another one none.
BackupRecord::Position PositionIn(const ordered_json& json) {
    BackupRecord::Position position{json.at("used").get<bool>(), Typed(json.at("name").get<std::string>())};
    if (position.Name.size() != (position.Used ? MemoryNameLength : 0)) {
        throw Trouble("no name of a memory position");
    }
    return position;
}

/// None for a file that is not there.
template <class Use>
void ReadJson(const fs::path& file, const char* what_to_do, Use use) {
    std::error_code ignored;
    if (!fs::exists(file, ignored)) {
        return;
    }
    const std::string text = ReadText(file);
    const auto refuse = [&] { throw Trouble(file.string() + ": cannot be read as part of a backup; " + what_to_do); };
    try {
        use(ordered_json::parse(text));
    } catch (const ordered_json::exception&) {
        refuse();
    } catch (const Trouble&) { // a value that is none
        refuse();
    }
}

} // namespace

fs::path LiveFile(const fs::path& folder) {
    return folder / "live.n91";
}

fs::path PositionFile(const fs::path& folder, std::size_t position) {
    return folder / ("position-" + std::to_string(position + 1) + ".n91");
}

std::optional<BackupRecord> ReadRecord(const fs::path& folder) {
    std::optional<BackupRecord> record;
    ReadJson(RecordFile(folder), "give another folder.", [&](const ordered_json& json) {
        BackupRecord read;
        read.Device = DeviceIn(json);
        read.Label = Typed(json.at("label").get<std::string>());
        read.Complete = json.at("complete").get<bool>();
        for (std::size_t position = 0; position < read.Positions.size(); ++position) {
            read.Positions.at(position) = PositionIn(json.at("positions").at(position));
        }
        record = read;
    });
    return record;
}

void WriteRecord(const fs::path& folder, const BackupRecord& record) {
    ordered_json json;
    json["device"] = record.Device;
    json["label"] = Shown(record.Label);
    json["complete"] = record.Complete;
    for (const BackupRecord::Position& position : record.Positions) {
        json["positions"].push_back({{"used", position.Used}, {"name", Shown(position.Name)}});
    }
    WriteJson(RecordFile(folder), json);
}

std::array<bool, MemoryPositions> ReadRestored(const fs::path& folder, int device) {
    std::array<bool, MemoryPositions> done{};
    ReadJson(RestoredFile(folder), "remove it, and the restore begins anew.", [&](const ordered_json& json) {
        const auto stored = json.at("stored").get<std::array<bool, MemoryPositions>>();
        if (DeviceIn(json) == device) {
            done = stored;
        }
    });
    return done;
}

void WriteRestored(const fs::path& folder, int device, const std::array<bool, MemoryPositions>& done) {
    WriteJson(RestoredFile(folder), {{"device", device}, {"stored", done}});
}

void ForgetRestored(const fs::path& folder) {
    std::error_code ignored;
    fs::remove(RestoredFile(folder), ignored);
}

} // namespace nrv::tool
