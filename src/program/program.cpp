#include "program/program.h"

namespace nrv::program {

Program::Program(const Ports& ports, Forms& forms)
    : Splash(forms.Splash), Select(forms.Select), Main(forms.Main), List(forms.List), Windows(forms.Windows),
      Events(ports.Boxes), Status(Main.StatusLine),
      Link(ports.Serial, ports.WallClock, ports.Run, ports.Boxes, Main.SerialTimer),
      Connection({Select, Link, State, ports.Boxes, ports.Run, ports.Host, Status}),
      Devices({Link, Stores, State, Splash, ports.Boxes, ports.Run}),
      Control({Windows, List, Link, Stores, State, ports.Boxes, ports.Host}),
      DeviceList({List, Windows, Link, Devices, State, ports.Boxes, ports.Run, ports.Host, Status,
                  [this] { Control.Load(); }}),
      StartUp(
          {Splash, Main, Windows, Link, Connection, Devices, DeviceList, State, ports.Boxes, ports.Run, ports.Host}) {}

} // namespace nrv::program
