#include "tool/backup_folder.h"

#include "tool/text.h"
#include "tool/text_file.h"
#include "tool/trouble.h"

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
    } catch (const Trouble&) { // a name that is none
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
        read.Device = json.at("device").get<int>();
        read.Label = Typed(json.at("label").get<std::string>());
        read.Complete = json.at("complete").get<bool>();
        for (std::size_t position = 0; position < read.Positions.size(); ++position) {
            const ordered_json& entry = json.at("positions").at(position);
            read.Positions.at(position).Used = entry.at("used").get<bool>();
            read.Positions.at(position).Name = Typed(entry.at("name").get<std::string>());
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
        if (json.at("device").get<int>() == device) {
            done = json.at("stored").get<std::array<bool, MemoryPositions>>();
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
