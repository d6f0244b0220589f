// The link on the real port, over a pseudo-terminal, against devices that misbehave to order.

#include "link/link.h"
#include "simulator/line.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"
#include "ui/platform/com_ports.h"
#include "ui/platform/qt_process.h"
#include "ui/platform/qt_serial_port.h"

#include <QTimer>

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

using namespace nrv;
using simulator::Fault;
using std::chrono::milliseconds;

constexpr int Id = 5;
constexpr int OtherId = 9;
constexpr int LabelAddress = 32;

/// Whole seconds, each of which is over in 40 ms or what a test makes of them: ten ticks are 0.4 s.
class HastyClock final : public Clock {
  public:
    milliseconds Tick{40};
    milliseconds Rest{}; ///< before each look
    double Now() override {
        std::this_thread::sleep_for(Rest);
        const auto gone = std::chrono::steady_clock::now() - start_;
        return static_cast<double>(gone / Tick) / 86400.0;
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

class LinkOnLine : public ::testing::Test {
  protected:
    LinkOnLine() {
        line_->LinkAs(folder_.Path() / "com1");
        line_->Start();
        toolkit_timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&toolkit_timer_, &QTimer::timeout, [this] { serial_timer_.Tick(); });
        serial_timer_.Observe([this](controls::Aspect) {
            serial_timer_.Running() ? toolkit_timer_.start(serial_timer_.Interval()) : toolkit_timer_.stop();
        });
        link_.ComIndex = 1;
        link_.OpenPort();
        link_.ReopenPort(link::FrameLength);
    }

    static simulator::Rack TwoDevices() {
        simulator::Rack rack;
        rack.Add(Id, "ABCDEFGHIJKLMNOP");
        rack.Add(OtherId, "abcdefghijklmnop");
        return rack;
    }

    /// Seconds that an exchange takes, by the real clock.
    template <class Exchange>
    static double Timed(Exchange exchange) {
        const auto before = std::chrono::steady_clock::now();
        exchange();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
    }

    /// Until a whole answer waits at the port, for some seconds at most.
    bool AnswerCame() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (port_.InBufferCount() < link::FrameLength && std::chrono::steady_clock::now() < end) {
        }
        return port_.InBufferCount() == link::FrameLength;
    }

    /// By which an exchange that is over is surely over on a busy machine, too: far less than what it must not wait
    /// for.
    static constexpr double SoonEnough = 5.0;

    nrv::testing::TestFolder folder_;
    std::unique_ptr<simulator::Line> line_ =
        std::make_unique<simulator::Line>(TwoDevices(), simulator::LineOptions{.Paced = false, .Trace = {}});
    ui::ComPortNames names_{QString::fromStdString(folder_.Path().string()),
                            [] { return std::vector<ui::PortInfo>{}; }};
    ui::QtSerialPort port_{names_};
    HastyClock clock_;
    ui::QtProcess process_{port_};
    nrv::testing::ScriptedBoxes boxes_;
    controls::Timer serial_timer_;
    QTimer toolkit_timer_;
    Operation operation_;
    link::Link link_{port_, clock_, process_, boxes_, serial_timer_, operation_};
};

TEST_F(LinkOnLine, ASoundExchangeIsOneFrameAndItsAnswer) {
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_TRUE(link_.TransactionDone);
    EXPECT_EQ(link_.MemoryValue(), 'A');
    ASSERT_EQ(line_->Frames().size(), 1U);
    const simulator::Frame expected{0xF0, 0xC3, 5, 0x10, 0, 32, 0, 0, 0, 0, 0, 0, 0xF7};
    EXPECT_EQ(line_->Frames()[0], expected);
}

TEST_F(LinkOnLine, ALostAnswerIsAskedForAgain) {
    line_->Order(Fault::Lose(Id, 2));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress + 1));
    EXPECT_TRUE(link_.TransactionDone);
    EXPECT_EQ(link_.MemoryValue(), 'B');
    EXPECT_EQ(line_->Frames().size(), 3U);
}

TEST_F(LinkOnLine, ADeadDeviceGetsFiveTransmissionsOfTenTicksEach) {
    line_->Order(Fault::Die(Id));
    const double seconds = Timed([&] { EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress)); });
    EXPECT_FALSE(link_.TransactionDone);
    EXPECT_EQ(line_->Frames().size(), 5U);
    // Each wait begins somewhere within a tick: nine to ten of them.
    EXPECT_GE(seconds, 5 * 9 * 0.040);
    EXPECT_LT(seconds, 5 * 10 * 0.040 + SoonEnough);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(LinkOnLine, ALateAnswerStandsReadyForTheNextExchange) {
    line_->Order(Fault::Late(Id, 2, milliseconds(500)));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_EQ(link_.MemoryValue(), 'A');
    EXPECT_EQ(line_->Frames().size(), 2U); // the answer to the first came during the second wait
    EXPECT_TRUE(AnswerCame());
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress + 1));
    EXPECT_EQ(link_.MemoryValue(), 'A'); // the answer to the repeated question for 'A'
}

TEST_F(LinkOnLine, SixBytesOfAnAnswerStayAndTheNextOneCompletesThem) {
    line_->Order(Fault::Cut(Id, 1, 6));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_TRUE(link_.TransactionDone);
    EXPECT_EQ(line_->Frames().size(), 2U);
    // Bytes 6 to 12 are the first seven of the second answer.
    EXPECT_EQ(link_.RxFrame[6], 0xF0);
    EXPECT_EQ(link_.RxFrame[7], 0xC3);
    EXPECT_EQ(link_.MemoryValue(), Id);
}

