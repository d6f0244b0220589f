#include "program/program.h"

#include "lock/lock_state.h"

namespace nrv::program {

Program::Program(const Ports& ports, Forms& forms)
    : Splash(forms.Splash), Select(forms.Select), Main(forms.Main), List(forms.List), Windows(forms.Windows),
      Events(ports.Boxes), Status(Main.StatusLine),
      Link(ports.Serial, ports.WallClock, ports.Run, ports.Boxes, Main.SerialTimer),
      Connection({Select, Link, State, ports.Boxes, ports.Run, ports.Host, Status}),
      Devices({Link, Stores, State, Splash, ports.Boxes, ports.Run}), Response(Windows, Stores),
      Commands{Link, Stores, Windows}, Tools{Commands, Response, ports.Boxes, ports.Host, Main.Window},
      PresetFiles({Tools, ports.Files, State.AppFolder, [this](const std::string& sentence) { Status.Tell(sentence); }}),
      StoreDialog(Tools, forms.Store), ReadDialog(Tools, forms.Read), NamesDialog(Tools, forms.EditNames),
      CopyInputDialog(Tools, forms.CopyIn), CopyOutputDialog(Tools, forms.CopyOut),
      PasswordDialog({Commands, ports.Boxes, ports.Host, forms.Password, forms.EditNames}),
      Control(ControlParts(ports, forms)),
      DeviceList({List, Windows, Link, Devices, State, ports.Boxes, ports.Run, ports.Host, Status,
                  [this] { Control.Load(); }}),
      StartUp(
          {Splash, Main, Windows, Link, Connection, Devices, DeviceList, State, ports.Boxes, ports.Run, ports.Host}) {}

window::ControlWindow::Parts Program::ControlParts(const Ports& ports, Forms& forms) {
    window::ControlWindow::Parts parts{Windows,     List,       Link, Stores, Response, State, ports.Boxes, ports.Host,
                                       [this, &forms] { lock::ApplyLockState(Commands, forms.EditNames); },
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
