#pragma once

#include "controls/event_boundary.h"
#include "link/system_clock.h"
#include "program/program.h"
#include "ui/guide/guide.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/gesture_watch.h"
#include "ui/platform/input_gate.h"
#include "ui/platform/qt_file_dialogs.h"
#include "ui/platform/qt_message_boxes.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"
#include "ui/platform/qt_window_host.h"

#include <filesystem>

namespace nrv::ui {

/// The program with its windows, on the toolkit's ports. Needs an application object.
class Application {
  public:
    /// What a test puts in place of the toolkit's own.
    struct Substitutes {
        MessageBoxes* Boxes = nullptr;
        nrv::Process* Run = nullptr;
        FileDialogs* Files = nullptr;
        nrv::Clock* WallClock = nullptr;
    };

    /// `folder` holds the configuration files.
    explicit Application(const std::filesystem::path& folder);
    Application(const std::filesystem::path& folder, const Substitutes& substitutes);

    /// Shows the splash window, whose timer does the rest.
    void Start();

    program::Program& Logic() { return program_; }
    QtWindowHost& Host() { return host_; }
    link::SerialPort& Port() { return port_; }

  private:
    WindowEvents Events();
    void WatchOperations();

    std::filesystem::path folder_;
    program::Forms forms_;
    controls::EventBoundary boundary_{forms_.Windows};
    Guide guide_; ///< before the gate: what the gate holds back does not reach it
    GestureWatch gestures_;
    InputGate gate_{boundary_.Current()};
    ComPortNames names_;
    QtSerialPort port_;
    link::SystemClock own_clock_;
    QtProcess own_process_;
    QtMessageBoxes own_boxes_;
    QtFileDialogs own_files_{boundary_.Current()};
    MessageBoxes& boxes_;
    nrv::Process& process_;
    nrv::Clock& clock_;
    QtWindowHost host_;
    program::Program program_;
};

} // namespace nrv::ui
