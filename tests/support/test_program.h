#pragma once

#include "program/program.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"

namespace nrv::testing {

// Where the events of a test come from.
inline controls::EventSource UserIn(int slot) {
    return {controls::EventSource::Kind::Device, slot};
}
inline controls::EventSource UserOutside() {
    return {controls::EventSource::Kind::Program};
}
inline controls::EventSource UserInDialog() {
    return {controls::EventSource::Kind::Dialog};
}
inline controls::EventSource TimerTick() {
    return {controls::EventSource::Kind::Tick};
}
inline controls::EventSource MeterTick(int slot) {
    return {controls::EventSource::Kind::Meters, slot};
}

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
    controls::EventBoundary Events{Forms.Windows};
    program::Program Program{{Port, Clock, Process, Boxes, Files, Host, Events}, Forms};

    TestProgram() { Program.State.AppFolder = Folder.Path(); }
};

} // namespace nrv::testing
