#pragma once

#include "controls/containers.h"
#include "controls/control.h"
#include "controls/frm_ctrl.h"
#include "controls/text_box.h"
#include "controls/value_controls.h"

#include <array>

// The modal dialogs that the tool buttons of a control window open.

namespace nrv::controls {

/// A box that lists lines, one of them selected.
class LineList : public List {
  public:
    std::function<void()> DoubleClicked;
    /// The user's double click on a line, which selects it first.
    void UserDoubleClick(int line) {
        UserSelect(line);
        Run(DoubleClicked);
    }
};

class ProgressBar : public Control {
  public:
    int Value() const { return value_; }
    int Maximum() const { return maximum_; }
    void SetValue(int value) { Assign(value_, value, Aspect::Value); }
    void SetMaximum(int maximum) { Assign(maximum_, maximum, Aspect::Items); }

  private:
    int value_ = 0;
    int maximum_ = 100;
};

/// Names of the channels.
struct FrmEditLabel {
    Form Window;
    std::array<Label, ChannelCount> Captions;
    std::array<TextBox, ChannelCount> Text1; ///< the inputs' are locked
    std::array<Button, 2> Command1;          ///< 0 "OK", 1 "Cancel"
    FrmEditLabel();
};

/// Stores the settings into a memory position of the device.
struct FrmStore {
    Form Window;
    Label ListCaption;
    LineList List1;
    Label NameCaption;
    TextBox Text1;
    Label PositionCaption;
    List Combo1;
    ProgressBar ProgressBar1;
    std::array<Button, 2> Command1; ///< 0 "Cancel", 1 "Store"
    FrmStore();
};

/// Reads a memory position of the device.
struct FrmRead {
    Form Window;
    Label ListCaption;
    LineList List1;
    std::array<Button, 2> Command1; ///< 0 "Cancel", 1 "Read"
    FrmRead();
};

/// Copies one input onto the other.
struct FrmCopyIn {
    Form Window;
    std::array<Button, 2> Command1; ///< 0 In A to In B, 1 In B to In A
    FrmCopyIn();
};

/// Copies an output onto another.
struct FrmCopyOut {
    Form Window;
    std::array<Label, 2> Captions;
    std::array<List, 2> Combo1; ///< 0 source, 1 destination
    Button Command1;
    FrmCopyOut();
};

/// The password and the lock: three pages of which the visible one is in front.
struct FrmPassword {
    Form Window;
    Frame Frame3; ///< login
    Label LoginCaption;
    Label Label2;  ///< the status
    TextBox Text1; ///< typed unseen
    Frame Frame1;  ///< settings
    CheckBox Check1;
    std::array<Label, 2> SwitchEnds; ///< "Unlock", "Lock"
    Frame Frame4;                    ///< new password
    Label NewCaption;
    TextBox Text2;
    Label ConfirmCaption;
    TextBox Text3;
    std::array<Button, 7>
        Command1; ///< 0 "OK", 1 "Exit", 2 "Config new password", 3 "Confirm", 4 "Cancel", 5 "OK", 6 "<<"
    FrmPassword();
};

} // namespace nrv::controls
