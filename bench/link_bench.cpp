// The line: what the program adds to the time that the bytes take on the wire, on a paced virtual line over a real
// pseudo-terminal. Counters: of_wire, time over the wire's own; core, the share of a core that the waiting thread uses.

#include "link/system_clock.h"
#include "ports/flag_guard.h"
#include "presets/apply_image.h"
#include "presets/load_trace.h"
#include "program/program.h"
#include "simulator/line.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <QCoreApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <memory>
#include <random>

namespace {

constexpr double ByteSeconds = 10.0 / 19200.0;
constexpr double FrameSeconds = 26 * ByteSeconds;
constexpr double BulkSeconds = (13 + 432) * ByteSeconds;
constexpr int DeviceId = 5;

double ThreadCpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// The program's logic on the real port, the far end a virtual rack of one device.
struct Desk {
    explicit Desk(int presets) : Line(MakeRack(presets)) {
        Line.LinkAs(Folder.Path() / "com1");
        Line.Start();
        Program->State.AppFolder = Folder.Path();
        Program->Link.ComIndex = 1;
        Program->Link.OpenPort();
        Program->Link.ReopenPort(nrv::link::FrameLength);
    }
    static nrv::simulator::Rack MakeRack(int presets) {
        nrv::simulator::Rack rack;
        nrv::simulator::Device& device = rack.Add(DeviceId);
        for (int position = 0; position < presets; ++position) {
            device.PutPreset(position, "Bench", device.LiveImage());
        }
        return rack;
    }

    nrv::testing::TestFolder Folder;
    nrv::simulator::Line Line;
    nrv::ui::ComPortNames Names{QString::fromStdString(Folder.Path().string()),
                                [] { return std::vector<nrv::ui::PortInfo>{}; }};
    nrv::ui::QtSerialPort Port{Names};
    nrv::link::SystemClock Clock;
    nrv::ui::QtProcess Process{Port};
    nrv::testing::ScriptedBoxes Boxes;
    nrv::testing::ScriptedFileDialogs Files;
    nrv::testing::RecordingHost Host;
    std::unique_ptr<nrv::program::Forms> Forms = std::make_unique<nrv::program::Forms>();
    nrv::controls::EventBoundary Events{Forms->Windows};
    std::unique_ptr<nrv::program::Program> Program = std::make_unique<nrv::program::Program>(
        nrv::program::Ports{Port, Clock, Process, Boxes, Files, Host, Events}, *Forms);
};

template <class Work>
void AgainstWire(benchmark::State& state, double wire_seconds, Work work) {
    double seconds = 0.0;
    double cpu = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const double cpu_before = ThreadCpuSeconds();
        const auto before = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - before;
        seconds += took.count();
        cpu += ThreadCpuSeconds() - cpu_before;
        state.SetIterationTime(took.count());
    }
    state.counters["of_wire"] = seconds / static_cast<double>(state.iterations()) / wire_seconds;
    state.counters["core"] = cpu / seconds;
}

void Exchange(benchmark::State& state) {
    Desk desk(0);
    AgainstWire(state, FrameSeconds, [&] { desk.Program->Link.MemoryRead(DeviceId, 32); });
}
BENCHMARK(Exchange)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(3);

void BulkReply(benchmark::State& state) {
    Desk desk(0);
    desk.Program->Link.ReopenPort(nrv::link::BulkLength);
    AgainstWire(state, BulkSeconds, [&] {
        desk.Program->Link.BulkExchange(DeviceId, {nrv::link::PresetReadCommand, nrv::link::LivePreset});
    });
}
BENCHMARK(BulkReply)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(3);

/// What a double click waits for: 32 exchanges with no memory position in use, 160 with all eight.
void ReadState(benchmark::State& state) {
    const int presets = static_cast<int>(state.range(0));
    Desk desk(presets);
    AgainstWire(state, (32 + 16 * presets) * FrameSeconds, [&] { desk.Program->Devices.ReadDeviceState(DeviceId); });
}
BENCHMARK(ReadState)->Arg(0)->Arg(8)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

/// A control window of the device, filled, with no widgets.
void OpenWindow(Desk& desk) {
    nrv::program::Program& program = *desk.Program;
    program.State.SpeakerRecords[DeviceId].SetDeviceId(DeviceId);
    program.State.FoundLast = 0;
    program.State.FoundDevices[0] = DeviceId;
    program.DeviceList.Load();
    program.Devices.ReadDeviceImage(DeviceId);
    program.DeviceList.OpenDevice(0);
}

