#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <vector>

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
    while (!ticked && steady_clock::now() - start < milliseconds(5000)) {
        process_.RunPendingEvents();
    }
    EXPECT_TRUE(ticked);
}

TEST_F(QtProcessTest, WithNothingPendingItRestsButComesBackSoon) {
    process_.RunPendingEvents();
    std::vector<steady_clock::duration> rests(21);
    for (auto& rest : rests) {
        const auto start = steady_clock::now();
        process_.RunPendingEvents();
        rest = steady_clock::now() - start;
    }
    // 2 ms each; on a busy machine one or the other takes longer.
    std::ranges::sort(rests);
    EXPECT_GE(rests[10], milliseconds(1));
    EXPECT_LT(rests[10], milliseconds(25));
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
