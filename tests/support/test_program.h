#pragma once

#include "program/program.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"

#include <string>
#include <vector>

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

/// Flags, pointers and the operation that are left as they are only while one runs, in words; nothing between events.
inline std::vector<std::string> NotAtRest(TestProgram& world) {
    program::Program& program = world.Program;
    std::vector<std::string> left;
    const auto at_rest = [&left](bool rests, const char* what) {
        if (!rests) {
            left.emplace_back(what);
        }
    };
    at_rest(!program.Link.TxSuppressed, "TxSuppressed");
    at_rest(!program.Response.PlotSuspended, "PlotSuspended");
    at_rest(!program.Windows.ControlEventsOff, "ControlEventsOff");
    at_rest(!program.Link.CheckSuppressed, "CheckSuppressed");
    at_rest(!program.Events.Current().Running(), "the operation");
    at_rest(!program.Events.Current().Reported(), "its report");
    at_rest(!program.Main.SerialTimer.Running(), "the probe's timer");
    for (const controls::Form* form : {&program.Main.Window, &program.List.Window, &world.Forms.CopyIn.Window,
                                       &world.Forms.CopyOut.Window, &world.Forms.Store.Window}) {
        at_rest(form->MousePointer() == controls::Pointer::Default, "a pointer");
    }
    return left;
}

} // namespace nrv::testing
