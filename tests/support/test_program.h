#pragma once

#include "program/program.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"

namespace nrv::testing {

/// The whole program on scripted ports, fresh for each case, in a folder of its own.
struct TestProgram {
    TestFolder Folder;
    ScriptedClock Clock;
    ScriptedPort Port{Clock};
    ScriptedProcess Process;
    ScriptedBoxes Boxes;
    ScriptedFileDialogs Files;
    RecordingHost Host;
    program::Forms Forms;
    program::Program Program{{Port, Clock, Process, Boxes, Files, Host}, Forms};

    TestProgram() { Program.State.AppFolder = Folder.Path(); }
};

} // namespace nrv::testing
