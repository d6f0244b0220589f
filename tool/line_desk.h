#pragma once

#include "controls/event_boundary.h"
#include "link/serial_port.h"
#include "model/preset_image.h"
#include "ports/channels.h"
#include "ports/clock.h"
#include "ports/process.h"
#include "ports/runtime_error.h"
#include "program/program.h"
#include "tool/quiet_ports.h"
#include "tool/trouble.h"

#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace nrv::tool {

/// A line that is open or can be opened, and what it lives in.
struct LinePorts {
    link::SerialPort& Serial;
    Clock& WallClock;
    Process& Run;
    const std::atomic<bool>& Interrupted; ///< the user, or the system, wants the command to end
};

/// A port that tells of each frame before it goes out. Once the command is to end it carries no further frame.
class CountingPort final : public link::SerialPort {
  public:
    CountingPort(link::SerialPort& port, const std::atomic<bool>& interrupted)
        : port_(port), interrupted_(interrupted) {}
    std::function<void()> FrameGoesOut;

    void SetCommPort(int number) override { port_.SetCommPort(number); }
    void SetSettings(const link::LineSettings& settings) override { port_.SetSettings(settings); }
    bool PortOpen() override { return port_.PortOpen(); }
    void SetPortOpen(bool open) override { port_.SetPortOpen(open); }
    void SetInBufferSize(int bytes) override { port_.SetInBufferSize(bytes); }
    void SetInputLen(int bytes) override { port_.SetInputLen(bytes); }
    void Output(std::span<const std::uint8_t> bytes) override {
        RequireTime();
        if (FrameGoesOut) {
            FrameGoesOut();
        }
        port_.Output(bytes);
    }
    int InBufferCount() override {
        RequireTime();
        return port_.InBufferCount();
    }
    void ClearInBuffer() override { port_.ClearInBuffer(); }
    std::vector<std::uint8_t> Input() override { return port_.Input(); }

  private:
    /// The program's own road for a line that fails.
    void RequireTime() const {
        if (interrupted_) {
            throw RuntimeError(ErrorKind::PortUnavailable, "Interrupted.");
        }
    }

    link::SerialPort& port_;
    const std::atomic<bool>& interrupted_;
};

/// The event loop with one timer, that of a probe. The end of the process is noted, and goes no further.
class LineProcess final : public Process {
  public:
    explicit LineProcess(Process& process) : process_(process) {}

    controls::Timer* Probe = nullptr;
    bool Ended = false;

    void RunPendingEvents() override;
    void Sleep(int milliseconds) override { process_.Sleep(milliseconds); }
    [[noreturn]] void End() override {
        Ended = true;
        throw EndOfProcess{};
    }

  private:
    Process& process_;
    bool ticking_ = false;
    std::chrono::steady_clock::time_point due_;
};

class YesBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const MessageBox& box) override {
        return box.Buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
    }
};

/// For the copies that the program keeps of what plays; gone with it.
class WorkFolder {
  public:
    /// Throws Trouble.
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// The program on a line, without windows: a device's window is a record, and each command an operation of its user.
/// Everything that fails on the line throws Trouble of the outcome NoLine.
class LineDesk {
  public:
    /// Opens the port of a number.
    LineDesk(const LinePorts& ports, int com_number);
    LineDesk(const LineDesk&) = delete;
    LineDesk& operator=(const LineDesk&) = delete;

    /// The double click on the device's row: its label, what is live, its state, and its window.
    void Open(int id);
    /// Runs as one operation of the user in the open window, or outside of one.
    void Do(const std::function<void()>& work);
    /// The same with the meters' timer.
    void TickMeters();
    /// Reads label, live settings and memory page of the open device until two readings in a row are alike: an answer
    /// carries nothing by which a disturbed one could be told.
    void Confirm();
    /// Fetches a memory position, 0 to 7, into the first bytes of an image, until two in a row are alike.
    void Fetch(int position, model::PresetImageRow& image);
    /// Loads a preset: the button "Load Preset from PC", on a file of its own.
    void Load(const model::PresetImageRow& image);

    /// Ends early when the command is to end.
    void Pause(int milliseconds);
    bool Interrupted() const { return interrupted_; }

    program::Program& Program() { return *program_; }
    int Id() const { return id_; }
    model::ParamRow& Values() { return program_->Stores.ParamValues[At(id_)]; }
    model::PresetImageRow& Image() { return program_->Stores.PresetImage[At(id_)]; }
    const std::string& Label() const { return program_->State.DeviceNames[At(id_)]; }
    std::function<void()>& FrameGoesOut() { return port_.FrameGoesOut; }

  private:
    /// What `Confirm` compares.
    struct Reading {
        std::string Label;
        model::PresetImageRow Image;
        std::array<double, MemoryPositions> Used;
        std::array<std::string, MemoryPositions> Names;
        bool operator==(const Reading& other) const;
    };

    void RequireLine(const std::string& error);
    Reading LastReading();
    /// Reads until two in a row are equal. Throws Trouble.
    template <class Read>
    auto ReadTwice(Read read) -> decltype(read());

    const std::atomic<bool>& interrupted_;
    CountingPort port_;
    LineProcess process_;
    YesBoxes boxes_;
    GivenFile files_;
    NoWindows host_;
    WorkFolder folder_;
    std::unique_ptr<program::Forms> forms_ = std::make_unique<program::Forms>();
    controls::EventBoundary events_{forms_->Windows};
    std::unique_ptr<program::Program> program_;
    int id_ = 0;
    bool opened_ = false;
};

} // namespace nrv::tool
