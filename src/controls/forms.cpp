#include "controls/forms.h"

#include <string>
#include <vector>

namespace nrv::controls {
namespace {

std::vector<std::string> NumbersTo32() {
    std::vector<std::string> numbers;
    for (int number = 0; number <= 32; ++number) {
        numbers.push_back(std::to_string(number));
    }
    return numbers;
}

} // namespace

FrmSplash::FrmSplash() {
    Progress.SetCaption("0");
    Searching.SetCaption("Searching COM: please wait ");
}

MDIFrmMain::MDIFrmMain() {
    Window.SetCaption("NRV-718 Multi Device Remote Control");
    Exit.SetCaption("Exit");
    Undo.SetCaption("Undo");
    Redo.SetCaption("Redo");
    Compare.SetCaption("Compare with the last preset");
    Revert.SetCaption("Revert to the last preset");
    for (Button* entry : {&Undo, &Redo, &Compare, &Revert}) {
        entry->SetEnabled(false);
    }
}

FrmSelect::FrmSelect() {
    Window.SetCaption("Select");
    Window.SetSize(NarrowWidth, Height);
    PortFrame.SetCaption("Communication Port");
    Link[0].SetCaption("USB");
    Link[1].SetCaption("RS485");
    Option::Group(Link);
    ConnectionFrame.SetCaption("Connection");
    Connection[OneDevice].SetCaption("with one device");
    Connection[UpToTwentyDevices].SetCaption("with 2 or max 20 device");
    Connection[UpToTenDevices].SetCaption("with 2 or max 10 device");
    Connection[MoreDevices].SetCaption("with more device");
    Option::Group(Connection);
    IdFrame.SetCaption("ID Select");
    ComFrame.SetCaption("COM Select");
    std::vector<std::string> ports = {"NONE"};
    for (int number = 1; number <= 32; ++number) {
        ports.push_back("COM " + std::to_string(number));
    }
    ComSelect.SetItems(ports);
    for (Frame& frame : DeviceFrames) {
        frame.SetCaption("Set device ID");
    }
    for (std::size_t line = 0; line < DeviceLines.size(); ++line) {
        DeviceLines[line].SetCaption("Device" + std::to_string(line + 1) + " with ID:");
        DeviceIds[line].SetItems(NumbersTo32());
    }
    IdSelect.SetItems(NumbersTo32());
    Exit.SetCaption("Exit");
    Proceed.SetCaption(">>");
}

FrmSearchNet::FrmSearchNet() {
    Window.SetCaption(" List ID");
    ListCaption.SetCaption("Name && ID Device");
    Devices.SetToolTip("Double Click to edit parameters");
    SearchingNotice.SetCaption("Please wait, searcing device......");
    LoadingNotice.SetCaption("Please wait, Loading controls ......");
}

} // namespace nrv::controls
