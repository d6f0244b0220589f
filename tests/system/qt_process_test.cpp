#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <gtest/gtest.h>

namespace nrv::ui {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class QtProcessTest : public ::testing::Test {
  protected:
    ComPortNames names_{QString(), [] { return std::vector<PortInfo>(); }};
    QtSerialPort port_{names_};
    QtProcess process_{port_};
};

TEST_F(QtProcessTest, PendingEventsRun) {
    int ran = 0;
    QMetaObject::invokeMethod(
        qApp, [&ran] { ++ran; }, Qt::QueuedConnection);
    process_.RunPendingEvents();
    EXPECT_EQ(ran, 1);
}

TEST_F(QtProcessTest, ATimerTicksWhileEventsAreServed) {
    bool ticked = false;
    QTimer::singleShot(20, qApp, [&ticked] { ticked = true; });
    const auto start = steady_clock::now();
    while (!ticked && steady_clock::now() - start < milliseconds(1000)) {
        process_.RunPendingEvents();
    }
    EXPECT_TRUE(ticked);
}

TEST_F(QtProcessTest, WithNothingPendingItRestsButComesBackSoon) {
    process_.RunPendingEvents();
    const auto start = steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        process_.RunPendingEvents();
    }
    // 2 ms each, with room for a busy machine.
    EXPECT_GE(steady_clock::now() - start, milliseconds(10));
    EXPECT_LT(steady_clock::now() - start, milliseconds(500));
}

TEST_F(QtProcessTest, SleepStandsStillAndRunsNoEvents) {
    bool ticked = false;
    QTimer::singleShot(0, qApp, [&ticked] { ticked = true; });
    const auto start = steady_clock::now();
    process_.Sleep(50);
    EXPECT_GE(steady_clock::now() - start, milliseconds(50));
    EXPECT_FALSE(ticked);
    process_.RunPendingEvents();
    EXPECT_TRUE(ticked);
}

TEST_F(QtProcessTest, TheEndLeavesWithSuccess) {
    EXPECT_EXIT(process_.End(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace nrv::ui
