#pragma once

#include "link/link.h"
#include "link/serial_port.h"
#include "ports/clock.h"
#include "ports/file_dialogs.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/runtime_error.h"
#include "ports/window_host.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// The world outside the process as a test scripts it: no display, no sleeping, time that moves by being looked at.

namespace nrv::testing {

using Bytes = std::vector<std::uint8_t>;
using Frame = std::array<std::uint8_t, link::FrameLength>;

/// Stands still until told to move; whole seconds since an arbitrary day.
class ScriptedClock final : public Clock {
  public:
    double Now() override { return static_cast<double>(StartSeconds + Seconds) / 86400.0; }
    long Seconds = 0;

  private:
    static constexpr long StartSeconds = 1'790'000'000;
};

/// A port whose far end the test plays. Each look at what waits moves the clock by `SecondsPerPoll`.
class ScriptedPort final : public link::SerialPort {
  public:
    explicit ScriptedPort(ScriptedClock& clock) : clock_(clock) {}

    /// Answers each frame at once when set; an empty answer is silence.
    std::function<Bytes(const Frame&)> Answer;
    /// Runs before a frame is written.
    std::function<void()> OnOutput;
    /// Runs at each look at what waits, after the clock moved and before the bytes are counted.
    std::function<void()> OnPoll;
    long SecondsPerPoll = 1;
    bool Present = true;          ///< false: opening fails with PortUnavailable
    bool Gone = false;            ///< true: every use of the open port fails with PortGone
    std::vector<Frame> Sent;      ///< every frame written
    bool WholeFrames = true;      ///< every output was of a frame's length
    std::vector<std::string> Log; ///< what was done to the port, in words
    Bytes Waiting;                ///< received and not yet read
    int CommPort = -1;
    int InBufferSize = link::FrameLength;
    int InputLen = link::FrameLength;
    long Polls = 0;

    /// Bytes that arrive once the clock has reached a second.
    void ArriveAt(long second, Bytes bytes) { coming_.emplace_back(second, std::move(bytes)); }
    /// The port goes away as a real one does: it closes itself, and cannot be opened until it is back.
    void GoAway() {
        Gone = true;
        Present = false;
        open_ = false;
    }
    void ComeBack() { Present = true; }
    /// How many frames with a command went out.
    long CountSent(std::uint8_t command) const {
        return static_cast<long>(
            std::ranges::count_if(Sent, [command](const Frame& frame) { return frame[3] == command; }));
    }

    void SetCommPort(int number) override {
        Log.push_back("port " + std::to_string(number));
        CommPort = number;
    }
    void SetSettings(const link::LineSettings& settings) override {
        Log.push_back(std::to_string(settings.Baud) + ",N,8,1");
    }
    bool PortOpen() override { return open_; }
    void SetPortOpen(bool open) override {
        Log.emplace_back(open ? "open" : "close");
        if (open && (!Present || CommPort == 0)) {
            throw RuntimeError(ErrorKind::PortUnavailable, "The port is absent.");
        }
        if (open && !open_) {
            Waiting.clear();
            Gone = false;
        }
        open_ = open;
    }
    void SetInBufferSize(int bytes) override {
        Log.push_back("buffer " + std::to_string(bytes));
        InBufferSize = bytes;
    }
    void SetInputLen(int bytes) override {
        Log.push_back("input " + std::to_string(bytes));
        InputLen = bytes;
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        if (OnOutput) {
            OnOutput();
        }
        RequireOpen();
        WholeFrames = WholeFrames && bytes.size() == link::FrameLength;
        Frame frame{};
        std::copy_n(bytes.begin(), std::min(bytes.size(), frame.size()), frame.begin());
        Sent.push_back(frame);
        if (Answer) {
            const Bytes answer = Answer(frame);
            Waiting.insert(Waiting.end(), answer.begin(), answer.end());
        }
    }
    int InBufferCount() override {
        RequireOpen();
        ++Polls;
        clock_.Seconds += SecondsPerPoll;
        if (OnPoll) {
            OnPoll();
            RequireOpen();
        }
        for (auto& [second, bytes] : coming_) {
            if (second <= clock_.Seconds) {
                Waiting.insert(Waiting.end(), bytes.begin(), bytes.end());
                bytes.clear();
            }
        }
        return std::min(static_cast<int>(Waiting.size()), InBufferSize);
    }
    void ClearInBuffer() override {
        RequireOpen();
        Waiting.clear();
    }
    Bytes Input() override {
        RequireOpen();
        const auto count = std::min(Waiting.size(), static_cast<std::size_t>(InputLen));
        const auto end = Waiting.begin() + static_cast<std::ptrdiff_t>(count);
        Bytes bytes(Waiting.begin(), end);
        Waiting.erase(Waiting.begin(), end);
        return bytes;
    }

