#pragma once

#include "simulator/line.h"
#include "tool/line_commands.h"
#include "tool/tool_desk.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>

namespace nrv::testing {

/// Whole seconds, which go by many times as fast from when a device is dead: it is given up in moments, and one that
/// lives is waited for as long as ever.
class FastClock final : public Clock {
  public:
    double Now() override { return std::floor(Seconds()) / 86400.0; }
    void Run(double times_as_fast) {
        seconds_ = Seconds();
        since_ = std::chrono::steady_clock::now();
        times_as_fast_ = times_as_fast;
    }

  private:
    double Seconds() const {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - since_;
        return seconds_ + passed.count() * times_as_fast_;
    }

    double seconds_ = 0.0;
    double times_as_fast_ = 1.0;
    std::chrono::steady_clock::time_point since_ = std::chrono::steady_clock::now();
};

/// A virtual line with device 5 as COM 1, and the tool on it.
class LineWorld : public tool::LineSource {
  public:
    static constexpr int Id = 5;

    explicit LineWorld(const std::function<void(simulator::Device&)>& prepare = [](simulator::Device&) {})
        : Line(MakeRack(prepare), Unpaced()) {
        Line.LinkAs(Desk.Folder / "com1");
        Line.Start();
    }

    ToolDesk Desk;
    simulator::Line Line;
    /// Runs before this frame of the next openings of the line goes out; 0: never.
    struct {
        long Frame = 0;
        std::function<void()> Run;
    } With;
    std::function<void()> EachFrame; ///< runs before every frame
    int TerminalWidth = 0;           ///< of the terminal that the tool writes to

    /// A device that dies is given up in moments.
    void DieWith(long frame) {
        With = {frame, [this] {
                    Line.Order(simulator::Fault::Die(Id));
                    clock_.Run(40.0);
                }};
    }
    /// As a signal does.
    void InterruptWith(long frame) {
        With = {frame, [this] { interrupted_ = true; }};
    }

    tool::LinePorts Open(const std::string&) override {
        port_ = std::make_unique<ui::QtSerialPort>(names_);
        interrupted_ = false;
        counting_ = std::make_unique<tool::CountingPort>(*port_, interrupted_);
        process_ = std::make_unique<ui::QtProcess>(*counting_);
        clock_.Run(1.0);
        counting_->FrameGoesOut = [this, frames = 0L]() mutable {
            if (EachFrame) {
                EachFrame();
            }
            if (++frames == With.Frame) {
                With.Run();
            }
        };
        return {*counting_, clock_, *process_, interrupted_};
    }

    /// A command of the line for device 5.
    ToolRun Run(const std::string& command, std::vector<std::string> more = {}) {
        std::vector<std::string> arguments{"line", command, "--port", "1", "--id", "5"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunAll(std::move(arguments));
    }
    ToolRun RunAll(std::vector<std::string> arguments) {
        std::ostringstream out;
        std::ostringstream errors;
        const int outcome = tool::Run(std::move(arguments), {out, errors, TerminalWidth}, this);
        return {outcome, out.str(), errors.str()};
    }
    /// What a command writes to a terminal as wide as `TerminalWidth`; up to a frame, if one is given.
    std::string RunOnTerminal(std::vector<std::string> arguments, long until_frame = 0) {
        std::ostringstream terminal;
        std::string until;
        if (until_frame != 0) {
            With = {until_frame, [&] { until = terminal.str(); }};
        }
        tool::Run(std::move(arguments), {terminal, terminal, TerminalWidth}, this);
        With = {};
        return until_frame != 0 ? until : terminal.str();
    }
    template <class Work>
    auto WithDevice(Work work) {
        return Line.WithRack([&](simulator::Rack& rack) { return work(*rack.Find(Id)); });
    }

  private:
    static simulator::LineOptions Unpaced() {
        simulator::LineOptions options;
        options.Paced = false;
        return options;
    }
    static simulator::Rack MakeRack(const std::function<void(simulator::Device&)>& prepare) {
        simulator::Rack rack;
        prepare(rack.Add(Id));
        return rack;
    }

    ui::ComPortNames names_{QString::fromStdString(Desk.Folder.Path().string()),
                            [] { return std::vector<ui::PortInfo>{}; }};
    FastClock clock_;
    std::atomic<bool> interrupted_ = false;
    std::unique_ptr<ui::QtSerialPort> port_;
    std::unique_ptr<tool::CountingPort> counting_;
    std::unique_ptr<ui::QtProcess> process_;
};

/// The settings of a random preset as the device holds them.
inline simulator::PresetBody BodyOf(unsigned seed) {
    simulator::PresetBody body;
    const model::PresetImageRow image = RandomPreset(seed);
    std::copy_n(image.PresetBody.begin(), body.size(), body.begin());
    return body;
}

} // namespace nrv::testing
