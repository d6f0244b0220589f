#pragma once

#include "controls/frm_ctrl.h"
#include "ports/numbering.h"
#include "ports/operation.h"

#include <array>
#include <memory>

namespace nrv::controls {

inline constexpr int SlotCount = 11;

struct WindowSlot {
    bool InUse = false;
    int DeviceId = 0;
    int SlotIndex = 0;
};

/// The control windows of the program: who uses which slot, and which window the commands work on.
struct Windows {
    Windows();

    std::array<WindowSlot, SlotCount> WindowSlots;
    std::array<std::unique_ptr<FrmCtrl>, SlotCount>
        ControlWindows;                   ///< a record outlives its window, until the next load
    std::array<bool, SlotCount> Loaded{}; ///< the window of that slot is on the screen
    int CurrentWindow = 0;                ///< the window last activated
    int OpenWindowTop = -1;               ///< open windows minus 1
    int NewSlot = 0;                      ///< the slot of the window about to load
    bool FirstWindowPending = true;       ///< no control window has been filled yet
    bool ControlEventsOff = false;        ///< guarded events do nothing while the program writes a control itself

    /// The record of the current window.
    FrmCtrl& Current() { return *ControlWindows[At(CurrentWindow)]; }
    /// The device ID that the current window's slot gives, 0 before any window was opened.
    int CurrentDevice() const { return WindowSlots[At(CurrentWindow)].DeviceId; }
    /// The slot of the window that shows a device; Operation::NoSlot when none is on the screen.
    int SlotOf(int device_id) const;
};

} // namespace nrv::controls
