#include "program/program.h"

#include "lock/lock_state.h"
#include "session/failure_text.h"

namespace nrv::program {

Program::Program(const Ports& ports, Forms& forms)
    : Splash(forms.Splash), Select(forms.Select), Main(forms.Main), List(forms.List), Windows(forms.Windows),
      Events(ports.Events), Boxes(ports.Boxes, Events.Current()), Files(ports.Files, Events.Current()),
      Status(Main.StatusLine),
      Link(ports.Serial, ports.WallClock, ports.Run, Boxes, Main.SerialTimer, Events.Current()),
      Connection({Select, Link, State, Boxes, ports.Run, ports.Host, Status}),
      Devices({Link, Stores, State, Splash, Boxes, ports.Run, Status}),
      Response(Windows, Stores), Commands{Link, Stores, Windows}, Tools{Commands,
                                                                        Response,
                                                                        Boxes,
                                                                        ports.Host,
                                                                        Main.Window,
                                                                        [this](const std::string& sentence) { Status.Tell(sentence); }},
      PresetFiles({Tools, Files, State.AppFolder}), StoreDialog(Tools, forms.Store), ReadDialog(Tools, forms.Read),
      NamesDialog(Tools, forms.EditNames), CopyInputDialog(Tools, forms.CopyIn), CopyOutputDialog(Tools, forms.CopyOut),
      PasswordDialog({Commands, Boxes, ports.Host, forms.Password, forms.EditNames, Tools.Tell}),
      Control(ControlParts(ports, forms)),
      DeviceList({List, Windows, Link, Devices, State, Boxes, ports.Run, ports.Host, Status, [this] { Control.Load(); },
                  [this](int slot) { Control.Unload(slot); }}),
      StartUp(
          {Splash, Main, Windows, Link, Connection, Devices, DeviceList, State, Boxes, ports.Run, ports.Host, Status}) {
    Link.Waiting = [this](int id) { Status.TellForNow(session::WaitingText(Events.Current(), id)); };
    Link.Answered = [this] { Status.NoLonger(); };
    Events.Set(BoundaryActions());
}

void Program::TellPortWentAway(const std::string& what) {
    // It is back already, or nobody needs it.
    if (Link.PortIsOpen() || Link.DemoMode) {
        return;
    }
    // An operation that failed by it has begun its own sentence with it, and says more.
    if (!Status.Text().starts_with(what.substr(0, what.find_last_not_of('.') + 1))) {
        Status.Tell(what + " When it is back, double-click the row of a device to connect it again.");
    }
}

controls::EventBoundary::Actions Program::BoundaryActions() {
    return {.UserBegins = [this] { Status.Clear(); },
            .MakeCurrent = [this](int slot) { Control.Activate(slot); },
            .TellError =
                [this](const std::string& text) {
                    Boxes.Show({text, "Error", BoxIcon::Critical});
                },
            .Ends = [this] { Control.OperationEnds(); }};
}

window::ControlWindow::Parts Program::ControlParts(const Ports& ports, Forms& forms) {
    window::ControlWindow::Parts parts{
        Windows, List,   Link,  Stores,     Response,
        State,   Status, Boxes, ports.Host, [this, &forms] { lock::ApplyLockState(Commands, forms.EditNames); },
        {}};
    parts.Tools[controls::LoadPresetTool] = [this] { PresetFiles.LoadPresetFile(); };
    parts.Tools[controls::SavePresetTool] = [this] { PresetFiles.SavePresetFile(); };
    parts.Tools[controls::StorePresetTool] = [this] { StoreDialog.Open(); };
    parts.Tools[controls::ReadPresetTool] = [this] { ReadDialog.Open(); };
    parts.Tools[controls::PasswordTool] = [this] { PasswordDialog.Open(); };
    parts.Tools[controls::EditNamesTool] = [this] { NamesDialog.Open(); };
    parts.Tools[controls::CopyInputTool] = [this] { CopyInputDialog.Open(); };
    parts.Tools[controls::CopyOutputTool] = [this] { CopyOutputDialog.Open(); };
    return parts;
}

} // namespace nrv::program