TEST_F(LinkOnLine, TheSecondHalfOfADoubledAnswerIsThrownAway) {
    line_->Order(Fault::Double(Id, 1));
    clock_.Rest = milliseconds(20); // so that both halves are there when one is looked for
    link_.MemoryRead(Id, LabelAddress);
    EXPECT_EQ(link_.MemoryValue(), 'A');
    clock_.Rest = milliseconds(0);
    link_.MemoryRead(Id, LabelAddress + 2);
    EXPECT_EQ(link_.MemoryValue(), 'C');
    EXPECT_EQ(line_->Frames().size(), 2U);
}

TEST_F(LinkOnLine, AGarbledAnswerIsTakenAsItIs) {
    line_->Order(Fault::Garble(Id, 1, 8, 0x99));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_TRUE(link_.TransactionDone);
    EXPECT_EQ(link_.MemoryValue(), 0x99);
}

TEST_F(LinkOnLine, TheAnswerOfAnotherDeviceIsTakenAsItIs) {
    line_->Order(Fault::AnswerFrom(Id, 1, OtherId));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_EQ(link_.MemoryValue(), 'a');
}

TEST_F(LinkOnLine, ADrippingAnswerIsWaitedFor) {
    clock_.Tick = milliseconds(400); // a byte may take its time on a busy machine
    line_->Order(Fault::Drip(Id, 1, milliseconds(15)));
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress));
    EXPECT_EQ(link_.MemoryValue(), 'A');
    EXPECT_EQ(line_->Frames().size(), 1U);
}

TEST_F(LinkOnLine, AProbeFindsADeviceAndOnlyThat) {
    EXPECT_TRUE(link_.ProbeDevice(Id));
    double seconds = Timed([&] { EXPECT_FALSE(link_.ProbeDevice(Id + 1)); });
    EXPECT_GE(seconds, 0.190);
    EXPECT_LT(seconds, SoonEnough);
    line_->Order(Fault::Garble(Id, 1, 4, 0xC2));
    EXPECT_FALSE(link_.ProbeDevice(Id)); // bytes came, byte 4 is not the answer
    EXPECT_TRUE(link_.ProbeDevice(Id));
}

TEST_F(LinkOnLine, ALateAnswerToAProbeDecidesForTheNextId) {
    line_->Order(Fault::Late(Id, 1, milliseconds(600))); // long after the 200 ms of the probe
    EXPECT_FALSE(link_.ProbeDevice(Id));
    EXPECT_TRUE(AnswerCame());
    EXPECT_TRUE(link_.ProbeDevice(Id + 1)); // where no device is
}

TEST_F(LinkOnLine, ABulkReplyArrivesWhole) {
    line_->WithRack([](simulator::Rack& rack) {
        simulator::PresetBody body{};
        for (std::size_t i = 0; i < body.size(); ++i) {
            body[i] = static_cast<simulator::Byte>(i * 7 + 3);
        }
        rack.At(Id).SetLiveImage(body);
    });
    link_.ReopenPort(link::BulkLength);
    EXPECT_TRUE(link_.BulkExchange(Id, {link::PresetReadCommand, link::LivePreset}));
    for (std::size_t i = 0; i < 432; ++i) {
        ASSERT_EQ(link_.RxFrame[i], static_cast<std::uint8_t>(i * 7 + 3)) << i;
    }
}

TEST_F(LinkOnLine, TwoHalvesOfABulkReplyCompleteIt) {
    line_->Order(Fault::Cut(Id, 2, 216));
    link_.ReopenPort(link::BulkLength);
    EXPECT_TRUE(link_.BulkExchange(Id, {link::PresetReadCommand, link::LivePreset}));
    EXPECT_EQ(line_->Frames().size(), 2U);
}

TEST_F(LinkOnLine, ACheckAsksTwice) {
    link_.DeviceChecked[Id] = true;
    EXPECT_TRUE(link_.CheckDevice(Id));
    line_->ClearFrames();
    line_->Order(Fault::Die(Id));
    EXPECT_FALSE(link_.CheckDevice(Id));
    EXPECT_EQ(line_->Frames().size(), 2U);
    EXPECT_FALSE(link_.DeviceChecked[Id]);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, "Time-Out: Communication problem with device ID:0");
}

TEST_F(LinkOnLine, APortThatGoesAwayEndsTheExchangeAtOnce) {
    clock_.Tick = milliseconds(2000); // the first wait alone would take 20 s
    line_->Order(Fault::Die(Id));
    std::thread unplug([this] {
        std::this_thread::sleep_for(milliseconds(100));
        line_.reset();
    });
    const double seconds = Timed([&] { EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress)); });
    unplug.join();
    EXPECT_LT(seconds, SoonEnough);
    EXPECT_FALSE(link_.TransactionDone);
    // And every later one.
    EXPECT_LT(Timed([&] { link_.MemoryRead(Id, LabelAddress); }), SoonEnough);
}

TEST_F(LinkOnLine, AnAbsentPortOpensSilentlyNot) {
    link_.ComIndex = 2;
    link_.OpenPort();
    EXPECT_FALSE(link_.PortOpened);
    EXPECT_FALSE(link_.LinkReady);
    EXPECT_TRUE(boxes_.Shown.empty());
    EXPECT_FALSE(link_.MemoryRead(Id, LabelAddress)); // sends nothing
    EXPECT_TRUE(line_->Frames().empty());
}

} // namespace
