#pragma once

#include "ports/numbering.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace nrv::session {

/// One record of Speakers.cfg, and of what a search has found. Words 1 to 9 are not used.
struct SpeakerRecord {
    std::array<std::int16_t, 11> Words{};

    int DeviceId() const { return Words[0]; }
    void SetDeviceId(int id) { Words[0] = static_cast<std::int16_t>(id); }
    bool Found() const { return Words[10] != 0; }
    void SetFound(bool found) { Words[10] = found ? 1 : 0; }
};

/// What the run knows of its connection and its devices.
struct SessionState {
    std::filesystem::path AppFolder; ///< the folder of the configuration files and of the preset folder
    bool SkipExitPrompt = false;     ///< closing the main window ends the process without asking

    // The connection dialog's choices; the port itself is the link's.
    bool MultiDevice = false;
    bool ListOfTen = false;
    bool ListOfTwenty = false;
    bool SelectExitPending = false; ///< closing the dialog means leaving the program
    int SingleId = 0;
    std::array<int, DeviceCount> ConfiguredIds{}; ///< entries 0 to 19 are in use

    // The devices, by ID; FoundDevices lists the IDs in the order found.
    std::array<SpeakerRecord, DeviceCount> SpeakerRecords{};
    std::array<int, DeviceCount> FoundDevices{};
    int FoundLast = -1;                                ///< index of the last one found
    std::array<bool, DeviceCount> DeviceUnconnected{}; ///< true until the list has read the device
    std::array<int, DeviceCount> DeviceRow{};
    std::array<std::string, DeviceCount> DeviceNames{};

    SessionState() { DeviceUnconnected.fill(true); }
};

/// The ID at an index of the devices found, 0 to FoundLast.
inline int FoundId(const SessionState& state, int index) {
    return state.FoundDevices[At(index)];
}

} // namespace nrv::session
