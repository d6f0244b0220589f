#pragma once

#include "controls/forms.h"
#include "link/link.h"
#include "model/device_stores.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "session/session_state.h"
#include "session/status_line.h"

namespace nrv::session {

/// The character that stands six times in the password of a device that has not been read and of a demo device.
inline constexpr char DefaultPasswordCharacter = '0';

/// Finds the devices and brings what they hold into the stores.
class Discovery {
  public:
    struct Parts {
        link::Link& Link;
        model::DeviceStores& Stores;
        SessionState& State;
        controls::FrmSplash& Splash;
        MessageBoxes& Boxes;
        Process& Run;
        StatusLine& Status;
    };
    explicit Discovery(const Parts& parts);

    /// Asks the configured IDs, or every ID, whether a device is there. True when at least one answered.
    bool SearchDevices();
    /// Takes all devices that Speakers.cfg flags, each in the factory state; ends the process when it flags none.
    void LoadDemoDevices();
    /// Takes the first flagged device, under the ID chosen in the dialog; ends the process when there is none.
    void LoadDemoDevice();

    /// Fetches the settings that are live in the device. Throws RuntimeError when the port cannot be closed and
    /// reopened.
    void ReadDeviceImage(int id);
    /// Reads the device's memory page byte by byte; stops at a reported link failure with what was read so far. False
    /// when a byte did not come.
    bool ReadDeviceState(int id);
    /// The factory image and the demo defaults.
    void LoadFactoryState(int id);

  private:
    enum class Take { All, First };
    void LoadFlaggedDevices(Take take);
    void EnterDevice(int id);
    bool Probe(int id);
    bool ReadPage(int id);
    /// True when the link failed for good, as those below.
    bool ReadByte(int id, std::size_t address);
    bool ReadOptionBits(int id);
    bool ReadPresetNames(int id);
    bool ReadName(int id, std::size_t address, std::string& name);
    void NameAsEmpty(int id, std::size_t position);
    void SetDemoDefaults(int id);

    model::ParamRow& Values(int id) { return stores_.ParamValues[At(id)]; }
    model::PresetImageRow& Image(int id) { return stores_.PresetImage[At(id)]; }

    link::Link& link_;
    model::DeviceStores& stores_;
    SessionState& state_;
    controls::FrmSplash& splash_;
    MessageBoxes& boxes_;
    Process& process_;
    StatusLine& status_;
    // Of the page that is read or was read last.
    int bytes_asked_ = 0;
    bool all_came_ = false;
};

} // namespace nrv::session
