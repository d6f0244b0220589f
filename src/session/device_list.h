#pragma once

#include "controls/forms.h"
#include "controls/windows.h"
#include "link/link.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/window_host.h"
#include "session/discovery.h"
#include "session/session_state.h"
#include "session/status_line.h"

#include <functional>
#include <optional>

namespace nrv::session {

/// The list of the devices found, which stays open for the whole run.
class DeviceList {
  public:
    struct Parts {
        controls::FrmSearchNet& Form;
        controls::Windows& Windows;
        link::Link& Link;
        Discovery& Devices;
        SessionState& State;
        MessageBoxes& Boxes;
        Process& Run;
        WindowHost& Host;
        StatusLine& Status;
        /// Fills the control window of `NewSlot` and shows it. Throws RuntimeError.
        std::function<void()> LoadControlWindow;
        /// Takes the control window of a slot away, with no question.
        std::function<void(int slot)> UnloadControlWindow;
    };
    explicit DeviceList(const Parts& parts);

    void Load();
    /// The whole reaction to a double click on a row. It concerns the device of that row: one that dies here takes no
    /// other's window along.
    void OpenDevice(int row);
    /// Marks the row of the device whose control window stands in front of the others; NoSlot for none.
    void MarkFront(int slot);
    /// Tells at its row that so many settings of a device differ from what is kept of them.
    void TellEdits(int id, std::size_t count);
    /// Closing is always refused; it minimises the window, or brings it back to normal size.
    void QueryUnload();

  private:
    void ListDevices();
    /// False when the link failed for good.
    bool ListDevice(int row);
    void Concern(int id);
    bool ReadLabel(int id);
    void WriteRow(int row, int id);
    void Open(int row);
    bool Reconnect(int row, int id);
    bool PassesCheck(int id);
    /// No slot when the device gets no window.
    std::optional<int> TakeSlot(int id);
    void ShowInSlot(int slot, int id);
    void CloseWindowOf(int id);

    controls::FrmSearchNet& form_;
    controls::Windows& windows_;
    link::Link& link_;
    Discovery& discovery_;
    SessionState& state_;
    MessageBoxes& boxes_;
    Process& process_;
    WindowHost& host_;
    StatusLine& status_;
    std::function<void()> load_control_window_;
    std::function<void(int)> unload_control_window_;
};

} // namespace nrv::session
