#include "fuzz/input.h"
#include "fuzz/watch.h"
#include "model/tables.h"
#include "ports/channels.h"
#include "ports/numbering.h"
#include "presets/parameter_codes.h"
#include "tool/backup_folder.h"
#include "tool/parameters.h"
#include "tool/set.h"
#include "tool/trouble.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>

// The texts that the preset tool reads beside those of filters: the two records of a backup, and values to set.

namespace nrv::fuzz {
namespace {

std::optional<tool::BackupRecord> RecordIn(const std::string& text) {
    MemoryFolder().WriteText("backup.json", text);
    try {
        return tool::ReadRecord(MemoryFolder().Path());
    } catch (const tool::Trouble&) {
        return std::nullopt;
    }
}

/// What is read has the values that a device has, and is the same when it is written and read again.
void ReadRecord(const std::string& text) {
    const std::optional<tool::BackupRecord> record = RecordIn(text);
    if (!record) {
        return;
    }
    Require(IsDeviceId(record->Device), "a backup is of no device");
    for (const tool::BackupRecord::Position& position : record->Positions) {
        Require(position.Name.size() == (position.Used ? MemoryNameLength : 0), "a name has not its length");
    }
    tool::WriteRecord(MemoryFolder().Path(), *record);
    const std::optional<tool::BackupRecord> again = RecordIn(MemoryFolder().ReadText("backup.json"));
    Require(again && again->SameDevice(*record) && again->Complete == record->Complete,
            "a record is another when it is written");
}

void ReadRestored(const std::string& text, int device) {
    MemoryFolder().WriteText("restore.json", text);
    try {
        const auto done = tool::ReadRestored(MemoryFolder().Path(), device);
        tool::WriteRestored(MemoryFolder().Path(), device, done);
        Require(tool::ReadRestored(MemoryFolder().Path(), device) == done,
                "what is stored is another when it is written");
        Require(tool::ReadRestored(MemoryFolder().Path(), device + 1) == std::array<bool, MemoryPositions>{},
                "what is stored is of every device");
    } catch (const tool::Trouble&) {
    }
}

/// A line is an assignment. What is set has an entry for every code, and setting it again changes nothing.
void SetValues(const std::string& text) {
    model::PresetImageRow image{};
    std::ranges::copy(model::FactoryImage, image.PresetBody.begin());
    constexpr int MostLines = 4;
    std::istringstream lines(text);
    std::string line;
    for (int n = 0; n < MostLines && std::getline(lines, line); ++n) {
        const model::PresetImageRow before = image;
        std::ostringstream told;
        try {
            tool::Set(image, {line}, told);
        } catch (const tool::Trouble&) {
            Require(std::ranges::equal(BytesOf(image), BytesOf(before)), "a value that was refused is set");
            continue;
        }
        const model::PresetImageRow once = image;
        tool::Set(image, {line}, told);
        Require(std::ranges::equal(BytesOf(image), BytesOf(once)), "a value is another when it is set again");
        for (const presets::Parameter parameter : presets::Differing(before, image)) {
            for (const presets::CodePlace& place : tool::CodesOf(parameter)) {
                Require(presets::CodeIn(image, place) <= place.Top, "a value stands on a code that there is not");
            }
        }
    }
}

void Read(Input& input) {
    const std::uint8_t chosen = input.Byte();
    const std::vector<std::uint8_t> bytes = input.Rest();
    const std::string text(bytes.begin(), bytes.end());
    switch (chosen % 4) {
    case 0:
        ReadRecord(text);
        break;
    case 1:
        ReadRestored(text, chosen / 4 % (DeviceCount - 1));
        break;
    default:
        SetValues(text);
        break;
    }
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Read(input);
    return 0;
}
