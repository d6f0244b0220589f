#pragma once

#include "controls/containers.h"
#include "link/failure_handler.h"
#include "link/link.h"
#include "support/scripted_ports.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace nrv::testing {

/// Writes down what a dead line does to the windows.
class RecordingHandler final : public link::FailureHandler {
  public:
    explicit RecordingHandler(const ScriptedBoxes& boxes) : boxes_(boxes) {}

    int DeviceIs = 0;
    bool MarkFails = false;
    std::vector<std::string> Log; ///< each entry with the number of boxes shown before it
    std::function<void()> WhenTold;

    int CurrentDevice() override { return DeviceIs; }
    void TellFailure() override {
        Note("tell");
        if (WhenTold) {
            WhenTold();
        }
    }
    void GiveUpDevice() override { Note("give up"); }
    void MarkUnchecked(int id) override {
        Note("mark " + std::to_string(id));
        if (MarkFails) {
            throw RuntimeError(ErrorKind::IndexOutOfRange, "The list has no row 0, column 1.");
        }
    }

  private:
    void Note(const std::string& what) { Log.push_back(what + " after " + std::to_string(boxes_.Shown.size())); }

    const ScriptedBoxes& boxes_;
};

/// A link on an open port that may be used; nothing answers until the test says so.
struct LinkRig {
    ScriptedClock Clock;
    ScriptedPort Port{Clock};
    ScriptedProcess Process;
    ScriptedBoxes Boxes;
    controls::Timer SerialTimer;
    RecordingHandler Handler{Boxes};
    nrv::Operation Operation;
    link::Link Link{Port, Clock, Process, Boxes, SerialTimer, Operation};

    LinkRig() {
        Link.SetFailureHandler(Handler);
        Link.ComIndex = 3;
        Link.OpenPort();
        Port.Log.clear();
    }

    /// The first bytes of what was received last.
    Bytes Received(std::size_t count) const {
        return {Link.RxFrame.begin(), Link.RxFrame.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

/// `count` bytes: first, first + 1, and so on.
inline Bytes Rising(int first, int count) {
    Bytes bytes;
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(first + i));
    }
    return bytes;
}

/// An answer of a device that is there: byte 4 is 0xC3.
inline Bytes AnswerOfDevice(std::uint8_t mark = 0xC3) {
    return {0xF0, 0xC3, 0, 0, mark, 0, 0, 0, 0, 0, 0, 0, 0xF7};
}

} // namespace nrv::testing
