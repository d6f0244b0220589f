#pragma once

#include "controls/forms.h"
#include "controls/windows.h"
#include "link/link.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/window_host.h"
#include "session/connection_dialog.h"
#include "session/device_list.h"
#include "session/discovery.h"
#include "session/session_state.h"
#include "session/status_line.h"

#include <functional>

namespace nrv::session {

/// The order of events from the start of the process to the first usable window, and the ways out of the process.
class StartUp {
  public:
    struct Parts {
        controls::FrmSplash& Splash;
        controls::MDIFrmMain& Main;
        controls::Windows& Windows;
        link::Link& Link;
        ConnectionDialog& Dialog;
        Discovery& Devices;
        DeviceList& List;
        SessionState& State;
        MessageBoxes& Boxes;
        Process& Run;
        WindowHost& Host;
        StatusLine& Status;
        std::function<void()> Leaving; ///< the user said yes; what is to be done before the end
    };
    explicit StartUp(const Parts& parts);

    /// The splash window loads; its timer does the rest two seconds later.
    void LoadSplash(const std::filesystem::path& current_folder);
    /// The closing of the main window: true when it may go. Ends the process when the user leaves.
    bool MainQueryUnload();

  private:
    void SplashTimeOver();
    void LoadMainWindow();
    void ConnectSeveral();
    void ConnectOne();
    bool OpenLine();
    void GoOnInDemoMode();
    bool WantsDemoMode();
    void Exit();
    bool LeaveProgram();

    controls::FrmSplash& splash_;
    controls::MDIFrmMain& main_;
    controls::Windows& windows_;
    link::Link& link_;
    ConnectionDialog& dialog_;
    Discovery& discovery_;
    DeviceList& list_;
    SessionState& state_;
    MessageBoxes& boxes_;
    Process& process_;
    WindowHost& host_;
    StatusLine& status_;
    std::function<void()> leaving_;
};

} // namespace nrv::session
