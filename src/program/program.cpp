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
      Autosave(
          {Stores, State.AppFolder, Main.AutosaveTimer, [this](const std::string& sentence) { TellIfFree(sentence); }}),
      History({Commands, Response, Main, Tools.Tell, [this](int device) { Autosave.Changed(device); },
               [this](int device) { Autosave.Write(device); },
               [this](int device, std::size_t count) { DeviceList.TellEdits(device, count); }}),
      PresetFiles({Tools, Files, State.AppFolder}), StoreDialog(Tools, forms.Store), ReadDialog(Tools, forms.Read),
      NamesDialog(Tools, forms.EditNames), CopyInputDialog(Tools, forms.CopyIn), CopyOutputDialog(Tools, forms.CopyOut),
      PasswordDialog({Commands, Boxes, ports.Host, forms.Password, forms.EditNames, Tools.Tell}),
      Control(ControlParts(ports, forms)),
      DeviceList({List, Windows, Link, Devices, State, Boxes, ports.Run, ports.Host, Status, [this] { Control.Load(); },
                  [this](int slot) { Control.Unload(slot); }}),
      StartUp({Splash, Main, Windows, Link, Connection, Devices, DeviceList, State, Boxes, ports.Run, ports.Host,
               Status, [this] { KeepAll(); }}) {
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
    return {.UserBegins =
                [this] {
                    Status.Clear();
                    History.OperationBegins();
                },
            .MakeCurrent = [this](int slot) { Control.Activate(slot); },
            .TellError =
                [this](const std::string& text) {
                    Boxes.Show({text, "Error", BoxIcon::Critical});
                },
            .Ends =
                [this] {
                    Control.OperationEnds();
                    History.OperationEnds();
                }};
}

/// The program ends: every device plays its user's own settings, and a copy of them is kept.
void Program::KeepAll() {
    for (const controls::WindowSlot& slot : Windows.WindowSlots) {
        if (slot.InUse) {
            Windows.CurrentWindow = slot.SlotIndex;
            Events.Current().BelongTo({slot.SlotIndex, slot.DeviceId});
            History.EndComparison();
            if (Events.Current().Reported()) {
                return; // the program does not end
            }
            Autosave.Write(slot.DeviceId);
        }
    }
}

/// What stands there already says more.
void Program::TellIfFree(const std::string& sentence) {
    if (Status.Free()) {
        Status.Tell(sentence);
    }
}

window::ControlWindow::Parts Program::ControlParts(const Ports& ports, Forms& forms) {
    window::ControlWindow::Parts parts{
        Windows, List,    Link,    Stores,     Response,
        State,   Status,  Boxes,   ports.Host, [this, &forms] { lock::ApplyLockState(Commands, forms.EditNames); },
        {},      History, Autosave};
    const auto set = [this, &parts](controls::ToolButton tool, std::function<void()> run) {
        // Each works on the user's own settings.
        parts.Tools[At(tool)] = [this, run = std::move(run)] {
            History.EndComparison();
            if (!Events.Current().Reported()) {
                run();
            }
        };
    };
    set(controls::LoadPresetTool, [this] { PresetFiles.LoadPresetFile(); });
    set(controls::SavePresetTool, [this] { PresetFiles.SavePresetFile(); });
    set(controls::StorePresetTool, [this] { StoreDialog.Open(); });
    set(controls::ReadPresetTool, [this] { ReadDialog.Open(); });
    set(controls::PasswordTool, [this] { PasswordDialog.Open(); });
    set(controls::EditNamesTool, [this] { NamesDialog.Open(); });
    set(controls::CopyInputTool, [this] { CopyInputDialog.Open(); });
    set(controls::CopyOutputTool, [this] { CopyOutputDialog.Open(); });
    return parts;
}

} // namespace nrv::program