  private:
    void RequireOpen() const {
        if (Gone) {
            throw RuntimeError(ErrorKind::PortGone, "The port went away.");
        }
        if (!open_) {
            throw RuntimeError(ErrorKind::PortUnavailable, "The port is not open.");
        }
    }

    ScriptedClock& clock_;
    bool open_ = false;
    std::vector<std::pair<long, Bytes>> coming_;
};

/// What a test's process throws in place of ending.
using ProcessEnded = EndOfProcess;

class ScriptedProcess final : public Process {
  public:
    std::function<void()> OnPendingEvents; ///< what happens while events are let run
    long Slept = 0;                        ///< milliseconds
    bool Ended = false;

    void RunPendingEvents() override {
        if (OnPendingEvents) {
            OnPendingEvents();
        }
    }
    void Sleep(int milliseconds) override { Slept += milliseconds; }
    [[noreturn]] void End() override {
        Ended = true;
        throw ProcessEnded{};
    }
};

/// Answers boxes from a queue, Yes or Ok when it is empty, and keeps what was shown.
class ScriptedBoxes final : public MessageBoxes {
  public:
    std::vector<MessageBox> Shown;
    std::deque<BoxAnswer> Answers;
    std::function<void()> WhileItStands;

    BoxAnswer Show(const MessageBox& box) override {
        Shown.push_back(box);
        if (WhileItStands) {
            WhileItStands();
        }
        if (!Answers.empty()) {
            const BoxAnswer answer = Answers.front();
            Answers.pop_front();
            return answer;
        }
        return box.Buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
    }
};

/// Answers file dialogs with one file, or as cancelled.
class ScriptedFileDialogs final : public FileDialogs {
  public:
    std::optional<std::filesystem::path> File;
    std::vector<std::string> Log;

    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override {
        Log.push_back("open " + request.Filter + " in " + request.StartFolder.string());
        return File;
    }
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override {
        Log.push_back("save " + request.Filter + " in " + request.StartFolder.string());
        return File;
    }
};

/// A window system without windows: keeps a log, and runs a script while the connection dialog stands.
class RecordingHost final : public WindowHost {
  public:
    ScreenSize ScreenIs{1920, 1080};
    std::function<void()> WhileDialogStands;
    std::function<void()> WhileToolDialogStands;
    std::function<void()> OnRemoved;          ///< a control window goes
    std::function<void()> OnMainWindowCloses; ///< as a window system asks a window that is to close
    std::vector<std::string> Log;
    bool ListMinimised = false;

    ScreenSize Screen() override { return ScreenIs; }
    void RunConnectionDialog() override {
        Log.emplace_back("run dialog");
        if (WhileDialogStands) {
            WhileDialogStands();
        }
    }
    void CloseConnectionDialog() override { Log.emplace_back("close dialog"); }
    void UnloadSplash() override { Log.emplace_back("unload splash"); }
    void ShowMainWindow() override { Log.emplace_back("show main"); }
    void UnloadMainWindow() override {
        Log.emplace_back("unload main");
        if (OnMainWindowCloses) {
            OnMainWindowCloses();
        }
    }
    void ShowDeviceList() override { Log.emplace_back("show list"); }
    void FocusDeviceList() override { Log.emplace_back("focus list"); }
    bool DeviceListMinimised() override { return ListMinimised; }
    void MinimiseDeviceList(bool minimised) override { ListMinimised = minimised; }
    void RunDialog(ToolDialog dialog) override {
        Log.push_back("run tool dialog " + std::to_string(static_cast<int>(dialog)));
        if (WhileToolDialogStands) {
            WhileToolDialogStands();
        }
    }
    void CloseDialog(ToolDialog dialog) override {
        Log.push_back("close tool dialog " + std::to_string(static_cast<int>(dialog)));
    }
    void ShowControlWindow(int slot) override { Log.push_back("show window " + std::to_string(slot)); }
    void FocusControlWindow(int slot) override { Log.push_back("focus window " + std::to_string(slot)); }
    void RemoveControlWindow(int slot) override {
        Log.push_back("remove window " + std::to_string(slot));
        if (OnRemoved) {
            OnRemoved();
        }
    }
};

} // namespace nrv::testing
