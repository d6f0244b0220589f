#include "session/discovery.h"

#include "model/number_text.h"
#include "model/tables.h"
#include "ports/runtime_error.h"
#include "session/config_files.h"
#include "session/failure_text.h"

#include <algorithm>
#include <cmath>

namespace nrv::session {
namespace {

constexpr std::uint8_t FactoryOptionBits = 32;
constexpr const char* FactoryPresetName = "Factory Preset";

std::string ProgressText(int index, int last) {
    // One decimal: 11.1 for the second of ten.
    return model::NumberText(std::floor(static_cast<double>(index) / last * 1000) / 10) + " %";
}

} // namespace

Discovery::Discovery(const Parts& parts)
    : link_(parts.Link), stores_(parts.Stores), state_(parts.State), splash_(parts.Splash), boxes_(parts.Boxes),
      process_(parts.Run), status_(parts.Status) {
    for (model::ParamRow& row : stores_.ParamValues) {
        row.DevicePassword.fill(DefaultPasswordCharacter);
    }
}

bool Discovery::SearchDevices() {
    state_.FoundLast = -1;
    splash_.Progress.SetVisible(true);
    state_.DeviceUnconnected.fill(true);
    const int last = state_.ListOfTen ? 9 : state_.ListOfTwenty ? 19 : DeviceCount - 1;
    const bool listed = state_.ListOfTen || state_.ListOfTwenty;
    bool found = false;
    std::string silent;
    for (int i = 0; i <= last; ++i) {
        splash_.Progress.SetCaption(ProgressText(i, last));
        splash_.Progress.Refresh();
        const int id = listed ? state_.ConfiguredIds[At(i)] : i;
        const bool answered = Probe(id);
        found = answered || found;
        if (!answered) {
            silent += (silent.empty() ? "" : ", ") + IdText(id);
        }
    }
    splash_.Progress.SetVisible(false);
    if (!found) {
        status_.Tell(listed ? "No answer came from any ID of the list." : "No answer came from any ID.");
    } else if (listed && !silent.empty()) { // of a scan of all IDs most are empty; of a list each was expected
        status_.Tell("No answer came from " + silent + ".");
    }
    return found;
}

bool Discovery::Probe(int id) {
    if (!IsDeviceId(id)) {
        return false;
    }
    const bool answered = link_.ProbeDevice(id);
    SpeakerRecord& record = state_.SpeakerRecords[At(id)];
    record.SetFound(answered);
    if (answered) {
        record.SetDeviceId(id);
        EnterDevice(id);
    }
    return answered;
}

void Discovery::EnterDevice(int id) {
    if (state_.FoundLast + 1 < DeviceCount) {
        ++state_.FoundLast;
        state_.FoundDevices[At(state_.FoundLast)] = id;
    }
}

void Discovery::LoadDemoDevices() {
    LoadFlaggedDevices(Take::All);
}

void Discovery::LoadDemoDevice() {
    LoadFlaggedDevices(Take::First);
}

void Discovery::LoadFlaggedDevices(Take take) {
    state_.FoundLast = -1;
    try {
        state_.SpeakerRecords = ReadSpeakerRecords(state_.AppFolder);
        for (SpeakerRecord& record : state_.SpeakerRecords) {
            if (!record.Found()) {
                continue;
            }
            if (take == Take::First) {
                record.SetDeviceId(state_.SingleId);
            }
            if (!IsDeviceId(record.DeviceId())) {
                continue; // no row in any store
            }
            EnterDevice(record.DeviceId());
            LoadFactoryState(record.DeviceId());
            if (take == Take::First) {
                break;
            }
        }
    } catch (const RuntimeError&) {
        // A file that cannot be read leads to the same end as one without a device.
    }
    if (state_.FoundLast < 0) {
        boxes_.Show({"      Devices not found!", "Exit", BoxIcon::Critical});
        process_.End();
    }
}

void Discovery::ReadDeviceImage(int id) {
    link_.Current.At({}); // no byte of the label is waited for any more
    link_.FetchPreset(id, link::LivePreset, model::OnDevice(Image(id)));
}

bool Discovery::ReadDeviceState(int id) {
    if (link_.DemoMode) {
        // Row 0 and not the device's row; that is meant.
        stores_.ParamValues[0].CurrentPresetName.clear();
        SetDemoDefaults(id);
        return true;
    }
    all_came_ = true;
    bytes_asked_ = 0;
    return !ReadPage(id) && all_came_;
}

bool Discovery::ReadByte(int id, std::size_t address) {
    link_.Current.At("byte " + std::to_string(++bytes_asked_) + " of its memory");
    const bool failed = link_.MemoryRead(id, static_cast<int>(address));
    all_came_ = all_came_ && link_.TransactionDone;
    return failed;
}

bool Discovery::ReadPage(int id) {
    model::ParamRow& values = Values(id);
    if (ReadOptionBits(id) || ReadByte(id, model::MuteBitsAddress)) {
        return true;
    }
    Image(id).SystemPage[model::MuteBitsAddress] = link_.MemoryValue();
    model::DecodeMuteBits(link_.MemoryValue(), values);
    for (std::size_t i = 0; i < values.DevicePassword.size(); ++i) {
        if (ReadByte(id, model::PasswordAddress + i)) {
            return true;
        }
        values.DevicePassword[i] = link_.MemoryValue();
    }
    for (std::size_t position = 0; position < std::size_t{MemoryPositions}; ++position) {
        if (ReadByte(id, model::PresetUsedAddress + position)) {
            return true;
        }
        values.PresetUsed[position] = link_.MemoryValue();
    }
    return ReadPresetNames(id) || ReadName(id, model::CurrentPresetNameAddress, values.CurrentPresetName);
}

bool Discovery::ReadOptionBits(int id) {
    if (ReadByte(id, model::OptionBitsAddress)) {
        return true;
    }
    const std::uint8_t bits = link_.MemoryValue();
    Image(id).SystemPage[model::OptionBitsAddress] = bits;
    model::DecodeOptionBits(bits, Values(id));
    model::DecodeLockFlag(bits, Values(id));
    stores_.LastInputType = Values(id).InputType;
    return false;
}

bool Discovery::ReadPresetNames(int id) {
    model::ParamRow& values = Values(id);
    for (std::size_t position = 0; position < std::size_t{MemoryPositions}; ++position) {
        const std::size_t address = model::PresetNamesAddress + MemoryNameLength * position;
        if (values.PresetUsed[position] == model::PresetUsedMark) {
            if (ReadName(id, address, values.PresetNames[position])) {
                return true;
            }
            continue;
        }
        NameAsEmpty(id, position);
    }
    return false;
}

void Discovery::NameAsEmpty(int id, std::size_t position) {
    std::string& name = Values(id).PresetNames[position];
    name.clear();
    for (std::size_t j = 0; j < MemoryNameLength; ++j) {
        const std::string_view character = model::EmptyPresetChars[j];
        name += character;
        Image(id).SystemPage[model::PresetNamesAddress + MemoryNameLength * position + j] =
            static_cast<std::uint8_t>(character.front());
    }
}

bool Discovery::ReadName(int id, std::size_t address, std::string& name) {
    name.clear();
    for (std::size_t j = 0; j < MemoryNameLength; ++j) {
        if (ReadByte(id, address + j)) {
            return true;
        }
        name += static_cast<char>(link_.MemoryValue());
        Image(id).SystemPage[address + j] = link_.MemoryValue();
    }
    return false;
}

void Discovery::LoadFactoryState(int id) {
    std::ranges::copy(model::FactoryImage, Image(id).PresetBody.begin());
    SetDemoDefaults(id);
}

void Discovery::SetDemoDefaults(int id) {
    model::ParamRow& values = Values(id);
    model::PresetImageRow& image = Image(id);
    image.SystemPage[model::OptionBitsAddress] = FactoryOptionBits;
    model::DecodeOptionBits(FactoryOptionBits, values);
    model::DecodeLockFlag(FactoryOptionBits, values);
    image.SystemPage[model::MuteBitsAddress] = 0;
    values.ChannelMute.fill(0.0);
    values.DevicePassword.fill(DefaultPasswordCharacter);
    std::fill_n(values.PresetUsed.begin(), MemoryPositions, 0.0);
    for (std::size_t position = 0; position < std::size_t{MemoryPositions}; ++position) {
        NameAsEmpty(id, position);
    }
    values.CurrentPresetName = FactoryPresetName;
}

} // namespace nrv::session
