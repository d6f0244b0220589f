// The windows: what a user waits for. Times are of this machine; the limits beside them are what was aimed at.

#include "driver/driver.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"
#include "ui/application.h"
#include "ui/look/theme.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

/// Speakers.cfg with one flagged device of the ID 1.
std::vector<std::uint8_t> OneDemoDevice() {
    std::vector<std::uint8_t> bytes(std::size_t{33} * 128);
    bytes[128] = 1;
    bytes[128 + 20] = 1;
    return bytes;
}

/// From the start to the connection dialog on the screen, less the splash window's two seconds.
void StartToConnectionDialog(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const nrv::testing::TestFolder folder;
        const auto before = Clock::now();
        nrv::testing::ScriptedBoxes boxes;
        nrv::testing::ScriptedProcess process;
        nrv::ui::Application application(folder.Path(), {&boxes, &process});
        application.Start();
        double took = 0.0;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            QWidget* dialog = nrv::driver::Find(QStringLiteral("FrmSelect"));
            if (dialog == nullptr || !dialog->isVisible()) {
                return;
            }
            watch.stop();
            dialog->repaint();
            took = Seconds(Clock::now() - before) - 2.0;
            nrv::driver::Click(nrv::driver::Find(QStringLiteral("Exit"), dialog));
            // Leaving ends a test's process in thought alone; the dialog goes by the other road.
            application.Logic().State.SelectExitPending = false;
            dialog->close();
        });
        watch.start(1);
        nrv::driver::WaitUntil([&] { return took > 0.0; });
        state.SetIterationTime(took);
    }
}
BENCHMARK(StartToConnectionDialog)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

/// From the double click to the first control window painted, in demo mode.
void FirstControlWindow(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const nrv::testing::TestFolder folder;
        folder.Write("Speakers.cfg", OneDemoDevice());
        nrv::testing::ScriptedBoxes boxes;
        nrv::testing::ScriptedProcess process;
        nrv::ui::Application application(folder.Path(), {&boxes, &process});
        nrv::program::Program& program = application.Logic();
        program.State.AppFolder = folder.Path();
        program.Link.DemoMode = true;
        program.Devices.LoadDemoDevices();
        application.Host().ShowMainWindow();
        program.DeviceList.Load();
        application.Host().ShowDeviceList();
        nrv::driver::WaitUntil([&] { return !program.List.Timer1.Running(); });
        QTest::qWait(50);
        const auto before = Clock::now();
        nrv::driver::DoubleClickRow(nrv::driver::Find(QStringLiteral("Devices")), 0);
        QWidget* window = nrv::driver::Find(QStringLiteral("FrmCtrl(0)"));
        window->repaint();
        QApplication::processEvents();
        state.SetIterationTime(Seconds(Clock::now() - before));
    }
}
BENCHMARK(FirstControlWindow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ? qgetenv("QT_QPA_PLATFORM") : "offscreen");
    const auto before = Clock::now();
    QApplication toolkit(argc, argv);
    nrv::ui::ApplyTheme(toolkit);
    benchmark::AddCustomContext("toolkit_start_ms", std::to_string(1000.0 * Seconds(Clock::now() - before)));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
