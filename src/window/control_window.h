#pragma once

#include "controls/forms.h"
#include "controls/windows.h"
#include "history/autosave.h"
#include "history/history.h"
#include "link/failure_handler.h"
#include "link/link.h"
#include "model/command_context.h"
#include "ports/message_boxes.h"
#include "ports/window_host.h"
#include "response/equaliser_editing.h"
#include "response/response.h"
#include "session/session_state.h"
#include "session/status_line.h"
#include "window/monitor.h"

#include <array>
#include <functional>
#include <string>

namespace nrv::window {

/// How the window of one device comes up, follows the focus, resizes and goes.
class ControlWindow final : public link::FailureHandler {
  public:
    struct Parts {
        controls::Windows& Windows;
        controls::FrmSearchNet& List;
        link::Link& Link;
        model::DeviceStores& Stores;
        response::Response& Curves;
        session::SessionState& State;
        session::StatusLine& Status;
        MessageBoxes& Boxes;
        WindowHost& Host;
        /// Greys the window by the device's lock.
        std::function<void()> ApplyLockState;
        /// What the tool buttons run, by their index; none hides the button.
        std::array<std::function<void()>, controls::ToolButtonCount> Tools;
        history::History& History;
        history::Autosave& Copies;
    };
    explicit ControlWindow(const Parts& parts);

    /// Fills the window of `NewSlot` from its device's image, sending nothing, and shows it. On a RuntimeError the
    /// window last active stays the current one.
    void Load();
    /// The user turned to a window: the commands work on it from here on.
    void Activate(int slot);
    /// Takes a window away, with no question, and the dialogs and questions of its operation along.
    void Unload(int slot);
    /// An operation ends: the status line gets the last word on what it did not do.
    void OperationEnds();
    /// The window was given a size in twips while not minimised; raises it to the smallest it may have.
    void Resize(int slot, int width, int height);
    /// The window is to close: asks the user unless its device is unconnected. True when it is gone.
    bool QueryUnload(int slot);

    // What a dead line does to the windows.
    int CurrentDevice() override;
    void TellFailure() override;
    void GiveUpDevice() override;
    void MarkUnchecked(int id) override;

  private:
    void Fill(int slot);
    void WireEvents(controls::FrmCtrl& form);
    void WireGains(controls::FrmCtrl& form);
    void WireDelays(controls::FrmCtrl& form);
    void WireOutputs(controls::FrmCtrl& form);
    void WireGraphs(controls::FrmCtrl& form);
    void WireOverview(controls::FrmCtrl& form);
    void WireTools(controls::FrmCtrl& form);
    void UnconnectDevice();
    std::string MetersRest() const;
    std::function<void()> Guarded(std::function<void()> event);

    controls::Windows& windows_;
    controls::FrmSearchNet& list_;
    link::Link& link_;
    session::SessionState& state_;
    session::StatusLine& status_;
    MessageBoxes& boxes_;
    WindowHost& host_;
    response::Response& response_;
    model::CommandContext context_;
    response::EqualiserEditing editing_;
    Monitor monitor_;
    std::string failure_told_;
    std::function<void()> apply_lock_state_;
    std::array<std::function<void()>, controls::ToolButtonCount> tools_;
    history::History& history_;
    history::Autosave& copies_;
};

} // namespace nrv::window
