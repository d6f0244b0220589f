#include "ui/platform/qt_process.h"

#include "ports/runtime_error.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace nrv::ui {

void QtProcess::RunPendingEvents() {
    constexpr int rest_milliseconds = 2;
    QTimer wake;
    wake.setTimerType(Qt::PreciseTimer);
    wake.setSingleShot(true);
    wake.start(rest_milliseconds);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // What the first round brought about, repaints above all.
    QCoreApplication::processEvents();
}

void QtProcess::Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void QtProcess::End() {
    try {
        port_.SetPortOpen(false);
    } catch (const RuntimeError&) {
        // A port that is gone is closed as well as it can be.
    }
    // At once: the end is called from deep inside handlers of windows that must not be destroyed under their feet.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace nrv::ui
