#pragma once

#include "controls/dialog_forms.h"
#include "controls/event_boundary.h"
#include "controls/forms.h"
#include "controls/windows.h"
#include "history/autosave.h"
#include "history/history.h"
#include "link/link.h"
#include "link/serial_port.h"
#include "lock/password_dialog.h"
#include "model/device_stores.h"
#include "ports/clock.h"
#include "ports/file_dialogs.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/standing_ports.h"
#include "ports/window_host.h"
#include "presets/copy_dialogs.h"
#include "presets/names_dialog.h"
#include "presets/preset_files.h"
#include "presets/read_dialog.h"
#include "presets/store_dialog.h"
#include "response/response.h"
#include "session/connection_dialog.h"
#include "session/device_list.h"
#include "session/discovery.h"
#include "session/session_state.h"
#include "session/start_up.h"
#include "session/status_line.h"
#include "window/control_window.h"

#include <string>

namespace nrv::program {

/// What lies outside the process, as the logic sees it.
struct Ports {
    link::SerialPort& Serial;
    Clock& WallClock;
    Process& Run;
    MessageBoxes& Boxes;
    FileDialogs& Files;
    WindowHost& Host;
    controls::EventBoundary& Events;
};

/// The windows as records of controls; what shows them is made before what works on them.
struct Forms {
    controls::FrmSplash Splash;
    controls::FrmSelect Select;
    controls::MDIFrmMain Main;
    controls::FrmSearchNet List;
    controls::Windows Windows;
    controls::FrmEditLabel EditNames;
    controls::FrmStore Store;
    controls::FrmRead Read;
    controls::FrmPassword Password;
    controls::FrmCopyIn CopyIn;
    controls::FrmCopyOut CopyOut;
};

/// The whole program but for its windows: every store and every module once, each module handed the few it works on.
/// Some hundred kilobytes: keep it off the stack.
struct Program {
    /// The boundary works on the windows of `forms`.
    Program(const Ports& ports, Forms& forms);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    controls::FrmSplash& Splash;
    controls::FrmSelect& Select;
    controls::MDIFrmMain& Main;
    controls::FrmSearchNet& List;
    controls::Windows& Windows;

    model::DeviceStores Stores;
    session::SessionState State;

    controls::EventBoundary& Events;
    StandingBoxes Boxes;
    StandingFileDialogs Files;
    session::StatusLine Status;
    link::Link Link;
    session::ConnectionDialog Connection;
    session::Discovery Devices;
    response::Response Response;
    model::CommandContext Commands;
    presets::ToolContext Tools;
    history::Autosave Autosave;
    history::History History;
    presets::PresetFiles PresetFiles;
    presets::StoreDialog StoreDialog;
    presets::ReadDialog ReadDialog;
    presets::NamesDialog NamesDialog;
    presets::CopyInputDialog CopyInputDialog;
    presets::CopyOutputDialog CopyOutputDialog;
    lock::PasswordDialog PasswordDialog;
    window::ControlWindow Control;
    session::DeviceList DeviceList;
    session::StartUp StartUp;

    /// The port closed itself, nobody using it.
    void TellPortWentAway(const std::string& what);

  private:
    controls::EventBoundary::Actions BoundaryActions();
    window::ControlWindow::Parts ControlParts(const Ports& ports, Forms& forms);
    void TellIfFree(const std::string& sentence);
    void KeepAll();
};

} // namespace nrv::program
