#pragma once

#include "controls/containers.h"
#include "controls/control.h"
#include "controls/value_controls.h"

#include <array>

namespace nrv::controls {

/// The splash window, which stands for two seconds and shows the search's progress.
struct FrmSplash {
    Form Window;
    Label Progress;  ///< "0" at design
    Label Searching; ///< never shown
    Label Reason;    ///< why there is no line; empty at design
    Timer Timer1;
    FrmSplash();
};

/// The main window: the port's timer, its menus, and the status line at its foot.
struct MDIFrmMain {
    Form Window;
    Timer SerialTimer;
    Timer Timer1; ///< has no handler
    Timer AutosaveTimer;
    Button Exit;
    // The menu "Edit".
    Button Undo;
    Button Redo;
    Button Compare; ///< in force while the last preset plays
    Button Revert;
    Label StatusLine;
    MDIFrmMain();
};

/// The connection dialog.
struct FrmSelect {
    static constexpr int NarrowWidth = 2805; ///< twips: the left column alone
    static constexpr int TenWidth = 5190;    ///< twips: with the lists of ten devices
    static constexpr int TwentyWidth = 7600; ///< twips: with the lists of twenty
    static constexpr int Height = 5700;      ///< twips

    Form Window;
    Frame PortFrame;
    std::array<Option, 2> Link; ///< 0 "USB", 1 "RS485"
    Frame ConnectionFrame;
    std::array<Option, 4> Connection; ///< one device, up to 20, up to 10, more
    Frame IdFrame;
    List IdSelect;
    Frame ComFrame;
    List ComSelect;
    std::array<Frame, 2> DeviceFrames;
    std::array<Label, 20> DeviceLines;
    std::array<List, 20> DeviceIds;
    Label EqualIds; ///< which lines have one ID, once that kept the dialog open
    Button Exit;
    Button Proceed;
    FrmSelect();
};

/// The connection modes, by the index of their option.
enum ConnectionMode : std::size_t { OneDevice = 0, UpToTwentyDevices = 1, UpToTenDevices = 2, MoreDevices = 3 };

/// The device list.
struct FrmSearchNet {
    static constexpr int ColumnWidth = 1935; ///< twips

    Form Window;
    Label ListCaption;
    Grid Devices;
    Label SearchingNotice;
    Label LoadingNotice;
    Timer Timer1;
    Timer Timer2; ///< has no handler
    FrmSearchNet();
};

} // namespace nrv::controls