/// A whole preset, parameter by parameter: 153 frames.
void LoudLoad(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    nrv::program::Program& program = *desk.Program;
    program.Stores.ParamValues[DeviceId].MuteWithPreset = 1.0;
    program.Stores.PresetImage[DeviceId].SystemPage[16] |= 4;
    desk.Line.ClearFrames();
    AgainstWire(state, 153 * FrameSeconds, [&] {
        nrv::presets::ApplyImage(program.Commands, program.Response, nrv::presets::ImageCase::FromFile);
    });
    state.counters["frames"] = static_cast<double>(desk.Line.Frames().size()) / static_cast<double>(state.iterations());
}
BENCHMARK(LoudLoad)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

/// A load of another preset taken back and gone again: the frames of what differs.
void UndoOfALoad(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    nrv::program::Program& program = *desk.Program;
    const auto event = [&](auto run) { program.Events.Run({nrv::controls::EventSource::Kind::Device, 0}, run); };
    std::mt19937 random(718);
    const nrv::testing::Body preset = nrv::testing::RandomPreset(random);
    event([&] {
        std::ranges::copy(preset, program.Stores.PresetImage[DeviceId].PresetBody.begin());
        nrv::presets::ApplyImage(program.Commands, program.Response, nrv::presets::ImageCase::FromFile);
    });
    desk.Line.ClearFrames();
    event([&] { program.History.Undo(); });
    const auto frames = static_cast<double>(desk.Line.Frames().size());
    bool back = true;
    AgainstWire(state, frames * FrameSeconds, [&] {
        event([&] { back ? program.History.Redo() : program.History.Undo(); });
        back = !back;
    });
    state.counters["frames"] = frames;
}
BENCHMARK(UndoOfALoad)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(4);

/// One fader's step taken back and gone again: one exchange.
void UndoOfAStep(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    nrv::program::Program& program = *desk.Program;
    const auto event = [&](auto run) { program.Events.Run({nrv::controls::EventSource::Kind::Device, 0}, run); };
    event([&] { program.Windows.Current().Slider2[20].UserMove(7); });
    bool back = false;
    AgainstWire(state, FrameSeconds, [&] {
        event([&] { back ? program.History.Redo() : program.History.Undo(); });
        back = !back;
    });
}
BENCHMARK(UndoOfAStep)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(60);

/// A preset into a memory position, byte by byte: 450 frames.
void Store(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    desk.Line.ClearFrames();
    std::string name = "Bench";
    AgainstWire(state, 450 * FrameSeconds, [&] { desk.Program->StoreDialog.StorePreset(2, name); });
    state.counters["frames"] = static_cast<double>(desk.Line.Frames().size()) / static_cast<double>(state.iterations());
}
BENCHMARK(Store)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

/// The meters: a poll every 30 ms. Here core is what one poll uses over those 30 ms.
void MeterPoll(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    nrv::controls::FrmCtrl& form = desk.Program->Windows.Current();
    form.SSTab1.SetTab(nrv::controls::GainsTab);
    double cpu = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const double before = ThreadCpuSeconds();
        form.Timer1.Tick();
        cpu += ThreadCpuSeconds() - before;
        desk.Process.Sleep(16);
    }
    state.counters["core"] = cpu / static_cast<double>(state.iterations()) / 0.030;
}
BENCHMARK(MeterPoll)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(100);

/// Filling a window silently: 66 curves and eight redraws, by the thread's own time.
void SilentFill(benchmark::State& state) {
    Desk desk(0);
    OpenWindow(desk);
    nrv::program::Program& program = *desk.Program;
    for ([[maybe_unused]] auto _ : state) {
        const double before = ThreadCpuSeconds();
        {
            const nrv::FlagGuard suppressed(program.Link.TxSuppressed);
            const nrv::FlagGuard unplotted(program.Response.PlotSuspended);
            nrv::presets::ApplyImage(program.Commands, program.Response);
        }
        for (int channel = 0; channel < nrv::ChannelCount; ++channel) {
            program.Response.RedrawChannel(channel);
        }
        state.SetIterationTime(ThreadCpuSeconds() - before);
    }
}
BENCHMARK(SilentFill)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication toolkit(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
