#pragma once

#include "controls/forms.h"
#include "link/link.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/window_host.h"
#include "session/config_files.h"
#include "session/session_state.h"
#include "session/status_line.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace nrv::session {

/// The dialog that settles port, link and mode before the main window opens. It shows no file errors.
class ConnectionDialog {
  public:
    struct Parts {
        controls::FrmSelect& Form;
        link::Link& Link;
        SessionState& State;
        MessageBoxes& Boxes;
        Process& Run;
        WindowHost& Host;
        StatusLine& Status;
    };
    explicit ConnectionDialog(const Parts& parts);

    void Load();
    /// The closing of the dialog, by whatever means: true when it may go. Ends the process when the user leaves.
    bool QueryUnload();

  private:
    void ChooseLink(std::size_t link);
    void ChooseMode(std::size_t mode);
    void ChooseId();
    void ChooseDeviceId(std::size_t line);
    void ChoosePort();
    void Proceed();
    void EnableFrames(bool enabled);
    /// The first two lines that have one ID, of those that the mode compares.
    std::optional<std::pair<std::size_t, std::size_t>> EqualIds() const;
    template <class Write>
    void Keep(Write&& write);

    controls::FrmSelect& form_;
    link::Link& link_;
    SessionState& state_;
    MessageBoxes& boxes_;
    Process& process_;
    WindowHost& host_;
    StatusLine& status_;
    InitFile init_;
};

} // namespace nrv::session
